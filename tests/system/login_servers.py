"""Mail and FTP servers on loopback for the login tests, in a network namespace of the test's own: its port 21 is free."""

import contextlib
import ctypes
import fcntl
import os
import socket
import struct
import subprocess
import sys
import threading
import time
import unittest

HOST = "127.0.0.1"
UNPACKED = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "build", "servers")
sys.path.append("/usr/lib/python3/dist-packages")  # where the packages are, whichever Python runs this
NEW_USER, NEW_NET = 0x10000000, 0x40000000


def enter_own_network():
    """Moves this process, which must not have begun threads yet, and what it starts, into a network namespace of its own.
    SkipTest where that is not permitted."""
    libc = ctypes.CDLL(None, use_errno=True)
    user, group = os.getuid(), os.getgid()
    if libc.unshare(NEW_NET) != 0:
        if libc.unshare(NEW_USER | NEW_NET) != 0:
            raise unittest.SkipTest(f"no network namespace of its own: {os.strerror(ctypes.get_errno())}")
        for name, text in (("setgroups", "deny"), ("uid_map", f"0 {user} 1"), ("gid_map", f"0 {group} 1")):
            with open(f"/proc/self/{name}", "w", encoding="ascii") as file:
                file.write(text)
    up, set_flags = 0x1 | 0x40, 0x8914
    with socket.socket() as loopback:
        fcntl.ioctl(loopback, set_flags, struct.pack("16sH14x", b"lo", up))


def server_program(name):
    """A server of a Debian package, installed or only unpacked, with the environment that it needs. SkipTest if missing."""
    for root in ("/", UNPACKED):
        path = os.path.join(root, name)
        if os.access(path, os.X_OK):
            libraries = os.path.abspath(os.path.join(root, "usr/lib/postfix"))
            return path, dict(os.environ, LD_LIBRARY_PATH=libraries)
    raise unittest.SkipTest(f"{name} is missing: ./setup --tests")


class Listener:
    """Accepts connections on a port, each in a thread of its own; use it in a `with` statement."""

    def __init__(self, port, serve):
        self.serve = serve
        self.socket = socket.create_server((HOST, port))
        self.threads = [threading.Thread(target=self.accept, daemon=True)]

    def __enter__(self):
        self.threads[0].start()
        return self

    def __exit__(self, *_):
        self.socket.shutdown(socket.SHUT_RDWR)
        self.socket.close()

    def accept(self):
        with contextlib.suppress(OSError):
            while True:
                connection, _ = self.socket.accept()
                self.threads.append(threading.Thread(target=self.run, args=[connection], daemon=True))
                self.threads[-1].start()

    def run(self, connection):
        with connection, contextlib.suppress(OSError):
            self.serve(connection)


class Scripted(Listener):
    """Says the greeting, then to each line what `answers` holds for it, piece by piece; to others nothing. An answer is a
    list of texts; None hangs up. Collects the lines that it hears; `gone` is set once a client has closed."""

    def __init__(self, port, greeting, answers=None):
        super().__init__(port, self.talk)
        self.greeting, self.answers = greeting, answers or {}
        self.heard = []
        self.gone = threading.Event()

    def say(self, connection, pieces):
        for piece in pieces:
            if piece is None:
                connection.shutdown(socket.SHUT_RDWR)
                return
            connection.sendall(piece.encode())

    def talk(self, connection):
        try:
            self.say(connection, self.greeting)
            for line in connection.makefile(encoding="utf-8", newline="\r\n"):
                self.heard.append(line)
                self.say(connection, self.answers.get(line.rstrip("\r\n"), []))
        finally:
            self.gone.set()


@contextlib.contextmanager
def mail_server(port, account=None, prompts=("Username:", "Password:")):
    """aiosmtpd; asks for a login if there is an account, a name and a password. Gives the logins that were tried."""
    from aiosmtpd.controller import Controller
    from aiosmtpd.smtp import SMTP, AuthResult

    tried = []

    def authenticate(_server, _session, _envelope, _mechanism, login):
        tried.append((login.login.decode(), login.password.decode()))
        return AuthResult(success=tried[-1] == account, handled=False)

    class Server(SMTP):
        AuthLoginUsernameChallenge, AuthLoginPasswordChallenge = prompts

    class Mail(Controller):
        def factory(self):
            return Server(self.handler, hostname="mail.test", auth_require_tls=False, auth_required=account is not None,
                          authenticator=authenticate, auth_exclude_mechanism=["PLAIN"])

    controller = Mail(object(), hostname=HOST, port=port)
    controller.start()
    try:
        yield tried
    finally:
        controller.stop()


@contextlib.contextmanager
def postfix(port, directory):
    """The mail server of postfix in its stand-alone mode, which needs no user of its own; it knows no logins."""
    path, environment = server_program("usr/lib/postfix/sbin/smtpd")
    for name in ("queue", "data"):
        os.mkdir(os.path.join(directory, name))
    programs = os.path.dirname(path)
    settings = {"compatibility_level": "3.6", "queue_directory": f"{directory}/queue", "data_directory": f"{directory}/data",
                "daemon_directory": programs, "command_directory": programs, "mail_owner": "mail", "setgid_group": "man",
                "shlib_directory": environment["LD_LIBRARY_PATH"], "myhostname": "mail.test", "inet_protocols": "ipv4",
                "local_recipient_maps": ""}
    with open(os.path.join(directory, "main.cf"), "w", encoding="utf-8") as file:
        file.writelines(f"{name} = {value}\n" for name, value in settings.items())
    environment["MAIL_CONFIG"] = directory

    def pass_on(source, target):
        while text := source.read1():
            target.write(text)
            target.flush()

    def serve(connection):  # through pipes: on a socket of its own it insists on a user of its own
        with subprocess.Popen([path, "-S"], stdin=subprocess.PIPE, stdout=subprocess.PIPE, env=environment) as server:
            back = threading.Thread(target=pass_on, args=[server.stdout, connection.makefile("wb")], daemon=True)
            back.start()
            with contextlib.suppress(OSError):
                pass_on(connection.makefile("rb"), server.stdin)
            server.stdin.close()
            back.join(timeout=30)

    with Listener(port, serve):
        yield


@contextlib.contextmanager
def running(command, environment, port):
    """A server as a process of its own, once it listens."""
    server = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL)
    try:
        deadline = time.monotonic() + 60
        with socket.socket() as probe:
            while probe.connect_ex((HOST, port)) != 0:
                if server.poll() is not None or time.monotonic() > deadline:
                    raise AssertionError(f"{command[0]} does not listen")
                time.sleep(0.05)
        yield
    finally:
        server.terminate()
        server.wait(timeout=30)


def ftp_server(directory, name, password):
    """pyftpdlib with one account, by the Python that its package is for."""
    return running(["/usr/bin/python3", "-m", "pyftpdlib", "-i", HOST, "-p", "21", "-u", name, "-P", password, "-d", directory],
                   os.environ, 21)


def vsftpd(directory):
    """vsftpd for anonymous users, as whoever runs the test."""
    path, environment = server_program("usr/sbin/vsftpd")
    settings = {"listen": "YES", "listen_address": HOST, "background": "NO", "run_as_launching_user": "YES",
                "anonymous_enable": "YES", "local_enable": "NO", "ftp_username": "root", "anon_root": directory,
                "seccomp_sandbox": "NO", "secure_chroot_dir": directory}
    config = os.path.join(directory, "vsftpd.conf")
    with open(config, "w", encoding="utf-8") as file:
        file.writelines(f"{name}={value}\n" for name, value in settings.items())
    return running([path, config], environment, 21)
