"""What can stand in a file's place that the program reads: each kind is a function that puts it at a path.

A kind is told of in the log, unless it is harmless; one that is empty holds nothing that could be lost. Random bytes come from the round's numbers.
"""

import contextlib
import os
import socket
import threading
import time

MIB = 1024 * 1024
HEAD = b'<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n'
BUTTON = (b'<BUTTON id="3"><NORMAL label="x"><KEY1 type="int">65</KEY1><KEY2 type="int">-1</KEY2>'
          b'<KEY3 type="int">-1</KEY3></NORMAL></BUTTON>')
MAPPING = b'<MAPPING software="Odd" program="odd">' + BUTTON + b"</MAPPING>"
GOOD = HEAD + b"<ZR>" + MAPPING + b"</ZR>\n"
SETTINGS = b"[General]\nSlider.Normal=80\nSlider.Shift1=60\n"


class Kind:
    """`make(path, numbers)` returns nothing, or a context manager that goes on doing things to the file."""

    def __init__(self, name, make, told=True, huge=False, empty=False):
        self.name, self.make, self.told, self.huge, self.empty = name, make, told, huge, empty


def _bytes(name, content, **options):
    def make(path, numbers):
        with open(path, "wb") as file:
            file.write(content(numbers) if callable(content) else content)
    return Kind(name, make, **options)


def _sparse(name, size, **options):
    def make(path, _):
        with open(path, "wb") as file:
            file.truncate(size)
    return Kind(name, make, **options)


def _socket(path, _):
    with socket.socket(socket.AF_UNIX) as listener:
        folder = os.open(os.path.dirname(path), os.O_RDONLY)  # a socket's address is short
        listener.bind(f"/proc/self/fd/{folder}/{os.path.basename(path)}")
        os.close(folder)


def _circle(path, _):
    os.symlink(os.path.basename(path) + ".2", path)
    os.symlink(os.path.basename(path), path + ".2")


def _no_rights(good):
    def make(path, _):
        with open(path, "wb") as file:
            file.write(good)
        os.chmod(path, 0)
    return make


@contextlib.contextmanager
def _meanwhile(action):
    stop = threading.Event()

    def run():
        while not stop.is_set():
            action()
            time.sleep(0.0005)

    thread = threading.Thread(target=run)
    thread.start()
    try:
        yield
    finally:
        stop.set()
        thread.join()


def _rewritten(good):
    contents = (good, good[:-9], good + b" " * 4000)

    def make(path, numbers):
        def rewrite():
            with open(path, "wb") as file:
                file.write(numbers.choice(contents))
        rewrite()
        return _meanwhile(rewrite)
    return make


def _growing(good):
    def make(path, _):
        with open(path, "wb") as file:
            file.write(good)

        def grow():
            if os.path.getsize(path) < 4 * MIB:
                with open(path, "ab") as file:
                    file.write(b" " * 4000)
        return _meanwhile(grow)
    return make


