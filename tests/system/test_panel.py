"""Two loggers, one of each family, found, opened and changed in every control of their panels by keys alone; what the
files hold afterwards, what the unload program is handed, and what is there after a restart."""

import json
import os
import unittest
from dataclasses import dataclass, field, replace

from panel_keys import COLUMNS, OPTIONS, Grid, PanelCase, Typed

GOLDEN = os.path.join(os.path.dirname(os.path.abspath(__file__)), "golden")
BOX = "^ ?tallyCore Harvel$"
UNTITLED_BOX = "^harvelop$"
FOLDER_CHOOSER = "Choose a Folder for the "
PROGRAM_CHOOSER = "Choose a Program to Run After Unload"
RUN = "Run a Program After Unload$"
COMMAND = "Send a tallyCore Command After Unload$"
TABLE_NAMES = "Edit Table Names$"
LISTS = "Email List for the "
SECRETS = ("mail secret", "ftp secret")
MDB = ("alt+p", "Tab", "Tab", "Tab")  # leads to the check box for the database


def path(text):
    """For a chooser of folders or files, whose field for the name has the focus."""
    return Typed(text), "Return"


@dataclass
class Logger:
    """What the panel of a logger is to hold: a mark or a text for each schedule, in the order of `letters`."""

    place: int  # in the list, from 0
    letters: str
    port: str
    model: str
    serial: str
    version: str
    key: str
    on: str
    ulast: str
    csv: str
    html: str
    records: list
    email: str
    ftp: str
    folder: str  # below the scratch directory
    description: str
    program: str  # below the scratch directory
    command: str
    mdb: str
    names: list
    lists: dict = field(default_factory=dict)  # key of the schedule: description, addresses

    @property
    def title(self):
        return f"{self.model} on Com {self.port} @ 115200,N,8,1,SWFC"

    @property
    def rows(self):
        return len(self.letters)

    def fields(self, home):
        def twelve(entries, unused):
            return [*entries, *[unused] * (12 - self.rows)]
        return [self.port, self.model, self.serial, "115200", "N", "8", "1", "SWFC",
                *twelve(self.on, "0"), *twelve(self.ulast, "0"), *twelve(self.csv, "0"), *twelve(self.html, "0"),
                *twelve(self.records, "0"), "1", self.email, self.ftp, f"{home}/{self.folder}/", "0", "",
                self.description, self.version, self.key, f"{home}/{self.program}", self.command, self.mdb,
                *twelve(self.names, ""), "10"]

    @property
    def list_file(self):
        return f"emaillist{self.key[2:]}.ini"

    def record(self, home):
        return f"{self.place + 1}tallyCoreSettings=" + "".join(text + "," for text in self.fields(home)) + "\r\n"


OLDER = Logger(
    place=0, letters="ABCDX", port="3", model="KR305 Series 3", serial="none", version="9.05", key="::2",
    on="01101", ulast="10111", csv="11111", html="00101", records=["all", "last 12", "7d", "15", "2"],
    email="0", ftp="1", folder="old data", description="Upper_Weir3", program="my tools/after unload",
    command="D=\"1\" $x \\ 50%", mdb="1", names=["Levels", "", "Flow_1", "levels", "Events"],
    lists={"0": ("", ["office@example.org"]), "D": ("Day shift; both: mail", []), "X": ("", ["x@example.org", "y.z@b_c.d"])})
NEWER = Logger(
    place=1, letters="ABCDEFGHIJKX", port="9", model="KR400", serial="098765", version="6.10.0002", key="::3",
    on="100111010011", ulast="110010101110", csv="011011011100", html="010010001100",
    records=["1", "12", "123", "1234", "5", "56", "567", "5678", "9", "90", "901", "9012"],
    email="1", ftp="0", folder="new/data", description="Mill", program="my tools/report.sh", command="/h/m", mdb="0",
    names=[f"Table_{letter}" for letter in "ABCDEFGHIJKX"],
    lists={"0": ("Head office, all", ["a@b.c", "d.e@f.g"]), "A": ("", ["1@a"]), "K": ("Only text", []),
           "X": ("Now", [f"{i}@x.org" for i in range(19)])})
