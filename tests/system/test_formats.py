"""docs/formats.md is true: its examples are what the programs write, its tables have the programs' names, order and defaults."""

import json
import os
import re
import unittest

from programs import BIN, Scene
from test_window import Screen, start_program

DOC = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "docs", "formats.md")
DIRECTORY = "/srv/loggers"  # stands in the examples for the application directory
DROPPED = {"tallyCores=0", "SMTPChecked=0", "FTPStartDirectory=", "FTPChecked=0"}  # by the first save


def document():
    with open(DOC, encoding="utf-8") as file:
        return file.read()


def example(name):
    """An example as a data file holds it."""
    found = re.search(rf"^```text {re.escape(name)}\n(.*?)^```$", document(), re.MULTILINE | re.DOTALL)
    return found[1].replace("\n", "\r\n").encode()


def shortcut(name, directory):
    """An example of a shortcut, as it stands on the desktop of an application directory."""
    return example(name).decode().replace("\r\n", "\n").replace(DIRECTORY, directory)


def table(heading, first):
    """The rows of the table in a chapter whose first column has that caption: lists of their cells, without backticks."""
    chapter = document().split(f"\n## {heading}\n")[1].split("\n## ")[0]
    rows = chapter.split(f"\n| {first} |")[1].split("\n\n")[0].split("\n")[2:]
    return [[cell.strip().strip("`") for cell in row.strip("|").split("|")] for row in rows]


