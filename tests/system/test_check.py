"""What `harvelctl check` says of a real directory, and the completion of shells."""

import json
import os
import shutil
import subprocess
import unittest

from programs import Scene

BIN = os.environ["HARVELOP_BIN"]


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

    def test_a_logger_is_deleted_and_its_list_goes_with_it(self):
        self.done("add", "--model", "KR40", "--tcp", "weir.example.org:7700")
        self.done("lists", "1", "--add", "a@example.org")
        code, out, _ = self.scene.run("delete", "1", "--json")
        self.assertEqual((code, json.loads(out)["messages"][0]["answer"]), (1, "no"))
        self.assertEqual(json.loads(self.done("delete", "1", "--yes", "--json"))["done"], True)
        self.assertNotIn("emaillist2.ini", os.listdir(self.scene.directory))
        self.assertEqual(self.check(), "")


class Completion(unittest.TestCase):
    def setUp(self):
        self.scene = self.enterContext(Scene())
        self.environment = dict(os.environ, PATH=BIN + os.pathsep + os.environ["PATH"])

    def script(self, shell):
        code, out, error = self.scene.run("completion", shell)
        self.assertEqual((code, error), (0, ""))
        path = self.scene.path("completion." + shell)
        with open(path, "w", encoding="utf-8") as file:
            file.write(out)
        return path

    def bash(self, *words):
        """What bash offers for the last of the words, as it divides them itself."""
        code = ('source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _harvelctl; '
                'for word in "${COMPREPLY[@]}"; do echo "$word"; done')
        result = subprocess.run(["bash", "-c", code, "bash", self.script("bash"), "harvelctl", *words], check=True,
                                cwd=self.scene.directory, env=self.environment, capture_output=True, text=True)
        self.assertEqual(result.stderr, "")
        return result.stdout.split()

    def test_bash_offers_commands_options_and_values(self):
        commands = self.bash("")
        self.assertLess({"find", "check", "language-template", "completion", "unload"}, set(commands))
        self.assertEqual(self.bash("lang"), ["language-template", "language-check"])
        self.assertEqual(self.bash("find", "--"), ["--dir", "--json", "--trace", "--port", "--all", "--yes",
                                                   "--password"])
        self.assertEqual(self.bash("add", "--model", "KR4"), ["KR400", "KR45", "KR41", "KR40"])
        self.assertEqual(self.bash("add", "--parity", "=", "O"), ["Odd"])
        self.assertEqual(self.bash("add", "--flow", "="), ["NOFC", "SWFC", "HWFC"])
        self.assertEqual(self.bash("--dir", "x", "add", "--com", "16"), ["16"])
        self.assertEqual(self.bash("completion", ""), ["bash", "zsh", "fish"])
        self.assertIn("SMTPServerName=", self.bash("options", "SMTP"))
        self.assertEqual(self.bash("options", "Icons"), []) # which the program keeps by itself
        self.assertEqual(self.bash("options", "SMTPServerName", "="), [])
        self.assertEqual(self.bash("options", "SMTPServerName", "=", "S"), [])
        self.assertEqual(self.bash("options", "SMTPServerName", "=", "h", "SiteI"), ["SiteID="])
        self.assertEqual(self.bash("add", "--password", ""), [])

    def test_bash_offers_files_directories_and_the_loggers_that_there_are(self):
        os.mkdir(self.scene.path("folder"))
        with open(self.scene.path("file.cmd"), "w", encoding="ascii"):
            pass
        self.assertEqual(self.bash("--dir", "f"), ["folder"])
        self.assertEqual(sorted(self.bash("load", "1", "f")), ["file.cmd", "folder"])
        self.assertEqual(self.bash("language-check", "fi"), ["file.cmd"])
        self.assertEqual(self.bash("show", ""), [])
        for host in ("a", "b"):
            self.scene.run("add", "--model", "KR40", "--tcp", host + ":1")
        self.assertEqual(self.bash("show", ""), ["1", "2"])
        self.assertEqual(self.bash("show", "1", ""), [])
        self.assertEqual(self.bash("--dir", self.scene.directory, "set", ""), ["1", "2"])

    def test_the_scripts_are_what_their_shells_read(self):
        self.assertIsNotNone(shutil.which("zsh"))
        self.assertIsNotNone(shutil.which("fish"))
        for shell in ("bash", "zsh", "fish"):
            subprocess.run([shell, "-n", self.script(shell)], check=True)
        subprocess.run(["shellcheck", "-s", "bash", self.script("bash")], check=True)

    def test_fish_offers_what_bash_offers(self):
        def fish(line):
            code = f'source "{self.script("fish")}"; complete -C "{line}"'
            result = subprocess.run(["fish", "--no-config", "-c", code], check=True, cwd=self.scene.directory,
                                    env=self.environment, capture_output=True, text=True)
            return [row.split("\t")[0] for row in result.stdout.splitlines()]
        self.assertEqual(sorted(fish("harvelctl ")), sorted(self.bash("")))
        self.assertEqual(sorted(fish("harvelctl add --model KR4")), ["KR40", "KR400", "KR41", "KR45"])
        self.assertIn("--job", fish("harvelctl clear 1 --"))
        self.assertNotIn("--job", fish("harvelctl load 1 --"))


if __name__ == "__main__":
    unittest.main()