LOGGERS = (OLDER, NEWER)
SIMULATED = [
    {"com": 3, "model": "KR305", "series": "3", "version": "9.05", "port": "pty", "baud": 115200},
    {"com": 9, "model": "KR400", "version": "6.10.0002", "serial": "098765", "port": "pty", "baud": 115200},
]


class Panels(PanelCase):
    simulated = SIMULATED

    def setUp(self):
        super().setUp()
        self.home = self.scene.scratch.name
        for logger in LOGGERS:
            os.makedirs(os.path.join(self.home, logger.folder))
            os.makedirs(os.path.dirname(os.path.join(self.home, logger.program)), exist_ok=True)
            with open(os.path.join(self.home, logger.program), "w", encoding="utf-8"):
                pass

    def find_both(self):
        self.press(BOX, "Return")  # yes, search now
        for logger in LOGGERS:
            self.screen.window(logger.title)
        for logger in reversed(LOGGERS):
            self.answer(logger.title, "Escape")

    def fill_in_accounts(self):
        mail = ["alt+e", "alt+s", Typed("mail.example.org"), "alt+r", "ctrl+a", Typed("2525"), "alt+d", Typed("me@example.org"),
                "alt+m", "Tab", "space", "alt+u", Typed("mailer"), "alt+w", Typed(SECRETS[0])]
        ftp = ["alt+f", "alt+s", Typed("ftp.example.org"), "alt+u", Typed("me"), "alt+w", Typed(SECRETS[1])]
        self.press(OPTIONS, *mail, *ftp, "alt+p", "alt+t")

    def fill_in_table_names(self, logger):
        """The first name is the last one's at first. The database is on meanwhile."""
        before = self.read("found.ini")
        self.press(logger.title, *MDB, "space", "Tab", "space")
        self.press(TABLE_NAMES, *[step for name in logger.names[1:] for step in ("Tab", Typed(name))],
                   "alt+a", Typed(logger.names[-1]), "Return")
        self.answer(BOX, "Return")
        self.assertEqual(self.read("found.ini"), before)
        self.answer(TABLE_NAMES, Typed(logger.names[0]), "alt+o")
        self.press(logger.title, *MDB, "space")

    def fill_in_grid(self, logger):
        """Checks whole columns by their headings, then clears what is not to be. The database adds its CSV."""
        grid = Grid(logger.rows)
        for column in COLUMNS:
            grid.press_heading(column)
        for row in grid.rows:
            grid.type(row, logger.records[row])
        for column in reversed(COLUMNS):
            wanted = logger.html if column == "csv" and logger.mdb == "1" else getattr(logger, column)
            for row in grid.rows:
                grid.mark(row, column, wanted[row] == "1")
        self.press(logger.title, "alt+p", *grid.keys, *MDB, *["space"] * int(logger.mdb))

    def choose_folder(self, logger):
        for folder in (os.path.join(self.home, logger.folder), "/"):  # the second changes nothing
            self.press(logger.title, "alt+e")
            self.answer(FOLDER_CHOOSER + logger.model, *path(folder))

    def fill_in_lists(self, logger):
        """What stands there first is deleted. The first schedule gets its last address when all others are filled in."""
        title = LISTS + logger.model
        self.press(logger.title, "alt+s")
        self.press(title, Typed("gone@b.c"), "alt+d")
        self.answer(BOX, "alt+y")
        to_schedules = ["alt+s", "shift+Tab", "Home"]
        keys = "0" + logger.letters
        for key, (description, addresses) in logger.lists.items():
            typed = addresses[:-1] if key == "0" else addresses
            lines = [step for address in typed for step in (Typed(address), "Return")]
            self.press(title, *to_schedules, *["Down"] * keys.index(key), "Tab", Typed(description), "Tab", *lines)
        self.answer(title, *to_schedules, "alt+e", Typed(logger.lists["0"][1][-1]), "alt+k")

    def fill_in_what_runs(self, logger):
        self.press(logger.title, "alt+r")
        self.press(RUN, "Return")
        self.answer(PROGRAM_CHOOSER, *path(os.path.join(self.home, logger.program)))
        self.answer(RUN, "Return")
        self.press(logger.title, "alt+c")
        self.answer(COMMAND, Typed(logger.command), "Return")

    def fill_in(self, logger):
        """Everything on the panel, which ends on the tab that it begins with."""
        self.press(logger.title, "alt+t", "alt+l", "alt+u", "alt+p", Typed(logger.description))
        self.fill_in_table_names(logger)
        self.fill_in_grid(logger)
        self.choose_folder(logger)
        on_or_off = {"1": ["space"], "0": ["space", "space"]}
        self.press(logger.title, *MDB, *["Tab"] * int(logger.mdb), "Tab", *on_or_off[logger.email], "Tab", "Tab",
                   *on_or_off[logger.ftp])
        self.fill_in_lists(logger)
        self.fill_in_what_runs(logger)

    def confirm(self, logger):
        """Ok in every editor and on the panel: what they show is stored anew."""
        self.press(logger.title, "alt+u", "alt+s")
        self.answer(LISTS + logger.model, "alt+k")
        self.press(logger.title, "alt+c")
        self.answer(COMMAND, "Return")
        if logger.mdb == "1":
            self.press(logger.title, "alt+i")
            self.answer(TABLE_NAMES, "alt+o")
        self.answer(logger.title, "alt+o")

    def check_handover(self, logger):
        """Unload applies first; the unload program then reads what was typed."""
        self.press(logger.title, "alt+d")
        lines = self.handed_over()
        self.assertEqual(lines[1:4], ["arguments: 1", f"argument 1 (3 bytes): [{logger.key}]",
                                      f"asks for: the logger {logger.key}"])
        for line in ("SMTPPort: [2525]", "SMTPPassword: (set)", "FTPUserName: [me]", "FTPPassword: (set)"):
            self.assertIn("  " + line, lines)
        read = [line.split(" ", 5) for line in lines if line.startswith("  field ")]
        wanted = dict(enumerate(logger.fields(self.home), 1))
        self.assertEqual({int(words[3]): words[5] for words in read},
                         {k: f"[{text}]" for k, text in wanted.items() if text} | {74: "(empty)"})
        keys = [key for key in "0" + logger.letters if key in logger.lists]
        self.assertEqual(lines[lines.index(logger.list_file + ":") + 1:-1],
                         [f"  description {key}: [{logger.lists[key][0]}]" for key in keys if logger.lists[key][0]]
                         + [f"  address {key} {i}: [{address}]" for key in keys
                            for i, address in enumerate(logger.lists[key][1], 1)])

    def check_files(self):
        self.assertEqual(self.read("found.ini"), "".join(logger.record(self.home) for logger in LOGGERS))
        for name, golden in [("found.ini", "found_panels.ini"), (OLDER.list_file, "emaillist_panel_older.ini"),
                             (NEWER.list_file, "emaillist_panel_kr4.ini")]:
            with open(os.path.join(GOLDEN, golden), encoding="utf-8", newline="") as file:
                self.assertEqual(self.read(name), file.read().replace("@HOME@", self.home))

    def check_commands(self, logger):
        number = str(logger.place + 1)
        code, out, _ = self.scene.run("show", number, "--json")
        shown = json.loads(out)
        self.assertEqual((code, shown.pop("number")), (0, logger.place + 1))
        self.assertEqual((shown["LoggerDescription"], shown["LoggerRunCommand"], shown["ScheduleHTML"][:logger.rows]),
                         (logger.description, logger.command, [*logger.html]))
        self.assertEqual([str(text) for entry in shown.values() for text in (entry if isinstance(entry, list) else [entry])],
                         logger.fields(self.home))
        code, out, _ = self.scene.run("lists", number, "--json")
        self.assertEqual(code, 0)
        shown = {entry["schedule"]: (entry["description"], entry["addresses"]) for entry in json.loads(out)}
        self.assertEqual(shown, {key: ("", []) for key in "0" + logger.letters} | logger.lists)

    def test_everything_that_is_changed_is_there_after_a_restart(self):
        program = self.start()
        self.find_both()
        self.fill_in_accounts()
        self.scene.add_harvel()
        for logger in LOGGERS:
            self.open(logger)
            self.fill_in(logger)
            self.check_handover(logger)
            self.answer(logger.title, "alt+o")
        self.end(program)
        self.check_files()

        program = self.start()
        for logger in LOGGERS:
            self.open(logger)
            self.confirm(logger)
        self.end(program)
        self.check_files()
        for logger in LOGGERS:
            self.check_commands(logger)


