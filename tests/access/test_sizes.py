"""Windows in large type: everything stays inside its window, and the windows inside a small screen."""

import os
import unittest

import rules
from access_case import BOX, OPTIONS, AccessCase

PANEL = "^ ?KR400 on Com 9 @"
ADD = "^ ?Add a tallyCore$"
SMALL_SCREEN = (1366, 768 - 40)  # less a title bar and a task bar
SHOWN = rules.CONTROLS | {"label", "panel", "progress bar"}


def parts_of(window):
    """Controls, labels and groups, but for what stands on a page that scrolls."""
    return [node for node in window.walk()
            if node.role in SHOWN and rules.is_own(node) and not any(map(rules.is_scrolled, node.path()[:-1]))]


def outside(window):
    """What sticks out of the window or of the group that it stands in."""
    for node in parts_of(window):
        for around in (window, *rules.groups(node)):
            left, top, right, bottom = around.place
            if node.place[0] < left or node.place[1] < top or node.place[2] > right or node.place[3] > bottom:
                yield f"{node} at {node.place} sticks out of {around} at {around.place}"


def overlapping(window):
    """Controls and labels that cover each other."""
    parts = [node for node in parts_of(window) if node.role != "panel" and node.name]
    for i, one in enumerate(parts):
        for other in parts[i + 1:]:
            if one in other.path() or other in one.path():
                continue
            left, top = max(one.place[0], other.place[0]), max(one.place[1], other.place[1])
            if left < min(one.place[2], other.place[2]) and top < min(one.place[3], other.place[3]):
                yield f"{one} at {one.place} covers {other} at {other.place}"


class Sizes(AccessCase):
    def fits(self, title):
        window = self.settled(title)
        left, top, right, bottom = window.place
        found = [*outside(window), *overlapping(window)]
        if right - left > SMALL_SCREEN[0] or bottom - top > SMALL_SCREEN[1]:
            found.append(f"{right - left} x {bottom - top}")
        self.assertEqual(found, [], f"in {window}")

    def set_font(self, points):
        """What the user of a desktop sets; the program follows it as it follows the desktop's colours."""
        self.scene.environment.update(XDG_CURRENT_DESKTOP="KDE", KDE_SESSION_VERSION="5", QT_QPA_PLATFORMTHEME="kde")
        os.makedirs(self.scene.environment["XDG_CONFIG_HOME"], exist_ok=True)
        with open(os.path.join(self.scene.environment["XDG_CONFIG_HOME"], "kdeglobals"), "w", encoding="utf-8") as file:
            file.write(f"[General]\nfont=DejaVu Sans,{points},-1,5,50,0,0,0,0,0\n[KDE]\nwidgetStyle=fusion\n")

    def walk_windows(self, points):
        self.set_font(points)
        program = self.start()
        with self.subTest(points=points, window="question"):
            self.fits(BOX)
        self.closes(BOX)
        self.closes(OPTIONS)
        program.wait()
        self.assertEqual(self.scene.run("add", "--model", "KR400", "--com", "9", "--baud", "57600")[0], 0)
        self.assertEqual(self.scene.run("set", "1", "LoggerDescription=Weir_3", "LoggerMdbOn=1")[0], 0)
        program = self.start()
        self.turn(OPTIONS, points, ("alt+e", "Email"), ("alt+f", "FTP"), ("alt+o", "Options"), ("alt+a", "About"),
                  ("alt+t", "tallyCores"))
        self.press(OPTIONS, "alt+n", "Home", "alt+v")
        self.turn(PANEL, points, ("alt+t", "tallyCore Details"), ("alt+l", "Load Options"), ("alt+u", "Unload Options"))
        for key, editor in (("alt+i", "Edit Table Names"), ("alt+s", "Email List for the"), ("alt+r", "Run a Program"),
                            ("alt+c", "Send a tallyCore Command")):
            self.press(PANEL, key)
            with self.subTest(points=points, window=editor):
                self.fits(editor)
            self.closes(editor)
        self.closes(PANEL)
        self.press(OPTIONS, "alt+d")
        for key, way in (("alt+d", "Modem"), ("alt+i", "TCP/IP"), ("alt+r", "Com Port")):
            self.press(ADD, key)
            self.reader.until(f"{key} does not show {way}", lambda way=way: self.reader.window(ADD).find("panel", way))
            with self.subTest(points=points, window=way):
                self.fits(ADD)
        self.closes(ADD)
        self.closes(OPTIONS)
        program.wait()

    def turn(self, title, points, *tabs):
        for key, name in tabs:
            self.press(title, key)
            self.reader.until(f"{key} does not show {name}",
                              lambda name=name: self.tabs_of(self.reader.window(title)).name == name)
            with self.subTest(points=points, window=name):
                self.fits(title)

    def test_type_of_9_points(self):
        self.walk_windows(9)

    def test_type_of_14_points(self):
        self.walk_windows(14)

    def test_type_of_18_points(self):
        self.walk_windows(18)


if __name__ == "__main__":
    unittest.main()
