#!/usr/bin/env python3
"""structure.py ROOT RULE: reads the tree and fails, with the offending lines, where it breaks a rule of its structure.

Each rule is a function that takes the root and yields its findings as "file:line: what".
"""
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

# From the bottom up; a layer includes only itself and those before it. Layers of one line stand beside each other.
LAYERS = [
    ["platform"],
    ["core"],
    ["settings", "trace"],
    ["links"],
    ["identify"],
    ["loading", "servers", "terminal"],
    ["panels"],
    ["app"],
]
RANK = {layer: rank for rank, line in enumerate(LAYERS) for layer in line}
LAYER_NAMES = {*RANK, "platform/qt", "simulator"}
FORMS = "panels"  # where a form ranks, whatever folder it stands in
SOURCES = ("src", "tests", "benchmarks", "fuzz")
LONGEST_FILE = 500

INCLUDE = re.compile(r'^\s*#\s*include\s+([<"])([^>"]+)[>"]')
QT_HEADER = re.compile(r"(Q[A-Z]\w*|Qt\w*)(/\w+)?|q\w+\.h|ui_\w+\.h")
# A static that is neither a constant nor a function.
MUTABLE_STATIC = re.compile(r"^\s*(inline\s+)?(static|thread_local)\s+(?!.*\bconst\b)(?!.*\bconstexpr\b)[\w:<>,&*\s]+(=.*|\{.*)?;")
# A variable at the left margin, where namespace contents stand.
MUTABLE_GLOBAL = re.compile(
    r"^(?!const\b|constexpr\b|using\b|return\b|class\b|struct\b|enum\b|namespace\b|template\b|typedef\b|friend\b|extern\b)"
    r"(inline\s+)?(?!const\b|constexpr\b)[a-zA-Z_][\w:]*(<.*>)?[\s&*]+\w+(\[.*\])?\s*(=.*|\{.*\})?;$"
)
EMPTY_CATCH = re.compile(r"\bcatch\s*\([^)]*\)\s*\{\s*(//[^\n]*\s*)*\}")
# Words that point outside the tree or at work not done; in pieces, so that this file holds none of them.
FOREIGN_WORDS = re.compile(
    "|".join(
        [
            r"\b[Pp]ar" + r"t \d+\.\d",
            r"\b[Tt]he spe" + r"c(ification)?\b",
            r"\bspe" + r"c\.md\b",
            r"\b[Ii]ssu" + r"e \d",
            r"(?<![\w.])/wor" + r"k/",
            r"\bTO" + r"DO\b",
            r"\bFIX" + r"ME\b",
        ]
    )
)


def files(root, folders, *suffixes):
    for folder in folders:
        for path in sorted((root / folder).rglob("*")):
            if path.is_file() and path.suffix in suffixes:
                yield path


def lines(root, folders, *suffixes):
    """(path relative to the root, line number, line) of every line."""
    for path in files(root, folders, *suffixes):
        for number, line in enumerate(path.read_text(errors="replace").splitlines(), 1):
            yield path.relative_to(root), number, line


def layer_of(path):
    """The layer of a file under src/, from its path there."""
    if path.name.startswith("frm"):
        return FORMS
    return "platform/qt" if path.parts[:2] == ("platform", "qt") else path.parts[0]


def may_include(layer, target):
    if layer == target:
        return True
    if "simulator" in (layer, target):
        return False
    if target == "platform/qt":
        return layer == "app"
    if layer == "platform/qt":
        return target in ("platform", "core")
    return RANK[target] < RANK[layer]


def includes_point_downwards(root):
    for path, number, line in lines(root, ["src"], ".cpp", ".h"):
        found = INCLUDE.match(line)
        if not found or found[1] == "<" or QT_HEADER.fullmatch(found[2]) or found[2].endswith(".moc"):
            continue
        included = pathlib.PurePosixPath(found[2])
        layer = layer_of(path.relative_to("src"))
        if layer not in LAYER_NAMES:
            yield f"{path}:{number}: in no known layer"
        elif not (root / "src" / included).is_file():
            yield f"{path}:{number}: not a path from src/: {line.strip()}"
        elif not may_include(layer, layer_of(included)):
            yield f"{path}:{number}: {layer} may not include {layer_of(included)}: {line.strip()}"


