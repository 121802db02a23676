"""A search as a user starts it: processes on pseudo terminals, each logger answering at its own speed only."""

import os
import unittest

from programs import Scene

FOUR_LOGGERS = [
    {"com": 1, "model": "KR200", "series": "1", "version": "7.18", "port": "pty", "baud": 9600},
    {"com": 3, "model": "KR305", "series": "3", "version": "9.05", "password": "mountain", "port": "pty", "baud": 1200},
    {"com": 4, "model": "KR40", "version": "5.06.0001", "serial": "012345", "port": "pty", "baud": 115200},
    {"com": 9, "model": "KR400", "version": "6.10.0002", "serial": "098765", "port": "pty", "baud": 57600},
]


class Search(unittest.TestCase):
    def test_all_ports_find_the_four_loggers_and_store_them(self):
        with Scene(FOUR_LOGGERS) as scene:
            code, out, error = scene.run("find", "--all", "--yes", "--password", "mountain")
            self.assertEqual(code, 0, error)
            self.assertNotIn("mountain", out + error)
            self.assertEqual(out, scene.run("list")[1])
            self.assertIn("Found a KR200 Series 1 on Com 1\n", error)
            self.assertIn("Found a KR400 on Com 9\n", error)
            found = [(e["model"], e["serial"], e["version"], e["port"], e["baud"]) for e in scene.list()]
            self.assertEqual(found, [("KR200 Series 1", "none", "7.18", "1", "9600"),
                                     ("KR305 Series 3", "none", "9.05", "3", "1200"),
                                     ("KR40", "012345", "5.06.0001", "4", "115200"),
                                     ("KR400", "098765", "6.10.0002", "9", "57600")])
            with open(scene.path("found.ini"), "rb") as file:
                stored = file.read()
            here = os.path.join(os.path.dirname(__file__), "golden", "found.ini")
            with open(here, "rb") as file:
                golden = file.read().replace(b"@HOME@", scene.scratch.name.encode())
            self.assertEqual(stored, golden)
            self.assertEqual(os.stat(scene.path("found.ini")).st_mode & 0o777, 0o600)

    def test_a_password_question_that_nobody_answers_counts_as_cancelled(self):
        locked = dict(FOUR_LOGGERS[1], baud=115200)
        with Scene([locked]) as scene:
            code, _, error = scene.run("find", "--port", "3")
            self.assertEqual(code, 1)
            self.assertIn("it may have a password enabled", error)
            self.assertEqual(scene.list(), [])

    def test_replies_in_pieces_with_noise_and_delay_are_read(self):
        rough = {"com": 2, "model": "KR45", "version": "5.06.0001", "serial": "000777", "port": "pty", "baud": 56000,
                 "chunk": 3, "delay": 40, "noise": 12}
        with Scene([rough]) as scene:
            code, _, error = scene.run("find", "--port", "2", "--yes")
            self.assertEqual(code, 0, error)
            self.assertEqual([(e["model"], e["serial"], e["baud"]) for e in scene.list()], [("KR45", "000777", "56000")])


if __name__ == "__main__":
    unittest.main()
