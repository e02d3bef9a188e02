"""The device page as its user has it: a window to click into, and keys to type."""

import subprocess
import time

from desk import plain_environment, wait_for

WIDTH, HEIGHT = 900, 650
LEFT, TOP = (1280 - WIDTH) // 2, (1024 - HEIGHT) // 2
SLIDE = 1.7   # s: the pause before the page comes in, and its way
SLIDING = 0.7  # s: its way alone
DOUBLE_CLICK = 0.45  # s: two clicks at one place in less are one
PATIENCE = 20  # s: with a window on a busy machine

LAYERS = ("Normal", "Shift 1", "Shift 2")
ENTRIES = ("Shortcut Key", "Midi", "Monitor Left", "Monitor Right", "Horizontal", "Vertical", "Circular", "Up/down keys",
           "Left/right keys", "Midi for Knob", "Shift 1", "Shift 2")

# Places on the page.
PRINTER = (650, 32)
SELECTOR = (760, 37)
KEEP = (690, 112)
UNDO = (690, 112)              # in Keep's place
UNDO_BESIDE_KEEP = (730, 112)
EMPTY = (450, 100)             # nothing lies there
PROGRAM_CHOICE = (330, 240)
NORMAL_SLIDER = (450, 533)
STARTUP_BOX = (31, 632)
# Buttons of dialogs, whose panels lie in the middle of the page.
OK, CLEAR, CANCEL = (546, 372), (449, 372), (351, 372)
MIDI_OK, KNOB_OK = (546, 486), (546, 536)
MIDI_NUMBER, MIDI_VALUE, NOTE_ON_TOUCH = (508, 330), (508, 370), (353, 342)


def wait_for_page(program):
    """The device's page asks for a newer library when it begins to come in."""
    assert program.wait_for("Checking server for updates", PATIENCE), program.texts()
    time.sleep(SLIDING)


def bar(control):
    """The upper left corner of a control's action menu."""
    return 88 + 562 * (control // 5), 239 + 47 * (control % 5)


class Desktop:
    def __init__(self, server):
        self._server = server
        self._environment = plain_environment()
        self._environment["DISPLAY"] = server.name
        self._clicked, self._clicked_at = None, 0.0
        self._menu = None  # the place of the one that was opened last

    def _xdotool(self, *arguments):
        subprocess.run(["xdotool", *map(str, arguments)], env=self._environment, check=True)

    def point(self, place):
        self._xdotool("mousemove", LEFT + place[0], TOP + place[1])

    def point_on_screen(self, x, y):
        self._xdotool("mousemove", x, y)

    def click(self, place):
        if place == self._clicked:
            time.sleep(max(0, self._clicked_at + DOUBLE_CLICK - time.monotonic()))
        self._xdotool("mousemove", LEFT + place[0], TOP + place[1], "click", 1)
        self._clicked, self._clicked_at = place, time.monotonic()

    def keys(self, *names):
        self._xdotool("key", "--delay", 20, *names)

    def type(self, text):
        self._xdotool("type", "--delay", 20, text)

    def is_window_at(self, place):
        return any((x - LEFT, y - TOP) == place for x, y, *_ in self._server.windows())

    def dialogs(self):
        return sum((width, height) == (WIDTH, HEIGHT) for _, _, width, height in self._server.windows()) - 1

    def wait_for_dialog(self, shown=True):
        assert wait_for(lambda: self.dialogs() == int(shown), PATIENCE), self._server.windows()
        # What was pressed before the dialog had the keys would go to the page.
        assert not shown or wait_for(lambda: self._server.is_focused((WIDTH, HEIGHT)), PATIENCE), "the dialog has no focus"

    def _open(self, place, below):
        self.click((place[0] + 70, place[1] + 20))
        self._menu = place[0], place[1] + below
        assert wait_for(lambda: self.is_window_at(self._menu), PATIENCE), self._server.windows()

    def _choose(self, *names):
        """By the keyboard, in the menu that is open; a click into one that is still there would only close it."""
        self.keys(*names, "Return")
        assert wait_for(lambda: not self.is_window_at(self._menu), PATIENCE), self._server.windows()

    def open_menu(self, control):
        self._open(bar(control), 40)

    def choose(self, control, layer, entry):
        """Chooses an entry of an action menu, with the keyboard once the menu is open."""
        self.open_menu(control)
        self._choose(*["Down"] * (LAYERS.index(layer) + 1), "Right", *["Down"] * ENTRIES.index(entry))

    def open_selector(self):
        self._open((680, 12), 50)

    def set_mapping(self, menu, number, delete=False):
        """Chooses "Set" or "Delete" of a mapping: menu 1 is the library's, 2 the user's own; numbers count from 0."""
        self.open_selector()
        self._choose(*["Down"] * menu, "Right", *["Down"] * number, "Right", *["Down"] * int(delete))

    def save_as(self, name):
        self.open_selector()
        self._choose("Up")
        self.wait_for_dialog()
        self.type(name)
        self.click(OK)
        self.wait_for_dialog(shown=False)

    def choose_programs(self, only_the_last):
        """Has the mapping act for all programs, or only for the one that had the focus last."""
        self.click((PROGRAM_CHOICE[0] + 120, PROGRAM_CHOICE[1] + 10))
        self._menu = PROGRAM_CHOICE[0], PROGRAM_CHOICE[1] + 20
        assert wait_for(lambda: self.is_window_at(self._menu), PATIENCE), self._server.windows()
        self._choose(*["Down"] * (2 if only_the_last else 1))

    def capture(self, control, layer, *names):
        """Makes a shortcut of keys with the dialog."""
        self.choose(control, layer, "Shortcut Key")
        self.wait_for_dialog()
        for name in names:
            self.keys(name)
        self.click(OK)
        self.wait_for_dialog(shown=False)
