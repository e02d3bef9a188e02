"""The program as it is packed, on the desktop that Wine gives it: what a user does, and what then happens elsewhere.

Known faults of Wine 8, so that nobody looks for them in the program: SetCursorPos over another program's window comes back as
a real movement and reaches the mouse hook (knob steps here are further apart than the pause that the hand causes); SendInput
does not reach the X server; SPI_SETCURSORS returns 0; there is no MIDI device without a sequencer; an overlapped WaitCommEvent
without an event blocks; layered windows are black without a compositor; Wine's services keep an inherited stdout open; where the
screen is scaled, the toolkit draws with DirectWrite, whose faces of a program's own fonts lose their glyphs there once some sixty
other fonts were in use (a text is in a serif font then; take_pictures.py does without DirectWrite)."""

import os
import shutil
import threading
import time
import unittest
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer

import wine
from wine import DRIVE, STAGE, TOOLS, Device, Lines, Program, desk, registry, run, wait_for

GROUND = "5342D9"
WINDOW = (900, 650)


class Desktop(unittest.TestCase):
    """The program with a device, over another program's window."""

    def setUp(self):
        wine.write_mapping()
        self.running = []

    def tearDown(self):
        run("taskkill", "/f", "/im", "veltrix.exe")
        for lines in reversed(self.running):
            lines.stop()

    def begin(self, what):
        self.running.append(what)
        return what

    def start(self, *arguments, **options):
        """The program, with its window, and the window's place."""
        program = self.begin(Program(*arguments, **options))
        return program, program.wait_for_window()

    def start_with_device(self, **options):
        device = self.begin(Device())
        program, place = self.start("--port", device.address, **options)
        self.assertTrue(program.wait_for(": plugged"), program.texts())
        return device, program, place

    def watch(self):
        """Another program's window, in front and with the keyboard; what it gets it prints."""
        watcher = self.begin(Lines(TOOLS / "win32_watcher.exe"))
        self.assertTrue(watcher.wait_for("ready"), watcher.texts())
        return watcher


