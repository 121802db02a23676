"""What `harvelctl check` says of a real directory."""

import json
import os
import unittest

from programs import Scene


def state(directory):
    """Every file with what it holds and when it was changed."""
    def of(name):
        path = os.path.join(directory, name)
        with open(path, "rb") as file:
            return file.read(), os.stat(path).st_mtime_ns, os.stat(path).st_mode
    return {name: of(name) for name in os.listdir(directory)}


class Checking(unittest.TestCase):
    def setUp(self):
        self.scene = self.enterContext(Scene())

    def done(self, *words):
        code, out, error = self.scene.run(*words)
        self.assertEqual((code, error), (0, ""))
        return out

    def check(self):
        before = state(self.scene.directory)
        code, out, error = self.scene.run("check")
        self.assertEqual(error, "")
        self.assertEqual(code, 1 if out else 0)
        self.assertEqual(state(self.scene.directory), before)
        return out

    def test_a_directory_of_the_programs_own_making_is_sound_and_an_empty_one_too(self):
        self.assertEqual(self.check(), "")
        self.done("add", "--model", "KR40", "--tcp", "weir.example.org:7700", "--password", "se cret")
        self.done("add", "--model", "KR215", "--series", "2", "--modem", "5", "--phone", "0,,12")
        self.done("set", "1", "LoggerDescription=Weir", "ScheduleHTML.A=1", "LoggerSaveFolder=/tmp")
        self.done("lists", "2", "--add", "a@example.org", "--description", "Head office")
        self.done("options", "FTPServername=ftp.example.org", "FTPPassword=secret")
        self.assertEqual(self.check(), "")
        self.assertEqual(json.loads(self.done("check", "--json")), [])

    def test_what_lies_in_the_directory_and_should_not_is_named(self):
        self.done("add", "--model", "KR40", "--tcp", "weir.example.org:7700", "--password", "se cret")
        os.chmod(self.scene.path("found.ini"), 0o644)
        for name in (".options.ini.new", "found.ini.a1B2c3", "emaillist77.ini", "notes.txt"):
            with open(self.scene.path(name), "w", encoding="ascii"):
                pass
        out = self.check()
        self.assertEqual(out, "found.ini: holds a password and can be read by others\n"
                              ".options.ini.new: is left over from a save that was interrupted\n"
                              "emaillist77.ini: belongs to no logger\n"
                              "found.ini.a1B2c3: is left over from a save that was interrupted\n")
        self.assertNotIn("se cret", out)

    def test_a_password_in_the_options_is_looked_after_too(self):
        self.done("options", "FTPPassword=secret")
        self.assertEqual(self.check(), "")
        os.chmod(self.scene.path("options.ini"), 0o640)
        self.assertEqual(self.check(), "options.ini: holds a password and can be read by others\n")
        self.done("options", "FTPPassword=")
        self.assertEqual(self.check(), "")

    def test_a_list_is_nobodys_only_when_all_loggers_are_known(self):
        self.done("add", "--model", "KR40", "--tcp", "weir.example.org:7700")
        self.done("lists", "1", "--add", "a@example.org")
        with open(self.scene.path("found.ini"), "a", encoding="ascii", newline="") as file:
            file.write("tallyCoreSettings=\r\n" * 50)
        self.assertIn("found.ini:51: is one logger too many", self.check())
        self.assertNotIn("belongs to no logger", self.check())
        os.remove(self.scene.path("found.ini"))
        os.mkdir(self.scene.path("found.ini"))
        out = self.scene.run("check")[1]
        self.assertIn("found.ini: can't be read", out)
        self.assertNotIn("belongs to no logger", out)

    def test_a_file_that_others_may_change_is_named(self):
        self.done("add", "--model", "KR40", "--tcp", "weir.example.org:7700")
        self.done("lists", "1", "--add", "a@example.org")
        for name, mode in (("options.ini", 0o664), ("found.ini", 0o646), ("emaillist2.ini", 0o666)):
            os.chmod(self.scene.path(name), mode)
        self.assertEqual(self.check(), "found.ini: can be changed by others\n"
                                       "emaillist2.ini: can be changed by others\n")

    def test_a_logger_is_deleted_and_its_list_goes_with_it(self):
        self.done("add", "--model", "KR40", "--tcp", "weir.example.org:7700")
        self.done("lists", "1", "--add", "a@example.org")
        code, out, _ = self.scene.run("delete", "1", "--json")
        self.assertEqual((code, json.loads(out)["messages"][0]["answer"]), (1, "no"))
        self.assertEqual(json.loads(self.done("delete", "1", "--yes", "--json"))["done"], True)
        self.assertNotIn("emaillist2.ini", os.listdir(self.scene.directory))
        self.assertEqual(self.check(), "")


if __name__ == "__main__":
    unittest.main()
