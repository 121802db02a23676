"""What must hold of a window for those who work by keyboard and screen reader. Each rule takes a window as it was read and
gives the complaints, none if all is well."""

import re
from collections import Counter

CONTROLS = {"push button", "toggle button", "check box", "radio button", "combo box", "text", "password text", "list",
            "table", "tree", "spin button", "slider", "page tab list"}
FIELDS = {"combo box", "text", "password text", "list", "spin button"}
# Its prefix and an inner capital give away the name of an object in the code.
OBJECT_NAME = re.compile(r"^(cmd|smd|chk|opt|txt|cbx|lbl|fra|ts|img|pb|frm|qt_)_?[A-Z0-9]|_\d+$")


def is_own(node):
    """Not one of the parts that a control is made of, such as the entries of a list or the field in a spin box."""
    return not any(above.role in CONTROLS for above in node.path()[:-1])


def is_scrolled(node):
    """A page that the arrows scroll. The pages of tabs can take the focus too, but hand it on to the tabs."""
    return (node.role == "filler" and {"focusable", "enabled"} <= node.states
            and not any(child.role == "page tab list" for child in node.children))


def controls(window):
    return [node for node in window.walk() if (node.role in CONTROLS or is_scrolled(node)) and is_own(node)]


def is_enabled(node):
    return "enabled" in node.states


def name_of(node):
    """What a screen reader calls the control. The toolkit gives a combo box the chosen entry as its name, and what it
    is for as its label."""
    return (node.labels[0] if node.labels else "") if node.role == "combo box" else node.name


def groups(node):
    return [above for above in node.path()[:-1] if above.role == "panel" and above.name]


def unnamed(window):
    """Every control has a name that means something: words, not those of the code, not its tool tip."""
    for node in controls(window):
        name = name_of(node)
        if not re.search(r"[^\W\d_]", name) or OBJECT_NAME.search(name):
            yield f"{node} at {node.place} has no name: {name!r}"
        elif name == node.description:
            yield f"{node} has only its tool tip for a name"


def mislabelled(window):
    """A field's name holds the words of the label that leads to it."""
    for node in controls(window):
        inner = [label for label in node.labels if label not in {group.name for group in groups(node)}]
        if node.role in FIELDS and inner and inner[0].strip().lower() not in name_of(node).lower():
            yield f"{node} is labelled {inner[0]!r}"


def ambiguous(window):
    """No two controls of a group go by the same name."""
    seen = Counter((tuple(map(id, groups(node))), node.role, name_of(node)) for node in controls(window))
    for (_, role, name), times in seen.items():
        if times > 1:
            yield f"{times} of {role} {name!r} in one group"


def unexplained(window):
    """What can't be used says why."""
    for node in controls(window):
        if not is_enabled(node) and not node.description:
            yield f"{node} does not say why it can't be used"


def clashing_keys(window):
    """A mnemonic leads to one control."""
    keys = Counter()
    for node in controls(window):
        parts = node.children if node.role == "page tab list" else [node]
        keys.update(key for part in parts if is_enabled(part) for key in part.keys)
    for key, times in keys.items():
        if times > 1:
            yield f"{key} leads to {times} controls"


def is_stop(node):
    return is_enabled(node) and "focusable" in node.states


def stop_of(node):
    """The stop that a control belongs to: the members of a radio group are one, as the arrows lead from one to the
    other; the first that can be used stands for it."""
    if node.role != "radio button":
        return node
    return next((other for other in node.parent.children if other.role == "radio button" and is_stop(other)), node)


def stops(window):
    """What the Tab key has to reach: all that can be used."""
    return [node for node in controls(window) if is_stop(node) and stop_of(node) is node]


def missed(window, visited):
    """One round of the Tab key comes to each stop once, and to nothing else."""
    times = Counter(id(stop_of(node)) for node in visited)
    for node in stops(window):
        if times[id(node)] != 1:
            yield f"{node} at {node.place} is reached {times[id(node)]} times"
    reachable = set(map(id, stops(window)))
    for node in visited:
        if id(stop_of(node)) not in reachable:
            yield f"{node} at {node.place} takes the focus"


def _goes_on(before, after):
    """Whether a reader who has come to one place goes on to the other: to the right or down, never back. To the top of a
    column that stands wholly to the right, and to the left end of a row that stands wholly below."""
    left, top, right, bottom = before
    to_left, to_top, to_right, to_bottom = after
    if to_left >= right:
        return True
    return to_top >= bottom or (to_left >= left and to_top >= top)


def _step(before, after):
    """The places to compare: of the two stops, or of the outermost parts that hold only one of them."""
    ways = list(zip(before.path(), after.path()))
    depth = sum(one is other for one, other in ways)
    outer, inner = before.path()[depth:], after.path()[depth:]
    return (outer or [before])[0].place, (inner or [after])[0].place


def disordered(visited):
    """One round of the Tab key goes on as one reads, with one leap back from the last stop to the first."""
    if len(visited) < 2:
        return
    round_trip = list(zip(visited, visited[1:] + visited[:1]))
    back = [f"from {before} at {before.place} back to {after} at {after.place}" for before, after in round_trip
            if not _goes_on(*_step(before, after))]
    if len(back) > 1:
        yield "the Tab key leaps " + ", ".join(back)


def torn(visited):
    """A group, once entered, is left only when all its stops have been visited."""
    trail = [tuple(map(id, groups(node))) for node in visited]
    names = {id(group): group.name for node in visited for group in groups(node)}
    for group, name in names.items():
        inside = [group in place for place in trail]
        entered = sum(now and not before for before, now in zip([inside[-1], *inside], inside))
        if entered > 1:
            yield f"the group {name!r} is entered {entered} times"


STANDING = (unnamed, mislabelled, ambiguous, unexplained, clashing_keys)


def complaints(window):
    return [complaint for rule in STANDING for complaint in rule(window)]


def complaints_of_round(window, visited):
    return [*missed(window, visited), *disordered(visited), *torn(visited)]
