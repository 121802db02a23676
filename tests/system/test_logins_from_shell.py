"""The login tests of the mail and the FTP server from a shell."""

import unittest

import login_servers
from login_servers import HOST, Scripted
from programs import Scene

MAIL_PORT = 2525
OPTIONS = {"ShowMessages": "1", "SMTPServerName": HOST, "SMTPPort": str(MAIL_PORT), "SMTPServerRequiresAuthentication": "1",
           "SMTPAuthenticationType": "LOGIN", "SMTPUserName": "me", "SMTPPassword": "secret", "SMTPTimeout": "20",
           "FTPServername": HOST, "FTPUserName": "me", "FTPPassword": "secret", "FTPTimeout": "20"}
MAIL = {"ehlo me": ["250 hello\r\n"], "AUTH LOGIN": ["334 VXNlcm5hbWU6\r\n"], "bWU=": ["334 UGFzc3dvcmQ6\r\n"],
        "c2VjcmV0": ["235 go on\r\n"]}
FTP = {"USER me": ["331 password?\r\n"], "PASS secret": ["230 go on\r\n"]}


def setUpModule():
    login_servers.enter_own_network()


class LoginsFromTheShell(unittest.TestCase):
    def login(self, command, **changed):
        """Runs the command with these options: exit code and what it has told."""
        with Scene() as scene:
            with open(scene.path("options.ini"), "w", encoding="ascii", newline="\r\n") as file:
                file.writelines(f"{key}={value}\n" for key, value in dict(OPTIONS, **changed).items())
            code, out, error = scene.run(command)
        self.assertEqual(out, "")
        self.assertNotIn("secret", error)
        return code, error

    def test_good_logins(self):
        with Scripted(MAIL_PORT, ["220 mail\r\n"], MAIL) as mail:
            code, said = self.login("test-smtp")
        self.assertEqual(code, 0, said)
        self.assertIn(f"Successfully Connected to SMTP Server at {HOST}.\n", said)
        self.assertTrue(mail.gone.wait(60))
        self.assertEqual([line for line in mail.heard if line != "\r\n"],
                         ["ehlo me\r\n", "AUTH LOGIN\r\n", "bWU=\r\n", "c2VjcmV0\r\n"])
        with Scripted(21, ["220 ftp\r\n"], FTP) as ftp:
            code, said = self.login("test-ftp")
        self.assertEqual(code, 0, said)
        self.assertIn(f"Successfully Connected to FTP Server at {HOST}.\n", said)
        self.assertTrue(ftp.gone.wait(60))
        self.assertEqual([line for line in ftp.heard if line != "\r\n"], ["USER me\r\n", "PASS secret\r\n"])

    def test_logins_that_are_refused(self):
        with Scripted(MAIL_PORT, ["220 mail\r\n"], dict(MAIL, c2VjcmV0=["535 no\r\n"])):
            code, said = self.login("test-smtp", SMTPTimeout="2")
        self.assertEqual(code, 1)
        self.assertIn("Account Name or Password is Incorrect.\n", said)
        with Scripted(21, ["220 ftp\r\n"], dict(FTP, **{"PASS secret": ["530 no\r\n"]})):
            code, said = self.login("test-ftp", FTPTimeout="2")
        self.assertEqual(code, 1)
        self.assertIn("User Name or Password is Incorrect.\n", said)

    def test_servers_that_are_not_there(self):
        for command, text in (("test-smtp", "Can't Find SMTP Server at"), ("test-ftp", "Can't Find FTP Server at")):
            code, said = self.login(command, SMTPTimeout="1", FTPTimeout="1")
            self.assertEqual(code, 1)
            self.assertIn(f"{text} {HOST}.\n", said)


if __name__ == "__main__":
    unittest.main()
