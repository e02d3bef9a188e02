"""A user of Windows, as far as Wine goes: a display, a prefix, the program, a virtual device, another program's window."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[3] / "e2e/support"))
import desk as support  # noqa: E402

STAGE = Path(os.environ["STAGE"])  # what is packed
TOOLS = Path(os.environ["TOOLS"])  # the test programs of ../win32
PREFIX = Path(os.environ["WINEPREFIX"])
PICTURES = Path(os.environ["PICTURES"])
DRIVE = PREFIX / "drive_c"
SETTINGS = r"HKCU\Software\{Brimwell Labs}\{Veltrix}"
ARROW = (r"HKCU\Control Panel\Cursors", "Arrow")
RUN = (r"HKLM\SOFTWARE\Microsoft\Windows\CurrentVersion\Run", "Veltrix")


def wait_for(condition, timeout=20.0):
    """As desk's, with the patience that Wine needs."""
    return support.wait_for(condition, timeout, 0.05)


def run(*command, timeout=90, check=False, environment=None):
    """Runs a Windows program to its end. What it prints goes through a file: Wine's services keep a pipe open."""
    with tempfile.TemporaryFile() as output:
        done = subprocess.run(["wine", *map(str, command)], stdin=subprocess.DEVNULL, stdout=output,
                              stderr=subprocess.DEVNULL, timeout=timeout, check=check, env=environment)
        output.seek(0)
        done.stdout = output.read().decode("utf-8", "replace").replace("\r", "")
    return done


def desk(*arguments, environment=None):
    return run(TOOLS / "win32_desk.exe", *arguments, environment=environment)


def windows_path(path):
    path = str(path)
    return "C:" + path[len(str(DRIVE)):].replace("/", "\\") if path.startswith(str(DRIVE)) else "Z:" + path.replace("/", "\\")


def registry(key, name):
    """The text of a value; None when there is none."""
    found = re.search(rf"^ *{re.escape(name)} +REG_\w+ *(.*)$", run("reg", "query", key, "/v", name).stdout, re.MULTILINE)
    return found.group(1).strip() if found else None


def set_registry(key, name, value, kind="REG_SZ"):
    run("reg", "add", key, "/v", name, "/t", kind, "/d", value, "/f", check=True)


class Lines(support.LineLog):
    """A program whose output is read while it runs."""

    def __init__(self, *command, stdin=None, cwd=None, environment=None):
        super().__init__()
        self._file = tempfile.NamedTemporaryFile(suffix=".log")
        self.process = subprocess.Popen(["wine", *map(str, command)], stdin=stdin or subprocess.DEVNULL, stdout=self._file,
                                        stderr=subprocess.STDOUT, cwd=cwd, env=environment)
        self._stop = False
        self._thread = threading.Thread(target=self._read, daemon=True)
        self._thread.start()

    def _read(self):
        rest = b""
        with open(self._file.name, "rb") as file:
            while not self._stop:
                data = file.read()
                if not data:
                    time.sleep(0.001)
                    continue
                *lines, rest = (rest + data).split(b"\n")
                self._add([line.decode("utf-8", "replace").rstrip("\r") for line in lines])

    def wait_for(self, pattern, timeout=20.0, since=0):
        return super().wait_for(pattern, timeout, since)

    def send(self, text):
        self.process.stdin.write((text + "\n").encode())
        self.process.stdin.flush()

    def stop(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        if self.process.stdin:
            self.process.stdin.close()
        self._stop = True
        self._thread.join()
        self._file.close()


class Display(support.XServer):
    """A private X server; what Wine shows is on it."""

    def __init__(self, size="1280x1024"):
        super().__init__(size + "x24")
        os.environ["DISPLAY"] = self.name


def picture(name, window=None):
    """Takes a picture of a place on the display and returns how much of it has which colour, the most frequent first."""
    PICTURES.mkdir(parents=True, exist_ok=True)
    path = PICTURES / (name + ".png")
    crop = ["-crop", "{2}x{3}+{0}+{1}".format(*window), "+repage"] if window else []
    subprocess.run(["import", "-window", "root", *crop, path], check=True)
    histogram = subprocess.run(["convert", path, "-format", "%c", "histogram:info:"], capture_output=True, text=True, check=True)
    found = [(int(count), colour) for count, colour in re.findall(r"^\s*(\d+):.*?#([0-9A-F]{6})", histogram.stdout, re.MULTILINE)]
    return [colour for _, colour in sorted(found, reverse=True)]


def xdotool(*arguments):
    subprocess.run(["xdotool", *map(str, arguments)], check=True)


def click(x, y):
    xdotool("mousemove", int(x), int(y), "sleep", "0.2", "click", "1")


HORIZONTAL = 4


def data_folder():
    return Path(next((DRIVE / "users").glob("*/AppData/Roaming"))) / "{Brimwell Labs}" / "{Veltrix}"


def mapping(name, keys, program=None):
    """A file with one mapping: the codes of two keys for each button."""
    buttons = "".join(
        f'<BUTTON id="{n}"><NORMAL label="{chr(65 + n)}"><KEY1 type="int">{key1}</KEY1><KEY2 type="int">{key2}</KEY2>'
        f'<KEY3 type="int">-1</KEY3></NORMAL></BUTTON>' for n, (key1, key2) in keys.items())
    whose = f' program="{program}"' if program else ""
    return f'<?xml version="1.0" encoding="UTF-8"?><ZR><MAPPING software="{name}"{whose}>{buttons}</MAPPING></ZR>'


def write_file(name, text, folder=None):
    """Among the user's mapping files."""
    folder = folder or data_folder()
    folder.mkdir(parents=True, exist_ok=True)
    (folder / name).write_text(text, encoding="utf-8")


def write_mapping(folder=None):
    """A current mapping: button N presses the key A + N, but button 9 chooses the horizontal movement."""
    keys = {n: (65 + n, -1) for n in range(9)}
    keys[0] = (17, 65)
    keys[9] = (support.SPECIAL_ACTION, HORIZONTAL)
    write_file("current.xml", mapping("current_map", keys), folder)


class Device(Lines):
    """The simulator at a TCP port."""

    def __init__(self, *arguments):
        super().__init__(STAGE / "veltrix-simulator.exe", "--stdin", "--stay", "--listen", "0", *arguments,
                         stdin=subprocess.PIPE)
        found = self.wait_for("plugged tcp:", 30)
        assert found, self.texts()
        self.address = found[1].split()[1]


class Program(Lines):
    """The program, started as a user does."""

    def __init__(self, *arguments, folder=STAGE, environment=None):
        super().__init__(folder / "veltrix.exe", "--verbose", *arguments, cwd=folder, environment=environment)

    def windows(self, shown=True):
        """The places of the windows, as (x, y, width, height)."""
        return [(tuple(map(int, line.split()[:4])), line) for line in desk("windows", "veltrix.exe").stdout.splitlines()
                if "Qt5" in line and (not shown or " shown " in line)]

    def wait_for_window(self):
        """The place of the main window."""
        def main():
            return [place for place, line in self.windows() if line.endswith("|Veltrix") and place[2] >= 300]
        found = wait_for(main, 40)
        assert found, "no window: " + "\n".join(self.texts())
        return found[0]


def stop_everything():
    """Ends what is left of the prefix' programs."""
    subprocess.run(["wineserver", "-k"], check=False)
    subprocess.run(["wineserver", "-w"], check=False, timeout=60)
