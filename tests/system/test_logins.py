"""The login tests of the mail and the FTP server from the real window, against real servers and against odd ones."""

import os
import time
import unittest

import login_servers
from login_servers import HOST, Scripted
from panel_keys import OPTIONS, Typed
from test_window import WAIT
from ways import ADD, WaysCase

MAIL_BOX = "^ ?SMTP Server Login Test$"
FTP_BOX = "^ ?FTP Server Login Test$"
MAIL_PORT = 2525
PATIENT, SHORT = "60", "3"  # seconds: for what must be good on a busy machine too, and for what fails anyhow
# A name and a password that need the padding that the program gives them: one "=", and none.
NAME, PASSWORD = "me", "secret"
GOOD_MAIL = "Successfully Connected to SMTP Server at {}.     "
GOOD_FTP = "Successfully Connected to FTP Server at {}.     "


def setUpModule():
    login_servers.enter_own_network()


def text(words):
    return ["ctrl+a", Typed(words) if words else "Delete"]


class LoginCase(WaysCase):
    def setUp(self):
        super().setUp()
        self.program = self.first_start()

    def serve(self, server):
        return self.enterContext(server)

    def fill_in_mail(self, timeout, server=HOST, port=str(MAIL_PORT)):
        self.press(OPTIONS, "alt+e", "alt+s", *text(server), "alt+r", *text(port), "alt+m", *text(timeout))

    def ask_for_login(self):
        """Checks the box that a mail login hangs on."""
        self.press(OPTIONS, "alt+e", "alt+m", "Tab", "space", "alt+u", *text(NAME), "alt+w", *text(PASSWORD))

    def fill_in_ftp(self, timeout, name=NAME, password=PASSWORD, server=HOST):
        self.press(OPTIONS, "alt+f", "alt+s", *text(server), "alt+u", *text(name), "alt+w", *text(password),
                   "alt+m", *text(timeout))

    def check_mail(self, answer):
        self.press(OPTIONS, "alt+e", "alt+l")
        self.box(MAIL_BOX, answer)
        self.settle()

    def check_ftp(self, answer):
        self.press(OPTIONS, "alt+f", "alt+l")
        self.box(FTP_BOX, answer)
        self.settle()

    def settle(self):
        """A test goes on for a while behind its box, and holds the Add button as long."""
        self.press(OPTIONS, "alt+t")

        def free():
            if self.screen.tool("search", "--onlyvisible", "--name", ADD).stdout:
                return True
            self.press(OPTIONS, "alt+d")
            return False

        self.screen.until("the test does not end", free)
        self.answer(ADD, "Escape")

    def directory(self, name):
        path = os.path.join(self.scene.scratch.name, name)
        os.mkdir(path)
        return path


class Mail(LoginCase):
    def test_a_server_without_logins(self):
        self.fill_in_mail(PATIENT)
        with login_servers.mail_server(MAIL_PORT) as tried:
            self.check_mail(GOOD_MAIL.format(HOST))
        self.assertEqual(tried, [])
        self.end(self.program)

    def test_a_server_with_logins(self):
        self.fill_in_mail(PATIENT)
        self.ask_for_login()
        with login_servers.mail_server(MAIL_PORT, (NAME, PASSWORD)) as tried:
            self.check_mail(GOOD_MAIL.format(HOST))
            self.fill_in_mail(SHORT)
            self.press(OPTIONS, "alt+w", *text("wrong!"))
            self.check_mail("Account Name or Password is Incorrect.    ")
        self.assertEqual(tried, [(NAME, PASSWORD), (NAME, "wrong!")])
        self.end(self.program)

    def test_a_server_that_asks_in_other_words_is_not_supported(self):
        self.fill_in_mail(SHORT)
        self.ask_for_login()
        with login_servers.mail_server(MAIL_PORT, (NAME, PASSWORD), ("User Name\0", "Password\0")) as tried:
            self.check_mail("LOGIN Authentication Type not Supported by this SMTP Server.    ")
        self.assertEqual(tried, [])
        self.end(self.program)

    def test_postfix(self):
        self.serve(login_servers.postfix(MAIL_PORT, self.directory("postfix")))
        self.fill_in_mail(PATIENT)
        self.check_mail(GOOD_MAIL.format(HOST))
        self.ask_for_login()
        self.fill_in_mail(SHORT)
        self.check_mail("LOGIN Authentication Type not Supported by this SMTP Server.    ")
        self.end(self.program)


class FTP(LoginCase):
    def test_a_server_with_one_account(self):
        self.serve(login_servers.ftp_server(self.scene.directory, NAME, PASSWORD))
        self.fill_in_ftp(PATIENT)
        self.check_ftp(GOOD_FTP.format(HOST))
        self.fill_in_ftp(SHORT, password="wrong")
        self.check_ftp("User Name or Password is Incorrect.    ")
        self.end(self.program)

    def test_vsftpd(self):
        self.serve(login_servers.vsftpd(self.directory("ftp")))
        self.fill_in_ftp(PATIENT, "anonymous", "me@here")
        self.check_ftp(GOOD_FTP.format(HOST))
        self.fill_in_ftp(SHORT)
        self.check_ftp("User Name or Password is Incorrect.    ")
        self.end(self.program)


