"""What a screen reader is told of the program: its windows as trees of plain values, and where the focus goes."""

import re
import time
from dataclasses import dataclass, field

import pyatspi
from gi.repository import Atspi, GLib

WAIT = 60  # seconds until something that must happen counts as missing
GONE = (GLib.Error, LookupError, RuntimeError)  # what asking about something that has just gone may raise


@dataclass
class Node:
    """One part of a window, as it was when it was looked at."""

    role: str = ""
    name: str = ""
    description: str = ""
    states: frozenset = frozenset()
    place: tuple = (0, 0, 0, 0)  # left, top, right, bottom
    keys: tuple = ()  # the mnemonics that lead here, such as "Alt+K"
    labels: tuple = ()  # the names of what labels it
    children: list = field(default_factory=list)
    parent: "Node" = None
    origin: object = None  # what the screen reader holds of it

    def walk(self):
        yield self
        for child in self.children:
            yield from child.walk()

    def path(self):
        """The node and all that it lies in, from the window down."""
        return (self.parent.path() if self.parent else []) + [self]

    def find(self, role, name):
        """The one part with that role and name."""
        found = [node for node in self.walk() if (node.role, node.name) == (role, name)]
        if len(found) != 1:
            raise LookupError(f"{len(found)} of {role} {name!r} in {self}")
        return found[0]

    def __str__(self):
        return f"{self.role} {self.name!r}"


def states_of(accessible):
    accessible.clear_cache()
    return frozenset(pyatspi.stateToString(state) for state in accessible.getState().getStates())


def _keys(accessible):
    try:
        action = accessible.queryAction()
        bound = {action.getKeyBinding(i).title() for i in range(action.nActions)}
    except NotImplementedError:
        return ()
    return tuple(sorted(key for key in bound if key.startswith("Alt+")))


def read(accessible, parent=None):
    """What shows of a part of the program, or None."""
    states = states_of(accessible)
    if "showing" not in states:
        return None
    extents = accessible.queryComponent().getExtents(Atspi.CoordType.SCREEN)
    labels = [target.name for relation in accessible.getRelationSet()
              if relation.getRelationType() == pyatspi.RELATION_LABELLED_BY
              for target in (relation.getTarget(i) for i in range(relation.getNTargets()))]
    node = Node(accessible.getRoleName(), accessible.name, accessible.description, states,
                (extents.x, extents.y, extents.x + extents.width, extents.y + extents.height), _keys(accessible),
                tuple(labels), [], parent, accessible)
    for i in range(accessible.childCount):
        child = accessible.getChildAtIndex(i)
        seen = read(child, node) if child else None
        if seen:
            node.children.append(seen)
    return node


class ScreenReader:
    """Reads one program, by the name that it goes by, and listens to where its focus goes. Use it in a `with`
    statement."""

    EVENTS = ("object:state-changed:focused", "object:property-change:accessible-name",
              "object:property-change:accessible-value", "object:text-changed")

    def __init__(self, program):
        self.program = program
        self.events = []  # kind, what it befell, and the text or number that came with it

    def __enter__(self):
        self._listener = Atspi.EventListener.new(self._heard)
        for event in self.EVENTS:
            self._listener.register(event)
        return self

    def __exit__(self, *_):
        for event in self.EVENTS:
            self._listener.deregister(event)

    @staticmethod
    def listen():
        """Takes what the program has told so far."""
        while GLib.MainContext.default().iteration(False):
            pass

    def forget(self):
        """Forgets what the program has told so far."""
        self.listen()
        self.events.clear()

    def _heard(self, event):
        self.events.append((event.type, event.source, event.any_data))

    def until(self, failure, done):
        """Serves what the program tells until `done` gives something, and gives that."""
        deadline = time.monotonic() + WAIT
        context = GLib.MainContext.default()
        while True:
            self.listen()
            try:
                result = done()
            except GONE:
                result = None
            if result:
                return result
            if time.monotonic() > deadline:
                raise AssertionError(failure() if callable(failure) else failure)
            wake = GLib.timeout_add(20, lambda: False)
            context.iteration(True)
            if source := context.find_source_by_id(wake):
                source.destroy()

    def application(self):
        desktop = pyatspi.Registry.getDesktop(0)
        desktop.clear_cache()
        for i in range(desktop.childCount):
            application = desktop.getChildAtIndex(i)
            if application and application.name == self.program:
                return application
        return None

    def windows(self):
        application = self.application()
        if not application:
            return []
        application.clear_cache()
        children = (application.getChildAtIndex(i) for i in range(application.childCount))
        return [window for window in children if window and "showing" in states_of(window)]

    def window(self, title):
        """The window whose title the expression matches, as it is now; waits for it."""
        def found():
            return next((read(window) for window in self.windows() if re.search(title, window.name)), None)
        return self.until(lambda: f"no window {title}; there are {[window.name for window in self.windows()]}", found)

    def hear(self, failure, wanted):
        """Waits for an event for which `wanted(kind, origin, data)` gives something, and gives that; what came before
        it is forgotten."""
        def heard():
            while self.events:
                if result := wanted(*self.events.pop(0)):
                    return result
            return None
        return self.until(failure, heard)
