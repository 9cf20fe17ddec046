#!/usr/bin/env python3
"""Two copies of the built program on one desktop: what they share, and whom they refuse. Usage: copies.py PROGRAM."""
import os
import signal
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "scripts"))
from virtual_desktop import Desktop, StepFailed, check  # noqa: E402

PROGRAM = os.path.abspath(sys.argv[1])


def store(desktop):
    """The settings store as {section: {key: value}}."""
    sections, section = {}, None
    with open(os.path.join(desktop.home, ".config", "calder", "Calder.ini"), encoding="utf-8") as file:
        for line in file:
            line = line.strip()
            if line.startswith("["):
                section = sections.setdefault(line[1:-1], {})
            elif " = " in line:
                key, value = line.split(" = ", 1)
                section[key] = value.strip('"')
    return sections


def windows(desktop, pattern):
    return desktop.run("xdotool", "search", "--onlyvisible", "--name", pattern, check_status=False).split()


def own_copies(desktop):
    """The copies on this desktop, however they were started; those on another one are somebody else's."""
    display = ("DISPLAY=" + desktop.env["DISPLAY"]).encode()
    for process in filter(str.isdigit, os.listdir("/proc")):
        try:
            if os.readlink("/proc/%s/exe" % process) != os.path.realpath(PROGRAM):
                continue
            with open("/proc/%s/environ" % process, "rb") as file:
                if display in file.read().split(b"\0"):
                    yield int(process)
        except OSError:
            continue  # it has ended, or is another user's


def start(desktop):
    """Starts one more copy and waits for its window."""
    before = set(windows(desktop, "Orvo Calder"))
    program = subprocess.Popen([PROGRAM], env=desktop.env, cwd=desktop.home, stderr=subprocess.DEVNULL)
    end = time.time() + 15
    while time.time() < end:
        new = set(windows(desktop, "Orvo Calder")) - before
        if new:
            time.sleep(0.3)
            return program, new.pop()
        time.sleep(0.05)
    raise StepFailed("a copy showed no window; status %s, windows %s, before %s" % (program.poll(), windows(desktop, "."), before))


def press_until(desktop, keys, done, what):
    """Presses the keys until they had their effect: a loaded machine may lose a key while the focus moves."""
    for _ in range(8):
        desktop.key(keys)
        end = time.time() + 2
        while time.time() < end:
            if done():
                return
            time.sleep(0.05)
    raise StepFailed(what)


def answer_exit_question(desktop, window, gone):
    """Closes the window and says Yes; gone: whether its copy has ended."""
    desktop.run("xdotool", "windowactivate", "--sync", window)
    press_until(desktop, "alt+F4", lambda: desktop.title() == "Caution Message", "no question came")
    press_until(desktop, "Return", gone, "a copy did not end")


def close(desktop, program, window):
    answer_exit_question(desktop, window, lambda: program.poll() is not None)
    check(program.returncode == 0, "a copy ended with %s" % program.returncode)


def copies_count_themselves(desktop):
    first, first_window = start(desktop)
    second, second_window = start(desktop)
    check(store(desktop)["System"]["WinCount"] == "2", "two copies count %s" % store(desktop)["System"])
    check(store(desktop)["System"]["WinHandle"] == "2", "the second copy has number %s" % store(desktop)["System"])
    close(desktop, first, first_window)
    check(store(desktop)["System"]["WinCount"] == "1", "one copy left counts %s" % store(desktop)["System"])
    check("FormProperty" not in store(desktop), "a copy that is not the last wrote positions")
    close(desktop, second, second_window)
    check(store(desktop)["System"]["WinCount"] == "0", "no copy left counts %s" % store(desktop)["System"])
    check("MainWindow" in store(desktop)["FormProperty"], "the last copy wrote no positions")


def a_crash_is_forgotten(desktop):
    program, _ = start(desktop)
    program.send_signal(signal.SIGKILL)
    program.wait()
    check(store(desktop)["System"]["WinCount"] == "1", "a copy that was killed counted itself out")
    program, window = start(desktop)
    check(store(desktop)["System"]["WinCount"] == "1", "the copy that was killed still counts")
    close(desktop, program, window)


