"""A user who has one program and another do different things with the same button."""

import os
import subprocess
import re
import time
import unittest

import desktop
from desk import LISTENER, Lines, wait_for
from desktop import Desktop
from mocked_device_test import MockedDeviceTest
from windows import Windows

BUTTON = 5


class OtherProgram:
    """Another program's window, known by its class."""

    def __init__(self, test, name, size):
        """`name`: a class without its version; the program calls it by that."""
        self.size = size
        self._test = test
        self._name = name.split("-")[0].capitalize()
        self.listener = Lines([LISTENER, "--class", name, "--size", f"{size}x{size}"],
                              {**test.server_environment, **test.more_environment}, "stdout", stdin=subprocess.PIPE)
        test.addCleanup(self.listener.stop)
        test.assertTrue(self.listener.wait_for("^ready$"))
        self._windows = test.windows
        self._window = test.windows.shown(size=(size, size))[-1]

    def focus(self):
        """The program has heard of it when this returns."""
        self._windows.activate(self._window)
        told = lambda: [text for text in self._test.program.texts() if "in front: " in text][-1:]
        self._test.assertTrue(wait_for(lambda: told() and told()[0].endswith(f"in front: {self._name}")), told())


class ProgramJourneys(MockedDeviceTest):
    def setUp(self):
        super().setUp()
        self.desktop = Desktop(self.server)
        self.windows = Windows(self.server.display)
        self.gimp = OtherProgram(self, "Gimp-2.10", 150)
        self.browser = OtherProgram(self, "firefox", 140)
        self.editor = OtherProgram(self, "Editor", 130)
        self.addCleanup(self.windows.activate, 0)
        self.open_page()

    def open_page(self):
        self.program, self.device = self.start_with_device("--verbose")
        desktop.wait_for_page(self.program)

    def arrives_at(self, program, *reports):
        since = len(program.listener.lines)
        self.device.send(*reports)
        wait_for(lambda: sum(text.startswith("key") for _, text in program.listener.lines[since:]) >= len(reports), 2.0)
        time.sleep(0.05)
        return [text for _, text in program.listener.lines[since:] if text.startswith("key")]

    def assert_presses(self, program, code):
        program.focus()
        self.assertEqual(self.arrives_at(program, f"BP{BUTTON}", f"BR{BUTTON}"), [f"key {code} down", f"key {code} up"],
                         self.program.texts()[-10:])

    def give(self, program, key):
        program.focus()
        self.desktop.choose_programs(only_the_last=True)
        self.desktop.capture(BUTTON, "Normal", key)

    def test_one_program_and_another_use_different_mappings(self):
        general = 65 + BUTTON
        self.assertEqual(self.home.file("programs.xml"), "")
        working_copy = self.home.file("current.xml")
        self.give(self.gimp, "g")
        self.give(self.browser, "b")
        for program, code in ((self.gimp, 71), (self.browser, 66), (self.editor, general), (self.gimp, 71)):
            self.assert_presses(program, code)
        self.assertEqual(self.home.file("current.xml"), working_copy)

        # The next start begins with all of it.
        self.assertEqual(self.program.stop(), 0)
        self.device.unplug()
        self.open_page()
        for program, code in ((self.browser, 66), (self.editor, general), (self.gimp, 71)):
            self.assert_presses(program, code)

        # Gimp has what all others have again, and its own when the user wants that back.
        self.desktop.choose_programs(only_the_last=False)
        self.assert_presses(self.gimp, general)
        self.assert_presses(self.browser, 66)
        self.gimp.focus()
        self.desktop.choose_programs(only_the_last=True)
        self.assert_presses(self.gimp, 71)

    def test_what_is_held_while_the_program_changes_is_released_by_what_pressed_it(self):
        self.give(self.gimp, "g")
        self.give(self.browser, "b")
        self.gimp.focus()
        self.assertEqual(self.arrives_at(self.gimp, f"BP{BUTTON}"), ["key 71 down"])
        self.browser.focus()
        self.assertEqual(len(self.server.keys_held()), 1)
        self.device.send(f"BR{BUTTON}")
        self.assertTrue(wait_for(lambda: self.server.keys_held() == []), self.server.keys_held())
        self.assert_presses(self.browser, 66)

    def test_windows_that_vanish_leave_no_line_in_the_log(self):
        self.give(self.gimp, "g")
        warnings = lambda: [text for text in self.program.texts() if re.search(r"\b(warning|error|fatal) ", text)]
        before = warnings()
        for _ in range(5):
            short = OtherProgram(self, "short", 120)
            short.focus()
            short.listener.stop()
        self.assert_presses(self.gimp, 71)
        self.assertEqual(warnings(), before)

    def test_nothing_is_watched_until_it_is_used(self):
        connections = lambda: len([fd for fd in os.listdir(f"/proc/{self.program.pid}/fd")])
        with_page = connections()
        self.desktop.click((13 - 5, 13 - 5))  # hides the window
        self.assertTrue(wait_for(lambda: connections() < with_page), connections())


if __name__ == "__main__":
    unittest.main()
