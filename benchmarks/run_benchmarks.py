#!/usr/bin/env python3
"""run_benchmarks.py BIN [NAME...]: runs the benchmarks in BIN, all or those named, and prints a table of what they measured against its limit.

A miss is told, it is no failure; a benchmark that can't run is one.
"""
import contextlib
import json
import os
import pathlib
import pty
import statistics
import subprocess
import sys
import tempfile
import time
import tty

BIN = pathlib.Path(sys.argv[1]).resolve()
STARTS = 15

# What a search of one silent port waits for: at each of the eleven rates for the probe and the reply, then to tell.
SILENT_PORT_MS = 11 * 500 + (10 + 20 + 30 + 40 + 50 + 100 + 200 + 300 + 400 + 500 + 1000) + 500 + 1000 + 50

# What reaching a stored logger waits for: to wake it up over a com port, or until the next look whether the connection
# stands, to identify it, to ask the newer family for its version, and to tell.
SERIAL_MS = 1500
TCP_MS = 1000
IDENTIFY_MS = 500 + 200 + 200 + 500 + 2000 + 200 + 200 + 1000
VERSION_MS = 500
FOUND_MS = 1000

LINE_MS = 100  # between the lines of a program


def output(program, *arguments, **options):
    return subprocess.run([BIN / program, *arguments], stdout=subprocess.PIPE, text=True, check=True, **options).stdout


def figures(text):
    """Lines of a name and a number."""
    return {name: float(value) for name, value in (line.split() for line in text.splitlines())}


@contextlib.contextmanager
def display():
    """A virtual screen; gives the environment of programs on it."""
    read, write = os.pipe()
    with subprocess.Popen(
        ["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x1024x24", "-nolisten", "tcp", "-noreset"],
        pass_fds=[write], stderr=subprocess.DEVNULL,
    ) as server:
        os.close(write)
        try:
            with os.fdopen(read) as ready:
                number = ready.readline().strip()
            if not number:
                raise RuntimeError("Xvfb did not start")
            yield {"DISPLAY": f":{number}", "QT_QPA_PLATFORM": "xcb"}
        finally:
            server.terminate()


@contextlib.contextmanager
def scene():
    """An application directory of its own with 50 loggers, and no com ports; gives the directory and the environment."""
    with tempfile.TemporaryDirectory(prefix="harvelop-bench-") as scratch:
        directory = os.path.join(scratch, "loggers")
        os.mkdir(directory)
        output("make_records", directory)
        config = os.path.join(scratch, "config")
        environment = dict(os.environ, XDG_CONFIG_HOME=config, XDG_RUNTIME_DIR=scratch, HOME=scratch)
        environment |= {f"HARVELOP_COM{port}": "" for port in range(1, 17)}
        yield directory, environment


def round_trip():
    for link, words in (("pty", "a PTY"), ("tcp", "TCP")):
        told = figures(output("bench_round_trip", link))
        for name, which, limit in (("median", "median", 1.3), ("p99", "99th percentile", 2.0)):
            bare, exchange = told[f"bare_{name}_us"], told[f"exchange_{name}_us"]
            yield (f"round trip over {words}, {which}", f"{exchange:.1f} us, bare {bare:.1f} us", exchange / bare, limit, "times")


@contextlib.contextmanager
def simulated(loggers):
    """Simulated loggers; gives the place of each."""
    with tempfile.NamedTemporaryFile("w", suffix=".json") as file:
        json.dump({"loggers": loggers}, file)
        file.flush()
        with subprocess.Popen([BIN / "tallysim", "--env", file.name], stdout=subprocess.PIPE, text=True) as simulator:
            try:
                told = "".join(iter(simulator.stdout.readline, "ready\n"))
                yield [line.split("=", 1)[1] for line in told.splitlines() if line.startswith(("HARVELOP_COM", "TALLYSIM_TCP"))]
            finally:
                simulator.terminate()


def connecting():
    loggers = [
        {"model": "KR40", "com": 1},
        {"model": "KR200", "com": 2},
        {"model": "KR40", "port": "tcp:0"},
        {"model": "KR200", "port": "tcp:0"},
    ]
    with simulated(loggers) as places:
        for logger, place in zip(loggers, places, strict=True):
            model = logger["model"]
            link, before = ("TCP", TCP_MS) if "port" in logger else ("a PTY", SERIAL_MS)
            waits = before + IDENTIFY_MS + (VERSION_MS if model == "KR40" else 0) + FOUND_MS
            with scene() as (directory, environment):
                took = figures(output("bench_connect", model, place, cwd=directory, env=environment))["connect_ms"]
            yield (f"connecting to a {model} over {link}", f"{took:.0f} ms, its waits {waits} ms", took / waits, 1.02, "times")


