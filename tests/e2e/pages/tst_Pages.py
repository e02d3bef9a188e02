"""The pages as they are to be seen, from the first to the game and back, on mocked USB devices and a real X server."""

import datetime
import time
import unittest

from desk import wait_for
from mocked_device_test import NOTICED, STARTED, MockedDeviceTest
from screen import capture, icon

WINDOW = (190, 187, 900, 650)  # in the middle of the screen of 1280 x 1024

HORIZONTAL, VERTICAL, CIRCULAR = 4, 5, 6  # special actions; together they call the game

CABLE = (222, 290, "usb-cable")
NOT_CONNECTED = (566, 290, "square")
CONNECTED = (566, 290, "square-c")
MARK_5 = (463, 338, "buttonszr/4")
KNOB_MARK = (392, 352, "buttonszr/kn")

# Nothing else is drawn on this part of the device's drawing.
DRAWING = (248, 258, "zr")
DRAWING_CORNER = (0, 0, 100, 192)

LETTERS_MOST = 0.5  # no text fills more than this part of its place

PADDLE = (222, 222, 222)
BALL = (242, 242, 242)
SCORE = (200, 200, 200)


def time_of(line):
    """When the program wrote this line of its log, in seconds."""
    return datetime.datetime.strptime(line[:23], "%Y-%m-%d %H:%M:%S.%f").timestamp()