class BadInput(PanelCase):
    def setUp(self):
        super().setUp()
        self.logger = replace(NEWER, place=0, email="0")
        self.write("found.ini", self.logger.record("/gone"))

    def write(self, name, text):
        with open(self.scene.path(name), "wb") as file:
            file.write(text if isinstance(text, bytes) else text.encode())

    def check_record(self, **changes):
        self.assertEqual(self.read("found.ini"), replace(self.logger, **changes).record("/gone"))

    def type_bad_texts(self):
        """Into the records of schedule B, and into the description."""
        grid = Grid(self.logger.rows)
        grid.marks["html"] = [mark == "1" for mark in self.logger.html]
        grid.place = len(grid.stops())
        grid.go(1, "records")
        self.press(self.logger.title, "alt+u", "alt+p", *grid.keys, "End", "x")
        self.answer(UNTITLED_BOX, "Return")
        self.press(self.logger.title, Typed("7"), "alt+p", "End", Typed(" 2,"))

    def paste_description(self):
        """What can't be stored as a command is pasted."""
        self.press(self.logger.title, "alt+c")
        self.press(COMMAND, "ctrl+a", Typed("Weir, 3"), "Return", "ctrl+a", "ctrl+c")
        self.answer(COMMAND, "Escape")
        self.press(self.logger.title, "alt+p", "ctrl+a", "ctrl+v")

    def test_what_can_not_be_is_dropped_or_told_and_the_rest_is_kept(self):
        program = self.start()
        self.open(self.logger)
        self.type_bad_texts()
        records = ["1", "127", *self.logger.records[2:]]
        self.press(self.logger.title, "alt+d")  # the unload program is missing
        self.answer(UNTITLED_BOX, "Return")
        self.check_record(records=records, description="Mill2")
        self.write("harvel", "#!/bin/sh\necho started >harvel.Log\n")  # which can't be executed
        self.press(self.logger.title, "alt+d")
        self.answer(UNTITLED_BOX, "Return")
        os.remove(self.scene.path("harvel"))
        self.assertEqual(self.scene.harvel_log(), [])
        self.scene.add_harvel()
        self.press(self.logger.title, "alt+d")
        self.assertIn("  field 75 LoggerDescription: [Mill2]", self.handed_over())

        self.press(self.logger.title, "alt+e")
        self.answer(FOLDER_CHOOSER + self.logger.model, "Escape")  # opened, though the stored folder is gone
        self.paste_description()
        self.answer(self.logger.title, "alt+o")
        self.check_record(records=records, description="Weir3")
        self.end(program)

    def test_lists_keep_what_is_an_address_and_has_room(self):
        self.write(self.logger.list_file, bytes(range(256)) * 40 + b"\r\n0:first@b.c\r\n\0\0\0\r\n")
        program = self.start()
        self.open(self.logger)
        self.press(self.logger.title, "alt+u", "alt+s")
        lines = [step for i in range(2, 22) for step in (Typed(f"{i}, +-é@b .c"), "Return")]
        self.answer(LISTS + self.logger.model, *lines, "alt+k")
        written = self.read(self.logger.list_file)
        self.assertEqual([line for line in written.split("\r\n") if line.startswith("0:")],
                         ["0:first@b.c", *[f"0:{i}@b.c" for i in range(2, 20)]])
        self.answer(self.logger.title, "alt+o")
        self.end(program)


if __name__ == "__main__":
    unittest.main()
