"""Loggers on a com port, behind the modem and on TCP, each entered by hand in the real window, tested, stored, and
reached again in the terminal after a restart."""

import unittest

from panel_keys import OPTIONS, Typed
from ways import ADD, BOX, SEARCH_BOX, WaysCase, com_way, model, modem_way, network_way

CHANGE = "^ ?Change Settings$"
INIT = "ats0=0x1"


class EveryWay(WaysCase):
    simulated = [{"com": 3, "model": "KR45", "port": "pty", "baud": 1200},
                 {"com": 4, "model": "KR40", "serial": "012345", "port": "pty", "baud": 57600},
                 {"model": "KR400", "port": "tcp:0"}]
    modem = {"com": 5, "baud": 9600, "connect": 200, "speed": "14400",
             "phoneBook": {"555-1234": {"model": "KR205", "series": "2"}, "556": {"model": "KR40"}}}

    def check_record(self, transport):
        """What found.ini holds of the only logger: what was typed, and what adding and its panel put beside it."""
        schedules, folder = "0," * 60, f"{self.scene.scratch.name}/tallyCore/"
        fields, password = transport.rsplit(":", 1)
        self.screen.until("the logger gets no key", lambda: "::2" in self.read("found.ini"))
        self.assertEqual(self.read("found.ini"),
                         f"1tallyCoreSettings={fields},{schedules}1,0,0,{folder},1,{password},,Unknown,::2,,,0,"
                         + "," * 12 + "10,\r\n")

    def store(self, panel):
        """Ok in the dialog, and in the panel that it opens."""
        self.answer(ADD, "alt+k")
        self.answer(panel, "alt+o")

    def reach(self, linked, name):
        program = self.start()
        self.open_terminal(linked)
        self.ask_in_terminal(linked, name)
        self.answer(linked, "alt+F4")
        self.end(program)

    def test_a_logger_on_a_com_port(self):
        program = self.first_start()
        self.press(OPTIONS, "alt+d")
        self.press(ADD, *model("KR40"), "alt+s", Typed("S1"), "alt+w", Typed("pw"), *com_way(1, "57600"), "alt+t")
        self.box(SEARCH_BOX, "Found a KR40 connected to Com Port 4 @ 57600,N,8,1,NOFC.     ")
        self.store("KR40 tallyCore on Com 4 @ 57600,None,8,1,NOFC$")
        self.end(program)
        self.check_record("4,KR40,S1,57600,None,8,1,NOFC:pw")
        self.reach("Connected to the KR40 on Com 4$", "logger 2")
        self.check_record("4,KR40,S1,57600,None,8,1,NOFC:pw")
        self.assertEqual(self.scene.heard("logger 1"), "")

    def test_a_logger_on_tcp(self):
        host, port = self.scene.address(3)
        program = self.first_start()
        self.press(OPTIONS, "alt+d")
        self.press(ADD, *model("KR400"), *network_way(host, port), "alt+t")
        self.box(SEARCH_BOX, f"Found a KR400 at IP address {host} on TCP port {port}.     ")
        self.store(f"KR400 tallyCore at {host}:{port}$")
        self.end(program)
        self.check_record(f"{host}:{port},KR400,none,,,,,:")
        self.reach(f"Connected to the KR400 at {host}:{port}$", "logger 3")
        self.check_record(f"{host}:{port},KR400,none,,,,,:")

    def test_a_logger_behind_the_modem(self):
        """The speed to the modem is stored by changing the logger only: adding puts the data bits in its place."""
        program = self.first_start()
        self.press(OPTIONS, "alt+d")
        self.press(ADD, *model("KR205", 2), *modem_way(2, "555-1234", INIT), "alt+t")
        self.box(SEARCH_BOX, "Found a KR205 Series 2 connected to the Modem on Com Port 5.     ")
        self.screen.window(ADD)
        self.until_heard("modem", "at&h\r\n+++")
        tested = self.scene.heard("modem")
        begun, identified = tested.split("atdt555-1234\r\n")
        self.assertEqual(begun, f"+++ath0\r\nate0v1\r\n{INIT}\r\n")
        self.assertIn("TEST0\r\n", identified)

        self.press(ADD, "alt+e")
        self.box(BOX, "Modem Successfully Reset.     ")
        self.screen.window(ADD)
        self.until_heard("modem", "at&h\r\n+++", before=len(tested))
        self.assertEqual(self.scene.heard("modem")[len(tested):], f"+++at\r\n{INIT}\r\nat&h\r\n+++")

        panel = "KR205 Series 2 .*on Com 5$"
        self.store(panel)
        self.check_record(f"5,KR205 Series 2,none,555-1234,{INIT},8,,:")
        self.press(OPTIONS, "alt+v")
        self.press(panel, "alt+s")
        self.answer(CHANGE, "alt+k")
        self.answer(panel, "Escape")
        self.end(program)
        self.check_record(f"5,KR205 Series 2,none,555-1234,{INIT},9600,,:")
        self.reach("Connected to the KR205 Series 2 via the Modem on Com 5$", "number 555-1234")
        self.check_record(f"5,KR205 Series 2,none,555-1234,{INIT},9600,,:")
        self.assertEqual(self.scene.heard("number 556"), "")


if __name__ == "__main__":
    unittest.main()
