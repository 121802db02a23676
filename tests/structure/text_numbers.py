#!/usr/bin/env python3
"""text_numbers.py ROOT: holds the numbers of texts that the code uses against the table of their English words.

Fails, with the offending lines, where a number is used that has no words, and where words stand that nothing uses.
"""
import pathlib
import re
import sys

# Numbers that the code counts up to instead of spelling them out, by the file that does.
COUNTED = {
    "src/panels/frmAddTallyCore.cpp": range(1, 27),
    "src/panels/frmOptions.cpp": range(170, 175),
    "src/panels/frmTallyCores_texts.cpp": range(50, 53),
    "src/loading/load_texts.cpp": range(608, 620),
    "src/loading/flash_texts.cpp": [*range(648, 652), *range(654, 658)],
}
# Of the interface of language files, for failures that have no way to happen here.
UNUSED = {561, 580}
# Numbers that stand where texts do, but are none.
OTHERS = {
    "src/identify/port_sweep.cpp": {30, 40, 400},  # waits by speed
    "src/identify/model_table.cpp": {27},  # a place in an answer
    "src/panels/table_name_rules.h": {32},  # a length
}

CHARACTER = re.compile(r"'(?:[^'\\\n]|\\.)'")
STRING = re.compile(r'"(?:[^"\\\n]|\\.)*"')
COMMENT = re.compile(r"//[^\n]*")
ROW = re.compile(r"^\s*\{(\d+),", re.MULTILINE)
# Calls that take a number, with what stands in their parentheses, one pair of further ones in it.
CALL = re.compile(
    r"\b(?:Text|LangText|LangFontName|LangFontSize|text|either|busy|report|captionOf|caption|tellLooking|ShowStep|ShowStepFor"
    r"|showStep|runConverter|fileAndDemand)\(((?:[^()]|\((?:[^()]|\([^()]*\))*\))*)\)"
)
# Rows of a table {number, "control"} or {"control", number}, pieces of a caption {number, suffix}, and {number, widget}.
IN_ROW = re.compile(r'\{(\d{1,4}), ?(?:"|\*|m_ui)|", (\d{1,4})[,}]')
# Variables and enumerators that hold one.
NAMED = re.compile(r"\b(?:first|seriesWord|number|Edit|Ok)\s*=\s*([^;,}]*)|return ([^;]*\? *\d[^;]*);")
NUMBER = re.compile(r"(?<![\w.])(\d{1,4})(?![\w.])")


def without_comments(text):
    return COMMENT.sub("", CHARACTER.sub("' '", text))


def numbers_in(text):
    """The numbers from 1 to 1000 that stand where a text's number does, with their places in the text."""
    plain = STRING.sub(lambda string: '""' + " " * (len(string[0]) - 2), text)
    spans = [match.span(group) for pattern in (CALL, NAMED) for match in pattern.finditer(plain)
             for group in range(1, pattern.groups + 1) if match[group]]
    found = [(int(number[1]), start + number.start()) for start, end in spans for number in NUMBER.finditer(plain[start:end])]
    found += [(int(match[group]), match.start()) for match in IN_ROW.finditer(text) for group in (1, 2) if match[group]]
    return [(number, place) for number, place in found if 1 <= number <= 1000]


def sources(root):
    for path in sorted(root.glob("src/**/*")):
        if path.suffix in (".h", ".cpp") and "simulator" not in path.parts and not path.name.startswith("message_"):
            yield path.relative_to(root).as_posix(), path.read_text()


def findings(root):
    words = {}
    for path in sorted(root.glob("src/settings/message_*.h")):
        text = path.read_text()
        for row in ROW.finditer(text):
            words[int(row[1])] = f"{path.relative_to(root).as_posix()}:{text.count(chr(10), 0, row.start(1)) + 1}"
    used = set(UNUSED)
    for path, text in sources(root):
        for number, place in numbers_in(without_comments(text)):
            used.add(number)
            if number not in words and number not in OTHERS.get(path, ()):
                yield f"{path}:{text.count(chr(10), 0, place) + 1}: number {number} has no words"
        for number in COUNTED.get(path, ()):
            used.add(number)
            if number not in words:
                yield f"{path}: number {number} has no words"
    for number in sorted(words.keys() - used):
        yield f"{words[number]}: nothing uses number {number}"


if __name__ == "__main__":
    lines = list(findings(pathlib.Path(sys.argv[1]).resolve()))
    print(*lines, sep="\n")
    sys.exit(1 if lines else 0)
