"""What the stand-in for the unload program writes down of what it is handed."""

import json
import os
import subprocess
import unittest

from programs import HARVEL, Scene

HEAD = r"^==== harvel STAND-IN, unloads nothing: \d{4}-\d\d-\d\d \d\d:\d\d:\d\d$"
MISSING_FILES = ["options.ini:", "  missing", "found.ini:", "  missing", "==== end"]
KR40 = {1: "3", 2: "KR40", 3: "012345", 4: "9600", 5: "N", 6: "8", 7: "1", 8: "SWFC", 77: "::2", 93: "10"}


def record(fields, count=93):
    """A line of found.ini of that many fields, empty but for the given ones."""
    return "1tallyCoreSettings=" + "".join(fields.get(k, "") + "," for k in range(1, count + 1)) + "\r\n"


class Handover(unittest.TestCase):
    def setUp(self):
        self.scene = self.enterContext(Scene())
        self.harvel = self.scene.add_harvel()

    def write(self, name, text):
        with open(self.scene.path(name), "wb") as file:
            file.write(text if isinstance(text, bytes) else text.encode())

    def entry(self, *words, start=None, cwd="/"):
        """Starts the stand-in: its entry in the log without the head."""
        before = len(self.scene.harvel_log())
        run = subprocess.run([start or self.harvel, *words], cwd=cwd, env=self.scene.environment, check=False,
                             stdin=subprocess.DEVNULL, capture_output=True, timeout=60)
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, b"", b""))
        lines = self.scene.harvel_log()[before:]
        self.assertRegex(lines[0], HEAD)
        return lines[1:]

    def found(self, *words):
        """The part of an entry that tells what was found."""
        lines = self.entry(*words)
        return lines[lines.index("found.ini:") + 1:-1]

    def asked(self, *words):
        """The part of an entry that tells what is asked for."""
        lines = self.entry(*words)
        first = next(i for i, line in enumerate(lines) if line.startswith("asks for: "))
        return lines[first:lines.index("options.ini:")]

    def test_without_files_it_says_that_they_are_missing(self):
        self.assertEqual(self.entry(), ["arguments: 0", "asks for: all loggers, by their own settings", *MISSING_FILES])

    def test_entries_are_added_for_the_user_alone(self):
        for _ in range(2):
            self.entry()
        self.assertEqual(len(self.scene.harvel_log()), 2 * (3 + len(MISSING_FILES)))
        self.assertEqual(os.stat(self.scene.path("harvel.Log")).st_mode & 0o777, 0o600)

    def test_many_starts_at_once_keep_their_entries_apart(self):
        self.write("options.ini", "".join(f"Key{i}={'x' * 100}\r\n" for i in range(200)))
        started = [subprocess.Popen([self.harvel]) for _ in range(8)]
        self.assertEqual([process.wait(timeout=60) for process in started], [0] * 8)
        lines = self.scene.harvel_log()
        size = len(lines) // 8
        for i in range(8):
            self.assertRegex(lines[i * size], HEAD)
            self.assertEqual(lines[i * size + 1:(i + 1) * size], lines[1:size])

    def test_arguments_are_written_byte_for_byte(self):
        words = ["", " ", "a  b ", "\"q\" 'q' `q`", "100% %s %n", "$HOME $(id) ${x}", "\\ \\n \\\\", "Grüße 測定", "a]\nb [",
                 "-f", "--version", "--", "-", "x=y", "1e3", "0x1A", "+05", "*", "\r\n", "\x7f\x1b[1m", "x" * 100_000]
        raw = [word.encode() for word in words] + [bytes(range(1, 256))]
        self.entry(*raw)
        with open(self.scene.path("harvel.Log"), "rb") as file:
            text = file.read().split(b"\n", 1)[1]
        wanted = b"arguments: %d\n" % len(raw)
        for number, word in enumerate(raw, 1):
            wanted += b"argument %d (%d bytes): [%s]\n" % (number, len(word), word)
        self.assertEqual(text[:len(wanted)], wanted)
        self.assertEqual(text[len(wanted):].decode().splitlines(),
                         ["asks for: nothing that is known", "options.ini:", "  missing", "==== end"])

    def test_what_the_arguments_ask_for(self):
        commands = "asks for: commands to the logger ::7"
        staying = commands + ", then stay in the terminal"
        for words, wanted in [
                ([], ["asks for: all loggers, by their own settings"]),
                (["::7"], ["asks for: the logger ::7"]),
                (["::7", "%PROFILE"], [commands, "commands (7 bytes): [PROFILE]"]),
                (["::7 %PROFILE"], [commands, "commands (7 bytes): [PROFILE]"]),
                (["::7", "%a  \"b\"", "50% c"], [commands, "commands (12 bytes): [a  \"b\" 50% c]"]),
                (["::7", "%PROFILE%"], [staying, "commands (7 bytes): [PROFILE]"]),
                (["::7", "%"], [staying, "commands (0 bytes): []"]),
                (["::7", "%°C"], [commands, "commands (3 bytes): [°C]"]),
                (["::7", ""], ["asks for: nothing that is known"]),
                (["::7", "PROFILE"], ["asks for: nothing that is known"]),
                (["::"], ["asks for: nothing that is known"]),
                (["::7\n"], ["asks for: nothing that is known"]),
                (["7"], ["asks for: nothing that is known"]),
                ([""], ["asks for: nothing that is known"])]:
            with self.subTest(words=words):
                self.assertEqual(self.asked(*words), wanted)

    def test_options_are_written_line_by_line_without_passwords(self):
        self.write("options.ini", b"SiteID= a=b [c] \r\nDesktopDir=\r\n\r\n[Options]\r\nNoEnd=\xe9\n"
                   b"SMTPPassword=se=cret\r\nFTPPassword=\r\nftppassword=secret\r\n FTPPassword =secret\rx=secret\r\n"
                   b"SMTPRememberPassword=True\r\nsecret\r\nLockControls=False")
        self.assertEqual(self.entry()[2:], [
            "options.ini:", "  SiteID: [ a=b [c] ]", "  DesktopDir: []", "  line 4: passed over", "  NoEnd: [\udce9]",
            "  SMTPPassword: (set)", "  FTPPassword: (empty)", "  ftppassword: (set)", "   FTPPassword : (set)",
            "  SMTPRememberPassword: [True]", "  line 11: passed over", "  LockControls: [False]",
            "found.ini:", "  missing", "==== end"])

    def test_a_logger_is_written_with_its_fields_and_lists(self):
        fields = {**KR40, 4: "0||123", 5: "AT|X", 9: "1", 20: "0", 32: "1", 57: "5", 72: "/tmp/[a] b/", 74: "se%cret",
                  75: "Gewächshaus", 78: "\"p\" $x", 81: "tab_A", 92: "tab_X"}
        self.write("found.ini", record(fields))
        self.write("emaillist2.ini", "0;to: all\r\nX; \r\n0:a@b.c\r\nX:x@b.c\r\nX:y@b.c, z@b.c\r\n\r\n0\r\nL:l@b.c\r\nA-a\r\n")
        self.assertEqual(self.found("::2"), [
            "logger 1: 93 fields", "  field 1 LoggerPort: [3]", "  field 2 LoggerModel: [KR40]",
            "  field 3 LoggerSerial: [012345]", "  field 4 LoggerBaud: [0,,123]", "  field 5 LoggerParity: [AT,X]",
            "  field 6 LoggerDataBits: [8]", "  field 7 LoggerStopBits: [1]", "  field 8 LoggerFlow: [SWFC]",
            "  field 9 ScheduleOn.A: [1]", "  field 20 ScheduleOn.X: [0]", "  field 32 ScheduleUlast.X: [1]",
            "  field 57 ScheduleRecords.A: [5]", "  field 72 LoggerSaveFolder: [/tmp/[a] b/]",
            "  field 74 LoggerPassword: (set)", "  field 75 LoggerDescription: [Gewächshaus]",
            "  field 77 LoggerIconKey: [::2]", "  field 78 LoggerRunProgram: [\"p\" $x]",
            "  field 81 LoggerTableNames.A: [tab_A]", "  field 92 LoggerTableNames.X: [tab_X]",
            "  field 93 LoggerTimeout: [10]",
            "emaillist2.ini:", "  description 0: [to: all]", "  description X: [ ]", "  address 0 1: [a@b.c]",
            "  address X 1: [x@b.c]", "  address X 2: [y@b.c, z@b.c]", "  line 7: passed over", "  line 8: passed over",
            "  line 9: passed over"])

    def test_schedules_of_an_older_logger_have_its_letters(self):
        self.write("found.ini", record({2: "KR200 Series 2", 12: "1", 13: "1", 14: "1", 20: "1", 77: "::2"}))
        self.assertEqual(self.found("::2"), [
            "logger 1: 93 fields", "  field 2 LoggerModel: [KR200 Series 2]", "  field 12 ScheduleOn.D: [1]",
            "  field 13 ScheduleOn.X: [1]", "  field 14 ScheduleOn.5: [1]", "  field 20 ScheduleOn.11: [1]",
            "  field 74 LoggerPassword: (empty)", "  field 77 LoggerIconKey: [::2]", "emaillist2.ini:", "  missing"])

    def test_the_key_chooses_the_logger_and_without_one_all_are_written(self):
        self.write("found.ini", "# mine\r\n" + record({1: "4", 77: "::12"}) + record({1: "5", 77: "::1"}) + record({}))
        first = ["logger 1: 93 fields", "  field 1 LoggerPort: [4]", "  field 74 LoggerPassword: (empty)",
                 "  field 77 LoggerIconKey: [::12]"]
        second = ["logger 2: 93 fields", "  field 1 LoggerPort: [5]", "  field 74 LoggerPassword: (empty)",
                  "  field 77 LoggerIconKey: [::1]"]
        third = ["logger 3: 93 fields", "  field 74 LoggerPassword: (empty)"]
        passed, missing = "  line 1: passed over", "  missing"
        self.assertEqual(self.found("::1"), [passed, *second, "emaillist1.ini:", missing])
        self.assertEqual(self.found("::12", "%X"), [passed, *first, "emaillist12.ini:", missing])
        self.assertEqual(self.found("::2"), [passed, "  no logger has the key ::2"])
        self.assertEqual(self.found(), [passed, *first, *second, *third, "emaillist12.ini:", missing, "emaillist1.ini:",
                                        missing, "emaillist.ini:", missing])
        self.write("found.ini", "")
        self.assertEqual(self.found(), ["  no loggers"])

    def test_two_loggers_without_a_key_read_the_same_list(self):
        self.write("found.ini", record({}) * 2)
        self.write("emaillist.ini", "A:a@b.c\n")
        self.assertEqual(self.found()[4:], ["emaillist.ini:", "  address A 1: [a@b.c]"] * 2)

    def test_a_short_record_is_written_as_far_as_it_goes(self):
        self.write("found.ini", record(KR40, 5) + record({**KR40, 70: "1", 74: "secret"}, 80)
                   + "3tallyCoreSettings=3,KR4\r\n4TALLYCORESETTINGS=")
        doubt = "  not a whole record: the password may be anywhere from field 71 on"
        untrusted = "emaillist: of a logger without a key that can be trusted"
        named = ["LoggerPort: [3]", "LoggerModel: [KR40]", "LoggerSerial: [012345]", "LoggerBaud: [9600]",
                 "LoggerParity: [N]", "LoggerDataBits: [8]", "LoggerStopBits: [1]", "LoggerFlow: [SWFC]"]
        fields = [f"  field {number} {text}" for number, text in enumerate(named, 1)]
        self.assertEqual(self.found(), [
            "logger 1: 5 fields", doubt, *fields[:5],
            "logger 2: 80 fields", doubt, *fields, "  field 70 LoggerViaEmail: [1]", "  field 74 LoggerPassword: (set)",
            "  field 77 LoggerIconKey: (set)",
            "logger 3: 1 fields", doubt, fields[0], "  without a comma: (set)",
            "logger 4: 0 fields", doubt,
            untrusted, "emaillist2.ini:", "  missing", untrusted, untrusted])

    def test_a_password_that_commas_have_moved_stays_hidden(self):
        fields = {**KR40, 74: "::secret"}
        moved = {"right": record({**fields, 72: "/a,b/"}), "onto the key": record({**fields, 72: "/a,b,c,d/"}),
                 "left": record({**fields, 1: "", 2: "", 3: "=12345"}), "cut off": record(fields, 74)[:-3],
                 "by its own comma": record({**fields, 74: "::sec,secret"}),
                 "left and right": record({**fields, 1: "", 2: "=", 72: "/a,b/"})}
        for way, line in moved.items():
            with self.subTest(way=way):
                self.write("found.ini", line)
                lines = "\n".join(self.entry())
                self.assertIn("not a whole record", lines)
                self.assertIn("(set)", lines)
                self.assertNotIn("sec", lines)

    def test_fields_have_the_names_that_the_program_gives_them(self):
        numbers = {69, 70, 71, 73}
        self.write("found.ini", record({k: "1" if k in numbers else f"v{k}" for k in range(1, 94)} | {2: "KR40"}))
        code, out, error = self.scene.run("show", "1", "--json")
        self.assertEqual(code, 0, error)
        wanted = []
        for name, value in json.loads(out).items():
            if name != "number":
                entries = zip("ABCDEFGHIJKX", value) if isinstance(value, list) else [("", value)]
                wanted += [(f"{name}.{letter}" if letter else name, f"[{text}]") for letter, text in entries]
        lines = [line.split(" ", 5)[4:] for line in self.found() if line.startswith("  field ")]
        told = [(name.rstrip(":"), text) for name, text in lines]
        self.assertEqual(len(told), 93)
        self.assertEqual([name for name, _ in told], [name for name, _ in wanted])
        self.assertEqual([one for one in told if one not in wanted], [("LoggerPassword", "(set)")])

    def test_every_password_among_the_options_of_the_program_is_hidden(self):
        self.scene.run("find", "--port", "5", "--yes")  # finds nothing and leaves its options
        with open(self.scene.path("options.ini"), encoding="utf-8", newline="") as file:
            keys = [line.split("=")[0] for line in file.read().split("\r\n") if line]
        self.write("options.ini", "".join(f"{key}=secret of {key}\r\n" for key in keys))
        lines = self.entry()
        told = lines[lines.index("options.ini:") + 1:lines.index("found.ini:")]
        hidden = {"SMTPPassword", "FTPPassword"}
        self.assertLess(hidden, set(keys))
        self.assertEqual(told, [f"  {key}: (set)" if key in hidden else f"  {key}: [secret of {key}]" for key in keys])

    def test_the_path_that_starts_it_tells_the_directory(self):
        other = os.path.join(self.scene.scratch.name, "other")
        os.mkdir(other)
        home = self.scene.directory
        for start, cwd in [(self.harvel, other), ("./harvel", home), ("loggers/harvel", self.scene.scratch.name),
                           ("../loggers/harvel", other)]:
            with self.subTest(start=start, cwd=cwd):
                self.entry(start=start, cwd=cwd)
        os.mkdir(os.path.join(other, "loggers"))
        self.scene.environment["CDPATH"] = other
        self.entry(start="loggers/harvel", cwd=self.scene.scratch.name)
        self.assertEqual(os.listdir(os.path.join(other, "loggers")), [])
        self.assertFalse(os.path.exists(os.path.join(os.path.dirname(HARVEL), "harvel.Log")))

    def test_a_directory_with_an_awkward_name_is_found(self):
        for name in ("-a b'c", "$x %s\\n", "\"*?[", "é\nx"):
            with self.subTest(name=name):
                self.scene.directory = os.path.join(self.scene.scratch.name, name)
                os.mkdir(self.scene.directory)
                self.assertEqual(self.entry(start=self.scene.add_harvel())[2:], MISSING_FILES)

    def test_rubbish_in_the_files_is_survived(self):
        quoted = record({77: "::a'b"})
        for name, content in {"binary": bytes(range(256)) * 40, "NULs": b"\0" * 5000, "long": b"x" * 3_000_000,
                              "long record": b"1tallyCoreSettings=" + b"a," * 100_000,
                              "quote": quoted.encode()}.items():
            for file in ("options.ini", "found.ini", "emaillist2.ini"):
                with self.subTest(content=name, file=file):
                    self.write("found.ini", record(KR40))
                    self.write(file, content)
                    self.assertEqual(self.entry()[-1], "==== end")
        self.write("found.ini", quoted)
        self.write("emaillista'b.ini", "A:a@b.c")
        self.assertEqual(self.found()[-2:], ["emaillista'b.ini:", "  address A 1: [a@b.c]"])

    def test_a_folder_in_place_of_a_file_counts_as_missing(self):
        for name in ("options.ini", "found.ini"):
            os.mkdir(self.scene.path(name))
        self.assertEqual(self.entry()[2:], MISSING_FILES)

    def test_a_log_that_cannot_be_written_is_told(self):
        os.mkdir(self.scene.path("harvel.Log"))
        run = subprocess.run([self.harvel], capture_output=True, text=True, check=False, timeout=60)
        self.assertNotEqual(run.returncode, 0)
        self.assertIn("harvel.Log", run.stderr)


if __name__ == "__main__":
    unittest.main()
