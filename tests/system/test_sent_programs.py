"""Programs go to simulated loggers and are read back out of them; jobs, cards and flash memory are cleared."""

import unittest

from programs import Scene

OLDER = b"RA1S 1V\r\n\r\nRB2S 2V 'a remark\r\n"
NEWER = b'BEGIN"NEW"\r\nRA1S 1V\r\n\r\nEND\r\n'


class SentPrograms(unittest.TestCase):
    def scene(self, *series, program, **logger):
        scene = self.enterContext(Scene([dict(logger, port="tcp:0")]))
        scene.add_converters()
        with open(scene.path("pump.cmd"), "wb") as file:
            file.write(program)
        address = ":".join(scene.address(1))
        self.assertEqual(scene.run("add", "--model", logger["model"], *series, "--tcp", address)[0], 0)
        return scene

    def after(self, scene, *words):
        """What the logger holds when that has been done to it."""
        code, _, error = scene.run(words[0], "1", *words[1:], "--yes")
        self.assertEqual(code, 0, error)
        return scene.holds("logger 1")

    def test_older_family(self):
        scene = self.scene("--series", "3", program=OLDER, model="KR200", series="3", data=True, card=True)
        program = scene.path("pump.cmd")
        as_kept = OLDER.replace(b"\r\n", b"\n")
        held = self.after(scene, "load", program)
        self.assertEqual((held["program"], held["data"], held["cardProgram"]), (as_kept, False, b""))
        held = self.after(scene, "clear", "--programs")
        self.assertEqual(held["program"], b"")
        held = self.after(scene, "load", program, "--card")
        self.assertEqual((held["cardProgram"], held["program"]), (as_kept, as_kept))  # it has been started, too
        held = self.after(scene, "clear", "--card")
        self.assertEqual((held["cardProgram"], held["program"]), (b"", as_kept))
        held = self.after(scene, "load", program, "--flash")
        cleaned = b"RA1S 1V\r\nRB2S 2V\r\n"
        self.assertEqual(held["flash"], b"STAND-IN IMAGE %d\n" % len(cleaned) + cleaned)
        self.assertEqual((held["program"], held["resets"], held["bootstrap"]), (b"", 1, False))
        held = self.after(scene, "clear", "--flash")
        self.assertEqual((held["flash"], held["resets"], held["bootstrap"]), (b"", 2, False))

    def test_kr4_family(self):
        scene = self.scene(program=NEWER, model="KR400", version="4.06.0001", jobs=["*PUMP", "TANK"])
        program = scene.path("pump.cmd")
        as_kept = NEWER.replace(b"\r\n", b"\n")
        held = self.after(scene, "load", program)
        new_job = {"name": b"NEW", "current": True, "hasData": False, "text": as_kept}
        self.assertEqual((held["program"], held["jobs"][-1], held["flash"]), (as_kept, new_job, b""))
        held = self.after(scene, "load", program, "--flash")
        self.assertEqual((held["flash"], held["runOnReset"], held["resets"]), (as_kept, b"NEW", 1))
        held = self.after(scene, "clear", "--flash")
        self.assertEqual((held["flashOnReset"], held["runOnReset"], held["resets"]), (b"Erase", b"", 1))
        self.assertEqual(scene.run("jobs", "1")[1], "PUMP\nTANK\n*NEW\n")
        held = self.after(scene, "clear", "--job", "NEW")
        self.assertEqual([job["name"] for job in held["jobs"]], [b"PUMP", b"TANK"])
        held = self.after(scene, "clear", "--all-jobs")
        self.assertEqual(held["jobs"], [])

    def test_jobs_with_data(self):
        scene = self.scene(program=NEWER, model="KR40", jobs=["*PUMP+", "TANK+", "WELL+"])
        held = self.after(scene, "clear", "--job", "PUMP")
        self.assertEqual([(job["name"], job["hasData"]) for job in held["jobs"]], [(b"TANK", True), (b"WELL", True)])
        held = self.after(scene, "clear", "--all-jobs")
        self.assertEqual(held["jobs"], [])


if __name__ == "__main__":
    unittest.main()
