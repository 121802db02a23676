"""What harvelctl traces of simulated loggers, tallysim answers again: the same commands come to the same end."""

import os
import stat
import subprocess
import unittest

from programs import BIN, Scene

PASSWORD = "GREENHOUSE"
LOGGERS = [{"com": 1, "model": "KR305", "series": "3", "version": "7.07", "baud": 115200, "password": PASSWORD},
           {"com": 2, "model": "KR400", "version": "2.06.0001", "serial": "092341", "baud": 57600},
           {"port": "tcp:0", "model": "KR41", "serial": "100455"}]
FIND = ("find", "--all", "--yes", "--password", PASSWORD)


def commands(scene, host):
    """Finds, adds, connects and sends, with one trace: what each of the commands came to."""
    runs = [("find", *FIND[1:], "--trace", scene.path("trace")), ("add", "--model", "KR41", "--tcp", host),
            ("connect", "1", "--trace", scene.path("trace")), ("send", "2", "CHARAC1", "--trace", scene.path("trace")),
            ("send", "3", "TEST0", "--trace", scene.path("trace")), ("list",), ("show", "1"), ("show", "3", "--json")]
    return [scene.run(*words) for words in runs]


class Replay:
    """tallysim on a trace, in the place of the loggers of a scene."""

    def __init__(self, scene, trace, *options):
        self.scene = scene
        self.simulator = subprocess.Popen([os.path.join(BIN, "tallysim"), "--env", "--replay", *options, trace],
                                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        for line in self.simulator.stdout:
            name, _, value = line.strip().partition("=")
            if name == "ready":
                break
            if value and name in [f"HARVELOP_COM{port}" for port in range(1, 17)]:
                scene.environment[name] = value

    def end(self):
        """Its complaints."""
        self.simulator.terminate()
        return self.simulator.communicate(timeout=30)[1]


class TraceTest(unittest.TestCase):
    def test_a_trace_replays_to_the_same_outcome(self):
        with Scene(LOGGERS) as scene, Scene() as again:
            scene.environment["HOME"] = again.environment["HOME"]  # what a record says about folders is the same
            host = ":".join(scene.address(3))
            first = commands(scene, host)
            self.assertEqual([code for code, _, _ in first], [0] * len(first), first)
            trace = scene.path("trace")
            with open(trace, encoding="ascii") as file:
                text = file.read()
            self.assertNotIn(PASSWORD[:4], text)
            self.assertEqual(text.count("# harvelop trace 1, harvelctl "), 4)
            self.assertEqual(stat.S_IMODE(os.stat(trace).st_mode), 0o600)
            scene.stop_simulator()
            replay = Replay(again, trace)
            second = commands(again, host)
            complaints = replay.end()
            self.assertEqual(second, first, complaints)
            self.assertEqual(complaints, "")
            for name in ("found.ini", "options.ini"):
                with open(scene.path(name), "rb") as one, open(again.path(name), "rb") as other:
                    self.assertEqual(one.read(), other.read())

    def test_a_departure_is_told_and_what_was_not_traced_stays_unanswered(self):
        with Scene(LOGGERS[1:2]) as scene:
            self.assertEqual(scene.run("find", "--port", "2")[0], 0)
            code, out, _ = scene.run("send", "1", "TEST0", "--trace", scene.path("trace"))
            self.assertEqual(code, 0)
            scene.stop_simulator()
            replay = Replay(scene, scene.path("trace"), "--fast")
            self.assertEqual(scene.run("send", "1", "TEST0")[:2], (0, out))
            self.assertEqual(scene.run("send", "1", "DIRJOBS")[:2], (0, ""))
            complaints = replay.end()
            self.assertIn("tallysim: com2: line ", complaints)
            self.assertIn("what came is not in the trace and stays unanswered\n", complaints)
            self.assertNotIn("DIRJOBS", complaints)

    def test_the_environment_asks_for_a_trace_too_and_one_that_cannot_be_written_changes_nothing(self):
        with Scene(LOGGERS[1:2]) as scene:
            self.assertEqual(scene.run("find", "--port", "2")[0], 0)
            expected = scene.run("connect", "1")
            scene.environment["HARVELOP_TRACE"] = scene.path("trace")
            self.assertEqual(scene.run("connect", "1"), expected)
            with open(scene.path("trace"), encoding="ascii") as file:
                self.assertIn(' com2 in "T,tallyCore 400 ', file.read())
            for path, reason in ((scene.path("none/trace"), "No such file or directory"),
                                 ("/dev/full", "No space left on device")):
                scene.environment["HARVELOP_TRACE"] = path
                code, out, error = scene.run("connect", "1")
                self.assertEqual((code, out), expected[:2])
                told = f"The trace {path} cannot be written: {reason}. The program goes on without it.\n"
                self.assertEqual(error, told + expected[2])

    def test_a_command_that_reaches_no_logger_leaves_no_trace(self):
        with Scene() as scene:
            scene.environment["HARVELOP_TRACE"] = scene.path("trace")
            self.assertEqual(scene.run("list")[0], 0)
            self.assertFalse(os.path.exists(scene.path("trace")))

    def test_a_window_goes_on_when_nobody_reads_its_complaints_about_the_trace(self):
        with Scene() as scene:
            reader, writer = os.pipe()
            os.close(reader)
            environment = dict(scene.environment, QT_QPA_PLATFORM="offscreen", HARVELOP_TRACE=scene.path("none/trace"))
            run = subprocess.run([os.path.join(BIN, "harvelop"), "::9"], cwd=scene.directory, env=environment,
                                 stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=writer, timeout=120,
                                 check=False)
            os.close(writer)
            self.assertEqual(run.returncode, 0)  # a normal end: there is no logger with that key
            self.assertTrue(os.path.exists(scene.path("options.ini")))

    def test_the_demo_is_found_with_one_command(self):
        with Scene() as scene:
            run = subprocess.run([os.path.join(BIN, "tallysim"), "--demo", "--", os.path.join(BIN, "harvelctl"),
                                  "--dir", scene.directory, "find", "--port", "4", "--yes"],
                                 env=scene.environment, stdin=subprocess.DEVNULL, capture_output=True, text=True,
                                 timeout=120, check=False)
            self.assertEqual(run.returncode, 0, run.stderr)
            self.assertIn("080017", run.stdout)


if __name__ == "__main__":
    unittest.main()
