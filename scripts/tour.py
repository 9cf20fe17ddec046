#!/usr/bin/env python3
"""A short tour of the main job on a virtual display: real keys and mouse, pictures and files in the tour folder.

Usage: tour.py PROGRAM FOLDER. Ends with 0 only if every step held.
"""
import math
import os
import re
import signal
import struct
import subprocess
import sys
import time

from virtual_desktop import Desktop, StepFailed, check

PROGRAM, FOLDER = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
SAMPLE = os.path.join(ROOT, "data", "sine-burst.txt")
BENCH = os.path.join(os.path.dirname(os.path.dirname(PROGRAM)), "sim")
WDB_SETTINGS, WDB_POINTS = 352, 524288


def marker_columns(desktop):
    """Screen columns of the markers: inverted ground over most of the picture's height."""
    width, height, data = desktop.pixels()
    columns = []
    for x in range(0, width):
        bright = sum(1 for y in range(150, height - 150, 4) if data[3 * (y * width + x)] > 150)
        if bright > (height - 300) / 4 * 0.5:
            columns.append(x)
    return columns


def codes_of_text(path):
    with open(path, "rb") as file:
        return [int(line) for line in file.read().split()]


def codes_of_wdb(path):
    with open(path, "rb") as file:
        data = file.read()
    return list(struct.unpack_from("<%dh" % WDB_POINTS, data, WDB_SETTINGS))


