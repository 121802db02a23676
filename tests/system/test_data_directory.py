"""A start from a place where nobody can write."""

import os
import subprocess
import unittest

from programs import BIN, Scene
from test_window import WAIT, Screen

NOBODYS = "/proc"  # no file can be made there, whoever tries
QUESTION = "^ ?tallyCore Harvel$"
OPTIONS = "tallyCore Harvel Options$"


def start(scene, screen):
    environment = dict(scene.environment, DISPLAY=screen.display, QT_QPA_PLATFORM="xcb",
                       XDG_DATA_HOME=os.path.join(scene.scratch.name, "data"))
    return subprocess.Popen([os.path.join(BIN, "harvelop")], cwd=NOBODYS, env=environment, stdin=subprocess.DEVNULL,
                            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)


class DataDirectory(unittest.TestCase):
    def end(self, process):
        _, error = process.communicate(timeout=WAIT)
        return process.returncode, error

    def test_the_offered_folder_is_made_and_found_again(self):
        with Screen() as screen, Scene() as scene:
            own = os.path.join(scene.scratch.name, "data", "harvelop")
            program = start(scene, screen)
            screen.press(QUESTION, "alt+y")  # yes, a folder of my own
            screen.until("no folder", lambda: os.path.exists(os.path.join(own, "options.ini")))
            screen.press(QUESTION, "alt+n")  # no, do not search
            screen.window(OPTIONS)
            self.assertEqual(os.readlink(f"/proc/{program.pid}/cwd"), own)
            screen.press(OPTIONS, "alt+F4")
            code, error = self.end(program)
            self.assertEqual(code, 0)
            self.assertEqual(error.count("\n"), 1)
            self.assertIn("/proc/install.ini can't be written", error)
            with open(os.path.join(own, "install.ini"), encoding="utf-8") as file:
                first_set_up = file.read()
            with open(os.path.join(own, "found.ini"), "w", encoding="utf-8") as file:
                file.write("1tallyCoreSettings=3,KR41,000041,9600,N,8,1,SWFC," + "0," * 60 + "1,0,0,/tmp/,0,,,,::7,"
                           + "," * 15 + "10,\r\n")

            program = start(scene, screen)  # once more: nothing is asked, and the logger is there
            screen.press(OPTIONS, "alt+v")
            screen.press("KR41 on Com 3 @ 9600,N,8,1,SWFC", "Escape")
            screen.press(OPTIONS, "alt+F4")
            self.assertEqual(self.end(program), (0, ""))
            with open(os.path.join(own, "install.ini"), encoding="utf-8") as file:
                self.assertEqual(file.read(), first_set_up)

    def test_who_declines_leaves_nothing_behind(self):
        with Screen() as screen, Scene() as scene:
            program = start(scene, screen)
            screen.press(QUESTION, "Escape")
            self.assertEqual(self.end(program)[0], 1)
            self.assertEqual(sorted(os.listdir(scene.scratch.name)), ["loggers", "runtime"])

    def test_the_command_line_says_where_it_could_work(self):
        with Scene() as scene:
            run = subprocess.run([os.path.join(BIN, "harvelctl"), "find", "--all"], cwd=NOBODYS, env=scene.environment,
                                 stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False, timeout=WAIT)
            self.assertEqual((run.returncode, run.stdout), (1, ""))
            self.assertIn("Nothing can be kept in /proc. Name another directory with --dir.\n", run.stderr)


if __name__ == "__main__":
    unittest.main()
