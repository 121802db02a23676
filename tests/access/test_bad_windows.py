"""The walk itself, on windows that each have one fault, and on those of ours that no command opens."""

import os
import subprocess
import unittest

import rules
from access_case import AccessCase
from programs import BIN


class BadWindows(AccessCase):
    program_name = "access_windows"

    def show(self, name, title):
        environment = dict(self.scene.environment, DISPLAY=self.screen.display)
        program = subprocess.Popen([os.path.join(BIN, "access_windows"), name], env=environment)
        self.addCleanup(program.wait)
        self.addCleanup(program.kill)
        return self.settled(title)

    def is_found(self, name, words):
        self.show(name, f"^{name}$")
        with self.assertRaises(AssertionError) as told:
            self.look(f"^{name}$")
        self.assertRegex(str(told.exception), words)

    def test_a_sound_window_passes(self):
        self.show("sound", "^sound$")
        self.look("^sound$")

    def test_a_field_without_a_label_is_found_though_it_has_a_tool_tip(self):
        self.is_found("unnamed", "text .* has no name")

    def test_a_disabled_button_without_a_reason_is_found(self):
        self.is_found("silent", "'Test' does not say why")

    def test_a_mnemonic_on_two_controls_is_found(self):
        self.is_found("clashing", "Alt\\+S leads to 2 controls")

    def test_a_trap_of_the_tab_key_is_found(self):
        self.is_found("trap", "Tab does not leave text 'Notes'")

    def test_a_button_that_the_tab_key_does_not_reach_is_found(self):
        self.is_found("unreachable", "'Test' .* is reached 0 times")

    def test_a_round_that_leaps_about_is_found(self):
        self.is_found("disordered", "the Tab key leaps")

    def test_a_group_that_is_left_and_entered_again_is_found(self):
        self.is_found("torn", "'Schedules' is entered 2 times")

    def test_the_chooser_of_the_language(self):
        window = self.show("language", "Harvel Setup")
        self.assertEqual([rules.name_of(node) for node in rules.controls(window)], ["Select a Language", "Ok"])
        self.look("Harvel Setup")
        self.closes("Harvel Setup")


if __name__ == "__main__":
    unittest.main()