def qt_stays_in_its_places(root):
    for path, number, line in lines(root, ["src"], ".cpp", ".h"):
        found = INCLUDE.match(line)
        below = path.relative_to("src")
        allowed = below.name.startswith("frm") or layer_of(below) in ("app", "platform/qt")
        if found and QT_HEADER.fullmatch(found[2]) and not allowed:
            yield f"{path}:{number}: a Qt header outside the forms, app and platform/qt: {line.strip()}"


def no_mutable_statics(root):
    for path, number, line in lines(root, ["src"], ".cpp", ".h"):
        if MUTABLE_STATIC.match(line) or MUTABLE_GLOBAL.match(line):
            yield f"{path}:{number}: state that is not owned by the program: {line.strip()}"


def no_empty_catch(root):
    for path in files(root, SOURCES, ".cpp", ".h"):
        text = path.read_text(errors="replace")
        for found in EMPTY_CATCH.finditer(text):
            number = text.count("\n", 0, found.start()) + 1
            yield f"{path.relative_to(root)}:{number}: an exception passed over in silence"


def words_stay_inside(root):
    folders = [*SOURCES, "demo", "docs", "scripts", "cmake", "packaging", "languages"]
    texts = list(lines(root, folders, ".cpp", ".h", ".ui", ".txt", ".cmake", ".py", ".md", ".json", ".in", ".xml", ".desktop",
                       ".rules", ""))
    texts += [(path.relative_to(root), number, line) for path in sorted(root.iterdir()) if path.is_file()
              for number, line in enumerate(path.read_text(errors="replace").splitlines(), 1)]
    for path, number, line in texts:
        if FOREIGN_WORDS.search(line):
            yield f"{path}:{number}: speaks of something outside the tree, or of work not done: {line.strip()}"


def files_stay_short(root):
    for path in files(root, SOURCES, ".cpp", ".h"):
        count = len(path.read_text(errors="replace").splitlines())
        if count > LONGEST_FILE:
            yield f"{path.relative_to(root)}:{count}: more than {LONGEST_FILE} lines"


def headers_read_as_documentation(root):
    for path in files(root, ["src"], ".h"):
        text = path.read_text(errors="replace")
        if not text.startswith("// ") or "#pragma once" not in text:
            yield f"{path.relative_to(root)}:1: begins without a line on what it is for, or lacks #pragma once"


def forms_have_layouts(root):
    for path in files(root, ["src"], ".ui"):
        top = xml.parse(path).getroot().find("widget")
        for widget in top.iter("widget"):
            if widget is not top and widget.find("property[@name='geometry']") is not None:
                yield f"{path.relative_to(root)}:1: {widget.get('name')} stands outside any layout"
    for path, number, line in lines(root, ["src"], ".cpp", ".h"):
        if re.search(r"\bsetFixed(Size|Width|Height)\(", line):
            yield f"{path}:{number}: a fixed geometry: {line.strip()}"


LITERAL_COLOUR = re.compile(
    r"setStyleSheet\(|\bQColor\(\s*[\"\d]|#[0-9a-fA-F]{6}\b|\bqRgba?\(|"
    r"\bQt::(dark|light)?(white|black|red|green|blue|cyan|magenta|yellow|gray)\b", re.IGNORECASE)


def colours_come_from_the_palette(root):
    for path in files(root, ["src"], ".ui"):
        for number, line in enumerate(path.read_text().splitlines(), 1):
            if re.search(r"<color|\b(color|background)[\w-]*\s*:", line):
                yield f"{path.relative_to(root)}:{number}: a colour of its own: {line.strip()}"
    for path, number, line in lines(root, ["src"], ".cpp", ".h"):
        if LITERAL_COLOUR.search(line):
            yield f"{path}:{number}: a colour of its own: {line.strip()}"


def pictures_are_as_drawn(root):
    script, folder = root / "scripts/draw-loggers", root / "src/panels/pictures"
    with tempfile.TemporaryDirectory() as scratch:
        subprocess.run([sys.executable, "-B", script, scratch], check=True)
        drawn = {path.name: path.read_bytes() for path in pathlib.Path(scratch).iterdir()}
    kept = {path.name: path.read_bytes() for path in folder.iterdir()}
    for name in sorted({*drawn, *kept}):
        if drawn.get(name) != kept.get(name):
            yield f"{(folder / name).relative_to(root)}:1: is not what {script.relative_to(root)} draws"