def a_signal_ends_a_copy_in_order(desktop):
    for number, opened in ((signal.SIGTERM, None), (signal.SIGHUP, None), (signal.SIGTERM, "ctrl+o")):
        program, window = start(desktop)
        desktop.run("xdotool", "windowactivate", "--sync", window)
        place = 40 + 10 * number + (300 if opened else 0)
        desktop.run("xdotool", "windowmove", "--sync", window, str(place), "60")
        if opened:
            time.sleep(0.3)
            press_until(desktop, opened, lambda: desktop.title().startswith("Open"), "no dialog came")
        time.sleep(0.3)
        program.send_signal(number)
        what = "signal %d%s" % (number, " in a dialog" if opened else "")
        check(program.wait(timeout=10) == 0, "%s: the copy ended with %s" % (what, program.returncode))
        kept = store(desktop)
        check(kept["System"]["WinCount"] == "0", "%s left the count at %s" % (what, kept["System"]["WinCount"]))
        left = int(kept["FormProperty"]["MainWindow"].split(",")[1]) / 15
        check(abs(left - place) < 20, "%s stored the position %s, not %s" % (what, left, place))


def a_display_that_goes_ends_a_copy_in_order(_):
    with tempfile.TemporaryDirectory() as pictures:
        desktop = Desktop(pictures)
        try:
            program, _ = start(desktop)
            desktop.server.kill()
            desktop.server.wait()
            program.wait(timeout=10)
            check(store(desktop)["System"]["WinCount"] == "0", "a copy without a display still counts")
            check("MainWindow" in store(desktop)["FormProperty"], "no positions were stored without a display")
        finally:
            desktop.close()


def new_starts_a_copy(desktop):
    program, window = start(desktop)
    desktop.run("xdotool", "windowactivate", "--sync", window)
    time.sleep(0.3)
    desktop.key("ctrl+n")
    end = time.time() + 15
    while time.time() < end and len(windows(desktop, "Orvo Calder")) < 2:
        time.sleep(0.05)
    found = windows(desktop, "Orvo Calder")
    check(len(found) == 2, "New started no copy")
    other = next(w for w in found if w != window)
    close(desktop, program, window)
    check(windows(desktop, "Orvo Calder") == [other], "the new copy did not outlive the first")
    answer_exit_question(desktop, other, lambda: not windows(desktop, "Orvo Calder"))


def the_sibling_is_refused(desktop):
    sibling = subprocess.Popen(["xev", "-name", "Orvo Marlow for XG5530/31 <a.seq>"],
                               env=desktop.env, stdout=subprocess.DEVNULL)
    try:
        end = time.time() + 10
        while time.time() < end and not windows(desktop, "Orvo Marlow"):
            time.sleep(0.05)
        program = subprocess.Popen([PROGRAM], env=desktop.env, cwd=desktop.home, stderr=subprocess.DEVNULL)
        desktop.wait_title("^Error Message$")
        press_until(desktop, "Return", lambda: program.poll() is not None, "the message was not answered")
        check(program.returncode != 0, "the program started beside its sibling")
    finally:
        sibling.kill()
        sibling.wait()


def main():
    with tempfile.TemporaryDirectory() as pictures:
        desktop = Desktop(pictures)
        try:
            for step in (copies_count_themselves, a_crash_is_forgotten, a_signal_ends_a_copy_in_order,
                         a_display_that_goes_ends_a_copy_in_order, new_starts_a_copy, the_sibling_is_refused):
                step(desktop)
                print("ok    " + step.__name__.replace("_", " "), flush=True)
        except (StepFailed, subprocess.SubprocessError, OSError, KeyError) as fault:
            print("FAIL  %s: %r" % (step.__name__, fault), flush=True)
            return 1
        finally:
            for process in own_copies(desktop):
                os.kill(process, signal.SIGKILL)
            desktop.close()
    return 0


if __name__ == "__main__":
    sys.exit(main())