class OddServers(LoginCase):
    """What real servers won't do; both logins against each."""

    def check(self, mail, ftp, greeting, mail_answers=None, ftp_answers=None):
        with Scripted(MAIL_PORT, greeting, mail_answers) as server:
            self.check_mail(mail)
            mail_heard = server.heard
        with Scripted(21, greeting, ftp_answers) as server:
            self.check_ftp(ftp)
            ftp_heard = server.heard
        # A line end goes out before the greeting only if the connection stands at once.
        return [[line for line in heard if line != "\r\n"] for heard in (mail_heard, ftp_heard)]

    def test_servers_that_do_not_greet(self):
        not_found = f"Can't Find SMTP Server at {HOST}.    ", f"Can't Find FTP Server at {HOST}.    "
        self.fill_in_mail(SHORT)
        self.fill_in_ftp(SHORT)
        self.check_mail(not_found[0])  # nobody listens
        self.check_ftp(not_found[1])
        for greeting in ([], ["421 too busy\r\n"], ["220 no end"], [None]):
            with self.subTest(greeting=greeting):
                self.assertEqual(self.check(*not_found, greeting), [[], []])
        self.end(self.program)

    def test_servers_that_answer_nothing_more(self):
        refused = f"Can't connect to SMTP Server at {HOST}.    ", "User Name or Password is Incorrect.    "
        self.fill_in_mail(SHORT)
        self.fill_in_ftp(SHORT)
        self.assertEqual(self.check(*refused, ["220 ready\r\n"]), [["ehlo me\r\n"], [f"USER {NAME}\r\n"]])
        self.assertEqual(self.check(*refused, ["220 ready\r\n"], {"ehlo me": ["421 no\r\n"]},
                                    {f"USER {NAME}": ["230 welcome\r\n"]}), [["ehlo me\r\n"], [f"USER {NAME}\r\n"]])
        self.check(*refused, ["220 ready\r\n", None])
        self.end(self.program)

    def test_servers_that_drip_and_flood(self):
        self.fill_in_mail(PATIENT)
        self.fill_in_ftp(PATIENT)
        good = GOOD_MAIL.format(HOST), GOOD_FTP.format(HOST)
        # Less than overflows the window, which would take the answer along if both came in one piece.
        for behind in (list, lambda answer: ["x" * 30000, "\r\n" * 15000, answer]):
            answers = {line: behind(answer) for line, answer in
                       (("ehlo me", "250 hello\r\n"), (f"USER {NAME}", "331 password?\r\n"),
                        (f"PASS {PASSWORD}", "230 go on\r\n"))}
            heard = self.check(*good, behind("220 ready\r\n"), answers, answers)
            self.assertEqual(heard, [["ehlo me\r\n"], [f"USER {NAME}\r\n", f"PASS {PASSWORD}\r\n"]])
        self.end(self.program)

    def test_fields_that_hold_nothing_and_no_time(self):
        self.fill_in_mail(SHORT, "", "")
        self.check_mail("Can't Find SMTP Server at .    ")
        self.fill_in_ftp(SHORT, "", "", "")
        self.check_ftp("Can't Find FTP Server at .    ")
        with Scripted(MAIL_PORT, ["220 ready\r\n"], {"ehlo me": ["250 hello\r\n"]}) as server:
            for timeout in ("0", "", "abc"):
                self.fill_in_mail(timeout)
                self.check_mail(f"Can't Find SMTP Server at {HOST}.    ")
        self.assertEqual(server.heard, [])
        self.end(self.program)

    def test_closing_the_window_ends_a_test_at_once_and_tells_the_server_nothing(self):
        for fill_in, page, port in ((self.fill_in_mail, "alt+e", MAIL_PORT), (self.fill_in_ftp, "alt+f", 21)):
            with self.subTest(port=port), Scripted(port, ["220 ready\r\n"]) as server:
                fill_in("999")
                self.press(OPTIONS, page, "alt+l")
                self.screen.window("Connecting to (SMTP|FTP) Server \\.\\.\\.$")
                self.screen.until("the server is asked nothing", lambda: server.heard)
                closed = time.monotonic()
                self.press("Connecting to (SMTP|FTP) Server", "alt+F4")
                _, error = self.program.communicate(timeout=WAIT)
                self.assertLess(time.monotonic() - closed, WAIT)
                self.assertEqual((self.program.returncode, error), (0, ""))
                self.assertTrue(server.gone.wait(WAIT))
                self.assertEqual([line for line in server.heard if "Q /H/r" in line], [])
            self.program = self.first_start() if port == MAIL_PORT else None


if __name__ == "__main__":
    unittest.main()
