"""Ports and devices that fail: the search tells it and ends."""

import fcntl
import os
import pty
import time
import tty
import unittest

from programs import Scene


def silent_port():
    """A pseudo terminal with nobody behind it: its two ends and the path of the port."""
    master, slave = pty.openpty()
    tty.setraw(slave)
    return master, slave, os.ttyname(slave)


class BadPorts(unittest.TestCase):
    def test_a_missing_port_is_not_found(self):
        with Scene() as scene:
            scene.environment["HARVELOP_COM5"] = "/dev/harvelop-no-such-port"
            code, _, error = scene.run("find", "--port", "5", "--yes")
            self.assertEqual(code, 1)
            self.assertIn("No tallyCores were found connected to Com 5.", error)

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

    def test_a_silent_port_costs_the_prescribed_waits(self):
        master, slave, path = silent_port()
        try:
            with Scene() as scene:
                scene.environment["HARVELOP_COM5"] = path
                code, _, error = scene.run("find", "--port", "5", "--yes")
            self.assertEqual(code, 1)
            self.assertIn("Trying Com 5 : 115200 baud\n", error)
            self.assertIn("Trying Com 5 : 1200 baud\n", error)
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

    def test_a_port_that_vanishes_while_it_identifies_ends(self):
        with Scene([{"com": 2, "model": "KR40", "port": "pty", "baud": 115200, "failure": "DropsLine"}]) as scene:
            code, _, _ = scene.run("find", "--port", "2", "--yes", timeout=60)
            self.assertIn(code, (0, 1))

    def test_a_device_that_floods_garbage_ends_and_memory_stays_small(self):
        with Scene([{"com": 2, "model": "KR40", "port": "pty", "baud": 115200, "failure": "FloodsGarbage"}]) as scene:
            process = scene.start("find", "--port", "2", "--yes")
            peak = 0
            deadline = time.monotonic() + 100
            while process.poll() is None and time.monotonic() < deadline:
                try:
                    with open(f"/proc/{process.pid}/status", encoding="ascii") as status:
                        sizes = [int(line.split()[1]) for line in status if line.startswith("VmRSS")]
                        peak = max([peak, *sizes])
                except OSError:
                    break
                try:
                    process.wait(timeout=0.2)
                except Exception:  # still running: look at it again
                    continue
            self.assertIsNotNone(process.poll(), "the search hangs")
            process.communicate()
            self.assertLess(peak, 400_000)

    def test_a_device_that_answers_one_byte_at_a_time_is_found(self):
        slow = {"com": 2, "model": "KR40", "version": "5.06.0001", "serial": "012345", "port": "pty", "baud": 115200,
                "failure": "SlowBytes"}
        with Scene([slow]) as scene:
            code, _, error = scene.run("find", "--port", "2", "--yes")
            self.assertEqual(code, 0, error)
            self.assertEqual([(e["model"], e["serial"]) for e in scene.list()], [("KR40", "012345")])


if __name__ == "__main__":
    unittest.main()
