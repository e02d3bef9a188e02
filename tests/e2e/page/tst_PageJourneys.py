"""What a user does on the device page, with real mouse and key events and a mocked device: from the choice to its effect."""

import os
import re
import subprocess
import time
import unittest

import desktop
from desk import LISTENER, Lines, plain_environment, wait_for
from desktop import Desktop
from mocked_device_test import MockedDeviceTest

SHEET_DPI = 120
SHEET_PLACE = (127, 17)     # of the picture on the sheet: at 110, 0 within margins of 10 points
PRINTED_FROM = (60, 120)    # the part of the page
PRINTED_SIZE = (780, 490)
ACCENTS = {(171, 166, 166), (161, 75, 40), (160, 53, 46), (62, 86, 166), (85, 128, 95), (152, 131, 44)}
BUTTON_2 = (376, 348)       # the middle of its mark on the page: a blue one
GROUND = (0x53, 0x42, 0xd9)


def is_whole(sheet):
    """Whether this PDF file was written to its end."""
    if not os.path.exists(sheet):
        return False
    with open(sheet, "rb") as file:
        return file.read().rstrip().endswith(b"%%EOF")


class PageJourneys(MockedDeviceTest):
    def setUp(self):
        super().setUp()
        os.remove(os.path.join(self.home.data, "current.xml"))  # the program starts with the library's default
        self.desktop = Desktop(self.server)
        self.program, self.device = self.open_page()

    def open_page(self):
        program, device = self.start_with_device()
        desktop.wait_for_page(program)
        return program, device

    def restart(self):
        self.assertEqual(self.program.stop(), 0)
        self.device.unplug()
        self.program, self.device = self.open_page()

    def listen(self, *arguments):
        """Another program's window, which takes the focus and tells what arrives there."""
        listener = Lines([LISTENER, *arguments], {**self.server_environment, **self.more_environment}, "stdout",
                         stdin=subprocess.PIPE)
        self.addCleanup(listener.stop)
        self.assertTrue(listener.wait_for("^ready$"))
        return listener

    def assert_does(self, reports, *expected):
        """What arrives in another program's window when the device sends its reports."""
        self.desktop.point_on_screen(75, 75)
        listener = self.listen("--size", "150x150")
        heard = len(listener.lines)
        self.device.send(*reports)
        wait_for(lambda: len(listener.lines) - heard >= len(expected), 2.0)
        time.sleep(0.05)
        self.assertEqual([text for _, text in listener.lines[heard:]], list(expected), self.program.texts()[-10:])
        listener.stop()

    def assert_presses(self, control, *codes):
        self.assert_does([f"BP{control}", f"BR{control}"],
                         *[f"key {code} down" for code in codes], *[f"key {code} up" for code in codes])

    # Shortcuts

    def test_a_captured_shortcut_acts_and_is_there_after_a_restart(self):
        left, top = desktop.bar(3)
        # All with the mouse.
        self.desktop.open_menu(3)
        self.desktop.click((left + 40, top + 40 + 14))
        self.assertTrue(wait_for(lambda: len(self.server.windows()) >= 3), self.server.windows())
        self.desktop.click((left + 180, top + 40 + 14))
        self.desktop.wait_for_dialog()
        self.desktop.click((341, 301))  # the dialog's own Win button
        self.desktop.keys("z")
        self.desktop.click(desktop.CLEAR)
        self.desktop.keys("Control_L")
        self.desktop.keys("Control_L")
        self.desktop.keys("s")
        self.desktop.click(desktop.OK)
        self.desktop.wait_for_dialog(shown=False)
        self.assert_presses(3, 17, 83)
        self.assertIn('label="Ctrl + S"', self.home.file("current.xml"))
        settings = self.home.settings()
        self.assertEqual([settings[f"tonAction.Normal.key{i}"] for i in (1, 2, 3)], ["17", "83", "-1"])
        self.restart()
        self.assert_presses(3, 17, 83)

    def test_dialogs_left_without_ok_change_nothing_and_let_nothing_through(self):
        listener = self.listen("--size", "150x150")
        self.desktop.choose(6, "Normal", "Shortcut Key")
        self.desktop.wait_for_dialog()
        self.desktop.keys("a", "Escape", "Tab")
        self.desktop.click(desktop.CANCEL)
        self.desktop.wait_for_dialog(shown=False)
        self.assertEqual(listener.texts(), ["ready"])
        listener.stop()

        # The other dialogs close with Escape.
        self.desktop.open_selector()
        self.desktop.keys("Up", "Return")
        self.desktop.wait_for_dialog()
        self.desktop.keys("Escape")
        self.desktop.wait_for_dialog(shown=False)
        self.desktop.choose(6, "Normal", "Midi")
        self.desktop.wait_for_dialog()
        self.desktop.keys("Escape")
        self.desktop.wait_for_dialog(shown=False)
        self.assertNotIn("Untitled", self.home.file("custom.xml"))
        self.assert_presses(6, 17, 86)  # as before

    def test_a_lost_device_closes_the_dialog_and_gives_the_keyboard_back(self):
        self.desktop.choose(6, "Normal", "Shortcut Key")
        self.desktop.wait_for_dialog()
        self.device.unplug()
        self.desktop.wait_for_dialog(shown=False)
        listener = self.listen("--size", "150x150")
        self.desktop.keys("a")
        self.assertTrue(listener.wait_for("key 65 up"), listener.texts())
        listener.stop()

    def test_layers_and_knob_modes_act_at_once(self):
        # In the mapping that is there first, control 3 is the button for Shift 1 and 4 the one for Shift 2.
        self.desktop.capture(5, "Shift 1", "F5")
        self.desktop.capture(5, "Shift 2", "b")
        self.assert_presses(5, 17, 67)
        self.assert_does(["BP3", "BP5", "BR5", "BR3"], "key 116 down", "key 116 up")
        self.assert_does(["BP4", "BP5", "BR5", "BR4"], "key 66 down", "key 66 up")

        # A button that becomes one for a layer is that in every layer.
        self.desktop.choose(9, "Normal", "Shift 1")
        self.assert_does(["BP9", "BP5", "BR5", "BR9"], "key 116 down", "key 116 up")
        settings = self.home.settings()
        self.assertEqual([settings[f"ion.{layer}.key2"] for layer in ("Normal", "Shift1", "Shift2")], ["9"] * 3)

        working_copy = self.home.file("current.xml")
        self.desktop.choose(5, "Normal", "Left/right keys")
        self.assert_does(["BP5", "BR5", "KND", "KNR", "KNL", "KNU"],
                         "key 37 down", "key 37 up", "key 39 down", "key 39 up")  # crossed on purpose
        self.desktop.choose(5, "Normal", "Vertical")
        self.assert_does(["BP5", "BR5", "KND", "KNR", "KNL", "KNU"],
                         "left down", "move 75 74", "move 75 75", "left up")
        self.assertEqual(self.home.file("current.xml"), working_copy)

    # MIDI

    def test_midi(self):
        self.program.stop()
        self.device.unplug()
        jack = Lines([os.environ["JACK_KEEPER"]], plain_environment(), "stdout", stdin=subprocess.PIPE)
        try:
            ready = jack.wait_for("^ready ", 120)
            self.assertTrue(ready, "no JACK server")
            self.more_environment = {"JACK_DEFAULT_SERVER": ready[1].split()[1], "JACK_NO_START_SERVER": "1"}
            host = self.listen("--midi-only")
            self.program, self.device = self.open_page()
            self.send_midi(host)
            self.program.stop()
            host.stop()
        finally:
            jack.process.stdin.close()
            jack.process.wait(30)
            jack.stop()

    def send_midi(self, host):
        self.desktop.choose(7, "Normal", "Midi")
        self.desktop.wait_for_dialog()
        self.desktop.keys("2")  # the channel is selected
        self.desktop.click(desktop.NOTE_ON_TOUCH)
        for place, text in ((desktop.MIDI_NUMBER, "60"), (desktop.MIDI_VALUE, "100")):
            self.desktop.click(place)
            self.desktop.keys("ctrl+a")
            self.desktop.type(text)
        self.desktop.click(desktop.MIDI_OK)
        self.desktop.wait_for_dialog(shown=False)
        self.device.send("BP7", "BR7")
        self.assertTrue(host.wait_for("^midi 81 3C"), host.texts())
        self.assertEqual(host.texts()[1], "midi 91 3C 64")

        self.desktop.choose(8, "Normal", "Midi for Knob")
        self.desktop.wait_for_dialog()
        self.desktop.keys("4")
        self.desktop.click(desktop.KNOB_OK)
        self.desktop.wait_for_dialog(shown=False)
        since = len(host.lines)
        self.device.send("BP8", "BR8", "KND", "KNR", "KNR", "KNU")
        self.assertTrue(host.wait_for("^midi B3 10", since=since), host.texts())
        self.assertEqual(self.home.file("current.xml"), "")
        settings = self.home.settings()
        self.assertEqual(settings["ction.Normal.key1"], str(0x1001262))
        self.assertEqual(settings["tion.Normal.key1"], str(0x1001261))

    # Mappings

    def test_mappings_are_saved_set_and_deleted_also_two_of_a_name(self):
        self.desktop.capture(5, "Normal", "a")
        self.desktop.save_as("Mine")
        self.desktop.capture(5, "Normal", "b")
        self.desktop.save_as("Mine")
        self.assertEqual(self.home.file("custom.xml").count('software="Mine"'), 2)
        working_copy = self.home.file("current.xml")

        self.desktop.set_mapping(2, 0)
        self.assert_presses(5, 65)
        self.desktop.set_mapping(2, 1)
        self.assert_presses(5, 66)
        self.desktop.set_mapping(2, 1, delete=True)  # by its name: the first of the two goes
        self.assertTrue(wait_for(lambda: self.home.file("custom.xml").count('software="Mine"') == 1))
        self.desktop.set_mapping(1, 0)
        self.assert_presses(5, 17, 67)
        self.desktop.set_mapping(2, 0)
        self.assert_presses(5, 66)
        self.desktop.set_mapping(1, 0)
        self.assertEqual(self.home.file("current.xml"), working_copy)

        # What was only set ends with the program.
        self.restart()
        self.assert_presses(5, 66)

    def test_a_deletion_is_taken_back(self):
        for name in ("One", "Two", "Three"):
            self.desktop.save_as(name)
        before = self.home.file("custom.xml")
        self.desktop.set_mapping(2, 1, delete=True)
        self.assertTrue(wait_for(lambda: '"Two"' not in self.home.file("custom.xml")))
        self.desktop.click(desktop.UNDO)
        self.assertTrue(wait_for(lambda: self.home.file("custom.xml") == before))

        # By the keys too, and again; it is listed where it was.
        self.desktop.set_mapping(2, 1, delete=True)
        self.assertTrue(wait_for(lambda: '"Two"' not in self.home.file("custom.xml")))
        without = self.home.file("custom.xml")
        self.desktop.click(desktop.EMPTY)
        self.desktop.keys("ctrl+z")
        self.assertTrue(wait_for(lambda: self.home.file("custom.xml") == before))
        self.desktop.keys("ctrl+shift+z")
        self.assertTrue(wait_for(lambda: self.home.file("custom.xml") == without))
        self.desktop.keys("ctrl+z")
        self.assertTrue(wait_for(lambda: self.home.file("custom.xml") == before))

        # What the file held first is there for longer.
        versions = os.listdir(os.path.join(self.home.data, "history"))
        self.assertEqual(len([name for name in versions if name.startswith("custom-")]), 1, versions)
        self.restart()
        self.assertEqual(self.home.file("custom.xml"), before)

    def test_nothing_is_lost_on_a_wrong_click(self):
        self.desktop.capture(5, "Normal", "a")
        working_copy = self.home.file("current.xml")
        self.desktop.choose(6, "Normal", "Left/right keys")  # nobody has written that
        arrows = ["key 37 down", "key 37 up"]
        self.assert_does(["BP6", "BR6", "KND", "KNR", "KNU"], *arrows)

        # Another mapping over it.
        self.desktop.set_mapping(1, 3)
        self.desktop.click(desktop.UNDO_BESIDE_KEEP)
        self.assert_presses(5, 65)
        self.assert_does(["BP6", "BR6", "KND", "KNR", "KNU"], *arrows)

        # Another action, and a shortcut, which is written.
        self.desktop.choose(5, "Normal", "Circular")
        self.desktop.click(desktop.EMPTY)
        self.desktop.keys("ctrl+z")
        self.assert_presses(5, 65)
        self.desktop.capture(5, "Normal", "b")
        self.assertNotEqual(self.home.file("current.xml"), working_copy)
        self.desktop.click(desktop.EMPTY)
        self.desktop.keys("ctrl+z")
        self.assertTrue(wait_for(lambda: self.home.file("current.xml") == working_copy))
        self.assert_presses(5, 65)
        self.assert_does(["BP6", "BR6", "KND", "KNR", "KNU"], *arrows)

        # A save under a name that is taken.
        self.desktop.save_as("Mine")
        mine = self.home.file("custom.xml")
        self.desktop.save_as("Mine")
        self.assertNotEqual(self.home.file("custom.xml"), mine)
        self.desktop.click(desktop.EMPTY)
        self.desktop.keys("ctrl+z")
        self.assertTrue(wait_for(lambda: self.home.file("custom.xml") == mine))
        self.restart()
        self.assert_presses(5, 65)

    def test_what_is_kept_persists(self):
        self.desktop.set_mapping(1, 3)
        self.assertEqual(self.home.file("current.xml"), "")
        self.desktop.click(desktop.KEEP)
        self.assertTrue(wait_for(lambda: 'software="current_map"' in self.home.file("current.xml")))
        kept = self.home.file("current.xml")
        self.desktop.click(desktop.NORMAL_SLIDER)
        self.desktop.click(desktop.STARTUP_BOX)
        entry = os.path.join(self.home.path, "config", "autostart")
        self.assertTrue(wait_for(lambda: os.path.isdir(entry) and os.listdir(entry)))

        self.restart()
        value = int(self.home.settings()["Slider.Normal"])
        self.assertTrue(1 < value <= 100, value)
        self.desktop.click(desktop.KEEP)  # no such line now
        self.desktop.click(desktop.STARTUP_BOX)
        self.assertTrue(wait_for(lambda: not os.listdir(entry)))
        self.assertEqual(self.home.file("current.xml"), kept)
        self.assertEqual(self.program.stop(), 0)
        self.assertEqual(int(self.home.settings()["Slider.Normal"]), value)

    def test_the_map_is_printed_to_a_file(self):
        before = len(self.server.windows())
        self.desktop.click(desktop.PRINTER)
        self.assertTrue(wait_for(lambda: len(self.server.windows()) > before))
        self.assertTrue(wait_for(lambda: self.server.is_focused(None)), self.server.windows())
        self.desktop.keys("Return")
        sheet = os.path.join(self.home.path, "Veltrix.pdf")
        self.assertTrue(wait_for(lambda: is_whole(sheet) and len(self.server.windows()) == before, desktop.PATIENCE),
                        os.listdir(self.home.path))

        told = subprocess.run(["pdfinfo", sheet], check=True, capture_output=True, text=True).stdout
        self.assertRegex(told, r"Pages: +1\n")
        self.assertRegex(told, r"Page size: +595 x 842 pts \(A4\)")
        picture = subprocess.run(["pdftoppm", "-r", str(SHEET_DPI), sheet], check=True, capture_output=True).stdout
        width, height, pixels = read_ppm(picture)
        self.assertEqual((width, height), (992, 1404))

        def colour(x, y):
            at = 3 * (y * width + x)
            return tuple(pixels[at:at + 3])

        def on_sheet(place):
            return [place[i] - PRINTED_FROM[i] + SHEET_PLACE[i] for i in (0, 1)]

        counts = {}
        for y in range(height):
            for x in range(width):
                counts[colour(x, y)] = counts.get(colour(x, y), 0) + 1
        self.assertEqual(colour(*on_sheet(BUTTON_2)), (62, 86, 166))
        for accent in ACCENTS:
            self.assertGreater(counts.get(accent, 0), 100, accent)
        self.assertNotIn(GROUND, counts)
        self.assertGreater(counts[(255, 255, 255)], 0.8 * width * height)
        for x, y in ((0, 0), (SHEET_PLACE[0] - 2, 200), (500, PRINTED_SIZE[1] + 5), (width - 1, height - 1)):
            self.assertEqual(colour(x, y), (255, 255, 255), (x, y))
        # A menu's title is black.
        left, top = on_sheet(desktop.bar(5))
        darkest = min(sum(colour(x, y)) for x in range(left + 8, left + 100) for y in range(top, top + 20))
        self.assertLess(darkest, 3 * 16)


def read_ppm(data):
    header = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", data)
    return int(header[1]), int(header[2]), data[header.end():]


if __name__ == "__main__":
    unittest.main()
