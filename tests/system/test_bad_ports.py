"""Ports and devices that fail: the search tells it and ends."""

import fcntl
import os
import pty
import threading
import tty
import unittest

from programs import Scene


def silent_port():
    """A pseudo terminal with nobody behind it: its two ends and the path of the port."""
    master, slave = pty.openpty()
    tty.setraw(slave)
    return master, slave, os.ttyname(slave)


def memory(process):
    """What a running process holds, in kilobytes."""
    with open(f"/proc/{process.pid}/status", encoding="ascii") as status:
        return next(int(line.split()[1]) for line in status if line.startswith("VmRSS"))


class BadPorts(unittest.TestCase):
    def test_a_missing_port_is_not_found(self):
        with Scene() as scene:
            scene.environment["HARVELOP_COM5"] = "/dev/harvelop-no-such-port"
            code, _, error = scene.run("find", "--port", "5", "--yes")
            self.assertEqual(code, 1)
            self.assertIn("No tallyCores were found connected to Com 5.", error)

    def test_what_is_no_device_counts_as_missing(self):
        with Scene() as scene:
            file, directory, pipe, circle = (os.path.join(scene.scratch.name, name)
                                             for name in ("file", "directory", "pipe", "circle"))
            with open(file, "w", encoding="ascii") as handle:
                handle.write("text")
            os.mkdir(directory)
            os.mkfifo(pipe)
            os.symlink(circle, circle)
            for path in (file, directory, pipe, circle):
                with self.subTest(path=path):
                    scene.environment["HARVELOP_COM5"] = path
                    code, _, error = scene.run("find", "--port", "5", "--yes", timeout=60)
                    self.assertEqual(code, 1)
                    self.assertIn("No tallyCores were found connected to Com 5.", error)
                    self.assertNotIn("Busy", error)
                    self.assertNotIn("permission", error)
            with open(file, encoding="ascii") as handle:
                self.assertEqual(handle.read(), "text")

    def test_a_busy_port_is_told_with_its_holder(self):
        master, slave, path = silent_port()
        try:
            fcntl.flock(slave, fcntl.LOCK_EX | fcntl.LOCK_NB)
            with Scene() as scene:
                scene.environment["HARVELOP_COM5"] = path
                code, _, error = scene.run("find", "--port", "5", "--yes")
            self.assertEqual(code, 1)
            self.assertEqual(error.count("Can't Connect to Com 5 : the Port is Busy.\n"), 1, error)
            self.assertIn(f"(process {os.getpid()})", error)
        finally:
            os.close(master)
            os.close(slave)

    def test_a_killed_search_leaves_the_port_free_though_somebody_else_has_it_open(self):
        master, slave, path = silent_port()
        try:
            with Scene() as scene:
                scene.environment["HARVELOP_COM5"] = path
                killed = scene.start("find", "--port", "5", "--yes")
                for line in killed.stderr:
                    if "57600 baud" in line:
                        break
                killed.kill()
                killed.communicate()
                code, _, error = scene.run("find", "--port", "5", "--yes")
            self.assertEqual(code, 1)
            self.assertNotIn("Busy", error)
            self.assertIn("No tallyCores Found on Com 5\n", error)
        finally:
            os.close(master)
            os.close(slave)

    def test_a_silent_port_is_tried_from_the_highest_speed_to_the_lowest(self):
        master, slave, path = silent_port()
        try:
            with Scene() as scene:
                scene.environment["HARVELOP_COM5"] = path
                code, _, error = scene.run("find", "--port", "5", "--yes")
            self.assertEqual(code, 1)
            tried = [int(line.split()[4]) for line in error.splitlines() if line.startswith("Trying Com 5 : ")]
            self.assertEqual(tried, [115200, 57600, 56000, 38400, 28800, 19200, 14400, 9600, 4800, 2400, 1200])
            self.assertIn("No tallyCores Found on Com 5\n", error)
        finally:
            os.close(master)
            os.close(slave)

    def test_a_port_that_vanishes_in_the_middle_ends_in_not_found(self):
        with Scene([{"com": 2, "model": "KR40", "port": "pty", "baud": 9600}]) as scene:
            process = scene.start("find", "--port", "2", "--yes")
            for line in process.stderr:
                if "57600 baud" in line:
                    break
            scene.stop_simulator()
            out, error = process.communicate(timeout=60)
            self.assertEqual(process.returncode, 1, error)
            self.assertEqual(out, "")
            self.assertIn("No tallyCores were found connected to Com 2.", error)

    def test_a_port_that_vanishes_while_it_identifies_is_stored_as_unknown(self):
        """The probe has been answered by then; a port that goes with the first line has shown nothing."""
        for lines, found in ((1, []), (3, [("Unknown", "none", "Unknown", "2")])):
            logger = {"com": 2, "model": "KR40", "port": "pty", "baud": 115200, "failure": "DropsLine",
                      "dropAfter": lines}
            with self.subTest(lines=lines), Scene([logger]) as scene:
                code, _, error = scene.run("find", "--port", "2", "--yes", timeout=60)
                self.assertEqual(code, 0 if found else 1, error)
                self.assertEqual([(e["model"], e["serial"], e["version"], e["port"]) for e in scene.list()], found)

    def test_a_device_that_floods_garbage_ends_and_memory_stays_small(self):
        with Scene([{"com": 2, "model": "KR40", "port": "pty", "baud": 115200, "failure": "FloodsGarbage"}]) as scene:
            process = scene.start("find", "--port", "2", "--yes")
            too_late = threading.Timer(100, process.kill)
            too_late.start()
            before = 0
            for line in process.stderr:
                if line.startswith("Trying Com 2") and not before:
                    before = memory(process)
            _, status, usage = os.wait4(process.pid, 0)
            too_late.cancel()
            process.returncode = os.waitstatus_to_exitcode(status)
            process.communicate()
            self.assertIn(process.returncode, (0, 1), "the search hangs")
            self.assertGreater(before, 0)
            self.assertLess(usage.ru_maxrss - before, 40_000)

    def test_a_device_that_answers_one_byte_at_a_time_is_found(self):
        slow = {"com": 2, "model": "KR40", "version": "5.06.0001", "serial": "012345", "port": "pty", "baud": 115200,
                "failure": "SlowBytes"}
        with Scene([slow]) as scene:
            code, _, error = scene.run("find", "--port", "2", "--yes")
            self.assertEqual(code, 0, error)
            self.assertEqual([(e["model"], e["serial"]) for e in scene.list()], [("KR40", "012345")])


if __name__ == "__main__":
    unittest.main()
