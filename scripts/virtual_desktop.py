"""A virtual display with a window manager, driven by real key and mouse events."""
import os
import re
import shutil
import subprocess
import tempfile
import time


class StepFailed(Exception):
    pass


def check(holds, what):
    if not holds:
        raise StepFailed(what)


class Desktop:
    """Xvfb with a window manager, and the user's folders in a place of their own."""

    def __init__(self, pictures):
        self.pictures = pictures
        self.home = tempfile.mkdtemp(prefix="calder-tour-")
        read, write = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x800x24", "-nolisten", "tcp",
             "-noreset"],  # the display outlives the moment when its last program has gone
            pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        number = b""
        while not number.endswith(b"\n"):
            piece = os.read(read, 16)
            check(piece, "the virtual display did not start")
            number += piece
        os.close(read)
        self.env = {k: v for k, v in os.environ.items() if not k.startswith("XDG_") and k != "WAYLAND_DISPLAY"}
        self.env.update(DISPLAY=":" + number.decode().strip(), HOME=self.home, LANG="C.UTF-8", LC_ALL="C.UTF-8",
                        QT_QPA_PLATFORM="xcb")
        self.manager = subprocess.Popen(["openbox", "--sm-disable"], env=self.env, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL)
        end = time.time() + 20
        while "window id" not in self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK", check_status=False):
            if time.time() > end:
                self.close()
                raise StepFailed("the window manager did not start")
            time.sleep(0.05)

    def close(self):
        for process in (self.manager, self.server):
            process.terminate()
            process.wait()
        shutil.rmtree(self.home, ignore_errors=True)

    def run(self, *command, check_status=True):
        result = subprocess.run(command, env=self.env, capture_output=True, timeout=20)
        if check_status and result.returncode != 0:
            raise StepFailed(" ".join(command) + ": " + result.stderr.decode(errors="replace").strip())
        return result.stdout.decode(errors="replace")

    def key(self, *keys):
        self.run("xdotool", "key", "--delay", "20", *keys)
        time.sleep(0.15)

    def type(self, text):
        self.run("xdotool", "type", "--delay", "8", text)
        time.sleep(0.1)

    def mouse(self, *arguments):
        self.run("xdotool", *[str(a) for a in arguments])
        time.sleep(0.08)

    def title(self):
        return self.run("xdotool", "getactivewindow", "getwindowname", check_status=False).strip()

    def wait_title(self, pattern, seconds=15):
        end = time.time() + seconds
        while time.time() < end:
            if re.search(pattern, self.title()):
                time.sleep(0.25)
                return
            time.sleep(0.05)
        raise StepFailed("no window named like %r came; the last one was %r" % (pattern, self.title()))

    def picture(self, name):
        time.sleep(0.2)
        self.run("import", "-window", "root", os.path.join(self.pictures, name + ".png"))

    def pixels(self):
        """The screen as (width, height, bytes of red green blue)."""
        data = subprocess.run(["import", "-window", "root", "-depth", "8", "ppm:-"], env=self.env,
                              capture_output=True, timeout=20, check=True).stdout
        header = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", data)
        return int(header[1]), int(header[2]), data[header.end():]
