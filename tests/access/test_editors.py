"""What a logger's panel opens, as a screen reader sees it: editors, choosers and the chooser of a job."""

import unittest

from access_case import BOX, OPTIONS, AccessCase, matches

LOGGER = {"com": 9, "model": "KR400", "version": "2.06.0001", "serial": "092341", "baud": 57600,
          "jobs": ["*PUMPHOUSE", "LEVELS+", "BATTERY"]}
PANEL = "^ ?KR400 on Com 9 @"
FILLED = ("LoggerDescription=Weir_3", "LoggerMdbOn=1", "LoggerTableNames.A=Levels", "LoggerRunProgram=/usr/bin/true",
          "LoggerRunCommand=/h/m")


class Editors(AccessCase):
    simulated = [LOGGER]

    def open_panel(self, tab):
        self.assertEqual(self.scene.run("add", "--model", "KR400", "--com", "9", "--baud", "57600")[0], 0)
        self.assertEqual(self.scene.run("set", "1", *FILLED)[0], 0)
        self.start()
        self.press(OPTIONS, "alt+n", "Home", "alt+v")
        self.press(PANEL, tab)

    def editor(self, key, title):
        """Opens an editor by its key, looks at it, and closes it by Esc: it is back at the panel."""
        self.press(PANEL, key)
        window = self.look(title)
        self.assertEqual(window.role, "dialog")
        self.mnemonics_reach_their_fields(title, window)
        self.closes(title)
        self.screen.window(PANEL)
        return window

    def test_the_table_names(self):
        self.open_panel("alt+u")
        window = self.editor("alt+i", "Edit Table Names")
        self.assertEqual([node.name for node in window.walk() if node.role == "text"],
                         [f"Schedule {letter}" for letter in "ABCDEFGHIJKX"])

    def test_the_delivery_lists(self):
        self.open_panel("alt+u")
        window = self.editor("alt+s", "Email List for the KR400")
        chosen = next(node for node in window.walk() if node.role == "combo box")
        self.assertEqual((chosen.labels[0], chosen.name), ("Schedule", "All Schedules"))

    def test_the_program_and_the_command_for_after_an_unload(self):
        self.open_panel("alt+u")
        self.editor("alt+r", "Run a Program After Unload")
        self.editor("alt+c", "Send a tallyCore Command After Unload")

    def test_the_shortcut(self):
        self.open_panel("alt+t")
        self.press(PANEL, "alt+i")
        title = "Create Icon"
        self.look(title)
        self.press(title, "alt+s")
        self.reader.until("no command can be typed", lambda: "enabled" in self.reader.window(title).find(
            "text", "Commands").states)
        self.look(title)
        self.press(title, "alt+u")
        self.reader.until("Ok stays locked", lambda: "enabled" in self.reader.window(title).find(
            "push button", "Ok").states)
        self.look(title)
        self.closes(title)

    def test_the_connection(self):
        self.open_panel("alt+t")
        self.editor("alt+s", "Change Settings")

    def test_the_chooser_of_a_job(self):
        self.open_panel("alt+l")
        self.press(PANEL, "alt+r")
        question = self.look(BOX)
        self.assertEqual(question.role, "alert")
        self.press(BOX, "alt+y")
        title = matches("Delete a Job in the KR400")
        window = self.look(title)
        jobs = next(node for node in window.walk() if node.role == "combo box")
        self.assertEqual(jobs.labels[0], "Job")
        self.closes(title)
        self.closes(BOX)

    def test_the_choosers_of_a_folder_and_of_a_program_can_be_left(self):
        self.open_panel("alt+u")
        self.press(PANEL, "alt+e")
        folder = "Choose a Folder"
        self.settled(folder)
        self.closes(folder)
        self.press(PANEL, "alt+r", )
        run = "Run a Program After Unload"
        self.press(run, "alt+e")
        program = "Choose a Program to Run"
        self.settled(program)
        self.closes(program)
        self.closes(run)


if __name__ == "__main__":
    unittest.main()