def _any(good):
    """Whatever the file is for."""
    return [
        _bytes("blanks", b" \n" * (MIB // 4), told=False, empty=True),
        _bytes("zeros", bytes(64 * 1024)),
        _bytes("random bytes", lambda numbers: numbers.randbytes(MIB)),
        _sparse("sparse, 8 GiB", 8 * 1024 * MIB),
        _sparse("sparse, 63 MiB", 63 * MIB, huge=True),
        Kind("a folder", lambda path, _: os.mkdir(path)),
        Kind("a pipe", lambda path, _: os.mkfifo(path)),
        Kind("a device", lambda path, _: os.symlink("/dev/zero", path)),
        Kind("a socket", _socket),
        Kind("links in a circle", _circle, told=False),
        Kind("a link to nothing", lambda path, _: os.symlink("/nowhere/at/all", path), told=False),
        Kind("no rights", _no_rights(good), told=False),
        Kind("rewritten all the time", _rewritten(good), told=False),
        Kind("growing", _growing(good), told=False),
        _bytes("byte order mark", b"\xef\xbb\xbf" + good, told=False),
        _bytes("bytes of no encoding", good.replace(b"8", b"\xc3\x28\xff", 1), told=False),
    ]


XML = _any(GOOD) + [
    _bytes("empty", b"", told=False),
    _bytes("many tags", lambda _: HEAD + b"<ZR>" + b"<a/>" * (15 * MIB) + b"</ZR>", huge=True),
    _bytes("many mappings", lambda _: HEAD + b"<ZR>" + b"".join(
        b'<MAPPING software="%d" program="%d"/>' % (number, number) for number in range(20_000)) + b"</ZR>",
           told=False, huge=True),
    _bytes("a million levels", b"<ZR>" * MIB),
    _bytes("levels within a mapping", HEAD + b"<ZR>" + MAPPING[:-10] + b"<a>" * 5000 + b"</a>" * 5000 + b"</MAPPING></ZR>"),
    _bytes("entities of entities", b'<!DOCTYPE ZR [<!ENTITY a0 "aaaaaaaaaa">' + b"".join(
        b'<!ENTITY a%d "%s">' % (number, b"&a%d;" % (number - 1) * 10) for number in range(1, 12)) +
           b']><ZR><MAPPING software="&a11;"/></ZR>'),
    _bytes("a long entity, often", b'<!DOCTYPE ZR [<!ENTITY a "' + b"a" * 100_000 + b'">]><ZR><MAPPING software="' +
           b"&a;" * 100_000 + b'"/></ZR>'),
    _bytes("another file's entity", b'<!DOCTYPE ZR [<!ENTITY a SYSTEM "file:///etc/passwd">]>'
           b'<ZR><MAPPING software="&a;"/></ZR>'),
    _bytes("UTF-16 with a mark", GOOD.decode().replace("UTF-8", "UTF-16").encode("utf-16"), told=False),
    _bytes("UTF-16 without a mark", GOOD.decode().replace("UTF-8", "UTF-16").encode("utf-16-be"), told=False),
    _bytes("an unknown encoding", GOOD.replace(b"UTF-8", b"X-NONE")),
    _bytes("cut off", GOOD[:-40]),
    _bytes("a million attributes", HEAD + b"<ZR><MAPPING " + b" ".join(b'a%d=""' % n for n in range(MIB)) + b"/></ZR>"),
    _bytes("a name of 10 MiB", HEAD + b'<ZR><MAPPING software="' + b"n" * (10 * MIB) + b'" program="p"/></ZR>', told=False, huge=True),
]

_LISTS = b"\\0\\0\\0\\x9\\0\\0\\0\\0\\x1"

SETTINGS_KINDS = _any(SETTINGS) + [
    _bytes("a list of two thousand million", SETTINGS + b"a=@Variant(\\0\\0\\0\\x9\\0\\x7f\\xff\\xff\\xff)\n"),
    _bytes("lists within lists", SETTINGS + b"a=@Variant(" + _LISTS * 50_000 + b")\n"),
    _bytes("hidden lists", SETTINGS + b'a=x, "\\x40Var"\\qiant(' + _LISTS * 30_000 + b")\n"),
    _bytes("many keys", lambda _: b"[General]\n" + b"".join(b"k%d=1\n" % n for n in range(80_000)), told=False),
    _bytes("many sections", lambda _: b"".join(b"[s%d]\na=1\n" % n for n in range(60_000)), told=False),
    _bytes("a line of 1 MB", b"[General]\na=" + b"x" * 1_000_000 + b"\n", told=False),
    _bytes("larger than settings are", b"[General]\na=" + b"x" * (2 * MIB) + b"\n"),
    _bytes("lines without a value", SETTINGS + b"what is this\nand this\n"),
    _bytes("an open section", b"[General\nSlider.Normal=80\n"),
    _bytes("an open quote", SETTINGS + b'a="never closed\nb=1\n', told=False),
    _bytes("an escape at the end", SETTINGS + b"a=\\", told=False),
    _bytes("numbers out of range", b"[General]\nSlider.Normal=99999999999999999999\nSlider.Shift1=-5\n"
           b"ButtonAction.Normal.key1=4294967296\nuttonAction.Normal.cc=-2147483648\n", told=False),
    _bytes("other types", b"[General]\nSlider.Normal=@Rect(1 2 3 4)\nSlider.Shift1=@ByteArray(x)\nZR.ver=a, b, c\n"
           b"ButtonAction.Normal.label=@Invalid()\n", told=False),
    _bytes("a mapping file", GOOD, told=False),
]
