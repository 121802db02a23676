"""A test that looks at the program's windows as a screen reader does and drives them by keys alone."""

import os
import re
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "system"))

import rules  # noqa: E402
from panel_keys import OPTIONS, PanelCase, Typed  # noqa: E402,F401
from screen_reader import GONE, ScreenReader, states_of  # noqa: E402

BOX = "^ ?tallyCore Harvel$"


class AccessCase(PanelCase):
    program_name = "harvelop"

    def setUp(self):
        super().setUp()
        self.scene.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        self.reader = self.enterContext(ScreenReader(self.program_name))

    def shown(self, title):
        """The window with this title, which then has the focus."""
        self.screen.window(title)
        self.press(title)
        return self.reader.window(title)

    def settled(self, title):
        """The window with this title, once two looks at it give the same."""
        def shape(window):
            return [(node.role, node.name, node.states, node.place) for node in window.walk()]

        last = self.shown(title)

        def same():
            nonlocal last
            before, last = last, self.reader.window(title)
            return last if shape(before) == shape(last) else None
        return self.reader.until(f"{title} does not come to rest", same)

    def look(self, title):
        """Looks at a window by all rules, and walks it with the Tab key, forward and back: the window as it was read."""
        window = self.settled(title)
        found = rules.complaints(window)
        stops = rules.stops(window)
        if len(stops) == 1:
            self.assertIs(self.focused_control(window), stops[0])
        elif stops:
            for key, order in (("Tab", 1), ("shift+Tab", -1)):
                found += rules.complaints_of_round(window, self.round(title, window, key)[::order])
        self.assertEqual(found, [], f"in {window}:\n" + "\n".join(found))
        return window

    def control_of(self, window, origin):
        """The control of a window that a part belongs to, as the screen reader names it in an event."""
        known = {node.origin: node for node in window.walk()}
        own = set(map(id, rules.controls(window)))
        while origin is not None:
            node = known.get(origin)
            while node is not None:
                if id(node) in own:
                    return node
                node = node.parent
            try:
                origin = origin.parent
            except GONE:
                return None
        return None

    def next_stop(self, title, window, here, key):
        """Presses a key that moves the focus; the control that has it then."""
        def moved(kind, origin, _):
            control = self.control_of(window, origin) if kind.startswith("object:state-changed:focused") else None
            return control if control is not None and control is not here else None
        self.press(title, key)
        return self.reader.hear(lambda: f"{key} does not leave {here} in {window}", moved)

    def focused_control(self, window):
        """The control that has the focus now, or None. Of its parts, the chosen entry or tab always says so."""
        return next((node for node in rules.controls(window) if "focused" in self.states(node)), None)

    def round(self, title, window, key):
        """The controls that the key goes through until it comes back to the first of them, in that order."""
        self.reader.forget()
        first = self.next_stop(title, window, self.focused_control(window), key)
        visited = [first]
        while len(visited) <= 2 * len(rules.stops(window)):
            here = self.next_stop(title, window, visited[-1], key)
            if here is first:
                return visited
            visited.append(here)
        self.fail(f"{key} does not come back to {first} in {window}: {[str(node) for node in visited]}")

    def go_to(self, title, window, control):
        """Brings the focus to a control by the Tab key."""
        self.reader.forget()
        here = self.focused_control(window)
        for _ in range(2 * len(rules.stops(window))):
            if here is control:
                return
            here = self.next_stop(title, window, here, "Tab")
        self.fail(f"Tab does not lead to {control} in {window}")

    def mnemonics_reach_their_fields(self, title, window):
        """Presses the mnemonic of each field: it then has the focus."""
        for node in rules.controls(window):
            if node.role not in rules.FIELDS or not rules.is_stop(node) or not node.keys:
                continue
            key = node.keys[0].lower()
            self.press(title, "Tab")
            self.press(title, key)
            self.reader.until(f"{key} does not lead to {node}", lambda: "focused" in self.states(node))

    @staticmethod
    def states(node):
        """The states of a part as they are now."""
        return states_of(node.origin)

    @staticmethod
    def tabs_of(window):
        """The tabs of a window, which go by the name of the one in front."""
        return next(node for node in window.walk() if node.role == "page tab list")

    def closes(self, title, key="Escape"):
        self.press(title, key)
        self.screen.gone(title)


def matches(text):
    return "^ ?" + re.escape(text) + "$"