class Formats(unittest.TestCase):
    def setUp(self):
        self.scene = self.enterContext(Scene())

    def put(self, *names):
        for name in names:
            with open(self.scene.path(name), "wb") as file:
                file.write(example(name))

    def read(self, name):
        with open(self.scene.path(name), "rb") as file:
            return file.read()

    def command(self, *words):
        code, out, error = self.scene.run(*words)
        self.assertEqual((code, error), (0, ""))
        return out

    def test_a_save_gives_the_examples_back_byte_for_byte(self):
        self.put("options.ini", "found.ini", "emaillist3.ini")
        self.command("set", "2", "ScheduleOn.C=1")
        self.assertNotEqual(self.read("found.ini"), example("found.ini"))
        self.command("set", "2", "ScheduleOn.C=0")
        self.command("lists", "2", "--add", "one@more")
        self.assertNotEqual(self.read("emaillist3.ini"), example("emaillist3.ini"))
        self.command("lists", "2", "--remove", "one@more")
        for name in ("options.ini", "found.ini", "emaillist3.ini"):
            self.assertEqual(self.read(name), example(name))

    def test_nothing_in_the_examples_is_odd(self):
        self.put("options.ini", "found.ini", "emaillist3.ini", "install.ini")
        with open(self.scene.path("found.ini"), "wb") as file:  # the folders are those of this user
            file.write(example("found.ini").replace(b"/home/anna", self.scene.environment["HOME"].encode()))
        for name in ("options.ini", "found.ini"):
            os.chmod(self.scene.path(name), 0o600)
        self.assertEqual(json.loads(self.command("check", "--json")), [])

    def test_the_loggers_of_the_example_are_those_that_it_names(self):
        self.put("found.ini")
        self.assertEqual([(e["model"], e["link"]) for e in self.scene.list()],
                         [("KR305 Series 3", "RS232"), ("KR400", "RS232"), ("KR41", "Ethernet"),
                          ("KR215 Series 1", "Dialup")])
        behind_modem = json.loads(self.command("show", "4", "--json"))
        self.assertEqual((behind_modem["LoggerBaud"], behind_modem["LoggerParity"]), ("0,,5550123", "AT&F,E0"))

    def test_the_table_of_fields_has_their_names_and_numbers(self):
        self.put("found.ini")
        shown = json.loads(self.command("show", "2", "--json"))
        at, written = 1, {}
        for name, value in shown.items():
            count = len(value) if isinstance(value, list) else 1
            if re.match("Logger(?!LinkType|Host|TcpPort)|Schedule", name):
                written[name] = str(at) if count == 1 else f"{at}–{at + count - 1}"
                at += count
        self.assertEqual(at, 94)
        self.assertEqual({row[1]: row[0] for row in table("`found.ini`", "Fields")}, written)

    def test_the_table_of_options_has_their_order_and_first_values(self):
        self.put("options.ini", "found.ini")
        self.command("set", "2", "ScheduleOn.C=1")
        rows = table("`options.ini`", "Key")
        saved = dict(line.split("=", 1) for line in self.read("options.ini").decode().splitlines())
        self.assertEqual([row[0] for row in rows], list(saved))
        for key, kind, *_ in rows:
            self.assertEqual(kind == "yes/no", saved[key] in ("True", "False"), key)

        os.remove(self.scene.path("options.ini"))
        os.remove(self.scene.path("found.ini"))
        self.assertEqual(self.scene.run("find", "--port", "1")[0], 1)  # which makes the file, and finds nothing
        first = set(self.read("options.ini").decode().splitlines()) - DROPPED
        self.assertEqual(first, {f"{row[0]}={'' if row[2] == 'empty' else row[2]}" for row in rows if row[2] != "–"})

    def test_an_empty_value_is_repaired_as_the_table_says(self):
        rows = table("`options.ini`", "Key")
        self.put("found.ini")
        with open(self.scene.path("options.ini"), "w", encoding="utf-8") as file:
            file.write("".join(f"{row[0]}=\r\n" for row in rows))
        self.command("set", "2", "ScheduleOn.C=1")
        saved = dict(line.split("=", 1) for line in self.read("options.ini").decode().splitlines())
        for key, kind, _, repaired, _ in rows:
            nothing = {"yes/no": "False", "text": ""}.get(kind, "0")
            self.assertEqual(saved[key], nothing if repaired == "–" else repaired, key)

    def test_the_language_file_of_the_example_is_spoken(self):
        self.put("options.ini", "found.ini", "English.txt")
        with open(self.scene.path("options.ini"), "ab") as file:
            options = example("options.ini").replace(b"UseLangFile=False", b"UseLangFile=True")
            file.truncate(0)
            file.write(options)
        code, _, error = self.scene.run("set", "2", "ScheduleRecords.B=many")
        self.assertEqual((code, error), (1, "ScheduleRecords.B: This can't stand here: digits only.\n"))

    def test_a_first_start_leaves_the_mark_the_store_and_two_shortcuts(self):
        self.scene.add_harvel()
        desktop = os.path.join(self.scene.scratch.name, "Desktop")
        with Screen() as screen:
            program = start_program(self.scene, screen.display)
            screen.press("^ ?tallyCore Harvel$", "Escape")
            screen.press("tallyCore Harvel Options$", "alt+k")
            _, error = program.communicate(timeout=60)
        self.assertEqual((program.returncode, error), (0, ""))
        mark = re.sub(rb"on .* at .*\.", b"on DATE at TIME.", self.read("install.ini"))
        self.assertEqual(mark, re.sub(rb"on .* at .*\.", b"on DATE at TIME.", example("install.ini")))
        with open(os.path.join(self.scene.environment["XDG_CONFIG_HOME"], "Harvel", "Harvel.ini"),
                  encoding="utf-8") as file:
            key = self.scene.directory.replace("/", "_")
            wanted = example("Harvel.ini").decode().replace("\r", "")
            self.assertEqual(file.read(), wanted.replace("_srv_loggers", key).replace(DIRECTORY, self.scene.directory))
        for name, started in (("Harvel", self.scene.path("harvel")),
                              ("Harvel Options", os.path.join(os.path.realpath(BIN), "harvelop"))):
            file_name = os.path.join(desktop, name + ".desktop")
            with open(file_name, encoding="utf-8") as file:
                self.assertEqual(file.read(), f"[Desktop Entry]\nType=Application\nName={name}\nExec={started}\n"
                                              f"Path={self.scene.directory}\nTerminal=false\n")
            self.assertEqual(os.stat(file_name).st_mode & 0o777, 0o755)
