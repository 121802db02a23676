"""The command-line client, killed at each call by which it touches a data file: just before it, with everything before it
done. Afterwards each file is whole, as it was or as it was to become, the next start reads it, and what the killed one
left lying about is gone with the next save. In the short form at some of the calls; with HARVELOP_DEEP at each."""

import os
import re
import shutil
import signal
import subprocess
import unittest

from programs import BIN, Scene

CALLS = ("openat", "pwrite64", "write", "fsync", "ftruncate", "fchmod", "fchown", "flock", "rename", "renameat",
         "renameat2", "unlink", "unlinkat", "fallocate")
STRIDE = 1 if os.environ.get("HARVELOP_DEEP") else 9
CLIENT = os.path.join(BIN, "harvelctl")


def decoded(text):
    return bytes(int(code, 16) for code in re.findall(r"\\x(..)", text))


class Call:
    """One line of a trace: the name of the call, how many of that name have come, and the file that it is about."""

    def __init__(self, name, count, file, line):
        self.name, self.count, self.file = name, count, file
        self.changes = name != "openat" or "O_CREAT" in line or "O_TRUNC" in line or "O_WRONLY" in line
        quoted = re.search(r'"((?:\\x..)*)"', line)
        self.text = decoded(quoted.group(1)) if quoted and name in ("pwrite64", "write") else b""

    def __repr__(self):
        return f"{self.name} number {self.count}, of {os.path.basename(self.file)}"


class Run:
    """A command on a directory with some loggers."""

    def __init__(self, scene, words):
        self.scene, self.words = scene, words
        self.environment = dict(scene.environment, ASAN_OPTIONS="detect_leaks=0")

    def command(self, words=None):
        return [CLIENT, "--dir", self.scene.directory, *(words or self.words)]

    def plainly(self, words=None):
        return subprocess.run(self.command(words), env=self.environment, capture_output=True, text=True, check=False,
                              timeout=60)

    def traced(self):
        """What it does to files of the directory, undisturbed."""
        trace = os.path.join(self.scene.scratch.name, "trace")
        run = subprocess.run(["strace", "-f", "-y", "-xx", "-s", "10000000", "-o", trace, "-e", "trace=" + ",".join(CALLS),
                              *self.command()], env=self.environment, capture_output=True, text=True, check=False,
                             timeout=120)
        if run.returncode != 0:
            raise RuntimeError(run.stderr)
        calls, counts = [], {}
        with open(trace, encoding="utf-8") as lines:
            for line in lines:
                name = re.match(r"\d+ +(\w+)\(", line)
                if not name:
                    continue
                counts[name.group(1)] = counts.get(name.group(1), 0) + 1
                path = self.path_in(line)
                if path:
                    calls.append(Call(name.group(1), counts[name.group(1)], path, line))
        return calls

    def path_in(self, line):
        """The last file of the directory that the line names: of a renaming what it renames to."""
        named = [decoded(text) for text in re.findall(r'"((?:\\x..)+)"', line) if "pwrite64" not in line]
        named += [decoded(text) if text.startswith("\\x") else text.encode() for text in re.findall(r"\d<([^>]*)>", line)]
        inside = [os.fsdecode(path) for path in named if os.path.dirname(os.fsdecode(path)) == self.scene.directory]
        return inside[0] if inside and "rename" not in line else inside[-1] if inside else None

    def killed_at(self, call):
        run = subprocess.run(["strace", "-f", "-o", os.devnull, "-e", f"trace={call.name}",
                              "-e", f"inject={call.name}:signal=SIGKILL:when={call.count}", *self.command()],
                             env=self.environment, capture_output=True, text=True, check=False, timeout=120)
        return run.returncode


def contents(directory):
    texts = {}
    for name in os.listdir(directory):
        with open(os.path.join(directory, name), "rb") as file:
            texts[name] = file.read()
    return texts


def saved(calls):
    """Each text that took a file's place, with the name of the file."""
    texts, being_written = [], b""
    for call in calls:
        if call.name == "ftruncate":
            being_written = b""
        elif call.name.startswith("rename"):
            texts.append((os.path.basename(call.file), being_written))
        else:
            being_written += call.text
    return texts


class Killed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        watched = subprocess.run(["strace", "-o", os.devnull, "true"], check=False, capture_output=True, text=True)
        if watched.returncode != 0:
            raise RuntimeError(f"strace may not watch a process here, so nothing was killed: {watched.stderr}")

    def walk(self, words, loggers=3):
        with Scene() as scene:
            run = Run(scene, words)
            for number in range(loggers):
                self.assertEqual(run.plainly(["add", "--model", "KR40", "--tcp", f"weir{number}:7700"]).returncode, 0)
            if loggers:
                self.assertEqual(run.plainly(["lists", "2", "--schedule", "A", "--add", "a@example.org"]).returncode, 0)
            before = os.path.join(scene.scratch.name, "before")
            shutil.copytree(scene.directory, before)
            calls = run.traced()
            old, new = contents(before), contents(scene.directory)
            self.assertNotEqual(old, new)
            whole = {name: {text} for name, text in old.items()}
            for name, text in saved(calls):
                whole.setdefault(name, set()).add(text)
            self.check_durable(calls)
            places = [call for call in calls if call.changes]
            self.assertGreater(len(places), 7)
            for call in places[::STRIDE]:
                with self.subTest(killed_before=call):
                    shutil.rmtree(scene.directory)
                    shutil.copytree(before, scene.directory)
                    self.assertEqual(run.killed_at(call), -signal.SIGKILL)
                    self.check_whole(scene, old, whole)
                    self.check_usable(run, old, new)

    def check_durable(self, calls):
        """A text is on the disk before it takes the place of the old one."""
        unsynced = set()
        for call in calls:
            if call.text:
                unsynced.add(call.file)
            elif call.name == "fsync":
                unsynced.discard(call.file)
            elif call.name.startswith("rename"):
                folder, name = os.path.split(call.file)
                self.assertNotIn(os.path.join(folder, f".{name}.new"), unsynced)
        self.assertEqual(unsynced, set())

    def check_whole(self, scene, old, whole):
        left = contents(scene.directory)
        for name, text in left.items():
            if not name.startswith("."):
                self.assertIn(text, whole.get(name, set()), name)
        for name in old:
            self.assertIn(name, left)
        self.assertLessEqual(sum(name.startswith(".") for name in left), 1)

    def check_usable(self, run, old, new):
        """The next start reads all that is there; the command, given again, does its work and tidies up."""
        told = run.plainly(["list"])
        self.assertEqual(told.returncode, 0, told.stderr)
        for number in range(old.get("found.ini", b"").count(b"tallyCoreSettings=")):
            self.assertRegex(told.stdout, f"weir{number}")
        again = run.plainly()
        self.assertEqual(again.returncode, 0, again.stderr)
        left = contents(run.scene.directory)
        self.assertEqual([name for name in left if name.startswith(".")], [])
        self.assertEqual(set(left), set(new))

    def test_setting_a_field(self):
        self.walk(["set", "2", "LoggerDescription=Lock_7", "ScheduleHTML.A=1"])

    def test_editing_a_delivery_list(self):
        self.walk(["lists", "2", "--schedule", "A", "--description", "Head office", "--add", "b@example.org"])

    def test_adding_a_logger(self):
        self.walk(["add", "--model", "KR400", "--tcp", "lock:7700"])

    def test_the_first_logger_in_an_empty_directory(self):
        self.walk(["add", "--model", "KR400", "--tcp", "weir0:7700"], loggers=0)


if __name__ == "__main__":
    unittest.main()