class Pages(MockedDeviceTest):
    special = {0: HORIZONTAL, 1: VERTICAL, 2: CIRCULAR}

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        names = ("usb-cable", "square", "square-c", "zr", "logo", "underline", "close", "buttonszr/4", "buttonszr/kn")
        cls.icons = {name: icon(name) for name in names}

    def setUp(self):
        super().setUp()
        self.addCleanup(lambda: self.window().save(self.id().rsplit(".", 1)[1]))

    def window(self):
        return capture(self.server.display, *WINDOW)

    def place(self, x, y, width, height):
        return capture(self.server.display, WINDOW[0] + x, WINDOW[1] + y, width, height)

    def shows(self, element):
        x, y, name = element
        expected = self.icons[name]
        return self.place(x, y, expected.width, expected.height).shows(expected)

    def assert_shows(self, *elements):
        for element in elements:
            self.assertTrue(wait_for(lambda: self.shows(element)), element)

    def assert_text(self, x, y, width, height, colour):
        """Letters of this colour stand in this place, on the pages' ground, and keep clear of its edges."""
        seen = self.place(x, y, width, height)
        colours = seen.colours()
        ground = (0x53, 0x42, 0xD9)
        pixels = width * height
        self.assertGreater(colours.get(ground, 0), (1 - LETTERS_MOST) * pixels)
        # Thin strokes need not reach it, but come near, and none goes beyond it.
        strongest = max(colours, key=sum)
        self.assertTrue(all(0 <= full - got <= 40 for full, got in zip(colour, strongest)), (colour, strongest))
        for edge in ((x, y, width, 1), (x, y + height - 1, width, 1)):
            self.assertEqual(set(self.place(*edge).colours()), {ground}, edge)

    def device_page_is_in_place(self):
        drawing = self.icons["zr"]
        x, y, width, height = DRAWING_CORNER
        return self.place(DRAWING[0] + x, DRAWING[1] + y, width, height).shows(drawing.part(x, y, width, height))

    def wait_for_panel(self, program, name, since=0):
        """The moment at which the page of this name was asked for, in seconds."""
        entry = program.wait_for(f": Set sliding index {name}$", STARTED, since)
        self.assertIsNotNone(entry, program.texts())
        return time_of(entry[1])

    # The welcome page

    def test_the_first_page_welcomes(self):
        self.start()
        self.assert_shows(CABLE, NOT_CONNECTED, (566, 430, "underline"), (5, 5, "close"))
        self.assert_text(50, 128, 800, 52, (233, 230, 250))  # the title: white at 0.87 on the ground
        self.assert_text(50, 184, 800, 32, (181, 174, 239))  # the hint: at 0.57
        self.assert_text(546, 398, 136, 28, (255, 255, 255))  # "Connect"
        self.assert_text(50, 600, 800, 24, (138, 126, 229))  # the small text: at 0.32

    def test_the_comparison_tells_the_pictures_apart(self):
        self.start()
        self.assert_shows(NOT_CONNECTED)
        self.assertFalse(self.shows(CONNECTED))
        self.assertFalse(self.shows((CABLE[0] + 1, CABLE[1], CABLE[2])))
        self.assertFalse(self.device_page_is_in_place())

    # The slides

    def test_connected_the_indicator_turns_at_once_and_the_page_comes_after_a_second(self):
        program = self.start()
        self.assert_shows(CABLE, NOT_CONNECTED)
        self.plug(serial="HIDFG01")
        asked = self.wait_for_panel(program, "ZR")
        self.assertTrue(wait_for(lambda: self.shows(CONNECTED), 0.8))
        while self.shows(CABLE):
            stood = time.time()
            self.assertLess(stood - asked, 1 + NOTICED, "the page never slides")
        left = time.time()
        self.assertGreaterEqual(left - asked, 1.0)
        self.assertTrue(wait_for(self.device_page_is_in_place))
        # The last tenths of the half second move it by less than a pixel.
        self.assertGreaterEqual(time.time() - asked, 1.35)
        self.assertFalse(self.shows(CABLE))
        self.assert_shows((30, 18, "logo"))

    def test_unplugged_within_the_second_the_indicator_turns_back_and_the_slide_still_comes(self):
        program = self.start()
        self.assert_shows(CABLE)
        device = self.plug(serial="HIDFG01")
        asked = self.wait_for_panel(program, "ZR")
        self.assert_shows(CONNECTED)
        device.unplug()
        lost = self.wait_for_panel(program, "")
        self.assertLess(lost - asked, 1.0, "the loss was noticed too late for this test")
        while self.shows(CABLE):
            self.assertLess(time.time() - asked, 1 + NOTICED, "the slide does not come")
            if time.time() - lost > 0.2 and time.time() - asked < 0.9:
                self.assertTrue(self.shows(NOT_CONNECTED))
        self.assertGreaterEqual(time.time() - asked, 1.0)
        self.assertTrue(wait_for(self.device_page_is_in_place))
        # The page that is in front when the device comes again stays there.
        self.plug(serial="HIDFG01")
        self.wait_for_panel(program, "ZR", len(program.lines))
        time.sleep(1.7)
        self.assertTrue(self.device_page_is_in_place())

    def test_unplugged_later_the_first_page_comes_back_at_once(self):
        program, device = self.start_with_device()
        self.assertTrue(wait_for(self.device_page_is_in_place))
        time.sleep(0.3)
        device.unplug()
        lost = self.wait_for_panel(program, "")
        self.assertTrue(wait_for(lambda: not self.device_page_is_in_place(), 0.9))
        self.assert_shows(CABLE, NOT_CONNECTED)
        self.assertGreaterEqual(time.time() - lost, 0.35)

    # The device's page

    def test_what_is_held_is_marked(self):
        _, device = self.start_with_device()
        self.assertTrue(wait_for(self.device_page_is_in_place))
        self.assertFalse(self.shows(MARK_5))
        before = self.place(463, 338, 20, 20)
        device.send("BP5", "KND")
        mark = self.icons["buttonszr/4"]
        self.assertTrue(wait_for(lambda: self.place(463, 338, 20, 20).pixels != before.pixels))
        # The middle of the mark covers the drawing.
        self.assertTrue(self.place(471, 346, 4, 4).shows(mark.part(8, 8, 4, 4)))
        self.assertTrue(self.place(400, 360, 4, 4).shows(self.icons["buttonszr/kn"].part(8, 8, 4, 4)))
        device.send("BR5", "KNU")
        self.assertTrue(wait_for(lambda: self.place(463, 338, 20, 20).pixels == before.pixels))

    # The game

    def call_game(self, program, device):
        seen = len(program.lines)
        device.send("BP0", "BP1", "BP2")
        return self.wait_for_panel(program, "GAME", seen)

    def paddle_top(self):
        """The upper edge of the user's paddle; None where there is none."""
        column = self.place(4, 0, 1, 650).pixels
        rows = [y for y in range(650) if tuple(column[3 * y:3 * y + 3]) == PADDLE]
        return rows[0] if len(rows) == 60 and rows[-1] == rows[0] + 59 else None

    def test_the_chord_calls_the_game_and_back(self):
        program, device = self.start_with_device()
        self.assertTrue(wait_for(self.device_page_is_in_place))
        time.sleep(0.3)  # a slide that is asked for during another one is dropped
        asked = self.call_game(program, device)
        while self.device_page_is_in_place():
            self.assertLess(time.time() - asked, 1 + NOTICED, "the page never slides")
        self.assertGreaterEqual(time.time() - asked, 1.0)

        # An edge at a fraction of a pixel is drawn on whole ones.
        self.assertIn(wait_for(self.paddle_top), (132, 133))
        self.assertIn(SCORE, self.place(295, 5, 60, 50).colours())
        self.assertIn(SCORE, self.place(595, 5, 60, 50).colours())
        ball = wait_for(lambda: self.place(20, 70, 850, 560).colours().get(BALL, 0))
        self.assertGreater(ball, 200)  # a disc of 20 pixels has 314
        first = self.place(20, 70, 850, 560).pixels
        self.assertTrue(wait_for(lambda: self.place(20, 70, 850, 560).pixels != first, 1.0), "the game stands still")

        # The knob steers.
        device.send("KND", "KNL")
        self.assertTrue(wait_for(lambda: (self.paddle_top() or 650) < 100))
        device.send("KNU")
        time.sleep(0.2)
        stopped = self.paddle_top()
        time.sleep(0.2)
        self.assertEqual(self.paddle_top(), stopped)

        # One of the three let go, another pressed again: the game is over, and stands still at once.
        seen = len(program.lines)
        device.send("BR0", "BP1")
        self.wait_for_panel(program, "ZR", seen)
        time.sleep(0.1)
        field = self.place(20, 70, 850, 560).pixels
        time.sleep(0.3)
        self.assertEqual(self.place(20, 70, 850, 560).pixels, field)
        self.assertTrue(wait_for(self.device_page_is_in_place))
        device.send("BR1", "BR2")


if __name__ == "__main__":
    unittest.main()
