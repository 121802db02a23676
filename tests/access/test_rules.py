"""The rules themselves: each finds its fault in windows that are made of plain values."""

import unittest

import rules
from screen_reader import Node

USABLE = frozenset({"showing", "enabled", "focusable"})


def put(parent, role, name, place=(0, 0, 10, 10), states=USABLE, **more):
    node = Node(role, name, states=states, place=place, parent=parent, **more)
    parent.children.append(node)
    return node


def window():
    return Node("dialog", "A window", place=(0, 0, 100, 100))


class Rules(unittest.TestCase):
    def finds(self, found, count=1):
        found = list(found)
        self.assertEqual(len(found), count, found)

    def test_a_name_is_more_than_a_mark_an_object_name_or_the_tool_tip(self):
        for name, faults in (("", 1), (" ... ", 1), ("12", 1), ("cmdOk", 1), ("txtKR400_3", 1), ("lbl_1", 1), ("Ok", 0),
                             ("Größe", 0), ("kB", 0), ("CMD", 0)):
            with self.subTest(name=name):
                dialog = window()
                put(dialog, "push button", name)
                self.finds(rules.unnamed(dialog), faults)
        dialog = window()
        put(dialog, "text", "The site", description="The site")
        self.finds(rules.unnamed(dialog))

    def test_a_combo_box_goes_by_its_label_and_not_by_the_chosen_entry(self):
        dialog = window()
        put(dialog, "combo box", "KR400")
        put(dialog, "combo box", "KR400", labels=("Model",))
        self.finds(rules.unnamed(dialog))

    def test_the_name_of_a_field_holds_its_label(self):
        dialog = window()
        group = put(dialog, "panel", "Connection", states=frozenset())
        put(group, "text", "Phone number", labels=("Phone", "Connection"))
        put(group, "text", "Address", labels=("Connection",))
        self.finds(rules.mislabelled(dialog), 0)
        put(group, "text", "Telephone", labels=("Number",))
        self.finds(rules.mislabelled(dialog))

    def test_the_same_name_twice_in_a_group_is_ambiguous_and_in_two_groups_is_not(self):
        dialog = window()
        for title in ("File", "Database"):
            put(put(dialog, "panel", title, states=frozenset()), "push button", "Edit")
        self.finds(rules.ambiguous(dialog), 0)
        put(dialog.children[0], "push button", "Edit")
        self.finds(rules.ambiguous(dialog))

    def test_what_is_disabled_gives_a_reason(self):
        dialog = window()
        put(dialog, "push button", "Apply", states=frozenset({"showing"}))
        put(dialog, "push button", "Ok", states=frozenset({"showing"}), description="Nothing is chosen.")
        self.finds(rules.unexplained(dialog))

    def test_a_mnemonic_on_two_enabled_controls_clashes(self):
        dialog = window()
        put(dialog, "push button", "Apply", keys=("Alt+A",))
        put(dialog, "push button", "All", keys=("Alt+A",), states=frozenset({"showing"}))
        self.finds(rules.clashing_keys(dialog), 0)
        tabs = put(dialog, "page tab list", "About")
        put(tabs, "page tab", "About", keys=("Alt+A",))
        self.finds(rules.clashing_keys(dialog))

    def test_a_round_that_leaves_a_stop_out_doubles_one_or_comes_to_a_label_is_told(self):
        dialog = window()
        one, two = (put(dialog, "push button", name) for name in ("One", "Two"))
        label = put(dialog, "label", "A label")
        self.finds(rules.missed(dialog, [one, two]), 0)
        self.finds(rules.missed(dialog, [one]))
        self.finds(rules.missed(dialog, [one, two, one]))
        self.finds(rules.missed(dialog, [one, label, two]))

    def test_any_one_radio_button_stands_for_its_group_and_two_are_one_too_many(self):
        dialog = window()
        group = put(dialog, "panel", "Connection", states=frozenset())
        first, last = (put(group, "radio button", name) for name in ("RS232", "Modem"))
        self.finds(rules.missed(dialog, [first]), 0)
        self.finds(rules.missed(dialog, [last]), 0)
        self.finds(rules.missed(dialog, []))
        self.finds(rules.missed(dialog, [first, last]))

    def test_rows_and_columns_are_in_order_and_a_leap_back_is_not(self):
        places = [(0, 0, 10, 10), (20, 0, 30, 10), (0, 20, 10, 30), (20, 20, 30, 30)]
        dialog = window()
        first, second, third, last = (put(dialog, "push button", str(place), place) for place in places)
        self.finds(rules.disordered([first, second, third, last]), 0)
        self.finds(rules.disordered([third, last, first, second]), 0)  # wherever the round begins
        self.finds(rules.disordered([first, third, second, last]), 0)  # column by column
        self.finds(rules.disordered([first, last, second, third]))
        self.finds(rules.disordered([last, third, second, first]))

    def test_groups_are_compared_as_wholes(self):
        dialog = window()
        left = put(dialog, "panel", "Left", (0, 0, 40, 90), frozenset())
        right = put(dialog, "panel", "Right", (50, 0, 90, 90), frozenset())
        low = put(left, "push button", "Low", (0, 70, 10, 80))
        high = put(right, "push button", "High", (50, 10, 60, 20))
        end = put(dialog, "push button", "Ok", (80, 92, 90, 98))
        self.finds(rules.disordered([low, high, end]), 0)
        self.finds(rules.disordered([high, low, end]))

    def test_a_group_that_is_entered_twice_is_torn(self):
        dialog = window()
        group = put(dialog, "panel", "Schedules", states=frozenset())
        one, two = (put(group, "check box", name) for name in "AB")
        other = put(dialog, "push button", "Ok")
        self.finds(rules.torn([one, two, other]), 0)
        self.finds(rules.torn([two, other, one]), 0)
        third = put(dialog, "push button", "Cancel")
        self.finds(rules.torn([one, other, two, third]))


if __name__ == "__main__":
    unittest.main()
