"""Loggers entered, tested, reached and talked to from a shell: on a com port, behind the modem, on TCP; and hosts that
are no loggers."""

import contextlib
import os
import signal
import socket
import struct
import subprocess
import threading
import unittest
from concurrent.futures import ThreadPoolExecutor

from programs import BIN, Scene

LOGGERS = [{"com": 2, "model": "KR200", "series": "2", "baud": 9600},
           {"port": "tcp:0", "model": "KR40", "serial": "080017"}]
MODEM = {"com": 5, "baud": 9600, "phoneBook": {"5551234": {"model": "KR305", "series": "3", "password": "se cret"}}}
KINDS = ["a com port", "the modem", "TCP"]


@contextlib.contextmanager
def host(answer):
    """A host on the loopback that does `answer` with each connection: its port."""
    with socket.create_server(("127.0.0.1", 0)) as server, contextlib.ExitStack() as kept:
        def serve():
            with contextlib.suppress(OSError):
                while True:
                    answer(kept.enter_context(server.accept()[0]))
        threading.Thread(target=serve, daemon=True).start()
        yield server.getsockname()[1]
        server.shutdown(socket.SHUT_RDWR)


def be_silent(_):
    """Accepts, and that is all."""


def close(connection):
    connection.close()


def reset(connection):
    connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
    connection.close()


def close_when_asked(connection):
    connection.recv(1)
    connection.close()


