"""The program explains itself: why a port is not used, what the doctor says, and where its window is."""

import os
import pty
import shutil
import signal
import subprocess
import tempfile
import threading
import time
import tty
import unittest

from gi.repository import Gio, GLib

from desk import PROGRAM, START_SERVER, Home, Lines, XServer, plain_environment, wait_for
from screen import capture
from windows import Windows

STARTED = 20  # s: patience with a start
SCAN = 0.5  # s between two looks for the device
NOBODY = 65534
GROUND = (0x53, 0x42, 0xD9)


class Explanations(unittest.TestCase):
    screen = "1280x1024x24"

    def setUp(self):
        self.server = XServer(self.screen)
        self.addCleanup(self.server.stop)
        self.home = Home()
        self.addCleanup(self.home.cleanup)
        self.environment = plain_environment()
        self.environment["DISPLAY"] = self.server.name
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = "disabled:"
        self.home.add_to(self.environment)
        self.windows = Windows(self.server.display)

    def port(self):
        """A port as the device would have it, without the device: (what the device holds, its path)."""
        master, slave = pty.openpty()
        tty.setraw(slave)
        path = os.ttyname(slave)
        os.close(slave)
        self.addCleanup(os.close, master)
        return master, path

    def start(self, *options, program=PROGRAM, **more):
        running = Lines([program, *options], self.environment, "stderr", **more)
        self.addCleanup(running.stop)
        self.assertIsNotNone(running.wait_for("input goes", STARTED), running.texts())
        return running

    def doctor(self, *options, program=PROGRAM, **more):
        result = subprocess.run([program, *options, "--doctor"], env=self.environment, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, text=True, timeout=STARTED, **more)
        self.assertEqual(result.returncode, 0, result.stderr)
        return result.stdout

    def window(self):
        """The program's window as (x, y, width, height)."""
        shown = wait_for(lambda: [place for place in self.server.windows() if place[2] > 600], STARTED)
        self.assertEqual(len(shown), 1)
        return shown[0]

    def finding_is_a_problem(self):
        """Whether the bottom line of the welcome page is written to be seen, and does not only wait."""
        x, y, _, _ = self.window()
        colours = capture(self.server.display, x + 50, y + 600, 800, 24).colours()
        strongest = max(colours, key=sum)
        return colours.get(GROUND, 0) > 800 * 24 / 2 and sum(strongest) > 600


class WhyIsThereNoDevice(Explanations):
    def ordinary_user(self):
        """Permissions are not for root: what a start as somebody else needs."""
        if os.getuid() != 0:
            return {"program": PROGRAM}
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        os.chmod(folder.name, 0o755)
        program = shutil.copy(PROGRAM, folder.name)
        for path, _, names in os.walk(self.home.path):
            for each in [path] + [os.path.join(path, name) for name in names]:
                os.chown(each, NOBODY, NOBODY)
        return {"program": program, "user": NOBODY, "group": NOBODY, "extra_groups": []}

    def test_a_port_that_may_not_be_opened_is_found_out_and_then_used(self):
        _, path = self.port()
        os.chmod(path, 0o000)
        user = self.ordinary_user()
        running = self.start("--port", path, **user)
        self.assertIsNotNone(running.wait_for("failed to plugg", STARTED), running.texts())
        self.assertTrue(wait_for(self.finding_is_a_problem))

        told = self.doctor("--port", path, **user)
        self.assertIn(f"{path} is there, but this user may not open it: install the package's rule or join the group "
                      "dialout", told)

        os.chmod(path, 0o666)
        self.assertIsNotNone(running.wait_for(": plugged$", 10 * SCAN), running.texts())

    def test_the_program_that_holds_the_port_is_named(self):
        _, path = self.port()
        folders = [each for each in ("/var/lock", "/run/lock", "/tmp") if os.access(each, os.W_OK)]
        lock = os.path.join(folders[0], "LCK.." + os.path.basename(path))
        holder = subprocess.Popen(["sleep", "60"])
        self.addCleanup(holder.wait)
        self.addCleanup(holder.kill)
        with open(lock, "w", encoding="ascii") as file:
            file.write(f"{holder.pid}\nsleep\n{os.uname().nodename}\n")
        self.addCleanup(lambda: os.path.exists(lock) and os.unlink(lock))
        self.start("--port", path)
        self.assertTrue(wait_for(self.finding_is_a_problem))
        self.assertIn(f"{path} is there, but sleep holds it: close that program", self.doctor("--port", path))

    def test_with_nothing_there_the_line_only_waits(self):
        self.start()
        time.sleep(2 * SCAN)
        self.assertFalse(self.finding_is_a_problem())
        self.assertIn("No device is plugged in.", self.doctor())


