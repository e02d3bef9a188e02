"""What a process has of the system: memory, descriptors, threads, things in the X server, objects and timers of the toolkit."""

import contextlib
import ctypes
import os
import socket
import tempfile

_xres = ctypes.CDLL("libXRes.so.1")
_CLIENT_PID_MASK = 2


class _ClientIdSpec(ctypes.Structure):
    _fields_ = [("client", ctypes.c_ulong), ("mask", ctypes.c_uint)]


class _ClientIdValue(ctypes.Structure):
    _fields_ = [("spec", _ClientIdSpec), ("length", ctypes.c_long), ("value", ctypes.c_void_p)]


class _Type(ctypes.Structure):
    _fields_ = [("type", ctypes.c_ulong), ("count", ctypes.c_uint)]


_xres.XResGetClientPid.argtypes = [ctypes.c_void_p]


def x_resources(display, pid):
    """How many things the process's connections have in the X server, and the bytes of their pixmaps."""
    spec = _ClientIdSpec(0, _CLIENT_PID_MASK)
    count, values = ctypes.c_long(), ctypes.POINTER(_ClientIdValue)()
    _xres.XResQueryClientIds(display, ctypes.c_long(1), ctypes.byref(spec), ctypes.byref(count), ctypes.byref(values))
    clients = [value.spec.client for value in values[:count.value] if _xres.XResGetClientPid(ctypes.byref(value)) == pid]
    _xres.XResClientIdsDestroy(count, values)
    resources = pixmaps = 0
    for client in clients:
        kinds, types, size = ctypes.c_int(), ctypes.POINTER(_Type)(), ctypes.c_ulong()
        _xres.XResQueryClientResources(display, ctypes.c_ulong(client), ctypes.byref(kinds), ctypes.byref(types))
        resources += sum(each.count for each in types[:kinds.value])
        _xres.XResQueryClientPixmapBytes(display, ctypes.c_ulong(client), ctypes.byref(size))
        pixmaps += size.value
    return resources, pixmaps


def _kilobytes(path, *names):
    with open(path, encoding="ascii") as file:
        return sum(int(line.split()[1]) for line in file if line.split(":")[0] in names)


def kept_waiting(*processes):
    """The seconds that these processes were ready to run and got no processor: a busy machine's time, not theirs."""
    total = 0
    for process in processes:
        with contextlib.suppress(OSError):
            for thread in os.listdir(f"/proc/{process}/task"):
                with open(f"/proc/{process}/task/{thread}/schedstat", encoding="ascii") as file:
                    total += int(file.read().split()[1])
    return total / 1e9


def of_process(pid):
    return {"resident kB": _kilobytes(f"/proc/{pid}/status", "VmRSS"),
            # What was written to: unchanged pages of a file become private when the last other process that has them ends.
            "private kB": _kilobytes(f"/proc/{pid}/smaps_rollup", "Private_Dirty"),
            "descriptors": len(os.listdir(f"/proc/{pid}/fd")),
            "threads": len(os.listdir(f"/proc/{pid}/task"))}


class ObjectCounts:
    """How many objects and running timers of the toolkit the program has: object_counts.cpp, preloaded into it, tells."""

    def __init__(self):
        self._directory = tempfile.TemporaryDirectory()
        path = os.path.join(self._directory.name, "counts")
        self._socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self._socket.bind(path)
        self._socket.listen()
        self.environment = {"LD_PRELOAD": os.path.join(os.environ["HARDEN_PROGRAMS"], "object_counts.so"), "OBJECT_COUNTS_SOCKET": path}
        self._program = None

    def take(self):
        if not self._program:
            self._socket.settimeout(30)
            self._program = self._socket.accept()[0]
            self._program.settimeout(30)
        self._program.sendall(b"?")
        objects, timers = self._program.recv(100).split()
        return {"objects": int(objects), "timers": int(timers)}

    def close(self):
        for each in (self._socket, self._program):
            if each:
                each.close()
        self._directory.cleanup()