class ReachingFromTheShell(unittest.TestCase):
    def add_all(self, scene):
        address = ":".join(scene.address(2))
        for number, words in enumerate([["--model", "KR200", "--series", "2", "--com", "2", "--baud", "9600"],
                                        ["--model", "KR305", "--series", "3", "--password", "se cret", "--modem", "5",
                                         "--phone", "5551234", "--init", "at&f"],
                                        ["--model", "KR40", "--tcp", address]], 1):
            code, out, error = scene.run("add", *words)
            self.assertEqual((code, out, error), (0, f"{number}\n", ""))

    def run_with_lines(self, scene, lines, *words):
        """Runs harvelctl with these lines on its standard input."""
        return subprocess.run([os.path.join(BIN, "harvelctl"), "--dir", scene.directory, *words], env=scene.environment,
                              input=lines, capture_output=True, text=True, check=False, timeout=120)

    def reach(self, scene, number):
        return [self.run_with_lines(scene, "TEST0\nTEST0" if words[0] == "terminal" else "", *words)
                for words in (["test", number], ["connect", number], ["send", number, "TEST0"], ["terminal", number])]

    def test_each_kind_is_added_tested_reached_and_talked_to(self):
        boxes = ["Found a KR200 Series 2 connected to Com Port 2 @ 9600,N,8,1,NOFC.",
                 "Found a KR305 Series 3 connected to the Modem on Com Port 5.", "Found a KR40 at IP address 127.0.0.1"]
        answers = ["T,", "T,", "T,tallyCore 40 Version 5"]
        with Scene(LOGGERS, MODEM) as scene:
            self.add_all(scene)
            self.assertEqual([logger["link"] for logger in scene.list()], ["RS232", "Dialup", "Ethernet"])
            # The three kinds at once, as each takes its time.
            with ThreadPoolExecutor() as kinds:
                runs = [kinds.submit(self.reach, scene, str(number)) for number in (1, 2, 3)]
            for kind, run, box, answer in zip(KINDS, runs, boxes, answers):
                with self.subTest(kind=kind):
                    test, connect, send, talk = run.result()
                    for process in (test, connect, send, talk):
                        self.assertEqual(process.returncode, 0, process.stderr)
                        self.assertNotIn("se cret", process.stderr)
                    self.assertIn(box, test.stderr)
                    self.assertEqual(test.stdout + connect.stdout, "")
                    self.assertTrue(send.stdout.startswith(answer) and send.stdout.count("\n") == 1, send.stdout)
                    self.assertEqual(talk.stdout.splitlines(), send.stdout.splitlines() * 2)
                    self.assertIn("Connected to the KR", talk.stderr)

    def test_a_terminal_whose_input_is_closed_ends_as_one_whose_input_has_ended(self):
        with Scene(LOGGERS) as scene:
            self.assertEqual(scene.run("add", "--model", "KR40", "--tcp", ":".join(scene.address(2)))[0], 0)
            closed = scene.run("terminal", "1", stdin=None, preexec_fn=lambda: os.close(0))
            self.assertEqual(closed, scene.run("terminal", "1"))
            self.assertEqual(closed[0], 0)

    def test_hosts_that_are_no_loggers_are_told_and_end_promptly(self):
        with Scene() as scene, contextlib.ExitStack() as hosts, socket.socket() as refusing:
            refusing.bind(("127.0.0.1", 0))  # and nobody listens
            places = ["no-such-host.invalid:7700", f"127.0.0.1:{refusing.getsockname()[1]}"]
            places += [f"127.0.0.1:{hosts.enter_context(host(answer))}"
                       for answer in (be_silent, close, reset, close_when_asked)]
            for place in places:
                self.assertEqual(scene.run("add", "--model", "KR40", "--tcp", place, "--timeout", "1")[0], 0)
            # The data files are only read now, so all run at once.
            runs = {(verb, place): scene.start(*words) for number, place in enumerate(places, 1)
                    for verb, words in (("test", ["test", str(number)]), ("connect", ["connect", str(number)]),
                                        ("send", ["send", str(number), "x"]), ("terminal", ["terminal", str(number)]))}
            for (verb, place), process in runs.items():
                with self.subTest(verb=verb, place=place):
                    out, error = process.communicate(timeout=100)
                    self.assertEqual((process.returncode, out), (1, ""), error)
                    ip, _, port = place.partition(":")
                    told = (f"No tallyCores were found at IP address {ip} on TCP port {port}." if verb == "test"
                            else f"Could not find a KR40 at {place}.")
                    self.assertIn(told + "\n", error)

    @contextlib.contextmanager
    def talking(self, *starter):
        """A terminal that has reached a logger on the network: the scene and its process, started by `starter`."""
        with Scene([{"port": "tcp:0", "model": "KR40"}]) as scene:
            self.assertEqual(scene.run("add", "--model", "KR40", "--tcp", ":".join(scene.address(1)))[0], 0)
            words = [*starter, os.path.join(BIN, "harvelctl"), "--dir", scene.directory, "terminal", "1"]
            with subprocess.Popen(words, env=scene.environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                  stderr=subprocess.PIPE, text=True) as talk:
                self.addCleanup(talk.kill)
                for line in talk.stderr:
                    if line.startswith("Connected to the"):
                        break
                yield scene, talk

    def test_a_host_that_goes_in_the_middle_ends_the_terminal(self):
        with self.talking() as (scene, talk):
            scene.stop_simulator()
            self.assertEqual(talk.stderr.read(), "The link to logger 1 is lost.\n")
            self.assertEqual(talk.wait(timeout=30), 1)

    def test_a_hang_up_that_is_ignored_leaves_the_terminal_going(self):
        with self.talking("nohup") as (_, talk):
            talk.send_signal(signal.SIGHUP)
            out, error = talk.communicate("TEST0\n", timeout=60)
            self.assertEqual((talk.returncode, out.count("T,tallyCore 40"), error), (0, 1, ""))

    def test_ctrl_c_hangs_up_and_releases_the_port(self):
        with Scene(LOGGERS, MODEM) as scene:
            self.add_all(scene)
            for number, line in ((1, "Looking for a KR200"), (2, "Connected to 5551234")):
                with self.subTest(kind=KINDS[number - 1]):
                    process = scene.start("connect", str(number))
                    for said in process.stderr:
                        if said.startswith(line):
                            break
                    process.send_signal(signal.SIGINT)
                    _, error = process.communicate(timeout=60)
                    self.assertEqual(process.returncode, 1)
                    self.assertIn("Interrupted.\n", error)
                    code, _, error = scene.run("connect", str(number))
                    self.assertEqual(code, 0, error)


if __name__ == "__main__":
    unittest.main()