class Start(Desktop):
    def test_the_window_shows_and_the_device_brings_its_page(self):
        device = self.begin(Device())
        program, place = self.start("--port", device.address)
        self.assertEqual(place[2:], WINDOW)
        self.assertEqual(place[:2], ((1280 - 900) // 2, (1024 - 650) // 2))
        self.assertTrue(program.wait_for(": plugged"), program.texts())
        time.sleep(2.5)
        page = wine.picture("device-page", place)
        self.assertEqual(page[0], GROUND)
        self.assertGreater(len(page), 500)  # the device's picture, texts, menus
        device.send("unplug")
        self.assertTrue(program.wait_for(": unplugged"), program.texts())
        time.sleep(1.5)
        welcome = wine.picture("welcome-page", place)
        self.assertEqual(welcome[0], GROUND)
        self.assertNotEqual(welcome[:50], page[:50])

    def test_settings_are_kept_in_the_registry(self):
        self.start()
        self.assertEqual(registry(wine.SETTINGS, "ZR.ver"), "1.10")

    def test_a_build_without_serial_ports_says_so(self):
        program, _ = self.start()
        without = (STAGE / "Qt5SerialPort.dll").exists()
        self.assertNotEqual(bool(program.wait_for("VELTRIX_SERIAL_PORT=OFF", 1)), without)

    def test_other_computers_are_refused(self):
        self.assertEqual(run(STAGE / "veltrix.exe", "--port", "tcp:192.168.0.1:5000").returncode, 2)

    def test_help_goes_to_the_console_or_where_output_is_led_to(self):
        plain = run(STAGE / "veltrix.exe", "--help").stdout
        self.assertIn("--port", plain)
        shown = desk("console", f'"{wine.windows_path(STAGE)}\\veltrix.exe" --help')
        self.assertEqual(shown.returncode, 0)
        self.assertIn("--port", shown.stdout)

    def test_what_is_led_to_nul_is_not_shown(self):
        for name in ("veltrix.exe", "veltrix-simulator.exe"):
            command = f'"{wine.windows_path(STAGE)}\\{name}" --help'
            self.assertIn("--port" if name == "veltrix.exe" else "--listen", desk("console", command).stdout)
            shown = desk("console", f'cmd /c "{command} > NUL"')
            self.assertEqual((shown.returncode, shown.stdout.strip()), (0, ""), name)

    def test_german(self):
        environment = {**os.environ, "LC_ALL": "de_DE.UTF-8", "LANG": "de_DE.UTF-8"}
        text = run(STAGE / "veltrix.exe", "--help", environment=environment).stdout
        self.assertIn("Diese Hilfe zeigen", text)
        # The virtual device is a program with a console, whose encoding is none of the other two.
        simulator = STAGE / "veltrix-simulator.exe"
        self.assertIn("gedrückt", run(simulator, "--help", environment=environment).stdout)
        shown = desk("console", f'"{wine.windows_path(simulator)}" --listen 1 --link ü', environment=environment)
        self.assertEqual(shown.returncode, 2)
        self.assertIn("schließen einander aus", shown.stdout)

    def test_the_second_start_brings_the_window_of_the_first(self):
        program, place = self.start()
        wine.click(place[0] + 13, place[1] + 13)  # the button that hides it
        self.assertTrue(wait_for(lambda: not [p for p, line in program.windows() if line.endswith("|Veltrix")]))
        self.watch()
        self.assertEqual(run(STAGE / "veltrix.exe").returncode, 0)
        front = wait_for(lambda: [line for _, line in program.windows() if line.endswith("|Veltrix") and " front " in line])
        self.assertTrue(front, program.windows())
        self.assertEqual(len(desk("processes", "veltrix.exe").stdout.split()), 1)

    def test_of_ten_starts_at_once_one_stays(self):
        crowd = [self.begin(Program()) for _ in range(10)]
        wait_for(lambda: sum(one.process.poll() is None for one in crowd) == 1, 60)
        self.assertEqual([one.process.poll() for one in crowd].count(0), 9)
        self.assertEqual(len(desk("processes", "veltrix.exe").stdout.split()), 1)

    def test_odd_folders_and_users(self):
        folder = DRIVE / "Programme für 100% & mehr (1)" / "Veltrix"
        shutil.copytree(STAGE, folder)
        self.addCleanup(shutil.rmtree, folder.parent)
        shells = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Explorer\User Shell Folders"
        usual = registry(shells, "AppData")
        odd = DRIVE / "users" / "Jörg 100% Müller" / "Roaming"
        odd.mkdir(parents=True)
        self.addCleanup(shutil.rmtree, odd.parent)
        wine.set_registry(shells, "AppData", wine.windows_path(odd))
        self.addCleanup(wine.set_registry, shells, "AppData", usual or r"%USERPROFILE%\AppData\Roaming", "REG_EXPAND_SZ")
        data = odd / "{Brimwell Labs}" / "{Veltrix}"
        wine.write_mapping(data)
        device, program, _ = self.start_with_device(folder=folder)
        self.assertTrue((data / "ZR.xml").exists())
        self.assertTrue((data / "veltrix.log").exists())
        watcher = self.watch()
        device.send("BP1\nBR1")
        self.assertTrue(watcher.wait_for("window key 66 up"), watcher.texts())
        device.send("BP9\nBR9\nKND")
        self.assertTrue(wait_for(lambda: "100%" in (registry(*wine.ARROW) or "")), registry(*wine.ARROW))
        device.send("KNU")
        self.assertTrue(wait_for(lambda: "aero_arrow" in (registry(*wine.ARROW) or "")))

    def test_scaling(self):
        key = r"HKCU\Control Panel\Desktop"
        self.addCleanup(run, "reg", "delete", key, "/v", "LogPixels", "/f")
        for percent, factor in ((125, 1.25), (150, 1.42), (200, 1.42)):  # at most what fits on 1280 x 1024
            with self.subTest(percent=percent):
                wine.set_registry(key, "LogPixels", 96 * percent // 100, "REG_DWORD")
                wine.stop_everything()
                _, place = self.start()
                self.assertAlmostEqual(place[2], 900 * factor, delta=10)
                self.assertAlmostEqual(place[3], 650 * factor, delta=10)
                self.assertGreaterEqual(min(place[:2]), 0)
                self.assertLessEqual(place[0] + place[2], 1280)
                self.assertTrue(wait_for(lambda: wine.picture(f"scaled-{percent}", place)[0] == GROUND))
                self.tearDown()
                self.running = []


class Input(Desktop):
    def test_a_shortcut_reaches_the_other_program(self):
        device, _, _ = self.start_with_device()
        watcher = self.watch()
        device.send("BP0")
        self.assertTrue(watcher.wait_for("window key 65 down"), watcher.texts())
        self.assertNotIn("up", " ".join(watcher.texts()))
        device.send("BR0")
        self.assertTrue(watcher.wait_for("window key 65 up"))
        keys = [text for text in watcher.texts() if text.startswith("window key")]
        self.assertEqual(keys, ["window key 17 down", "window key 65 down", "window key 17 up", "window key 65 up"])

    def test_the_knob_drags_the_pointer_and_hides_the_arrow(self):
        device, program, _ = self.start_with_device()
        watcher = self.watch()
        wine.xdotool("mousemove", 200, 150)
        time.sleep(1)
        device.send("BP9\nBR9\nKND")
        self.assertTrue(watcher.wait_for("left down"), watcher.texts() + program.texts())
        self.assertTrue(registry(*wine.ARROW).endswith(r"\transp.cur"))
        before = [int(number) for number in desk("cursor").stdout.split()]
        for _ in range(3):
            time.sleep(0.6)
            device.send("KNR")
        time.sleep(0.6)
        after = [int(number) for number in desk("cursor").stdout.split()]
        self.assertGreater(after[0], before[0])
        self.assertEqual(after[1], before[1])
        device.send("KNU")
        self.assertTrue(watcher.wait_for("left up"))
        self.assertTrue(wait_for(lambda: registry(*wine.ARROW) == r"%SystemRoot%\cursors\aero_arrow.cur"), registry(*wine.ARROW))

    def test_unplugging_releases(self):
        device, _, _ = self.start_with_device()
        watcher = self.watch()
        device.send("BP0")
        self.assertTrue(watcher.wait_for("window key 65 down"))
        before = time.monotonic()
        device.send("unplug")
        found = watcher.wait_for("window key 65 up")
        self.assertTrue(found and watcher.wait_for("window key 17 up"), watcher.texts())
        self.assertLess(found[0] - before, 3)

    def test_an_end_by_force_releases_what_is_held(self):
        device, _, _ = self.start_with_device()
        watcher = self.watch()
        device.send("BP9\nBR9\nKND\nBP0")
        self.assertTrue(watcher.wait_for("hook key 65 down"))
        run("taskkill", "/f", "/im", "veltrix.exe")
        for up in ("hook key 65 up", "hook key (17|162) up", "hook left up"):
            self.assertTrue(watcher.wait_for(up, 3), watcher.texts())
        self.assertTrue(wait_for(lambda: "aero_arrow" in registry(*wine.ARROW)), registry(*wine.ARROW))
        self.assertTrue(wait_for(lambda: not desk("processes", "veltrix-release.exe").stdout.split()))

    def test_a_request_to_end_releases_and_ends_in_order(self):
        device, program, _ = self.start_with_device()
        watcher = self.watch()
        device.send("BP0")
        self.assertTrue(watcher.wait_for("window key 65 down"))
        run("taskkill", "/im", "veltrix.exe")
        self.assertTrue(watcher.wait_for("window key 65 up"), watcher.texts())
        self.assertEqual(program.process.wait(20), 0)
        self.assertFalse(desk("processes", "veltrix-release.exe").stdout.split())


class Programs(Desktop):
    """A mapping for one program, and another for all others."""

    def test_each_program_has_its_own_keys(self):
        wine.write_file("programs.xml", wine.mapping("Z", {1: (90, -1)}, program="win32_window"))
        self.addCleanup((wine.data_folder() / "programs.xml").unlink)
        device, program, _ = self.start_with_device()
        watcher = self.watch()

        def press():
            since = len(watcher.lines)
            device.send("BP1\nBR1")
            up = watcher.wait_for("hook key [0-9]+ up", since=since)
            return up and up[1].split()[2]

        self.assertEqual(press(), "66", program.texts())
        device.send("BP1")
        self.assertTrue(watcher.wait_for("hook key 66 down", since=len(watcher.lines) - 1))
        other = self.begin(Lines(TOOLS / "win32_window.exe"))
        self.assertTrue(other.wait_for("ready"), other.texts())
        # What is held is released by what has pressed it; only then comes the change.
        since = len(watcher.lines)
        device.send("BR1")
        self.assertTrue(watcher.wait_for("hook key 66 up", since=since), watcher.texts())
        self.assertTrue(program.wait_for("In use is the mapping for win32_window"), program.texts())
        self.assertEqual(press(), "90", program.texts())
        wine.click(30, 30)  # the first one is in front again
        self.assertTrue(program.wait_for("In use is the mapping for all programs"), program.texts())
        self.assertEqual(press(), "66", program.texts())


class Remote(Desktop):
    """What other processes of the user ask the running program for."""

    NOT_RUNNING = 3

    def ask(self, *arguments):
        done = run(STAGE / "veltrix.exe", *arguments)
        return done.returncode, done.stdout

    def test_commands_are_answered(self):
        self.assertEqual(self.ask("--list"), (self.NOT_RUNNING, ""))
        wine.write_file("custom.xml", wine.mapping("Mix", {1: (81, -1)}))
        self.addCleanup((wine.data_folder() / "custom.xml").unlink)
        device, program, place = self.start_with_device()
        wine.click(place[0] + 13, place[1] + 13)  # the button that hides it
        self.assertTrue(wait_for(lambda: not [p for p, line in program.windows() if line.endswith("|Veltrix")]))
        self.assertEqual(self.ask("--show"), (0, ""))
        self.assertTrue(wait_for(lambda: [p for p, line in program.windows()
                                          if line.endswith("|Veltrix") and " front " in line]), program.windows())
        watcher = self.watch()
        names = []
        for _ in range(5):  # no answer is lost with the pipe
            status, text = self.ask("--list")
            self.assertEqual(status, 0)
            names = text.splitlines()
            self.assertEqual(names[0], "Mix")
            self.assertGreater(len(names), 20)
        self.assertEqual(self.ask("--use", "Mix"), (0, ""))
        self.assertEqual(self.ask("--status", "--json"),
                         (0, '{"connected":true,"layer":"Normal","mapping":"Mix","mode":"circular"}\n'))
        device.send("BP1\nBR1")
        self.assertTrue(watcher.wait_for("window key 81 up"), watcher.texts())
        self.assertEqual(self.ask("--use", "None such"), (1, ""))
        self.assertEqual(self.ask("--use", names[-1]), (0, ""))
        self.assertIn(f"mapping: {names[-1]}\n", self.ask("--status")[1])

    def test_a_second_start_hands_over_or_refuses(self):
        program, _ = self.start()
        self.assertEqual(self.ask("--verbose"), (0, ""))
        self.assertTrue(program.wait_for("remote control: verbose"), program.texts())
        self.assertEqual(self.ask("--port", "COM3"), (2, ""))
        self.assertIsNone(program.process.poll())


class Menus(Desktop):
    def test_quit_in_the_tray_ends_the_program(self):
        program, _ = self.start()
        self.assertEqual(desk("tray", "veltrix.exe", "menu").returncode, 0)

        def menu():
            return [place for place, line in program.windows() if 0 < place[2] < 300 and 0 < place[3] < 100]
        found = wait_for(menu)
        self.assertTrue(found, program.windows())
        x, y, width, height = found[0]
        wine.click(x + width / 2, y + height / 2)
        self.assertEqual(program.process.wait(20), 0)

    def test_launch_on_startup_is_registered_and_unregistered(self):
        _, _, place = self.start_with_device()
        time.sleep(2.5)
        tick = (place[0] + 30, place[1] + 632)
        wine.click(*tick)
        expected = f'"{wine.windows_path(STAGE)}\\veltrix.exe"'
        self.assertTrue(wait_for(lambda: registry(*wine.RUN) == expected), registry(*wine.RUN))
        wine.click(*tick)
        self.assertTrue(wait_for(lambda: registry(*wine.RUN) is None), registry(*wine.RUN))


class Service(Desktop):
    """The web service, and what comes of its answers."""

    def setUp(self):
        super().setUp()
        self.files = {}
        self.asked = []
        test = self

        class Handler(BaseHTTPRequestHandler):
            def do_GET(self):
                test.asked.append(self.path)
                body = test.files.get(self.path)
                self.send_response(200 if body is not None else 404)
                self.send_header("Content-Length", str(len(body or b"")))
                self.end_headers()
                self.wfile.write(body or b"")

            def log_message(self, *arguments):
                pass

        self.server = ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        threading.Thread(target=self.server.serve_forever, daemon=True).start()
        self.addCleanup(self.server.server_close)
        self.addCleanup(self.server.shutdown)
        self.url = f"http://127.0.0.1:{self.server.server_port}"
        self.environment = {**os.environ, "VELTRIX_API_URL": self.url + "/api/"}

    def test_a_newer_library_is_fetched(self):
        library = (STAGE / "ZR.xml").read_bytes().replace(b"</ZR>", b"<!-- newer --></ZR>")
        self.files["/api/?call=zrsettingsversion"] = f'{{"ZR_VERSION":"99","ZR_URL":"{self.url}/ZR.xml"}}'.encode()
        self.files["/ZR.xml"] = library
        self.start_with_device(environment=self.environment)
        kept = wine.data_folder() / "ZR.xml"
        self.assertTrue(wait_for(lambda: kept.read_bytes() == library), self.asked)
        kept.unlink()

    def test_a_mandatory_update_is_run_at_quit(self):
        note = DRIVE / "updated.txt"
        installer = (TOOLS / "win32_installer.exe").read_bytes()
        self.files["/api/?call=zrversion"] = (
            f'{{"UPDATE_VERSION":"9.0","UPDATE_PRIORITY":"MAN","UPDATE_URL":"{self.url}/setup.exe"}}'.encode())
        self.files["/setup.exe"] = installer
        program, place = self.start(environment=self.environment)
        self.assertTrue(wait_for(lambda: "/setup.exe" in self.asked), self.asked)

        def question():
            return [p for p, line in program.windows() if 200 < p[2] < 899]
        found = wait_for(question)
        self.assertTrue(found, program.windows())
        x, y, width, height = found[0]
        time.sleep(1)
        wine.picture("update-dialog", found[0])
        wine.click(x + 0.83 * width, y + 0.815 * height)  # OK; the dialog does not take the keyboard by itself
        self.assertEqual(program.process.wait(30), 0)
        self.assertTrue(wait_for(note.exists), program.texts())
        text = note.read_text(encoding="utf-8")
        note.unlink()
        self.assertEqual(text, "installed, no console shown\n")


def load_tests(loader, standard, pattern):
    suite = unittest.TestSuite()
    for case in (Start, Input, Programs, Remote, Menus, Service):
        suite.addTests(loader.loadTestsFromTestCase(case))
    return suite


if __name__ == "__main__":
    unittest.main()