class TheDoctor(Explanations):
    def test_it_tells_where_things_are_and_go(self):
        told = self.doctor()
        for part in ("Device\n", "Input\n  input goes through X11: display " + self.server.name, "MIDI outputs\n  none",
                     "Tray\n  This desktop has none", "Mappings: " + self.home.data, "Veltrix 1.10", "Qt 5."):
            self.assertIn(part, told)

    def test_without_a_display_it_says_so(self):
        del self.environment["DISPLAY"]
        told = self.doctor()
        self.assertIn("No display answers", told)
        self.assertIn("input goes nowhere: DISPLAY is not set", told)

    def test_beside_a_running_copy_it_tells_of_it_and_disturbs_nothing(self):
        master, path = self.port()
        running = self.start("--port", path)
        self.assertIsNotNone(running.wait_for(": plugged$", STARTED), running.texts())
        told = self.doctor("--port", path)
        self.assertIn(f"{path} is there, and the running Veltrix uses it", told)
        self.assertNotIn("Veltrix is not running", told)
        self.assertIn("  connected: true\n", told)
        self.assertNotIn("mapping: ", told)
        time.sleep(2 * SCAN)
        self.assertFalse([line for line in running.texts() if "unplugged" in line])
        os.write(master, b"BP0\n\r\nBR0\n\r\n")

    def test_what_was_pressed_is_not_in_it(self):
        master, path = self.port()
        running = self.start("--verbose", "--port", path)
        self.assertIsNotNone(running.wait_for(": plugged$", STARTED), running.texts())
        os.write(master, b"BP3\n\r\nBR3\n\r\n")
        self.assertIsNotNone(running.wait_for("BP3"), running.texts())
        running.stop(signal.SIGTERM)
        told = self.doctor()
        self.assertIn("plugged", told)
        self.assertNotIn("BP3", told)


class Licences(Explanations):
    def test_they_are_printed_without_a_display(self):
        del self.environment["DISPLAY"]
        told = subprocess.run([PROGRAM, "--licenses"], env=self.environment, stdout=subprocess.PIPE, text=True, check=True,
                              timeout=STARTED).stdout
        for part in ("RtMidi", "libsodium", "GNU LESSER GENERAL PUBLIC LICENSE", "SIL OPEN FONT LICENSE"):
            self.assertIn(part, told)


class SmallScreen(Explanations):
    def whole(self, width, height):
        self.start()
        x, y, wide, high = self.window()
        self.assertTrue(0 <= x and 0 <= y and x + wide <= width and y + high <= height, (x, y, wide, high))
        self.assertAlmostEqual(wide / high, 900 / 650, delta=0.02)
        self.assertTrue(wide >= 0.95 * width or high >= 0.95 * height, (wide, high))  # and no smaller than need be
        self.assertAlmostEqual(x, (width - wide) / 2, delta=2)


class Netbook(SmallScreen):
    screen = "1024x600x24"

    def test_the_window_is_whole(self):
        self.whole(1024, 600)


class VerySmall(SmallScreen):
    screen = "800x600x24"

    def test_the_window_is_whole(self):
        self.whole(800, 600)


class LargeLetters(SmallScreen):
    screen = "1366x768x24"

    def test_the_window_is_whole(self):
        # The toolkit alone would take twice the size.
        subprocess.run(["xrdb", "-merge"], input="Xft.dpi: 192\n", text=True, env=self.environment, check=True)
        self.whole(1366, 768)
        self.assertGreater(self.window()[2], 900)


