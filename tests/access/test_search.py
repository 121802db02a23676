"""The progress of a search and the question for a password, as a screen reader sees them."""

import re
import unittest

from access_case import BOX, AccessCase

LOGGER = {"com": 3, "model": "KR305", "series": "3", "version": "7.07", "baud": 1200, "password": "GREENHOUSE"}
PROGRESS = "<- Trying Com 3"
PASSWORD = "^ ?Harvel$"


class Search(AccessCase):
    simulated = [LOGGER]

    def test_the_progress_is_a_window_with_a_value_and_its_steps_are_told(self):
        self.start()
        self.press(BOX, "Return")
        window = self.reader.window(PROGRESS)
        self.assertEqual(window.role, "frame")
        bar = next(node for node in window.walk() if node.role == "progress bar")
        self.assertEqual(bar.name, "Progress of the work in hand")
        value = bar.origin.queryValue()
        self.assertLess(value.minimumValue, value.maximumValue)
        self.assertGreaterEqual(value.currentValue, value.minimumValue)
        self.reader.forget()
        told = set()

        def step(kind, origin, _):
            if kind.startswith("object:property-change:accessible-value"):
                told.add("value")
            elif kind.startswith("object:property-change:accessible-name") and re.search(PROGRESS, origin.name):
                told.add("name")
            return told >= {"value", "name"}
        self.reader.hear(lambda: f"of a step only {told} is told", step)

    def test_the_question_for_the_password(self):
        self.start()
        self.press(BOX, "Return")
        window = self.look(PASSWORD)
        self.assertEqual(window.role, "dialog")
        field = next(node for node in window.walk() if node.role == "password text")
        self.assertIn("assword", field.name)
        self.assertIn("focused", field.states)
        self.closes(PASSWORD)


if __name__ == "__main__":
    unittest.main()
