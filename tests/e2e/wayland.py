#!/usr/bin/env python3
"""The program where there is Wayland and nothing else: it starts, shows the file, keeps no position, ends in order.

Usage: wayland.py PROGRAM FILE. 77: this machine has no compositor to try it with.
"""
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time

PROGRAM, FILE = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
POSITION = 'MainWindow = "1200,1800,0,0"'
PATIENCE = 30  # seconds


def wait(what, holds):
    end = time.time() + PATIENCE
    while not holds():
        if time.time() > end:
            sys.exit(what)
        time.sleep(0.05)


if shutil.which("weston") is None:
    sys.exit(77)
with tempfile.TemporaryDirectory() as home:
    os.makedirs(os.path.join(home, "calder"))
    store = os.path.join(home, "calder", "Calder.ini")
    with open(store, "w") as file:
        file.write("[FormProperty]\n" + POSITION + "\n")
    env = {k: v for k, v in os.environ.items() if k not in ("DISPLAY", "QT_QPA_PLATFORM", "XDG_SESSION_TYPE")}
    env.update(HOME=home, XDG_CONFIG_HOME=home, XDG_RUNTIME_DIR=home, LANG="C.UTF-8", WAYLAND_DISPLAY="calder-test")
    os.chmod(home, 0o700)
    compositor = subprocess.Popen(["weston", "--backend=headless-backend.so", "--socket=calder-test", "--idle-time=0"],
                                  env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    program = None
    try:
        wait("the compositor did not start", lambda: os.path.exists(os.path.join(home, "calder-test")))
        log = os.path.join(home, "log")
        with open(log, "w") as out:
            program = subprocess.Popen([PROGRAM, FILE], env=dict(env, WAYLAND_DEBUG="client"), stderr=out)
        requests = lambda: open(log, errors="replace").read()  # what it asked the compositor for
        shown = 'set_title("Orvo Calder for XG5530/31 <%s>")' % FILE
        wait("no window with the file's name came", lambda: program.poll() is not None or shown in requests())
        if program.poll() is not None:
            sys.exit("the program ended: " + requests()[-2000:])
        program.send_signal(signal.SIGTERM)
        wait("the program did not end", lambda: program.poll() is not None)
        if program.returncode != 0:
            sys.exit("it ended with %d" % program.returncode)
        if POSITION not in open(store).read():
            sys.exit("the stored position was lost: " + open(store).read())
    finally:
        for process in (program, compositor):
            if process is not None and process.poll() is None:
                process.kill()
                process.wait()
