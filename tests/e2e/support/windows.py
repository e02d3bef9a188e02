"""The windows of a display as any client sees them, and a hand on its mouse."""

import ctypes

_x11 = ctypes.CDLL("libX11.so.6")
_xtst = ctypes.CDLL("libXtst.so.6")
_Window = ctypes.c_ulong
_VIEWABLE = 2
_CARDINAL = 6
_WINDOW = 33


class _Attributes(ctypes.Structure):
    _fields_ = [("x", ctypes.c_int), ("y", ctypes.c_int), ("width", ctypes.c_int), ("height", ctypes.c_int),
                ("border_width", ctypes.c_int), ("depth", ctypes.c_int), ("visual", ctypes.c_void_p), ("root", _Window),
                ("kind", ctypes.c_int), ("bit_gravity", ctypes.c_int), ("win_gravity", ctypes.c_int),
                ("backing_store", ctypes.c_int), ("backing_planes", ctypes.c_ulong), ("backing_pixel", ctypes.c_ulong),
                ("save_under", ctypes.c_int), ("colormap", ctypes.c_ulong), ("map_installed", ctypes.c_int),
                ("map_state", ctypes.c_int), ("all_event_masks", ctypes.c_long), ("your_event_mask", ctypes.c_long),
                ("do_not_propagate_mask", ctypes.c_long), ("override_redirect", ctypes.c_int), ("screen", ctypes.c_void_p)]


_x11.XDefaultRootWindow.restype = _Window
_x11.XInternAtom.restype = ctypes.c_ulong
_x11.XCreateSimpleWindow.restype = _Window

# A window may be gone by the time that it is asked about.
_ErrorHandler = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)
_ignore_errors = _ErrorHandler(lambda display, error: 0)
_x11.XSetErrorHandler(_ignore_errors)


class Windows:
    def __init__(self, display):
        self._display = display
        self.root = _x11.XDefaultRootWindow(display)
        self._pid_property = _x11.XInternAtom(display, b"_NET_WM_PID", 0)
        self._active_property = _x11.XInternAtom(display, b"_NET_ACTIVE_WINDOW", 0)

    def children(self, window=None):
        """From the lowest to the topmost."""
        root, parent, count = _Window(), _Window(), ctypes.c_uint()
        found = ctypes.POINTER(_Window)()
        if not _x11.XQueryTree(self._display, _Window(window or self.root), ctypes.byref(root), ctypes.byref(parent),
                               ctypes.byref(found), ctypes.byref(count)):
            return []
        result = found[:count.value]
        if found:
            _x11.XFree(found)
        return result

    def descendants(self, window=None):
        for child in self.children(window):
            yield child
            yield from self.descendants(child)

    def process(self, window):
        """The id of the process that says the window is its own; None where none does."""
        kind, length, left = ctypes.c_ulong(), ctypes.c_ulong(), ctypes.c_ulong()
        bits = ctypes.c_int()
        data = ctypes.POINTER(ctypes.c_ulong)()
        _x11.XGetWindowProperty(self._display, _Window(window), ctypes.c_ulong(self._pid_property), ctypes.c_long(0),
                                ctypes.c_long(1), 0, ctypes.c_ulong(_CARDINAL), ctypes.byref(kind), ctypes.byref(bits),
                                ctypes.byref(length), ctypes.byref(left), ctypes.byref(data))
        if not data:
            return None
        value = data[0] if length.value else None
        _x11.XFree(data)
        return value

    def attributes(self, window):
        """The window's place, size and state; None when it is gone."""
        attributes = _Attributes()
        done = _x11.XGetWindowAttributes(self._display, _Window(window), ctypes.byref(attributes))
        return attributes if done else None

    def is_shown(self, window):
        attributes = self.attributes(window)
        return bool(attributes) and attributes.map_state == _VIEWABLE

    def shown(self, size=None):
        """The windows to be seen, from the lowest to the topmost; of this size only."""
        result = []
        for window in self.children():
            attributes = self.attributes(window)
            if attributes and attributes.map_state == _VIEWABLE and size in (None, (attributes.width, attributes.height)):
                result.append(window)
        return result

    def centre(self, window):
        """The middle of the window on the screen."""
        x, y, child = ctypes.c_int(), ctypes.c_int(), _Window()
        attributes = self.attributes(window)
        _x11.XTranslateCoordinates(self._display, _Window(window), _Window(self.root), attributes.width // 2,
                                   attributes.height // 2, ctypes.byref(x), ctypes.byref(y), ctypes.byref(child))
        return x.value, y.value

    def activate(self, window):
        """Gives the window the focus, and says so as a window manager does."""
        _x11.XSetInputFocus(self._display, _Window(window), 1, ctypes.c_ulong(0))
        _x11.XChangeProperty(self._display, _Window(self.root), ctypes.c_ulong(self._active_property),
                             ctypes.c_ulong(_WINDOW), 32, 0, ctypes.byref(ctypes.c_ulong(window)), 1)
        _x11.XSync(self._display, 0)

    def focused(self):
        """The window that keys go to."""
        window, revert = _Window(), ctypes.c_int()
        _x11.XGetInputFocus(self._display, ctypes.byref(window), ctypes.byref(revert))
        return window.value

    def cover(self):
        """Puts a window of somebody else's in front of everything."""
        window = _x11.XCreateSimpleWindow(self._display, _Window(self.root), 0, 0, 1280, 1024, 0, ctypes.c_ulong(0),
                                          ctypes.c_ulong(0))
        _x11.XMapRaised(self._display, _Window(window))
        _x11.XSync(self._display, 0)
        return window

    def remove(self, window):
        _x11.XDestroyWindow(self._display, _Window(window))
        _x11.XSync(self._display, 0)

    def click(self, x, y, button=1):
        _xtst.XTestFakeMotionEvent(self._display, -1, x, y, ctypes.c_ulong(0))
        for down in (1, 0):
            _xtst.XTestFakeButtonEvent(self._display, button, down, ctypes.c_ulong(0))
        _x11.XSync(self._display, 0)
