"""What is on a screen, and what should be."""

import ctypes
import os
import subprocess

ICONS = os.environ["ICONS"]
SCREENSHOTS = os.environ["SCREENSHOTS"]

GROUND = "#5342d9"  # of every page

_x11 = ctypes.CDLL("libX11.so.6")
_ALL_PLANES = ctypes.c_ulong(0xFFFFFFFF)
_Z_PIXMAP = 2


class _XImage(ctypes.Structure):
    _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("xoffset", ctypes.c_int), ("format", ctypes.c_int),
                ("data", ctypes.c_void_p), ("byte_order", ctypes.c_int), ("bitmap_unit", ctypes.c_int),
                ("bitmap_bit_order", ctypes.c_int), ("bitmap_pad", ctypes.c_int), ("depth", ctypes.c_int),
                ("bytes_per_line", ctypes.c_int), ("bits_per_pixel", ctypes.c_int)]


_x11.XGetImage.restype = ctypes.POINTER(_XImage)
_x11.XDefaultRootWindow.restype = ctypes.c_ulong


class Picture:
    """Pixels, three bytes each, in rows."""

    def __init__(self, width, height, pixels):
        self.width, self.height, self.pixels = width, height, pixels

    def part(self, x, y, width, height):
        rows = (self.pixels[3 * ((y + row) * self.width + x):][:3 * width] for row in range(height))
        return Picture(width, height, b"".join(rows))

    def colours(self):
        """How many pixels have which colour."""
        counts = {}
        for i in range(0, len(self.pixels), 3):
            colour = tuple(self.pixels[i:i + 3])
            counts[colour] = counts.get(colour, 0) + 1
        return counts

    def shows(self, expected, tolerance=4):
        """Whether it is this picture, save for how the edges have been rounded."""
        return len(self.pixels) == len(expected.pixels) and all(
            abs(a - b) <= tolerance for a, b in zip(self.pixels, expected.pixels) if a != b)

    def save(self, name):
        os.makedirs(SCREENSHOTS, exist_ok=True)
        subprocess.run(["convert", "-size", f"{self.width}x{self.height}", "-depth", "8", "rgb:-",
                        os.path.join(SCREENSHOTS, name + ".png")], input=self.pixels, check=True)


def icon(name, ground=GROUND):
    """A picture of the program's, on the ground on which the page has it."""
    path = os.path.join(ICONS, name + ".png")
    size = subprocess.run(["identify", "-format", "%w %h", path], stdout=subprocess.PIPE, check=True).stdout.split()
    pixels = subprocess.run(["convert", path, "-background", ground, "-flatten", "-depth", "8", "rgb:-"],
                            stdout=subprocess.PIPE, check=True).stdout
    return Picture(int(size[0]), int(size[1]), pixels)


def capture(display, x, y, width, height):
    """What the screen shows in this place now."""
    root = _x11.XDefaultRootWindow(display)
    image = _x11.XGetImage(display, ctypes.c_ulong(root), x, y, width, height, _ALL_PLANES, _Z_PIXMAP)
    content = image.contents
    assert content.bits_per_pixel == 32
    raw = ctypes.string_at(content.data, content.bytes_per_line * height)
    _x11.XDestroyImage(image)
    pixels = bytearray(3 * width * height)
    pixels[0::3], pixels[1::3], pixels[2::3] = raw[2::4], raw[1::4], raw[0::4]
    return Picture(width, height, bytes(pixels))
