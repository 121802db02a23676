"""Shortcuts from end to end: made in the program's window, checked and started by the desktop's own tools."""

import os
import subprocess
import unittest

from programs import BIN, Scene
from test_formats import shortcut
from test_window import WAIT, Screen, start_program

TITLE = "KR41 on Com 3 @ 9600,N,8,1,SWFC"
DIALOG = "^ ?Create Icon$"
OPTIONS = "tallyCore Harvel Options$"


def add_logger(scene):
    """Stores a logger with the key ::7 and the description Mill."""
    with open(scene.path("found.ini"), "w", encoding="utf-8") as file:
        file.write("1tallyCoreSettings=3,KR41,000041,9600,N,8,1,SWFC," + "0," * 60 + "1,0,0,/tmp/,0,,Mill,,::7,"
                   + "," * 15 + "10,\r\n")


class Shortcuts(unittest.TestCase):
    def end(self, process):
        _, error = process.communicate(timeout=WAIT)
        return process.returncode, error

    def launch(self, scene, name):
        """Starts a shortcut as a desktop does; there is neither a session bus nor a display."""
        file = os.path.join(scene.scratch.name, "Desktop", name)
        environment = dict(scene.environment, DBUS_SESSION_BUS_ADDRESS="disabled:")
        environment.pop("DISPLAY", None)
        for command in (["desktop-file-validate", file], ["gio", "launch", file]):
            run = subprocess.run(command, cwd="/", env=environment, capture_output=True, text=True, check=False,
                                 timeout=WAIT)
            self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))

    def entry(self, scene, screen):
        """The arguments in the one entry that the unload program has written since the last call."""
        screen.until("the unload program was not started", lambda: scene.harvel_log()[-1:] == ["==== end"])
        lines = [line for line in scene.harvel_log() if line.startswith(("argument", "asks for"))]
        os.remove(scene.path("harvel.Log"))
        return lines

    def test_shortcuts_made_in_the_window_start_the_unload_program(self):
        with Screen() as screen, Scene() as scene:
            add_logger(scene)
            scene.add_harvel()
            program = start_program(scene, screen.display)
            screen.press(OPTIONS, "alt+v")
            screen.press(TITLE, "alt+i")
            screen.press(DIALOG, "Tab", "Down", "space", "Return")
            screen.gone(DIALOG)

            screen.press(TITLE, "alt+i")
            screen.window(DIALOG)
            screen.tool("type", "Start it")
            screen.press(DIALOG, "Tab", "space", "Tab")
            screen.tool("type", "/h/m  G 50% \"$1\" \\")
            screen.press(DIALOG, "Tab", "space", "Return")
            screen.gone(DIALOG)

            screen.press(TITLE, "alt+i")
            screen.press(DIALOG, "Tab", "Down", "space", "Escape")
            screen.gone(DIALOG)

            desktop = os.listdir(os.path.join(scene.scratch.name, "Desktop"))
            self.assertEqual(set(desktop) - {"Harvel.desktop", "Harvel Options.desktop"},
                             {"Mill.desktop", "Start it.desktop"})
            for name in ("Mill.desktop", "Start it.desktop"):
                with open(os.path.join(scene.scratch.name, "Desktop", name), encoding="utf-8") as file:
                    self.assertEqual(file.read(), shortcut(name, scene.directory))
            self.launch(scene, "Mill.desktop")
            self.assertEqual(self.entry(scene, screen),
                             ["arguments: 1", "argument 1 (3 bytes): [::7]", "asks for: the logger ::7"])
            self.launch(scene, "Start it.desktop")
            self.assertEqual(self.entry(scene, screen),
                             ["arguments: 2", "argument 1 (3 bytes): [::7]",
                              "argument 2 (20 bytes): [%/h/m  G 50% \"$1\" \\%]",
                              "asks for: commands to the logger ::7, then stay in the terminal"])
            screen.press(TITLE, "Escape")
            screen.gone(TITLE)
            screen.press(OPTIONS, "Escape")
            self.assertEqual(self.end(program), (0, ""))

    def test_a_key_opens_its_logger_alone_on_the_unload_tab(self):
        with Screen() as screen, Scene() as scene:
            add_logger(scene)
            program = start_program(scene, screen.display, "::7")

            def describe():  # what leads to the description does so on the unload tab alone
                screen.press(TITLE, "alt+p", "ctrl+a")
                screen.tool("type", "Pump")
                screen.press(TITLE, "alt+a")
                with open(scene.path("found.ini"), encoding="utf-8") as file:
                    return ",Pump," in file.read()

            screen.until("the unload tab does not show", describe)
            self.assertEqual(screen.tool("search", "--onlyvisible", "--name", OPTIONS).stdout, "")
            screen.press(TITLE, "Escape")
            self.assertEqual(self.end(program), (0, ""))


if __name__ == "__main__":
    unittest.main()