def prose(root):
    """(path relative to the root, line number, line) of the documents, without what they show as files or commands."""
    fenced = False
    for path in [*sorted(root.glob("*.md")), *files(root, ["docs"], ".md")]:
        for number, line in enumerate(path.read_text().splitlines(), 1):
            fence = line.lstrip().startswith("```")
            if not fence and not fenced:
                yield path.relative_to(root), number, line
            fenced ^= fence


def anchors(text):
    """What links can lead to inside a document: its headings, in small letters, with hyphens for blanks."""
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")
            for heading in re.findall(r"^#+ (.*)$", text, re.MULTILINE)}


def links_lead_somewhere(root):
    shown = set()
    for path, number, line in prose(root):
        for target in re.findall(r"\]\(([^)]+)\)", line):
            name, _, anchor = target.partition("#")
            to = (root / path.parent / name).resolve() if name else root / path
            shown.add(to)
            if "://" not in target and not (to.exists() and (not anchor or anchor in anchors(to.read_text()))):
                yield f"{path}:{number}: a link that leads nowhere: {target}"
    for picture in files(root, ["docs"], ".png"):
        if picture.resolve() not in shown:
            yield f"{picture.relative_to(root)}:1: a picture that no document shows"


def named_files_exist(root):
    tree = [f"/{path.relative_to(root)}" for folder in (*SOURCES, "demo", "docs", "scripts")
            for path in (root / folder).rglob("*")]
    for path, number, line in prose(root):
        for name in re.findall(r"`((?:[\w.]+/)*\w+\.(?:h|cpp|py|json|md)|(?:src|tests|scripts|demo|docs)/[\w./-]*\w)`", line):
            if not any(file.endswith(f"/{name}") for file in tree) and not (root / name).exists():
                yield f"{path}:{number}: names a file that is not there: {name}"


def keys_are_as_told(root):
    """A document that tells of **Send via Email** (Alt+V) has the key of a control of that caption."""
    captions = {"&Yes", "&No"}  # the toolkit's own
    for path in files(root, ["src"], ".ui"):
        captions |= {string.text or "" for string in xml.parse(path).getroot().iter("string")}
    for path, number, line in prose(root):
        for name, key in re.findall(r"\*\*([^*]+)\*\* \(Alt\+(\w)\)", line):
            if not any(caption.replace("&", "").startswith(name) and f"&{key}".lower() in caption.lower()
                       for caption in captions):
                yield f"{path}:{number}: no control {name} has the key Alt+{key}"


def promises_have_tests(root):
    """Each row of a table of promises names tests, and each of them is there."""
    path = pathlib.Path("docs/reliability.md")
    if not (root / path).exists():
        return
    tests = {f"{suite}.{name}" for _, _, line in lines(root, ["tests"], ".cpp")
             for suite, name in re.findall(r"^TEST(?:_F|_P)?\((\w+), *(\w+)\)", line)}
    for file in files(root, ["tests"], ".py"):
        for kind, body in re.findall(r"^class (\w+).*\n((?:(?!\S).*\n)*)", file.read_text(), re.MULTILINE):
            tests |= {f"{file.stem}.{kind}.{name}" for name in re.findall(r"^    def (test_\w+)", body, re.MULTILINE)}
    tests |= {file.stem for file in files(root, ["fuzz"], ".cpp")}
    for number, line in enumerate((root / path).read_text().splitlines(), 1):
        if not line.startswith("|") or re.match(r"\|(---|Promise |\s*Promise)", line):
            continue
        named = re.findall(r"`([^`]+)`", line.rstrip("| ").rpartition("|")[2])
        if not named:
            yield f"{path}:{number}: a promise without a test"
        for name in named:
            if name not in tests:
                yield f"{path}:{number}: a test that is not there: {name}"


RULES = {
    rule.__name__: rule
    for rule in [
        includes_point_downwards,
        qt_stays_in_its_places,
        no_mutable_statics,
        no_empty_catch,
        words_stay_inside,
        files_stay_short,
        headers_read_as_documentation,
        forms_have_layouts,
        colours_come_from_the_palette,
        pictures_are_as_drawn,
        links_lead_somewhere,
        named_files_exist,
        keys_are_as_told,
        promises_have_tests,
    ]
}

if __name__ == "__main__":
    findings = list(RULES[sys.argv[2]](pathlib.Path(sys.argv[1]).resolve()))
    print(*findings, sep="\n")
    sys.exit(1 if findings else 0)
