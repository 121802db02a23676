"""The command lines of the programs and their exit codes."""

import json
import os
import subprocess
import unittest

from programs import BIN, Scene


class CommandLine(unittest.TestCase):
    def test_wrong_usage_ends_with_2_and_says_why(self):
        with Scene() as scene:
            for words in ([], ["fnd"], ["find", "--port", "17"], ["show"], ["show", "0"], ["list", "--yes"]):
                with self.subTest(words=words):
                    code, out, error = scene.run(*words)
                    self.assertEqual((code, out), (2, ""))
                    self.assertTrue(error.startswith("harvelctl: "), error)
            self.assertEqual(os.listdir(scene.directory), [])

    def test_help_and_version_need_no_display(self):
        bare = {"PATH": os.environ["PATH"]}
        for program in ("harvelop", "harvelctl", "tallysim"):
            for word in ("--help", "--version"):
                with self.subTest(program=program, word=word):
                    run = subprocess.run([os.path.join(BIN, program), word], env=bare, capture_output=True, text=True,
                                         check=False, timeout=30)
                    self.assertEqual(run.returncode, 0, run.stderr)
                    self.assertIn(program, run.stdout)

    def test_a_directory_that_is_not_there_fails(self):
        with Scene() as scene:
            scene.directory += "-gone"
            code, _, error = scene.run("list")
            self.assertEqual(code, 1)
            self.assertIn("There is no directory", error)
            code, out, _ = scene.run("list", "--json")
            self.assertEqual(code, 1)
            told = json.loads(out)
            self.assertIs(told["done"], False)
            self.assertIn("There is no directory", told["messages"][0]["text"])

    def test_ports_are_listed_with_their_devices(self):
        with Scene([{"com": 6, "model": "KR40", "port": "pty", "baud": 9600}]) as scene:
            code, out, _ = scene.run("ports")
            self.assertEqual(code, 0)
            self.assertEqual(out, f"6  {scene.environment['HARVELOP_COM6']}\n")

    def test_rubbish_in_the_data_files_is_survived(self):
        rubbish = {"empty": b"", "binary": bytes(range(256)) * 40, "NULs": b"\0" * 5000,
                   "long line": b"1tallyCoreSettings=" + b"x" * 3_000_000,
                   "51 records": b"1tallyCoreSettings=3,KR40,\r\n" * 51,
                   "3 fields": b"1tallyCoreSettings=3,KR40,77,\r\n",
                   "500 fields": b"1tallyCoreSettings=" + b"a," * 500}
        for name, content in rubbish.items():
            for file in ("found.ini", "options.ini"):
                with self.subTest(content=name, file=file), Scene() as scene:
                    with open(scene.path(file), "wb") as handle:
                        handle.write(content)
                    code, _, error = scene.run("list", timeout=30)
                    too_many = (name, file) == ("51 records", "found.ini")
                    self.assertEqual(code, 1 if too_many else 0, error)
                    code, _, error = scene.run("find", "--port", "5", "--yes", timeout=30)
                    self.assertEqual(code, 1, error)


if __name__ == "__main__":
    unittest.main()
