"""The dialog that adds a logger, in its three ways, and the test of one, as a screen reader sees them."""

import socket
import unittest

import rules
from access_case import BOX, OPTIONS, AccessCase, Typed

ADD = "^ ?Add a tallyCore$"
TESTING = "^ ?Checking Online Status"
FOUND = "^ ?tallyCore Search$"


class Adding(AccessCase):
    simulated = [{"com": 9, "model": "KR40", "baud": 4800}]

    def open_dialog(self):
        self.start()
        self.closes(BOX)
        self.press(OPTIONS, "alt+d")
        return self.settled(ADD)

    def test_the_three_ways(self):
        self.open_dialog()
        for key, way, field in (("alt+r", "Com Port", None), ("alt+d", "Modem", "Phone Number"),
                                ("alt+i", "TCP/IP", "IP Address")):
            with self.subTest(way=way):
                self.press(ADD, key)
                self.reader.until(f"{key} does not show {way}", lambda way=way: self.reader.window(ADD).find("panel", way))
                window = self.look(ADD)
                if field:
                    self.assertTrue(window.find("text", field))
                self.mnemonics_reach_their_fields(ADD, window)
        self.closes(ADD)

    def test_the_lists_go_by_their_labels(self):
        window = self.open_dialog()
        self.assertEqual([rules.name_of(node) for node in rules.controls(window) if node.role == "combo box"],
                         ["Model", "Series", "Number", "BAUD", "Parity", "Data Bits", "Stop Bits", "Flow Control"])
        for key, name in (("alt+m", "Model"), ("alt+n", "Number"), ("alt+b", "BAUD"), ("alt+y", "Parity")):
            with self.subTest(key=key):
                self.press(ADD, key)
                field = next(node for node in rules.controls(window) if rules.name_of(node) == name)
                self.reader.until(f"{key} does not lead to {name}", lambda field=field: "focused" in self.states(field))

    def test_the_ways_can_be_chosen_by_the_arrows(self):
        window = self.open_dialog()
        self.go_to(ADD, window, window.find("radio button", "RS232"))
        for way in ("Modem", "TCP/IP"):
            self.press(ADD, "Right")
            self.reader.until(f"the arrow does not choose {way}",
                              lambda way=way: "checked" in self.reader.window(ADD).find("radio button", way).states)

    def test_a_running_test_locks_all_but_cancel_and_says_why(self):
        host = self.enterContext(socket.create_server(("127.0.0.1", 0)))  # takes the call and says nothing
        self.open_dialog()
        self.press(ADD, "alt+i")
        self.reader.until("no address can be typed", lambda: self.reader.window(ADD).find("text", "IP Address"))
        self.press(ADD, "alt+a", Typed("127.0.0.1"), "Tab", Typed(str(host.getsockname()[1])), "alt+t")

        def locked():
            window = self.reader.window(TESTING)
            return window if not rules.is_enabled(window.find("push button", "Ok")) else None
        window = self.reader.until("nothing is locked", locked)
        self.assertEqual(list(rules.unexplained(window)), [])
        self.assertEqual([node.name for node in rules.controls(window) if rules.is_enabled(node)], ["Cancel"])
        self.closes(TESTING)

    def test_the_box_that_tells_what_was_found(self):
        self.open_dialog()
        self.press(ADD, "alt+t")
        box = self.look(FOUND)
        self.assertEqual(box.role, "alert")
        self.assertTrue(any("Found a KR40" in node.name for node in box.walk() if node.role == "label"))
        self.closes(FOUND)
        self.closes(ADD)


if __name__ == "__main__":
    unittest.main()
