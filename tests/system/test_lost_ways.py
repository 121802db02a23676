"""Ways that fail or are given up: what is told, that nothing is sent any more, that ports and sockets come free."""

import fcntl
import os
import signal
import socket
import struct
import threading
import unittest

from test_window import WAIT
from ways import BOX, WaysCase

SENT = "Command successfully sent to the tallyCore.     "
SCHEDULES = "0," * 60
RESET = struct.pack("ii", 1, 0)  # lingering that makes a close a reset


def record(fields, key):
    return f"1tallyCoreSettings={fields},{SCHEDULES}1,0,0,/tmp/,1,,Far,,{key},,,0," + "," * 12 + "2,\r\n"


class Host:
    """Listens on a port of the loopback, and keeps what its one client sends until that goes. `closes`: after how many
    characters it hangs up; `option`: set on its end of the line before."""

    def __init__(self, closes=None, option=None):
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.listener.settimeout(WAIT)
        self.port = self.listener.getsockname()[1]
        self.heard, self.gone = b"", threading.Event()
        self.closes, self.option = closes, option
        self.thread = threading.Thread(target=self.serve, daemon=True)
        self.thread.start()

    def serve(self):
        with self.listener, self.listener.accept()[0] as client:
            client.settimeout(WAIT)
            while self.closes is None or len(self.heard) < self.closes:
                try:
                    some = client.recv(4096)
                except ConnectionResetError:
                    some = b""  # gone with something unread
                if not some:
                    self.gone.set()
                    return
                self.heard += some
            if self.option:
                client.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, self.option)


class LostWays(WaysCase):
    def store(self, fields):
        with open(self.scene.path("found.ini"), "w", encoding="utf-8") as file:
            file.write(record(fields, "::7"))
        with open(self.scene.path("options.ini"), "w", encoding="utf-8") as file:
            file.write("ModemTimeout=3\r\nShowMessages=True\r\n")

    def ended(self, program, code=0):
        _, error = program.communicate(timeout=WAIT)
        self.assertEqual((program.returncode, error), (code, ""))

    def fails(self, fields, text):
        self.store(fields)
        program = self.start("::7", "%TEST0")
        self.box(BOX, text)
        self.ended(program)


class LostHosts(LostWays):
    def not_found(self, host):
        self.fails(f"{host},KR45,none,,,,,", f"Could not find a KR45 at {host}.     ")

    def test_an_unknown_host(self):
        self.not_found("no-such-host.invalid:7700")

    def test_a_host_that_refuses(self):
        with socket.socket() as bound:  # and never listens
            bound.bind(("127.0.0.1", 0))
            self.not_found(f"127.0.0.1:{bound.getsockname()[1]}")

    def test_a_silent_host(self):
        host = Host()
        self.not_found(f"127.0.0.1:{host.port}")
        self.assertTrue(host.gone.wait(WAIT))
        self.assertIn(b"TEST0\r\n", host.heard)

    def test_a_host_that_closes_in_the_middle(self):
        self.not_found(f"127.0.0.1:{Host(closes=1).port}")

    def test_a_host_that_resets(self):
        self.not_found(f"127.0.0.1:{Host(closes=1, option=RESET).port}")

    def give_up(self, end, code):
        """Ends the program while it waits for the answer of a silent host."""
        host = Host()
        self.store(f"127.0.0.1:{host.port},KR45,none,,,,,")
        program = self.start("::7", "%TEST0")
        self.screen.until("it is not asked", lambda: host.heard.endswith(b"TEST0\r\n"))
        end(program)
        self.assertTrue(host.gone.wait(WAIT))
        self.ended(program, code)
        self.assertTrue(host.heard.endswith(b"TEST0\r\n"), host.heard)
        self.assertEqual(self.read("found.ini"), record(f"127.0.0.1:{host.port},KR45,none,,,,,", "::7"))

    def test_the_window_closed_while_a_host_is_silent(self):
        self.give_up(lambda program: self.screen.press("^<- Looking for a KR45", "alt+F4"), 0)

    def test_the_program_ended_while_a_host_is_silent(self):
        self.give_up(lambda program: program.send_signal(signal.SIGTERM), -signal.SIGTERM)


class LostModems(LostWays):
    number = "555"

    def fit(self, **failure):
        self.scene.loggers = [{"model": "KR40"}]
        self.scene.modem = {"com": 5, "baud": 9600, "connect": 200, "phoneBook": {self.number: {"model": "KR200"}},
                            **failure}
        self.scene.start_simulator()

    def fails_with(self, text):
        self.fails(f"5,KR40,none,{self.number},ats0,9600,,", text)

    def free(self):
        """Another program can lock the port at once."""
        line = os.open(self.scene.environment["HARVELOP_COM5"], os.O_RDWR | os.O_NOCTTY)
        self.addCleanup(os.close, line)
        fcntl.flock(line, fcntl.LOCK_EX | fcntl.LOCK_NB)

    def test_no_modem(self):
        for failure in ("Silent", "Error", "Garbage"):
            with self.subTest(failure=failure):
                self.fit(failure=failure)
                self.fails_with("Could not find a modem on com 5.     ")
                self.free()
                self.scene.stop_simulator()

    def test_no_connection(self):
        """The command goes to the modem then."""
        for failure in ("Busy", "NoCarrier"):
            with self.subTest(failure=failure):
                self.fit(failure=failure)
                self.store(f"5,KR40,none,{self.number},ats0,9600,,")
                program = self.start("::7", "%TEST0")
                self.box(BOX, "Could not dial 555.     ")
                self.box(BOX, SENT)
                self.ended(program)
                self.free()
                self.scene.stop_simulator()

    def test_a_call_that_drops(self):
        self.fit(failure="DropsCall", dropAfter=1500)
        self.fails_with("Could not find a KR40 via the Modem on Com 5.     ")
        self.free()

    def test_another_model_at_the_other_end(self):
        self.fit()
        self.fails_with("Could not find a KR40 via the Modem on Com 5.     ")
        self.until_heard(f"number {self.number}", "TEST0\r\n")
        self.free()

    def give_up(self, end, code):
        """Ends the program while the modem dials, which never comes to an end."""
        self.fit(failure="NoAnswer")
        self.store(f"5,KR40,none,{self.number},ats0,9600,,")
        with open(self.scene.path("options.ini"), "w", encoding="utf-8") as file:
            file.write("ModemTimeout=50\r\n")
        program = self.start("::7", "%TEST0")
        self.until_heard("modem", "atdt555\r\n")
        end(program)
        self.ended(program, code)
        self.free()
        self.assertTrue(self.scene.heard("modem").endswith("atdt555\r\n"))

    def test_the_window_closed_while_the_modem_dials(self):
        self.give_up(lambda program: self.screen.press("^<- Dialling 555", "alt+F4"), 0)

    def test_the_program_ended_while_the_modem_dials(self):
        self.give_up(lambda program: program.send_signal(signal.SIGTERM), -signal.SIGTERM)


if __name__ == "__main__":
    unittest.main()
