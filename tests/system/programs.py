"""Starts the built programs for the tests: simulated loggers, the command-line client, scratch directories."""

import json
import os
import signal
import subprocess
import tempfile
import threading

BIN = os.environ["HARVELOP_BIN"]
DEMO = os.path.realpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "demo"))
HARVEL = os.path.join(DEMO, "harvel")
PORTS = range(1, 17)
signal.signal(signal.SIGINT, signal.default_int_handler)  # so that what is started here takes it, whoever started this


class Scene:
    """Simulated loggers on com ports, behind a modem and on TCP ports, and an application directory of their own. Use
    it in a `with` statement."""

    def __init__(self, loggers=(), modem=None):
        self.loggers = list(loggers)
        self.modem = modem
        self.simulator = None

    def __enter__(self):
        self.scratch = tempfile.TemporaryDirectory(prefix="harvelop-test-")
        self.directory = os.path.join(self.scratch.name, "loggers")
        os.mkdir(self.directory)
        self.environment = dict(os.environ, HOME=self.scratch.name,
                                XDG_CONFIG_HOME=os.path.join(self.scratch.name, "config"),
                                XDG_RUNTIME_DIR=os.path.join(self.scratch.name, "runtime"), LC_ALL="C.UTF-8")
        os.mkdir(self.environment["XDG_RUNTIME_DIR"], 0o700)
        for port in PORTS:
            self.environment[f"HARVELOP_COM{port}"] = ""
        if self.loggers:
            self.start_simulator()
        return self

    def __exit__(self, *_):
        self.stop_simulator()
        self.scratch.cleanup()

    def start_simulator(self):
        config = os.path.join(self.scratch.name, "loggers.json")
        # Behind a link that goes with its logger: the number of a pseudo terminal is soon somebody else's.
        def linked(device):
            com = device.get("com")
            return dict({"link": os.path.join(self.scratch.name, f"com{com}")}, **device) if com else device
        simulation = {"loggers": [linked(logger) for logger in self.loggers],
                      "memory": os.path.join(self.scratch.name, "memory"),
                      "transcript": os.path.join(self.scratch.name, "transcript")}
        if self.modem:
            simulation["modem"] = linked(self.modem)
        with open(config, "w", encoding="utf-8") as file:
            json.dump(simulation, file)
        self.simulator = subprocess.Popen([os.path.join(BIN, "tallysim"), "--env", config], stdout=subprocess.PIPE,
                                          text=True)
        too_late = threading.Timer(30, self.simulator.kill)
        too_late.start()
        try:
            for line in self.simulator.stdout:
                name, _, value = line.strip().partition("=")
                if name == "ready":
                    return
                if name.startswith(("HARVELOP_COM", "TALLYSIM_TCP_")):
                    self.environment[name] = value
        finally:
            too_late.cancel()
        self.stop_simulator()
        raise RuntimeError("the simulator did not start")

    def stop_simulator(self):
        if self.simulator:
            self.simulator.terminate()
            self.simulator.wait(timeout=30)
            self.simulator.stdout.close()
            self.simulator = None

    def address(self, number):
        """Where the logger with that number, from 1, listens: host and port."""
        return self.environment[f"TALLYSIM_TCP_{number}"].split(":")

    def heard(self, name, direction="in"):
        """What the simulated device of that name ("logger N", "modem", "number PHONE") has received so far; with
        "out" what it has sent."""
        try:
            with open(os.path.join(self.scratch.name, "transcript"), encoding="utf-8") as file:
                entries = [json.loads(line) for line in file if line.endswith("\n")]
        except FileNotFoundError:
            return ""
        return "".join(text for who, way, text in entries if (who, way) == (name, direction))

    def holds(self, name):
        """What the simulated logger of that name holds now, as a dictionary; its texts as bytes."""
        def in_bytes(value):
            return value.encode("latin-1") if isinstance(value, str) else value
        with open(os.path.join(self.scratch.name, "memory"), encoding="utf-8") as file:
            memory = json.load(file)[name]
        memory["jobs"] = [{key: in_bytes(value) for key, value in job.items()} for job in memory["jobs"]]
        return {key: in_bytes(value) for key, value in memory.items()}

    def path(self, name):
        return os.path.join(self.directory, name)

    def add_harvel(self):
        """Puts the stand-in for the unload program into the application directory: the path of the link to it."""
        link = self.path("harvel")
        os.symlink(HARVEL, link)
        return link

    def add_converters(self):
        """Puts the stand-ins for the converters of flash programs into the application directory."""
        for name in ("imgbuild", "recnorm"):
            os.symlink(os.path.join(DEMO, name), self.path(name))

    def harvel_log(self):
        """The lines that the stand-in has written so far; none before its first start. An entry ends in "==== end".
        Bytes that are no UTF-8 come as surrogate escapes."""
        try:
            with open(self.path("harvel.Log"), "rb") as file:
                return file.read().decode("utf-8", "surrogateescape").split("\n")[:-1]
        except FileNotFoundError:
            return []

    def start(self, *words, **more):
        """Starts harvelctl without a terminal."""
        return subprocess.Popen([os.path.join(BIN, "harvelctl"), "--dir", self.directory, *words],
                                env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                **{"stdin": subprocess.DEVNULL, **more})

    def run(self, *words, timeout=120, **more):
        """Runs harvelctl to its end: exit code, standard output, standard error."""
        process = self.start(*words, **more)
        try:
            out, error = process.communicate(timeout=timeout)
        except subprocess.TimeoutExpired:
            process.send_signal(signal.SIGKILL)
            process.communicate()
            raise
        return process.returncode, out, error

    def list(self):
        code, out, _ = self.run("list", "--json")
        assert code == 0
        return json.loads(out)
