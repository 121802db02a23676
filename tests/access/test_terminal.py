"""The terminal, as a screen reader sees it."""

import unittest

from access_case import OPTIONS, AccessCase, Typed

TERMINAL = "^ ?Connected to the KR400 on Com 9$"
LOGGER = {"com": 9, "model": "KR400", "version": "2.06.0001", "serial": "092341", "baud": 57600}


class Terminal(AccessCase):
    simulated = [LOGGER]

    def open_terminal(self):
        self.assertEqual(self.scene.run("add", "--model", "KR400", "--com", "9", "--baud", "57600")[0], 0)
        self.start()
        self.press(OPTIONS, "alt+n", "Home", "alt+m")
        return self.settled(TERMINAL)

    def test_both_panes_are_named_and_the_tab_key_goes_from_one_to_the_other(self):
        window = self.open_terminal()
        self.assertEqual(window.role, "frame")
        receive, send = window.find("text", "Receive"), window.find("text", "Send")
        self.assertIn("read only", receive.states)
        self.assertNotIn("read only", send.states)
        self.assertIn("focused", send.states)
        self.look(TERMINAL)

    def test_what_the_logger_says_is_the_text_of_the_receive_pane_and_its_coming_is_told(self):
        window = self.open_terminal()
        receive = window.find("text", "Receive").origin
        self.reader.forget()
        self.press(TERMINAL, Typed("TEST0"), "Return")
        self.reader.hear("that text has come is not told",
                         lambda kind, origin, _: kind.startswith("object:text-changed") and origin == receive)

        def text():
            pane = receive.queryText()
            return pane.getText(0, pane.characterCount)
        self.reader.until(lambda: f"the answer is not in the pane: {text()!r}", lambda: "tallyCore 400" in text())

    def test_its_title_bar_is_in_reach_where_no_place_was_ever_stored(self):
        self.open_terminal()
        self.reader.until("the title bar is beyond the screen", lambda: self.reader.window(TERMINAL).place[1] > 0)

    def test_the_border_moves_by_keys(self):
        window = self.open_terminal()
        height = self.height(window)
        self.press(TERMINAL, "alt+Up")
        self.reader.until("the border does not move up", lambda: self.height(self.reader.window(TERMINAL)) > height)
        self.press(TERMINAL, "alt+Down")
        self.reader.until("the border does not move down", lambda: self.height(self.reader.window(TERMINAL)) == height)

    @staticmethod
    def height(window):
        _, top, _, bottom = window.find("text", "Send").place
        return bottom - top

    def test_it_is_closed_by_the_desktops_key_and_its_button_comes_back(self):
        self.open_terminal()
        self.closes(TERMINAL, "alt+F4")
        self.reader.until("the terminal can't be opened again", lambda: "enabled" in self.reader.window(OPTIONS).find(
            "push button", "Terminal").states)


if __name__ == "__main__":
    unittest.main()