class NotificationDesktop:
    """A session bus with the notifications of a desktop, as far as they are asked for here."""

    INTERFACE = """<node><interface name="org.freedesktop.Notifications"><method name="Notify">
        <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
        <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
        <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/>
        </method></interface></node>"""

    def __init__(self):
        self._bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"],
                                     stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.address = self._bus.stdout.readline().strip()
        self.shown = []
        self._loop = GLib.MainLoop()
        threading.Thread(target=self._serve, daemon=True).start()

    def _serve(self):
        context = GLib.MainContext()
        context.push_thread_default()
        self._loop = GLib.MainLoop(context)
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self._connection = Gio.DBusConnection.new_for_address_sync(self.address, flags, None, None)
        self._connection.register_object(
            "/org/freedesktop/Notifications", Gio.DBusNodeInfo.new_for_xml(self.INTERFACE).interfaces[0], self._notify)
        Gio.bus_own_name_on_connection(self._connection, "org.freedesktop.Notifications", Gio.BusNameOwnerFlags.NONE)
        self._loop.run()

    def _notify(self, _connection, _sender, _path, _interface, _method, arguments, invocation):
        self.shown.append(arguments.unpack()[3:5])
        invocation.return_value(GLib.Variant("(u)", (1,)))

    def stop(self):
        self._loop.quit()
        self._bus.terminate()
        self._bus.wait()
        self._bus.stdout.close()


class MovedAndHidden(Explanations):
    def press(self, keys):
        x, y, _, _ = self.window()
        subprocess.run(["xdotool", "mousemove", str(x + 450), str(y + 560), "key", keys], env=self.environment, check=True)

    def is_shown(self):
        return any(place[2] > 600 for place in self.server.windows())

    def with_window_manager(self):
        ready = os.path.join(self.home.path, "ready")
        manager = subprocess.Popen([START_SERVER, "window-manager", ready], env=self.environment, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        self.addCleanup(manager.wait)
        self.addCleanup(manager.terminate)
        self.assertTrue(wait_for(lambda: os.path.exists(ready), STARTED))

    def test_the_keys_for_away_hide_it_and_a_second_start_brings_it_back(self):
        self.with_window_manager()
        running = self.start()
        for keys in ("ctrl+w", "alt+F4"):
            self.assertTrue(wait_for(self.is_shown))
            time.sleep(0.5)  # the window manager gives it the keys
            self.press(keys)
            self.assertTrue(wait_for(lambda: not self.is_shown()), keys)
            time.sleep(0.2)
            self.assertIsNone(running.process.poll(), keys)
            subprocess.run([PROGRAM], env=self.environment, check=True, stderr=subprocess.DEVNULL, timeout=STARTED)
        self.assertTrue(wait_for(self.is_shown))
        time.sleep(0.5)
        self.press("ctrl+q")
        self.assertEqual(running.process.wait(10), 0)

    def test_without_a_tray_the_first_hiding_says_the_way_back(self):
        desktop = NotificationDesktop()
        self.addCleanup(desktop.stop)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = desktop.address
        self.with_window_manager()
        self.start()
        for _ in range(2):
            self.assertTrue(wait_for(self.is_shown))
            time.sleep(0.5)
            self.press("ctrl+w")
            self.assertTrue(wait_for(lambda: not self.is_shown()))
            subprocess.run([PROGRAM], env=self.environment, check=True, stderr=subprocess.DEVNULL, timeout=STARTED)
        self.assertTrue(wait_for(lambda: desktop.shown))
        time.sleep(0.5)
        self.assertEqual(desktop.shown, [
            ("Veltrix goes on", "This desktop has no tray. Start Veltrix once more to bring its window back.")])

    def test_an_empty_place_moves_the_window(self):
        self.start()
        x, y, _, _ = self.window()
        subprocess.run(["xdotool", "mousemove", str(x + 450), str(y + 560), "mousedown", "1", "mousemove", str(x + 430),
                        str(y + 540), "mousemove", str(x + 350), str(y + 500), "mouseup", "1"],
                       env=self.environment, check=True)
        self.assertTrue(wait_for(lambda: self.window()[:2] == (x - 100, y - 60)), self.window())


del Explanations, SmallScreen  # no tests of their own

if __name__ == "__main__":
    unittest.main()
