"""The program behind windows, on a virtual screen, driven by keys."""

import os
import subprocess
import time
import unittest

from programs import BIN, Scene

WAIT = 60  # seconds until something that must happen counts as missing


class Screen:
    """A virtual X screen with a window manager."""

    def __enter__(self):
        # Without -noreset the screen starts anew, and drops who is connecting, each time that its last client goes.
        # A key held down for long only as the machine is busy must not repeat itself (-r).
        self.server = subprocess.Popen(["Xvfb", "-displayfd", "1", "-screen", "0", "1280x960x24", "-nolisten", "tcp",
                                        "-noreset", "-r"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.display = ":" + self.server.stdout.readline().strip()
        self.manager = subprocess.Popen(["openbox"], env=dict(os.environ, DISPLAY=self.display),
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:  # it would give no focus to a window that is there before it
            self.until("no window manager", lambda: self.tool("get_desktop").returncode == 0)
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in (self.manager, self.server):
            process.terminate()
            process.wait(timeout=30)
        self.server.stdout.close()

    def tool(self, *words):
        return subprocess.run(["xdotool", *words], env=dict(os.environ, DISPLAY=self.display), capture_output=True,
                              text=True, check=False, timeout=WAIT)

    def until(self, failure, done):
        deadline = time.monotonic() + WAIT
        while not done():
            if time.monotonic() > deadline:
                raise AssertionError(failure)
            time.sleep(0.05)

    def window(self, name):
        """The visible window whose title matches; waits for it."""
        deadline = time.monotonic() + WAIT
        while time.monotonic() < deadline:
            found = self.tool("search", "--onlyvisible", "--name", name).stdout.split()
            if found:
                return found[-1]
            time.sleep(0.05)
        raise AssertionError(f"no window {name} shows")

    def gone(self, name):
        deadline = time.monotonic() + WAIT
        while self.tool("search", "--onlyvisible", "--name", name).stdout.split():
            if time.monotonic() > deadline:
                raise AssertionError(f"the window {name} stays")
            time.sleep(0.05)

    def press(self, name, *keys):
        self.tool("windowactivate", "--sync", self.window(name), "key", *keys)


def start_program(scene, display, *words):
    environment = dict(scene.environment, DISPLAY=display, QT_QPA_PLATFORM="xcb")
    return subprocess.Popen([os.path.join(BIN, "harvelop"), *words], cwd=scene.directory, env=environment,
                            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)


class Window(unittest.TestCase):
    def end(self, process):
        _, error = process.communicate(timeout=WAIT)
        return process.returncode, error

    def test_a_first_start_finds_shows_keeps_and_deletes_a_logger(self):
        logger = {"com": 4, "model": "KR40", "version": "5.06.0001", "serial": "012345", "port": "pty", "baud": 115200}
        with Screen() as screen, Scene([logger]) as scene:
            program = start_program(scene, screen.display)
            screen.press("^ ?tallyCore Harvel$", "Return")  # yes, search now
            screen.window("<- Trying Com 4 : 115200 baud")
            screen.press("KR40 on Com 4 @ 115200,N,8,1,SWFC", "Escape")
            screen.gone("KR40 on Com 4")
            screen.window("tallyCore Harvel Options$")
            screen.press("tallyCore Harvel Options", "Escape")
            self.assertEqual(self.end(program)[0], 0)
            self.assertEqual([(e["model"], e["serial"], e["baud"]) for e in scene.list()],
                             [("KR40", "012345", "115200")])
            with open(scene.path("options.ini"), encoding="utf-8") as file:
                self.assertIn("AvailablePorts=4,\n", file.read())
            desktop = os.listdir(os.path.join(scene.scratch.name, "Desktop"))
            self.assertEqual(sorted(desktop), ["Harvel Options.desktop", "Harvel.desktop"])

            program = start_program(scene, screen.display)  # once more: it is still there, and goes when deleted
            screen.window("tallyCore Harvel Options$")
            screen.press("tallyCore Harvel Options", "alt+l")
            screen.press("^ ?tallyCore Harvel$", "alt+y")
            screen.gone("^ ?tallyCore Harvel$")
            screen.press("tallyCore Harvel Options", "alt+k")
            self.assertEqual(self.end(program)[0], 0)
            self.assertEqual(scene.list(), [])

    def test_the_first_question_of_a_start_has_the_focus(self):
        with Screen() as screen, Scene() as scene:
            program = start_program(scene, screen.display)
            question = screen.window("^ ?tallyCore Harvel$")
            screen.until("no focus", lambda: screen.tool("getwindowfocus").stdout.split() == [question])
            screen.tool("key", "Return")
            screen.window("tallyCore Harvel Options$")
            screen.press("tallyCore Harvel Options", "alt+F4")
            self.assertEqual(self.end(program)[0], 0)

    def test_a_shortcut_of_a_deleted_logger_ends_silently(self):
        with Screen() as screen, Scene() as scene:
            for command in ("::9", "::9 %G", "::9 /tmp/x.dxc"):
                with self.subTest(command=command):
                    self.assertEqual(self.end(start_program(scene, screen.display, *command.split(" ", 1))), (0, ""))

    def test_a_key_opens_its_logger_alone_and_closing_it_ends_the_program(self):
        with Screen() as screen, Scene() as scene:
            with open(scene.path("found.ini"), "w", encoding="utf-8") as file:
                file.write("1tallyCoreSettings=3,KR41,000041,9600,N,8,1,SWFC," + "0," * 60 + "1,0,0,/tmp/,0,,,,::7,"
                           + "," * 15 + "10,\r\n")
            program = start_program(scene, screen.display, "::7")
            screen.press("KR41 on Com 3 @ 9600,N,8,1,SWFC", "Escape")
            self.assertEqual(self.end(program)[0], 0)
            self.assertEqual([e["model"] for e in scene.list()], ["KR41"])

    def test_closing_the_window_in_the_middle_of_a_search_ends_the_program(self):
        logger = {"com": 2, "model": "KR40", "port": "pty", "baud": 1200}
        with Screen() as screen, Scene([logger]) as scene:
            program = start_program(scene, screen.display)
            screen.press("^ ?tallyCore Harvel$", "Return")
            screen.window("<- Trying Com 2 : 57600 baud")
            screen.press("tallyCore Harvel Options", "alt+F4")
            self.assertEqual(self.end(program), (0, ""))
            self.assertEqual(scene.list(), [])


if __name__ == "__main__":
    unittest.main()
