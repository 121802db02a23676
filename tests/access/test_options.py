"""The options panel and the first question, as a screen reader sees them."""

import unittest

import rules
from access_case import BOX, OPTIONS, AccessCase

LOGGERS = (("KR400", "9", "57600"), ("KR215", "3", "9600"))


class Options(AccessCase):
    def add_loggers(self):
        for model, port, baud in LOGGERS:
            self.assertEqual(self.scene.run("add", "--model", model, "--com", port, "--baud", baud)[0], 0)

    def tab(self, key, name):
        """Shows the tab with that mnemonic and name."""
        self.press(OPTIONS, key)
        self.reader.until(f"{key} does not show {name}", lambda: self.current_tab() == name)

    def current_tab(self):
        return self.tabs_of(self.reader.window(OPTIONS)).name

    def test_the_question_of_the_first_start(self):
        program = self.start()
        question = self.look(BOX)
        self.assertEqual(question.role, "alert")
        self.assertTrue(any("tallyCores" in node.name for node in question.walk() if node.role == "label"))
        self.assertIn("focused", question.find("push button", "Yes").states)
        self.closes(BOX)
        self.look(OPTIONS)
        self.end(program)

    def test_every_tab(self):
        self.add_loggers()
        program = self.start()
        self.screen.window(OPTIONS)
        for key, name in (("alt+t", "tallyCores"), ("alt+e", "Email"), ("alt+f", "FTP"), ("alt+o", "Options"),
                          ("alt+a", "About")):
            with self.subTest(tab=name):
                self.tab(key, name)
                window = self.look(OPTIONS)
                self.assertEqual(window.role, "dialog")
                self.mnemonics_reach_their_fields(OPTIONS, window)
        self.closes(OPTIONS)
        self.assertEqual(program.wait(60), 0)

    def test_the_mail_account_with_every_field_in_use(self):
        program = self.start()
        self.closes(BOX)
        self.tab("alt+e", "Email")
        self.press(OPTIONS, "alt+q")
        self.reader.until("the account stays locked",
                          lambda: rules.is_enabled(self.shown(OPTIONS).find("text", "Account Name")))
        window = self.look(OPTIONS)
        self.mnemonics_reach_their_fields(OPTIONS, window)
        self.closes(OPTIONS)
        self.assertEqual(program.wait(60), 0)

    def test_the_list_tells_its_loggers_and_the_arrows_go_from_one_to_the_other(self):
        self.add_loggers()
        self.start()
        window = self.settled(OPTIONS)
        loggers = window.find("list", "Current tallyCores").children
        self.assertEqual([node.name for node in loggers if node.role == "list item"],
                         ["KR400 sn none on Com 9", "KR215 Series 1 on Com 3"])
        self.press(OPTIONS, "alt+n", "Home")
        for key, name in (("Down", "KR215 Series 1 on Com 3"), ("Up", "KR400 sn none on Com 9")):
            self.press(OPTIONS, key)
            self.reader.hear(f"{key} does not tell {name}", lambda kind, origin, _, name=name: kind.startswith(
                "object:state-changed:focused") and origin.name == name)
        self.press(OPTIONS, "Down", "Return")  # views it
        self.closes("KR215 Series 1 on Com 3")

    def test_the_tabs_can_be_turned_by_the_arrows(self):
        self.add_loggers()
        self.start()
        window = self.settled(OPTIONS)
        self.go_to(OPTIONS, window, self.tabs_of(window))
        self.press(OPTIONS, "Right")
        self.reader.until("the arrow turns no tab", lambda: self.current_tab() == "Email")

    def test_the_ports_go_by_their_label_and_tell_the_chosen_one(self):
        self.add_loggers()
        self.start()
        window = self.settled(OPTIONS)
        ports = next(node for node in rules.controls(window) if node.role == "combo box")
        self.assertEqual((ports.labels[0], ports.name), ("Com ports to search", " All Ports"))


if __name__ == "__main__":
    unittest.main()
