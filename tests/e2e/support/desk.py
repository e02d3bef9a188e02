"""What the program works on in these tests: an X server, another program's window, a user's directories."""

import ctypes
import os
import re
import signal
import subprocess
import tempfile
import threading
import time
from pathlib import Path

# Windows' programs are others; their tests use the rest.
PROGRAM, SIMULATOR, LISTENER = (os.environ.get(name) for name in ("PROGRAM", "SIMULATOR", "LISTENER"))
START_SERVER = os.environ.get("START_SERVER") or str(Path(__file__).resolve().parents[3] / "scripts/desk.d/start-server")

PR_SET_PDEATHSIG = 1
_libc = ctypes.CDLL(None)


def _die_with_the_test():
    _libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def plain_environment():
    """The environment without the mocked devices."""
    environment = dict(os.environ)
    for name in ("LD_PRELOAD", "UMOCKDEV_DIR", "WAYLAND_DISPLAY", "XAUTHORITY", "VELTRIX_PORT", "QT_LOGGING_RULES"):
        environment.pop(name, None)
    environment["JACK_NO_START_SERVER"] = "1"
    environment["JACK_DEFAULT_SERVER"] = "none"
    return environment


def wait_for(condition, timeout=5.0, pause=0.002):
    """Waits until the condition holds and returns its value; the last value when it never does."""
    end = time.monotonic() + timeout
    while True:
        value = condition()
        if value or time.monotonic() > end:
            return value
        time.sleep(pause)


class LineLog:
    """Lines that arrive on another thread, each with the time at which it came."""

    def __init__(self):
        self.lines = []
        self._changed = threading.Condition()

    def _add(self, texts):
        with self._changed:
            now = time.monotonic()
            self.lines += [(now, text) for text in texts]
            self._changed.notify_all()

    def texts(self):
        return [text for _, text in self.lines]

    def wait_for(self, pattern, timeout=5.0, since=0):
        """The first line from number `since` on that matches, as (time, text); None when none comes."""
        end = time.monotonic() + timeout
        with self._changed:
            while True:
                for entry in self.lines[since:]:
                    if re.search(pattern, entry[1]):
                        return entry
                left = end - time.monotonic()
                if left <= 0:
                    return None
                self._changed.wait(left)


class Lines(LineLog):
    """A process whose lines are read on a thread."""

    def __init__(self, command, environment, stream, **options):
        super().__init__()
        self.process = subprocess.Popen(
            command, env=environment, text=True, preexec_fn=_die_with_the_test, **{stream: subprocess.PIPE}, **options)
        self._pipe = getattr(self.process, stream)
        self._thread = threading.Thread(target=self._read, daemon=True)
        self._thread.start()

    @property
    def pid(self):
        return self.process.pid

    def _read(self):
        for line in self._pipe:
            self._add([line.rstrip("\n")])

    def stop(self, number=signal.SIGTERM):
        if self.process.poll() is None:
            self.process.send_signal(number)
        try:
            self.process.wait(5)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        self._thread.join(5)
        for pipe in (self.process.stdin, self._pipe):
            if pipe and not pipe.closed:
                pipe.close()
        return self.process.returncode


IS_VIEWABLE = 2


class _WindowAttributes(ctypes.Structure):
    """XWindowAttributes as far as it is read, with room for the rest."""

    _fields_ = [("x", ctypes.c_int), ("y", ctypes.c_int), ("width", ctypes.c_int), ("height", ctypes.c_int),
                ("border_width", ctypes.c_int), ("depth", ctypes.c_int), ("visual", ctypes.c_void_p),
                ("root", ctypes.c_ulong), ("window_class", ctypes.c_int), ("bit_gravity", ctypes.c_int),
                ("win_gravity", ctypes.c_int), ("backing_store", ctypes.c_int), ("backing_planes", ctypes.c_ulong),
                ("backing_pixel", ctypes.c_ulong), ("save_under", ctypes.c_int), ("colormap", ctypes.c_ulong),
                ("map_installed", ctypes.c_int), ("map_state", ctypes.c_int), ("rest", ctypes.c_long * 8)]