class Tour:
    def __init__(self, desktop):
        self.desktop = desktop
        self.program = None
        self.files = os.path.join(desktop.home, "tour")
        os.symlink(FOLDER, self.files)

    def path(self, name):
        # Through a link: the checkout's own path may have letters that the virtual keyboard lacks.
        return os.path.join(self.files, name)

    def save(self, shortcut, name):
        path = self.path(name)
        self.desktop.key(shortcut)
        self.desktop.wait_title("^(Save|Open)")
        self.desktop.key("ctrl+a")
        self.desktop.type(path)
        self.desktop.key("Return")
        self.desktop.wait_title("^Caution Message$")  # it is a new file
        self.desktop.key("Return")
        self.desktop.wait_title(re.escape(name))
        check(os.path.exists(path), name + " was not written")
        return path

    def open_sample(self):
        # The instruments are the simulated ones that were built with the program; what goes over their buses is noted.
        self.desktop.env.update(CALDER_BUS_PATH=BENCH, CALDER_SIM_TRAFFIC=self.path("traffic.txt"))
        self.program = subprocess.Popen([PROGRAM, SAMPLE], env=self.desktop.env, cwd=self.desktop.home)
        self.desktop.wait_title(r"Orvo Calder for XG5530/31 <.*sine-burst\.txt>")
        self.desktop.picture("1-opened")

    def zoom(self):
        d = self.desktop
        d.mouse("mousemove", 600, 360)
        before = d.pixels()
        for _ in range(3):
            d.mouse("click", 4)
        check(d.pixels() != before, "the wheel did not zoom")
        d.picture("2-zoomed")
        for _ in range(3):
            d.mouse("click", 5)
        d.mouse("mousemove", 600, 30)

    def markers(self):
        d = self.desktop
        d.key("alt+a")
        d.type("0.25\t")
        d.type("0.5\r")
        columns = marker_columns(d)
        check(len(columns) == 2, "two markers were expected on the screen, found at %s" % columns)
        # Marker B is dragged to the right.
        d.mouse("mousemove", columns[1], 400, "mousedown", 1)
        for step in range(1, 6):
            d.mouse("mousemove", columns[1] + 20 * step, 400)
        d.mouse("mouseup", 1)
        d.mouse("mousemove", 600, 30)
        moved = marker_columns(d)
        check(len(moved) == 2 and abs(moved[1] - columns[1] - 100) <= 1, "marker B was dragged to %s" % moved)
        d.key("alt+b")
        d.type("0.5\r")
        d.picture("3-markers")

    def cut(self):
        d = self.desktop
        whole = codes_of_text(self.save("ctrl+t", "whole.txt"))
        check(len(whole) == WDB_POINTS, "the waveform has %d points" % len(whole))
        d.key("ctrl+x")
        d.picture("4-cut")
        copied = [int(n) for n in d.run("xclip", "-selection", "clipboard", "-o").split()]
        first, count = WDB_POINTS // 4, WDB_POINTS // 4
        check(copied == whole[first:first + count], "the clipboard holds something else than the range")
        rest = codes_of_text(self.save("ctrl+t", "cut.txt"))
        check(rest == whole[:first] + whole[first + count:] + [0] * count, "the cut waveform is wrong")
        return whole

    def undo_and_save(self, whole):
        d = self.desktop
        d.key("ctrl+u")
        d.picture("5-undone")
        check(codes_of_wdb(self.save("ctrl+a", "burst.wdb")) == whole, "the saved waveform differs")

    def reopen(self, whole):
        d = self.desktop
        d.key("ctrl+d")
        d.key("ctrl+o")
        d.wait_title("^Open")
        d.key("ctrl+a")
        d.type(self.path("burst.wdb"))
        d.key("Return")
        d.wait_title(r"burst\.wdb")
        check(codes_of_text(self.save("ctrl+t", "again.txt")) == whole, "the waveform came back changed")
        d.picture("6-reopened")

    def function(self):
        """A function with a parameter: found by its name, typed, written, looked at."""
        d = self.desktop
        d.key("alt+t", "w")
        d.wait_title("Parameter-variable Waveforms$")
        d.type("Gauss\t0.25\t")
        d.picture("6-function")
        d.key("alt+t", "shift+Tab", "shift+Tab", "shift+Tab")  # past the search box and Cancel to OK
        d.key("Return")
        d.wait_title(r"again\.txt")
        codes = codes_of_text(self.save("ctrl+t", "function.txt"))
        for part in (0, 0.1, 0.25, 0.3, 0.9):
            wanted = 32767 * math.exp(-((part - 0.25) / 0.1) ** 2 / 2)
            code = codes[int(part * WDB_POINTS)]
            check(abs(code - wanted) <= 1, "the bell gives %d at %g, not %g" % (code, part, wanted))

    def create(self):
        """Three pages: a sine, a square, an expression with a constant; each looked at, saved as a list, written."""
        d = self.desktop
        d.key("alt+t", "Return")
        d.wait_title("Waveform Create$")
        self.page_area("0", "0.25")
        d.key("ctrl+Next")
        d.key("alt+t", "Home", "Down", "Down")
        self.page_area("0.25", "0.5")
        d.key("alt+p")
        d.type("4\t")
        d.picture("10-create-square")
        d.key("ctrl+Next")
        d.key("alt+t", "End")
        self.page_area("0.5", "1")
        d.key("alt+c")
        d.type("k=0.8")
        d.key("alt+s")
        d.type("k*sin(2*pi*8*x)*(1-x)")
        d.picture("11-create-expression")
        d.key("alt+f", "s")
        d.wait_title("^(Save|Open)")
        d.key("ctrl+a")
        d.type(self.path("pages.wfn"))
        d.key("Return")
        d.wait_title("^Caution Message$")
        d.key("Return")
        d.wait_title("Waveform Create$")
        check(os.path.exists(self.path("pages.wfn")), "the list was not written")
        d.key("alt+k")
        d.wait_title(r"half\.txt")
        d.picture("12-created")
        codes = codes_of_text(self.save("ctrl+t", "created.txt"))
        n = WDB_POINTS
        check(abs(codes[n // 16] - 32767) <= 1, "the sine's crest is %d" % codes[n // 16])
        check(codes[n // 4 + n // 64] == 32767 and codes[n // 4 + 3 * n // 64] == -32767, "the square is wrong")
        for point in (n // 2, n // 2 + 12345, 3 * n // 4 + 7, n - 1):
            x = point / n
            wanted = 32767 * 0.8 * math.sin(2 * math.pi * 8 * x) * (1 - x)
            check(abs(codes[point] - wanted) <= 1, "the expression gives %d at %d, not %g" % (codes[point], point, wanted))

    def whole_range(self):
        d = self.desktop
        d.key("alt+a")
        d.type("0\t1\t")

    def interpolate(self):
        """Three points; the middle one raised in the grid; the natural spline through them."""
        d = self.desktop
        self.whole_range()
        d.key("alt+t", "i")
        d.wait_title("Interpolate$")
        d.key("Up", "Up", "Right")
        d.type("0.5\r")
        d.key("alt+s")
        d.picture("7-interpolate")
        d.key("alt+t")  # Exit
        d.wait_title(r"function\.txt")
        self.expect("spline.txt", {0.25: 11264, 0.5: 16384})

    def operate(self):
        """The waveform and itself from the clipboard, added."""
        d = self.desktop
        d.key("ctrl+c")
        d.key("alt+t", "o")
        d.wait_title("Operate$")
        d.key("alt+b", "alt+equal")
        d.picture("8-operate")
        d.key("shift+Tab", "shift+Tab", "Return")  # from the operators past Cancel to OK
        d.wait_title(r"spline\.txt")
        self.expect("sum.txt", {0.25: 22527, 0.5: 32767})

    def compress(self):
        """Into the middle half; what it does not cover is 0."""
        d = self.desktop
        d.key("alt+t", "p")
        d.wait_title("Compress/Decompress$")
        d.key("alt+s")
        d.type("0.25\t")
        d.key("alt+e")
        d.type("0.75\t")
        d.picture("9-compress")
        d.key("alt+s", "shift+Tab", "shift+Tab")  # past Cancel to OK
        d.key("Return")
        d.wait_title(r"sum\.txt")
        self.expect("half.txt", {0.2: 0, 0.375: 22527, 0.5: 32767})

    def expect(self, name, wanted):
        """Saves the waveform and looks at its codes at parts of its length."""
        codes = codes_of_text(self.save("ctrl+t", name))
        for part, code in wanted.items():
            there = codes[int(part * len(codes))]
            check(abs(there - code) <= 2, "%s has %d at %g, not %d" % (name, there, part, code))

    def page_area(self, start, end):
        self.desktop.key("alt+x")
        self.desktop.type(start + "\t")
        self.desktop.type(end + "\t")

    def setup(self, *keys):
        """The System Setup dialog, and keys in it."""
        d = self.desktop
        d.key("alt+s", "s")
        d.wait_title("System Setup$")
        if keys:
            d.key(*keys)

    def transfer(self, picture):
        d = self.desktop
        d.key("alt+t")
        d.wait_title("^Copy wave data$")
        d.picture(picture)
        d.wait_title("System Setup$", 60)

    def read_back(self, name, sent):
        """The waveform in the editor is cleared, read back and compared."""
        d = self.desktop
        d.key("Return")
        d.wait_title(r"\.txt>$")
        d.key("alt+a") # a shorter memory has moved both markers to its end
        d.type("0\t")
        d.key("ctrl+d")
        check(not any(codes_of_text(self.save("ctrl+t", "cleared-" + name))), "the waveform was not cleared")
        self.setup("alt+w", "alt+r")
        time.sleep(1.5)
        d.wait_title("System Setup$")
        d.key("Return")
        d.wait_title(r"\.txt>$")
        check(codes_of_text(self.save("ctrl+t", name)) == sent, "the waveform came back changed")

    def usb(self):
        """To the XG5531 over USBTMC and back."""
        d = self.desktop
        self.setup("Down", "alt+w", "alt+z", "Home", "Down", "Down", "Down")
        d.key("Return")
        d.wait_title(r"\.txt>$")
        sent = codes_of_text(self.save("ctrl+t", "sent.txt"))
        check(len(sent) == 65536 and len(set(sent)) > 1000, "the shorter waveform is wrong")
        self.setup()
        self.transfer("13-transfer-usb")
        d.picture("14-setup")
        self.read_back("back-usb.txt", sent)
        with open(self.path("traffic.txt"), encoding="utf-8") as traffic:
            calls = traffic.read()
        check("viWriteFromFile" in calls and "ibwrt" not in calls, "the waveform did not go over USBTMC")
        return sent

    def gpib(self, sent):
        """To its memory 2 over NI GPIB, and back over USBTMC."""
        d = self.desktop
        self.setup("alt+i", "Down", "alt+g")
        d.type("2\t")
        d.picture("15-setup-gpib")
        d.key("alt+w", "alt+b")
        d.type("2\t")
        self.transfer("13-transfer-gpib")
        d.key("alt+s", "alt+i", "Up")
        self.read_back("back-gpib.txt", sent)
        with open(self.path("traffic.txt"), encoding="utf-8") as traffic:
            check("ibwrt" in traffic.read(), "the waveform did not go over GPIB")

    def close(self):
        d = self.desktop
        d.key("alt+F4")
        d.wait_title("^Caution Message$")
        d.picture("16-closing")
        d.key("Return")
        check(self.program.wait(timeout=10) == 0, "the program ended with %s" % self.program.returncode)


def main():
    os.makedirs(FOLDER, exist_ok=True)
    for old in os.listdir(FOLDER):
        if old.endswith((".png", ".txt", ".wdb", ".wfn")):
            os.remove(os.path.join(FOLDER, old))
    desktop = Desktop(FOLDER)
    tour = Tour(desktop)
    step = "start"
    try:
        state = {}
        steps = [
            ("open a sample", tour.open_sample),
            ("zoom with the wheel", tour.zoom),
            ("set and drag markers", tour.markers),
            ("cut the range", lambda: state.update(whole=tour.cut())),
            ("undo and save", lambda: tour.undo_and_save(state["whole"])),
            ("open it again", lambda: tour.reopen(state["whole"])),
            ("a function with a parameter", tour.function),
            ("interpolate", tour.interpolate),
            ("operate", tour.operate),
            ("compress", tour.compress),
            ("create three pages", tour.create),
            ("transfer over USBTMC and read back", lambda: state.update(sent=tour.usb())),
            ("transfer over NI GPIB and read back", lambda: tour.gpib(state["sent"])),
            ("close", tour.close),
        ]
        for step, action in steps:
            action()
            print("ok    " + step, flush=True)
    except (StepFailed, subprocess.SubprocessError, OSError) as fault:
        print("FAIL  %s: %s" % (step, fault), flush=True)
        try:
            desktop.picture("failed")
        except Exception:  # the picture is a help, not a step
            pass
        return 1
    finally:
        if tour.program is not None and tour.program.poll() is None:
            tour.program.send_signal(signal.SIGKILL)
            tour.program.wait()
        desktop.close()
    print("The tour's pictures and files are in " + os.path.relpath(FOLDER))
    return 0


if __name__ == "__main__":
    sys.exit(main())
