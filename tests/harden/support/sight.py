"""What the eye sees of an X server: its pointer, and which symbols its keys have."""

import ctypes
import struct

import screen

_x11 = ctypes.CDLL("libX11.so.6")
_x11.XGetKeyboardMapping.restype = ctypes.POINTER(ctypes.c_ulong)
_FIRST, _COUNT = 8, 248
_ARROW = 68  # XC_left_ptr
_SIDE = 32   # pixels; larger than the pointer


class Sight:
    def __init__(self, server, framebuffer):
        self._display, self._framebuffer = server.display, framebuffer
        self._root = _x11.XDefaultRootWindow(self._display)
        _x11.XDefineCursor(self._display, ctypes.c_ulong(self._root), ctypes.c_ulong(_x11.XCreateFontCursor(self._display, _ARROW)))
        _x11.XSync(self._display, 0)

    def pointer_place(self):
        window, x, y, number, mask = ctypes.c_ulong(), ctypes.c_int(), ctypes.c_int(), ctypes.c_int(), ctypes.c_uint()
        _x11.XQueryPointer(self._display, ctypes.c_ulong(self._root), ctypes.byref(window), ctypes.byref(window), ctypes.byref(x),
                           ctypes.byref(y), ctypes.byref(number), ctypes.byref(number), ctypes.byref(mask))
        return x.value, y.value

    def pointer_is_visible(self):
        """Whether the server shows something at the pointer that none of the windows has there."""
        x, y = self.pointer_place()
        left, top = max(0, min(x - _SIDE // 2, 1280 - _SIDE)), max(0, min(y - _SIDE // 2, 1024 - _SIDE))
        windows = screen.capture(self._display, left, top, _SIDE, _SIDE)
        return windows.pixels != self._shown(left, top)

    def _shown(self, left, top):
        """The pixels of the server's own memory, three bytes each."""
        with open(self._framebuffer, "rb") as file:
            header = struct.unpack(">25I", file.read(100))
            start = header[0] + header[19] * 12
            rows = []
            for y in range(top, top + _SIDE):
                file.seek(start + y * header[12] + left * 4)
                rows.append(file.read(4 * _SIDE))
        raw = b"".join(rows)
        pixels = bytearray(3 * _SIDE * _SIDE)
        pixels[0::3], pixels[1::3], pixels[2::3] = raw[2::4], raw[1::4], raw[0::4]
        return bytes(pixels)

    def symbols(self):
        """The symbols of each keycode."""
        width = ctypes.c_int()
        mapping = _x11.XGetKeyboardMapping(self._display, _FIRST, _COUNT, ctypes.byref(width))
        symbols = mapping[:_COUNT * width.value]
        _x11.XFree(mapping)
        result = {}
        for code in range(_COUNT):
            of_code = symbols[code * width.value:(code + 1) * width.value]
            while of_code and not of_code[-1]:
                of_code.pop()
            result[_FIRST + code] = tuple(of_code)
        return result
