"""Stored loggers and their delivery lists, changed from the command line: each command is a program of its own."""

import json
import os
import resource
import unittest

from programs import Scene

GOLDEN = os.path.join(os.path.dirname(os.path.abspath(__file__)), "golden")
KR40 = {1: "3", 2: "KR40", 3: "012345", 4: "9600", 5: "N", 6: "8", 7: "1", 8: "SWFC", 74: "se cret", 76: "5.06",
        77: "::2", 93: "10"}
KR200 = {1: "4", 2: "KR200 Series 2", 3: "none", 4: "0||12345", 5: "at&f|x4", 6: "19200", 73: "1",
         **dict.fromkeys(range(33, 38), "1"), 75: "Pumphouse", 76: "7.18", 77: "::13", 80: "1", 81: "Levels", 89: "Stale", 93: "20"}


def record(number, fields):
    return f"{number}tallyCoreSettings=" + "".join(fields.get(k, "") + "," for k in range(1, 94)) + "\r\n"


class Editing(unittest.TestCase):
    def setUp(self):
        self.scene = self.enterContext(Scene())
        self.write("found.ini", record(1, KR40) + record(2, KR200))

    def write(self, name, text):
        with open(self.scene.path(name), "wb") as file:
            file.write(text.encode())

    def read(self, name):
        with open(self.scene.path(name), "rb") as file:
            return file.read()

    def done(self, *words):
        self.assertEqual(self.scene.run(*words), (0, "", ""))

    def refused(self, line, *words, code=1):
        """The command says so and leaves the directory as it was."""
        def files():
            return {name: self.read(name) for name in os.listdir(self.scene.directory)}
        before = files()
        self.assertEqual(self.scene.run(*words), (code, "", line + "\n"))
        self.assertEqual(files(), before)

    def shown(self, number):
        code, out, error = self.scene.run("show", str(number), "--json")
        self.assertEqual((code, error), (0, ""))
        return json.loads(out)

    def golden(self, name, golden):
        with open(os.path.join(GOLDEN, golden), "rb") as file:
            self.assertEqual(self.read(name), file.read())

    def test_every_field_that_a_panel_edits_is_there_after_a_restart(self):
        self.write("options.ini", "SMTPServerName=mail\r\nSMTPSender=me\r\nSMTPPort=25\r\n"
                   "FTPServername=ftp\r\nFTPUserName=me\r\nFTPPassword=x\r\n")
        self.done("set", "1", "ScheduleOn.A=1", "ScheduleUlast.K=1", "ScheduleCSV.B=1", "ScheduleHTML.X=1",
                  "ScheduleRecords.X=250", "LoggerViaEmail=1", "LoggerViaFTP=1", "LoggerSaveFolder=/tmp",
                  "LoggerDescription=Weir_3", "LoggerMdbOn=1", "LoggerTableNames.A=Levels", "LoggerTableNames.X=Now",
                  "LoggerRunProgram=/opt/my report", "LoggerRunCommand=D=\"1\"\r\n$x")
        self.done("set", "2", "LoggerSaveFolder=/tmp/", "ScheduleHTML.X=1", "ScheduleRecords.X=last 12",
                  "LoggerTableNames.X=Events", "LoggerMdbOn=0", "ScheduleCSV.A=1")
        self.golden("found.ini", "found_edited.ini")
        first = self.shown(1)
        self.assertEqual((first["LoggerDescription"], first["LoggerRunCommand"], first["LoggerMdbOn"]),
                         ("Weir_3", "D=\"1\"$x", "1"))
        self.assertEqual(first["ScheduleCSV"], ["1"] * 12)
        second = self.shown(2)
        self.assertEqual(second["LoggerBaud"], "0,,12345")
        self.assertEqual(second["ScheduleCSV"][:5], ["1", "0", "0", "0", "1"])
        self.assertEqual(self.scene.list()[0]["name"], "Weir_3")

    def test_what_breaks_a_rule_is_refused(self):
        for line, words in [
                ("ScheduleCSV.A is held on by HTML.", ["ScheduleHTML.A=1", "ScheduleCSV.A=0"]),
                ("ScheduleRecords.A: Invalid Character.", ["ScheduleHTML.A=1", "ScheduleRecords.A=1a"]),
                ("LoggerMdbOn needs a LoggerDescription first.", ["LoggerMdbOn=1"]),
                ("LoggerDescription can hold only the letters A to Z, digits and _.", ["LoggerDescription=a,b"]),
                ("LoggerDescription can't be longer than 32 characters.", ["LoggerDescription=" + "x" * 33]),
                ("LoggerSaveFolder wants the whole path of an existing folder.",
                 ["LoggerSaveFolder=" + self.scene.path("gone")]),
                ("LoggerRunCommand: A comma can't be stored here.", ["ScheduleOn.A=1", "LoggerRunCommand=a,b"]),
                ("LoggerViaFTP can't be on: the FTP account in the options is not filled in.", ["LoggerViaFTP=1"]),
                ("LoggerPassword can't be changed here.", ["LoggerPassword=x"]),
                ("ScheduleOn.L: a KR40 has no such schedule.", ["ScheduleOn.L=1"])]:
            with self.subTest(words=words):
                self.refused(line, "set", "1", *words)
        self.refused("LoggerTableNames.B: Table names must be unique or blank.", "set", "2", "LoggerTableNames.B=Stale")
        self.refused("There is no logger 3.", "set", "3", "ScheduleOn.A=1")
        self.refused("harvelctl: set wants each change as FIELD=VALUE\nTry 'harvelctl --help'.",
                     "set", "1", "ScheduleOn.A", code=2)

    def test_a_line_too_many_leaves_the_file_alone(self):
        self.write("found.ini", record(1, KR40) * 51)
        line = f"The file {self.scene.path('found.ini')} holds more than 50 loggers."
        self.refused(line, "set", "1", "ScheduleOn.A=1")
        self.refused(line, "lists", "1", "--add", "a@b.c")

    def test_where_files_cannot_grow_nothing_is_half_written(self):
        def files():
            return {name: self.read(name) for name in os.listdir(self.scene.directory)}
        self.write("emaillist2.ini", "0:a@b.c\r\n")
        for limit in (0, 200):  # the second one is reached in the middle of the loggers' file
            for name, words in [("emaillist2.ini", ["lists", "1", "--description", "x" * 300]),
                                ("found.ini", ["set", "1", "ScheduleOn.A=1"])]:
                with self.subTest(limit=limit, words=words):
                    before = files()
                    code, out, error = self.scene.run(
                        *words, preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit)))
                    self.assertEqual((code, out), (1, ""))
                    self.assertIn(f"The file {self.scene.path(name)} can't be written.\n", error)
                    self.assertEqual({k: v for k, v in files().items() if k != "options.ini"}, before)

    def test_lists_are_there_after_a_restart(self):
        self.done("lists", "1", "--description", "Head office, both", "--add", "a@b.c", "--add", "d.e@f.g")
        self.done("lists", "1", "--schedule", "X", "--add", "x@y.z", "--add", "gone@y.z", "--remove", "gone@y.z")
        self.done("lists", "1", "--schedule", "K", "--description", "Küche")
        self.golden("emaillist2.ini", "emaillist_kr4.ini")
        self.done("lists", "2", "--schedule", "X", "--add", "x@y.z")
        self.golden("emaillist13.ini", "emaillist_older.ini")
        self.assertEqual(self.scene.run("lists", "1"), (0, "All Schedules: Head office, both\n  a@b.c\n  d.e@f.g\n"
                                                        "Schedule K: Küche\nSchedule X\n  x@y.z\n", ""))
        code, out, _ = self.scene.run("lists", "2", "--schedule", "X", "--json")
        self.assertEqual((code, json.loads(out)),
                         (0, [{"schedule": "X", "description": "", "addresses": ["x@y.z"]}]))
        self.assertEqual(os.stat(self.scene.path("emaillist2.ini")).st_mode & 0o777, 0o600)

    def test_addresses_that_break_a_rule_are_refused(self):
        many = [word for i in range(20) for word in ("--add", f"{i}@b.c")]
        self.refused("19@b.c has no room: a list holds 19 addresses.", "lists", "1", *many)
        self.refused("a b@c: an address can hold only the letters A to Z, digits and . @ _",
                     "lists", "1", "--add", "a b@c")
        long = "x" * 5001
        self.refused(f"{long} has no room: a list holds 5000 characters.", "lists", "1", "--add", long)
        self.refused("a@b.c is not in the list.", "lists", "1", "--remove", "a@b.c")
        self.refused("A KR200 has no schedule K.", "lists", "2", "--schedule", "K", "--add", "a@b.c")

    def test_a_list_with_binary_lines_is_read_as_far_as_it_is_one(self):
        with open(self.scene.path("emaillist2.ini"), "wb") as file:
            file.write(bytes(range(256)) * 40 + b"\r\n0:a@b.c\r\n\0\0\0\r\n")
        code, out, error = self.scene.run("lists", "1")
        self.assertEqual((code, error), (0, ""))
        self.assertIn("  a@b.c\n", out)

    def test_deleting_all_lists_wants_a_yes(self):
        self.done("lists", "1", "--add", "a@b.c")
        self.refused("Are you sure you want to remove all email addresses and descriptions for all schedules for this "
                     "tallyCore ? Not done: nobody to ask, and no --yes.", "lists", "1", "--delete-all")
        self.done("lists", "1", "--delete-all", "--yes")
        self.assertEqual(self.read("emaillist2.ini"), b"")


if __name__ == "__main__":
    unittest.main()
