"""One program per user, behind its tray icon or without one: real processes on a real X server."""

import signal
import subprocess
import time
import unittest

from desk import PROGRAM, Home, Lines, XServer, plain_environment, wait_for
from screen import capture, icon
from windows import Windows

WINDOW_SIZE = (900, 650)
CLOSE_BUTTON = (13, 13)  # its middle, in the window
STARTED = 20             # s: patience with a start
AT_ONCE = 50
NO_TRAY = "has no tray: start the program once more"


class Instance(unittest.TestCase):
    def setUp(self):
        self.server = XServer()
        self.addCleanup(self.server.stop)
        self.windows = Windows(self.server.display)
        self.home = Home()
        self.addCleanup(self.home.cleanup)
        self.environment = plain_environment()
        self.environment["DISPLAY"] = self.server.name
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = "disabled:"  # a tray of the tester's own desktop is none of ours
        self.home.add_to(self.environment)

    def start(self):
        """Starts the first one."""
        program = Lines([PROGRAM], self.environment, "stderr")
        self.addCleanup(program.stop, signal.SIGKILL)
        self.assertTrue(wait_for(lambda: self.window_of(program.pid), STARTED), program.texts())
        return program

    def start_again(self, *arguments):
        """Starts one more, which has to end well."""
        again = subprocess.run([PROGRAM, *arguments], env=self.environment, timeout=STARTED, check=False,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.assertEqual((again.returncode, again.stdout), (0, b""))

    def start_many(self):
        processes = [subprocess.Popen([PROGRAM], env=self.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
                     for _ in range(AT_ONCE)]
        for process in processes:
            self.addCleanup(process.wait)
            self.addCleanup(process.kill)
        return processes

    def window_of(self, pid):
        """The program's window, when it is to be seen."""
        return next((window for window in self.windows.shown(WINDOW_SIZE) if self.windows.process(window) == pid), None)

    def assert_in_front(self, pid):
        self.assertTrue(wait_for(lambda: self.windows.process(self.windows.shown()[-1]) == pid), self.windows.shown())
        self.assertEqual(self.windows.shown()[-1], self.window_of(pid))

    def hide(self, program):
        """Presses the button in the window's corner."""
        place = self.windows.attributes(self.window_of(program.pid))
        self.windows.click(place.x + CLOSE_BUTTON[0], place.y + CLOSE_BUTTON[1])
        self.assertTrue(wait_for(lambda: not self.window_of(program.pid)))
        time.sleep(0.2)
        self.assertIsNone(program.process.poll(), "the button has ended the program")

    # One program

    def test_of_fifty_starts_at_once_one_is_left_with_its_window_in_front(self):
        self.windows.cover()
        processes = self.start_many()
        running = lambda: [process for process in processes if process.poll() is None]
        self.assertTrue(wait_for(lambda: len(running()) <= 1, 100), len(running()))
        self.assertTrue(wait_for(lambda: len(self.windows.shown(WINDOW_SIZE)) == 1, STARTED))
        left = running()
        self.assertEqual(len(left), 1)
        self.assertEqual([process.returncode for process in processes if process is not left[0]], [0] * (AT_ONCE - 1))
        self.assert_in_front(left[0].pid)

    def test_fifty_starts_beside_a_running_one_bring_its_covered_window_to_the_front(self):
        program = self.start()
        self.windows.cover()
        self.assertNotEqual(self.windows.shown()[-1], self.window_of(program.pid))
        for process in self.start_many():
            self.assertEqual(process.wait(100), 0)
        self.assert_in_front(program.pid)
        self.assertEqual(len(self.windows.shown(WINDOW_SIZE)), 1)

    def test_a_second_start_raises_the_window_whatever_its_arguments(self):
        program = self.start()
        for arguments in ([], ["--secondary"], ["--verbose"]):
            with self.subTest(arguments=arguments):
                cover = self.windows.cover()
                self.start_again(*arguments)
                self.assert_in_front(program.pid)
                self.windows.remove(cover)

    def test_after_a_kill_the_next_start_is_the_first_again(self):
        program = self.start()
        program.stop(signal.SIGKILL)
        self.start()

    def test_after_each_signal_to_quit_the_next_start_is_the_first_again(self):
        for number in (signal.SIGTERM, signal.SIGINT):
            program = self.start()
            self.assertEqual(program.stop(number), 0)

    # Without a tray

    def test_without_a_tray_the_button_hides_and_a_second_start_brings_the_window_back(self):
        program = self.start()
        self.assertTrue(program.wait_for(NO_TRAY), program.texts())
        self.hide(program)
        self.start_again()
        self.assertTrue(wait_for(lambda: self.window_of(program.pid)))
        self.assert_in_front(program.pid)

    def test_hidden_it_quits_on_a_signal(self):
        program = self.start()
        self.hide(program)
        self.assertEqual(program.stop(signal.SIGTERM), 0)

    # With one

    def start_with_tray(self):
        """Starts a tray and the program; returns the program and the icon's window."""
        tray = subprocess.Popen(["trayer", "--edge", "top", "--align", "left", "--widthtype", "request", "--height", "24",
                                 "--tint", "0x000000"], env=self.environment, stderr=subprocess.DEVNULL)
        self.addCleanup(tray.wait)
        self.addCleanup(tray.kill)
        self.assertTrue(wait_for(self.windows.shown, STARTED), "the tray does not come")
        program = self.start()
        icon_window = wait_for(lambda: self.icon_of(program.pid), STARTED)
        self.assertTrue(icon_window, "no icon in the tray")
        return program, icon_window

    def icon_of(self, pid):
        for top in self.windows.children():
            for window in self.windows.descendants(top):
                if self.windows.process(window) == pid and self.windows.is_shown(window):
                    return window
        return None

    def click_icon(self, icon_window, button=1):
        self.windows.click(*self.windows.centre(icon_window), button)

    def test_the_icon_in_the_tray_is_the_programs(self):
        program, icon_window = self.start_with_tray()
        self.assertNotIn(NO_TRAY, "".join(program.texts()))
        x, y = self.windows.centre(icon_window)
        # The middle of the picture, which has nothing of the tray's ground in it.
        expected = icon("16").part(4, 4, 8, 8)
        seen = lambda: any(capture(self.server.display, x - 4 + dx, y - 4 + dy, 8, 8).shows(expected)
                           for dx in (-1, 0, 1) for dy in (-1, 0, 1))
        self.assertTrue(wait_for(seen))

    def test_a_click_on_the_icon_brings_the_hidden_window_back(self):
        program, icon_window = self.start_with_tray()
        self.hide(program)
        self.click_icon(icon_window)
        self.assertTrue(wait_for(lambda: self.window_of(program.pid)))
        self.assert_in_front(program.pid)

    def test_a_right_click_opens_the_menu_and_brings_the_window_and_quit_ends(self):
        program, icon_window = self.start_with_tray()
        self.hide(program)
        before = self.windows.shown()
        self.click_icon(icon_window, 3)
        self.assertTrue(wait_for(lambda: self.window_of(program.pid)), "the window does not come")
        new = lambda: [window for window in self.windows.shown() if window not in before
                       and window != self.window_of(program.pid) and self.windows.process(window) == program.pid]
        menus = wait_for(new)
        self.assertEqual(len(menus), 1, "the menu does not come")
        self.windows.click(*self.windows.centre(menus[0]))
        self.assertEqual(program.process.wait(5), 0)


if __name__ == "__main__":
    unittest.main()
