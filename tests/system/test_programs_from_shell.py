"""Programs sent, listed and deleted from a shell, on a logger of each family: what the loggers hold afterwards."""

import contextlib
import os
import signal
import unittest

from programs import Scene

PROGRAM = ["RA1M 1TK", "", "' a remark", "RB2S 3V"]
JOB = ['BEGIN"FLOW"', "RA1M 1TK", "END"]
OLDER = {"com": 2, "model": "KR200", "series": "3", "baud": 9600, "card": True, "data": True}
NEWER = {"port": "tcp:0", "model": "KR40", "jobs": ["*PUMP", "TANK+", "RAIN"]}
FLASH_BEGIN = 0x60000
IMAGE = bytes(range(200))


def s_record(kind, address, address_bytes, data=b""):
    body = bytes([address_bytes + len(data) + 1]) + address.to_bytes(address_bytes, "big") + data
    return f"S{kind}{(body + bytes([255 - sum(body) % 256])).hex().upper()}\r\n"


def as_held(lines):
    return "".join(line + "\n" for line in lines).encode()


class ProgramsFromTheShell(unittest.TestCase):
    @contextlib.contextmanager
    def both(self):
        """A scene with a logger of each family, and a program for each."""
        with Scene([OLDER, NEWER]) as scene:
            self.add_both(scene)
            self.write(scene, "pump.cmd", PROGRAM)
            self.write(scene, "job.cmd", JOB)
            yield scene

    def add_both(self, scene):
        for words in (["--model", "KR200", "--series", "3", "--com", "2", "--baud", "9600"],
                      ["--model", "KR40", "--tcp", ":".join(scene.address(2))]):
            self.assertEqual(scene.run("add", *words)[0], 0)

    def write(self, scene, name, lines):
        with open(os.path.join(scene.scratch.name, name), "w", encoding="utf-8", newline="\r\n") as file:
            file.writelines(line + "\n" for line in lines)

    def add_converters(self, scene):
        """Stand-ins that take no time: the records that they would make are there."""
        for name in ("imgbuild", "objcopy.exe", "recnorm"):
            os.symlink("/bin/true", scene.path(name))
        with open(scene.path("temp.sre"), "w", encoding="ascii", newline="") as file:
            file.write(s_record(0, 0, 2, b"HDR"))
            file.writelines(s_record(2, FLASH_BEGIN + at, 3, IMAGE[at:at + 32]) for at in range(0, len(IMAGE), 32))
            file.write(s_record(8, FLASH_BEGIN, 3))

    def expect(self, scene, code, *words):
        """Runs harvelctl with the files of the scene's own directory at hand: what it has told."""
        result, out, error = scene.run(*words, cwd=scene.scratch.name)
        self.assertEqual((result, out), (code, ""), f"{words}: {error}")
        return error

    def test_memory_and_card_of_the_older_family(self):
        with self.both() as scene:
            held = lambda: scene.holds("logger 1")
            said = self.expect(scene, 1, "load", "1", "pump.cmd")
            self.assertIn("Caution : You are about to send a new program to the KR200 Series 3 on Com 2.", said)
            self.assertIn(os.path.join(scene.scratch.name, "pump.cmd") + "\n", said)
            self.assertIn("Not done: nobody to ask, and no --yes.\n", said)
            self.assertEqual((held()["program"], held()["data"]), (b"", True))

            said = self.expect(scene, 0, "load", "1", "pump.cmd", "--yes")
            self.assertIn("Program sent successfully to the KR200 Series 3 on Com 2 and started running.\n", said)
            self.assertEqual((held()["program"], held()["data"]), (as_held(PROGRAM), False))

            said = self.expect(scene, 0, "load", "1", "pump.cmd", "--card", "--yes")
            self.assertIn("Memory card program started.\n", said)
            self.assertEqual(held()["cardProgram"], as_held(PROGRAM))
            self.expect(scene, 0, "clear", "1", "--card", "--yes")
            self.assertEqual(held()["cardProgram"], b"")
            self.assertEqual(held()["program"], as_held(PROGRAM))
            self.expect(scene, 0, "clear", "1", "--programs", "--yes")
            self.assertEqual(held()["program"], b"")

    def test_flash_of_the_older_family(self):
        with self.both() as scene:
            held = lambda: scene.holds("logger 1")
            self.add_converters(scene)
            said = self.expect(scene, 0, "load", "1", "pump.cmd", "--flash", "--yes")
            self.assertIn("Program successfully sent to Flash in the KR200 Series 3 on Com 2 and started running.\n", said)
            self.assertEqual(held()["flash"], IMAGE)
            self.assertFalse(held()["bootstrap"])

            self.expect(scene, 1, "clear", "1", "--flash")
            self.assertEqual(held()["flash"], IMAGE)
            self.expect(scene, 0, "clear", "1", "--flash", "--yes")
            self.assertEqual(held()["flash"], b"")

    def jobs_of(self, scene):
        code, out, error = scene.run("jobs", "2")
        self.assertEqual(code, 0, error)
        return out.splitlines()

    def held_jobs(self, scene):
        return [job["name"].decode() for job in scene.holds("logger 2")["jobs"]]

    def test_jobs_of_the_newer_family(self):
        with self.both() as scene:
            self.assertEqual(self.jobs_of(scene), ["*PUMP", "TANK", "RAIN"])
            said = self.expect(scene, 1, "clear", "2", "--job", "NONE", "--yes")
            self.assertIn("Logger 2 lists no job NONE.\n", said)
            self.expect(scene, 1, "clear", "2", "--job", "RAIN")
            self.assertEqual(self.held_jobs(scene), ["PUMP", "TANK", "RAIN"])
            self.expect(scene, 0, "clear", "2", "--job", "RAIN", "--yes")
            self.assertEqual(self.held_jobs(scene), ["PUMP", "TANK"])
            said = self.expect(scene, 0, "clear", "2", "--job", "TANK", "--yes")
            self.assertIn("The Job TANK and all it's Data have been successfully deleted.\n", said)

    def test_memory_and_flash_of_the_newer_family(self):
        with self.both() as scene:
            self.expect(scene, 0, "load", "2", "job.cmd", "--yes")
            self.assertEqual(sorted(self.held_jobs(scene)), ["FLOW", "PUMP", "RAIN", "TANK"])
            self.expect(scene, 0, "load", "2", "job.cmd", "--flash", "--yes")
            self.assertEqual(scene.holds("logger 2")["runOnReset"], b"FLOW")
            self.expect(scene, 0, "clear", "2", "--all-jobs", "--yes")
            self.assertEqual(self.held_jobs(scene), [])
            self.assertIn("Logger 2 lists no jobs.\n", self.expect(scene, 1, "jobs", "2"))

    def test_ctrl_c_ends_a_load_and_releases_the_port(self):
        with Scene([OLDER, NEWER]) as scene:
            self.add_both(scene)
            self.write(scene, "pump.cmd", ["RA1M"] * 600)
            process = scene.start("load", "1", os.path.join(scene.scratch.name, "pump.cmd"), "--yes")
            for said in process.stderr:
                if said.startswith("Sending New Program"):
                    break
            process.send_signal(signal.SIGINT)
            _, error = process.communicate(timeout=60)
            self.assertEqual(process.returncode, 1)
            self.assertIn("Interrupted.\n", error)
            self.assertLess(scene.heard("logger 1").count("RA1M"), 600)
            code, _, error = scene.run("connect", "1")
            self.assertEqual(code, 0, error)

    def test_a_missing_file_is_refused_before_anything_is_sent(self):
        with Scene([OLDER, NEWER]) as scene:
            self.add_both(scene)
            missing = os.path.join(scene.scratch.name, "none.cmd")
            self.assertEqual(self.expect(scene, 1, "load", "1", "none.cmd", "--yes"), f"There is no file {missing}.\n")
            self.assertEqual(self.expect(scene, 1, "load", "1", ".", "--yes"),
                             f"The file {scene.scratch.name}/. can't be read.\n")
            self.assertEqual(scene.heard("logger 1"), "")


if __name__ == "__main__":
    unittest.main()
