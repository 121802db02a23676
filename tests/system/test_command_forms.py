"""Commands to a logger by command line, from a shell and from a desktop shortcut: `::n %text` and `::n %text%`."""

import os
import subprocess
import unittest

from panel_keys import OPTIONS, Typed
from programs import BIN
from test_window import WAIT
from ways import BOX, WaysCase

SENT = "Command successfully sent to the tallyCore.     "
ICON = "^ ?Create Icon$"


class CommandForms(WaysCase):
    simulated = [{"com": 4, "model": "KR40", "port": "pty", "baud": 9600}, {"model": "KR45", "port": "tcp:0"}]
    modem = {"com": 5, "baud": 9600, "connect": 200, "phoneBook": {"555": {"model": "KR400"}}}

    def setUp(self):
        super().setUp()
        host, port = self.scene.address(2)
        # The first fields of a record, its description and its key, where the terminal's caption says it leads, and
        # which simulated device is there.
        self.ways = {
            "com": ("4,KR40,none,9600,None,8,1,NOFC", "Com", "::7", "KR40 on Com 4", "logger 1"),
            "modem": ("5,KR400,none,555,ats0,9600,,", "Modem", "::8", "KR400 via the Modem on Com 5", "number 555"),
            "tcp": (f"{host}:{port},KR45,none,,,,,", "Network", "::9", f"KR45 at {host}:{port}", "logger 2")}
        lines = [f"{number}tallyCoreSettings={fields}," + "0," * 60 + f"1,0,0,/tmp/,1,,{name},,{key},,,0," + "," * 12
                 + "10,\r\n" for number, (fields, name, key, *_) in enumerate(self.ways.values(), 1)]
        with open(self.scene.path("found.ini"), "w", encoding="utf-8") as file:
            file.write("".join(lines))

    def ended(self, program):
        _, error = program.communicate(timeout=WAIT)
        self.assertEqual((program.returncode, error), (0, ""))

    def send_and_end(self, way):
        _, _, key, _, name = self.ways[way]
        program = self.start(key, "%TEST0")
        self.box(BOX, SENT)
        self.ended(program)
        heard = self.scene.heard(name)
        self.assertEqual(heard.count("TEST0\r\n"), 2)  # to identify the logger, and the command

    def send_and_stay(self, way):
        """Ends by closing the terminal."""
        _, _, _, description, name = self.ways[way]
        linked = f"Connected to the {description}$"
        self.screen.window(linked)
        self.box(BOX, SENT)
        self.screen.until("the answer does not show", lambda: "T,tallyCore" in self.received(linked))
        self.assertEqual(self.scene.heard(name).count("TEST0\r\n"), 2)
        self.ask_in_terminal(linked, name)
        self.answer(linked, "alt+F4")

    def test_a_command_on_the_com_port_ends(self):
        self.send_and_end("com")

    def test_a_command_through_the_modem_ends(self):
        self.send_and_end("modem")

    def test_a_command_over_the_network_ends(self):
        self.send_and_end("tcp")

    def test_a_command_in_the_terminal_stays_on_every_way(self):
        for way, (_, _, key, *_) in self.ways.items():
            with self.subTest(way=way):
                program = self.start(key, "%TEST0%")
                self.send_and_stay(way)
                self.ended(program)

    def test_nothing_between_the_signs_opens_the_terminal_and_sends_nothing(self):
        linked = f"Connected to the {self.ways['tcp'][3]}$"
        for text in ("%", "%%"):
            with self.subTest(text=text):
                heard = len(self.scene.heard("logger 2"))
                program = self.start("::9", text)
                self.screen.window(linked)
                self.ask_in_terminal(linked, "logger 2")
                self.answer(linked, "alt+F4")
                self.ended(program)
                # The identification ends so, and what was typed comes next.
                self.assertRegex(self.scene.heard("logger 2")[heard:], "/h/R/U/N\r\n\r\nTEST0\r\n$")

    def launch(self, name):
        """Starts a shortcut as a desktop does; there is no session bus."""
        environment = dict(self.scene.environment, DBUS_SESSION_BUS_ADDRESS="disabled:", DISPLAY=self.screen.display,
                           QT_QPA_PLATFORM="xcb")
        file = os.path.join(self.scene.scratch.name, "Desktop", name)
        run = subprocess.run(["gio", "launch", file], cwd="/", env=environment, stdin=subprocess.DEVNULL,
                             stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False, timeout=WAIT)
        self.assertEqual(run.returncode, 0)

    def runs(self):
        """Whether a program works in the application directory."""
        def where(process):
            try:
                return os.readlink(f"/proc/{process}/cwd")
            except OSError:
                return ""
        return any(where(process) == self.scene.directory for process in os.listdir("/proc") if process.isdigit())

    def make_shortcut(self, place, title, name, *more):
        self.press(OPTIONS, "alt+n", "Home", *["Down"] * place, "alt+v")
        self.press(title, "alt+i")
        self.screen.window(ICON)
        self.press(ICON, *([Typed(name)] if name else []), "Tab", "space", "Tab", Typed("TEST0"), *more, "Return")
        self.screen.gone(ICON)
        self.answer(title, "Escape")

    def test_shortcuts_do_the_same(self):
        """The program stands in for the one that shortcuts start: both take the same command lines."""
        os.symlink(os.path.join(BIN, "harvelop"), self.scene.path("harvel"))
        program = self.start()
        titles = [fields.split(",")[1] + " .*(Com|at) .*" for fields, *_ in self.ways.values()]
        for place, title in enumerate(titles):
            self.make_shortcut(place, title, "", "Tab", "space")
        self.make_shortcut(2, titles[2], "Only send")
        self.end(program)
        for way, (_, name, *_) in self.ways.items():
            with self.subTest(way=way):
                self.launch(f"Send TEST0 to {name}.desktop")
                self.send_and_stay(way)
                self.screen.until("the program stays", lambda: not self.runs())
        heard = self.scene.heard("logger 2")
        self.launch("Only send.desktop")
        self.box(BOX, SENT)
        self.screen.until("the program stays", lambda: not self.runs())
        self.assertEqual(self.scene.heard("logger 2")[len(heard):].count("TEST0\r\n"), 2)


if __name__ == "__main__":
    unittest.main()