def loading():
    """The pace of the lines: what a long program takes longer than a short one."""
    lines = (10, 110)
    with simulated([{"model": "KR200", "com": 1}]) as (place,), scene() as (directory, environment):
        took = []
        for count in lines:
            program = pathlib.Path(directory, "program.cmd")
            program.write_text("1CV=1\r\n" * count)
            took.append(figures(output("bench_load", "KR200", place, program, cwd=directory, env=environment))["load_ms"])
    pace = (took[1] - took[0]) / (lines[1] - lines[0])
    yield ("lines of a program load over a PTY", f"{1000 / pace:.2f} lines/s, {LINE_MS} ms a line", pace / LINE_MS, 1.02, "times")


def texts():
    report = json.loads(output("bench_texts", "--benchmark_format=json", "--benchmark_min_time=0.3", stderr=subprocess.DEVNULL))
    cpu = {row["name"]: row["cpu_time"] / 1000 for row in report["benchmarks"]}
    for name, half, whole, limit in (
        ("cleaning a program of 32,767 characters", "clean/16383", "clean/32767", 1000),
        ("encoding a login of 255 characters", "encode/127", "encode/255", 50),
    ):
        yield (name, "CPU", cpu[whole], limit, "us")
        yield ("  against half of it", f"{cpu[half]:.1f} us", cpu[whole] / cpu[half], 2.5, "times")


def terminal():
    with scene() as (directory, environment), display() as screen:
        told = figures(output("bench_terminal", cwd=directory, env=environment | screen))
    first, second = told["first_ms"], told["second_ms"]
    for name, took in (("first", first), ("second", second)):
        yield (f"terminal, {name} 10 MB", f"{told['bytes'] / took / 1000:.0f} MB/s, at least 20", took, 500, "ms")
        yield ("  longest gap between paints", f"{told[f'{name}_paints']:.0f} paints", told[f"{name}_gap_ms"], 50, "ms")
    yield ("terminal, second 10 MB against the first", f"{first:.0f} ms, {second:.0f} ms", second / first, 1.5, "times")


def scanning():
    report = json.loads(output("bench_scan", "--benchmark_format=json", "--benchmark_min_time=0.3",
                               stderr=subprocess.DEVNULL))
    cpu = {row["name"]: row["cpu_time"] / 1000 for row in report["benchmarks"]}
    for name in sorted({name.split("/")[1] for name in cpu}):
        half, whole = cpu[f"scan/{name}/32750"], cpu[f"scan/{name}/65500"]
        yield (f"scan of 65,500 characters, {name}", "CPU", whole, 250, "us")
        yield ("  against half of it", f"{half:.1f} us", whole / half, 2.5, "times")


def waiting():
    with scene() as (directory, environment), display() as screen:
        told = figures(output("bench_waiting", cwd=directory, env=environment | screen))
    yield ("waiting 10 s, the window open", "CPU", told["waiting_cpu_percent"], 0.1, "% of a core")


def silent_port():
    with scene() as (directory, environment):
        pathlib.Path(directory, "options.ini").write_text("[Options]\r\nFindPorts=False\r\nAvailablePorts=1,\r\n")
        master, slave = pty.openpty()
        tty.setraw(slave)
        environment["HARVELOP_COM1"] = os.ttyname(slave)
        begin = time.monotonic()
        subprocess.run([BIN / "harvelctl", "--dir", directory, "find", "--port", "1", "--yes"], env=environment, check=False,
                       stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        took = (time.monotonic() - begin) * 1000
        os.close(slave)
        os.close(master)
    yield ("search of a silent port", f"{took:.0f} ms, its waits {SILENT_PORT_MS} ms", took / SILENT_PORT_MS, 1.02, "times")


def start():
    with scene() as (directory, environment), display() as screen:
        environment |= screen

        def first_window(program):
            return float(output("window_timer", BIN / program, cwd=directory, env=environment))

        first_window("harvelop")  # the first start in a directory sets it up
        ours, floor = [], []
        for _ in range(STARTS):
            floor.append(first_window("minimal_window"))
            ours.append(first_window("harvelop"))
    window, least = statistics.median(ours), statistics.median(floor)
    yield ("start to first window, 50 loggers", f"{window:.0f} ms, minimal {least:.0f} ms", window / least, 2.0, "times")


def main():
    print(f"{'':44}{'measured':>10}{'limit':>8}  {'':12}{'':6}of")
    only = sys.argv[2:]
    for benchmark in (round_trip, connecting, loading, terminal, scanning, texts, waiting, silent_port, start):
        if only and benchmark.__name__ not in only:
            continue
        for name, of, measured, limit, unit in benchmark():
            verdict = "PASS" if measured <= limit else "MISS"
            print(f"{name:44}{measured:10.3f}{limit:8g}  {unit:12}{verdict:6}{of}", flush=True)


main()
