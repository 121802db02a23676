"""Runs the tests of one module with an accessibility bus of their own: run.py MODULE."""

import os
import subprocess
import sys
import tempfile

with tempfile.TemporaryDirectory(prefix="harvelop-access-") as runtime:
    environment = dict(os.environ, XDG_RUNTIME_DIR=runtime, GSETTINGS_BACKEND="memory")
    for screen in ("DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS"):
        environment.pop(screen, None)
    # A key that the bus has not answered for yet is lost within Qt as the program ends; other tests look for leaks.
    environment["ASAN_OPTIONS"] = environment.get("ASAN_OPTIONS", "") + ":detect_leaks=0"
    # The warnings are of the toolkit's own wrapper.
    sys.exit(subprocess.call(["dbus-run-session", "--", sys.executable, "-B", "-W", "ignore::DeprecationWarning", "-m",
                              "unittest", "-v", *sys.argv[1:]], env=environment))
