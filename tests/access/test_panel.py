"""The panel of a logger, of both families, as a screen reader sees it."""

import unittest

import rules
from access_case import OPTIONS, AccessCase

TABS = (("alt+t", "tallyCore Details"), ("alt+l", "Load Options"), ("alt+u", "Unload Options"))


class Panel(AccessCase):
    def view(self, model, port):
        """Opens the panel of a new logger: the title of its window."""
        self.assertEqual(self.scene.run("add", "--model", model, "--com", port, "--baud", "9600")[0], 0)
        self.program = self.start()
        self.press(OPTIONS, "alt+n", "Home", "alt+v")
        title = f"^ ?{model}.* on Com {port} @"
        self.screen.window(title)
        return title

    def tab(self, title, key, name):
        self.press(title, key)

        self.reader.until(f"{key} does not show {name}", lambda: name == self.tabs_of(
            self.reader.window(title)).name)

    def every_tab(self, model, port):
        title = self.view(model, port)
        for key, name in TABS:
            with self.subTest(tab=name):
                self.tab(title, key, name)
                window = self.look(title)
                self.assertEqual(window.role, "dialog")
                self.mnemonics_reach_their_fields(title, window)
        self.closes(title)
        self.end(self.program)

    def test_every_tab_of_the_newer_family(self):
        self.every_tab("KR400", "9")

    def test_every_tab_of_the_older_family(self):
        self.every_tab("KR215", "3")

    def test_the_schedules_name_row_and_column(self):
        title = self.view("KR400", "9")
        self.tab(title, "alt+u", "Unload Options")
        grid = self.settled(title).find("panel", "Schedules")
        names = [node.name for node in rules.controls(grid)]
        self.assertEqual(names[:4], ["All schedules, On", "All schedules, ULAST", "All schedules, CSV",
                                     "All schedules, HTML"])
        rows = [[f"Schedule {letter}", *(f"Schedule {letter}, {column}" for column in ("ULAST", "CSV", "HTML", "records"))]
                for letter in "ABCDEFGHIJKX"]
        self.assertEqual(names[4:], [name for row in rows for name in row])

    def test_a_grid_with_all_its_rows_in_use_is_walked_in_order(self):
        title = self.view("KR215", "3")
        self.tab(title, "alt+u", "Unload Options")
        window = self.settled(title)
        self.go_to(title, window, window.find("push button", "All schedules, HTML"))
        self.press(title, "space")
        self.reader.until("the records stay locked", lambda: rules.is_enabled(
            self.reader.window(title).find("text", "Schedule X, records")))
        self.look(title)

    def test_a_change_is_told(self):
        title = self.view("KR215", "3")
        self.tab(title, "alt+u", "Unload Options")
        window = self.settled(title)
        box = window.find("check box", "Schedule A")
        self.go_to(title, window, box)
        self.press(title, "space")
        self.reader.until("the box is not checked", lambda: "checked" in self.states(box))
        self.reader.until("Apply stays locked", lambda: rules.is_enabled(
            self.reader.window(title).find("push button", "Apply")))

    def test_enter_is_ok(self):
        title = self.view("KR215", "3")
        self.tab(title, "alt+u", "Unload Options")
        self.press(title, "alt+p")
        self.screen.tool("type", "Weir_3")
        self.closes(title, "Return")
        self.assertIn("Weir_3", self.read("found.ini"))


if __name__ == "__main__":
    unittest.main()