class XServer:
    """A private X server, and what of its input state any client can see."""

    def __init__(self, screen="1280x1024x24", options=()):
        read_end, write_end = os.pipe()
        self._process = subprocess.Popen(
            [START_SERVER, "x", str(write_end), "-screen", "0", screen, *options],
            env=plain_environment(), pass_fds=[write_end], preexec_fn=_die_with_the_test,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            self.name = ":" + pipe.readline().strip()
        self._x11 = ctypes.CDLL("libX11.so.6")
        self._x11.XOpenDisplay.restype = ctypes.c_void_p
        self._x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self._x11.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
        self._x11.XQueryTree.argtypes = [ctypes.c_void_p, ctypes.c_ulong] + 4 * [ctypes.c_void_p]
        self._display = self._x11.XOpenDisplay(self.name.encode())
        assert self._display, "no connection to Xvfb"

    @property
    def display(self):
        """The test's own connection, for calls of Xlib."""
        return ctypes.c_void_p(self._display)

    def keys_held(self):
        keymap = ctypes.create_string_buffer(32)
        self._x11.XQueryKeymap(ctypes.c_void_p(self._display), keymap)
        return [code for code in range(256) if keymap.raw[code // 8] >> (code % 8) & 1]

    def buttons_held(self):
        window, number, mask = ctypes.c_ulong(), ctypes.c_int(), ctypes.c_uint()
        display = ctypes.c_void_p(self._display)
        self._x11.XQueryPointer(display, self._x11.XDefaultRootWindow(display), ctypes.byref(window), ctypes.byref(window),
                                *[ctypes.byref(number)] * 4, ctypes.byref(mask))
        return [button for button in range(1, 6) if mask.value >> (7 + button) & 1]

    def windows(self):
        """The places of the windows that are shown, as (x, y, width, height)."""
        root, parent, children, count = ctypes.c_ulong(), ctypes.c_ulong(), ctypes.POINTER(ctypes.c_ulong)(), ctypes.c_uint()
        display = ctypes.c_void_p(self._display)
        self._x11.XGrabServer(display)  # or a window may go between the two questions
        self._x11.XQueryTree(display, self._x11.XDefaultRootWindow(display), *map(ctypes.byref, (
            root, parent, children, count)))
        places = []
        for window in children[:count.value]:
            attributes = _WindowAttributes()
            self._x11.XGetWindowAttributes(display, ctypes.c_ulong(window), ctypes.byref(attributes))
            if attributes.map_state == IS_VIEWABLE:
                places.append((attributes.x, attributes.y, attributes.width, attributes.height))
        if children:
            self._x11.XFree(children)
        self._x11.XUngrabServer(display)
        self._x11.XFlush(display)
        return places

    def is_focused(self, size):
        """Whether keys go to the topmost of the windows of this size that are shown."""
        root, parent, children, count = ctypes.c_ulong(), ctypes.c_ulong(), ctypes.POINTER(ctypes.c_ulong)(), ctypes.c_uint()
        focus, revert = ctypes.c_ulong(), ctypes.c_int()
        display = ctypes.c_void_p(self._display)
        self._x11.XGrabServer(display)
        self._x11.XGetInputFocus(display, ctypes.byref(focus), ctypes.byref(revert))
        self._x11.XQueryTree(display, self._x11.XDefaultRootWindow(display), *map(ctypes.byref, (
            root, parent, children, count)))
        topmost = None
        for window in children[:count.value]:
            attributes = _WindowAttributes()
            self._x11.XGetWindowAttributes(display, ctypes.c_ulong(window), ctypes.byref(attributes))
            if attributes.map_state == IS_VIEWABLE and size in (None, (attributes.width, attributes.height)):
                topmost = window
        if children:
            self._x11.XFree(children)
        self._x11.XUngrabServer(display)
        self._x11.XFlush(display)
        return topmost is not None and topmost == focus.value

    def stop(self):
        if self._process.poll() is None:
            self._x11.XCloseDisplay(ctypes.c_void_p(self._display))
            self._process.terminate()
            self._process.wait()

    def kill(self):
        """The server dies, and all connections with it. What asks it afterwards ends the test."""
        self._process.kill()
        self._process.wait()


SPECIAL_ACTION = 0x1FFFFFF


class Home:
    """A user's directories with a current mapping: button N presses the key A + N, except for those buttons for which
    `special` has the code of a special action or `shortcuts` up to three keys."""

    def __init__(self, special=None, shortcuts=None):
        self._directory = tempfile.TemporaryDirectory()
        self.path = self._directory.name
        self.data = os.path.join(self.path, "data", "{Brimwell Labs}", "{Veltrix}")
        os.makedirs(self.data)
        os.mkdir(os.path.join(self.path, "run"), 0o700)
        keys = {n: (65 + n, -1, -1) for n in range(10)}
        keys.update((n, (SPECIAL_ACTION, code, -1)) for n, code in (special or {}).items())
        keys.update((n, (*shortcut, -1, -1)[:3]) for n, shortcut in (shortcuts or {}).items())
        buttons = "".join(
            f'<BUTTON id="{n}"><NORMAL label=""><KEY1 type="int">{key1}</KEY1><KEY2 type="int">{key2}</KEY2>'
            f'<KEY3 type="int">{key3}</KEY3></NORMAL></BUTTON>' for n, (key1, key2, key3) in keys.items())
        with open(os.path.join(self.data, "current.xml"), "w", encoding="utf-8") as file:
            file.write(f'<?xml version="1.0" encoding="UTF-8"?><ZR><MAPPING software="current_map">{buttons}</MAPPING></ZR>')

    def file(self, name):
        """The content of a mapping file; empty when there is none."""
        try:
            with open(os.path.join(self.data, name), encoding="utf-8") as file:
                return file.read()
        except FileNotFoundError:
            return ""

    def settings(self):
        """The stored settings, by their keys as they stand in the file."""
        path = os.path.join(self.path, "config", "{Brimwell Labs}", "{Veltrix}.conf")
        with open(path, encoding="utf-8") as file:
            return dict(line.rstrip("\n").split("=", 1) for line in file if "=" in line)

    def add_to(self, environment):
        for name, folder in (("DATA", "data"), ("CONFIG", "config"), ("CACHE", "cache")):
            environment[f"XDG_{name}_HOME"] = os.path.join(self.path, folder)
        environment["XDG_RUNTIME_DIR"] = os.path.join(self.path, "run")
        environment["HOME"] = self.path

    def cleanup(self):
        self._directory.cleanup()


def children_of(pid):
    with open(f"/proc/{pid}/task/{pid}/children", encoding="ascii") as file:
        return [int(child) for child in file.read().split()]


def is_alive(pid):
    try:
        with open(f"/proc/{pid}/stat", encoding="ascii") as file:
            return file.read().rsplit(")", 1)[1].split()[0] not in "ZX"
    except (FileNotFoundError, ProcessLookupError):
        return False


def cpu_seconds(pid):
    with open(f"/proc/{pid}/stat", encoding="ascii") as file:
        fields = file.read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")
