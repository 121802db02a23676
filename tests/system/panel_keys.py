"""Drives the windows by keys alone: what is typed, and the way through a grid of schedules."""

import os
import unittest

from programs import Scene
from test_window import WAIT, Screen, start_program

OPTIONS = "tallyCore Harvel Options$"
COLUMNS = ("on", "ulast", "csv", "html")


class Typed(str):
    """A text among the keys of `press`."""


class Grid:
    """The schedules of a panel as a user who knows its rules expects them; collects the keys that lead there.

    Begins without any mark, with the focus on what follows the grid. HTML on a row holds its ULAST and CSV on and opens its
    records; Tab passes over what is disabled."""

    def __init__(self, rows):
        self.rows = range(rows)
        self.marks = {column: [False] * rows for column in COLUMNS}
        self.keys = []
        self.place = len(self.stops())

    def stops(self):
        stops = [("heading", column) for column in COLUMNS]
        for row in self.rows:
            held = self.marks["html"][row]
            stops += [(row, "on")] + ([] if held else [(row, "ulast"), (row, "csv")]) + [(row, "html")]
            stops += [(row, "records")] if held else []
        return stops

    def go(self, *stop):
        wanted = self.stops().index(stop)
        self.keys += ["Tab" if wanted > self.place else "shift+Tab"] * abs(wanted - self.place)
        self.place = wanted

    def press_heading(self, column):
        """All rows of a column that is empty."""
        self.go("heading", column)
        self.keys.append("space")
        for marked in (column, "ulast", "csv") if column == "html" else (column,):
            self.marks[marked] = [True for _ in self.rows]

    def mark(self, row, column, wanted):
        if self.marks[column][row] == wanted:
            return
        self.go(row, column)
        self.keys.append("space")
        self.marks[column][row] = wanted
        if column == "html":
            for held in ("ulast", "csv"):
                self.marks[held][row] = self.marks[held][row] or wanted
            self.place = self.stops().index((row, column))

    def type(self, row, text):
        self.go(row, "records")
        self.keys.append(Typed(text))


class PanelCase(unittest.TestCase):
    """A test with a screen, and a scene with the loggers and the modem that a class names."""

    simulated = ()
    modem = None
    maxDiff = None

    def setUp(self):
        self.screen = self.enterContext(Screen())
        self.scene = self.enterContext(Scene(self.simulated, self.modem))

    def press(self, title, *steps):
        """Gives keys and texts to the window with this title; waits for it first."""
        words = []
        for step in steps:
            words += ["type", "--delay", "4", "--args", "1"] if isinstance(step, Typed) else ["key", "--delay", "4"]
            words.append(step)
        pressed = self.screen.tool("windowactivate", "--sync", self.screen.window(title), *words)
        # While it waits for the window to be the active one, there may be none for a moment.
        told = [line for line in pressed.stderr.splitlines() if "[_NET_ACTIVE_WINDOW] failed" not in line]
        self.assertEqual((pressed.returncode, told), (0, []))

    def answer(self, title, *steps):
        """Gives the steps that close the window with this title."""
        self.press(title, *steps)
        self.screen.gone(title)

    def start(self, *words):
        program = start_program(self.scene, self.screen.display, *words)
        self.addCleanup(program.stderr.close)
        self.addCleanup(program.wait)
        self.addCleanup(program.kill)
        return program

    def end(self, program):
        self.press(OPTIONS, "alt+k")
        _, error = program.communicate(timeout=WAIT)
        # What Qt says when a busy accessibility bus is late with an answer is nothing of the program's.
        told = [line for line in error.splitlines() if not line.startswith("QSpiApplication::")]
        self.assertEqual((program.returncode, told), (0, []))

    def open(self, logger):
        """Opens the panel of the logger at that place in the list."""
        self.press(OPTIONS, "alt+n", "Home", *["Down"] * logger.place, "alt+v")
        self.screen.window(logger.title)

    def read(self, name):
        with open(self.scene.path(name), "rb") as file:
            return file.read().decode("utf-8", "surrogateescape")

    def handed_over(self):
        """The lines that the unload program has written since the last call; waits for them."""
        self.screen.until("the unload program was not started", lambda: self.scene.harvel_log()[-1:] == ["==== end"])
        lines = self.scene.harvel_log()
        os.remove(self.scene.path("harvel.Log"))
        return lines
