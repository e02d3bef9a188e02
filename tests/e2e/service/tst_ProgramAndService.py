"""The program against the reference service: a real nginx, a real X server, and a program that really is replaced."""

import os
import shutil
import signal
import subprocess
import tempfile
import unittest
from pathlib import Path

from desk import PROGRAM, SIMULATOR, Home, Lines, XServer, plain_environment, wait_for
from service import ROOT, Service

LIBRARY = ROOT / "resources/mappings/ZR.xml"
DIALOG_WIDTH = 420
UPDATE_BUTTON = (530, 35)  # in the header of the device's page


class ProgramAndService(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.server = XServer()

    @classmethod
    def tearDownClass(cls):
        cls.server.stop()

    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.path = Path(directory.name)
        self.service = Service(self.path)
        self.service.start()
        self.addCleanup(self.service.stop)
        self.home = Home()
        self.addCleanup(self.home.cleanup)
        self.environment = plain_environment()
        self.environment["DISPLAY"] = self.server.name
        self.environment["VELTRIX_API_URL"] = self.service.url + "/api/"
        self.environment.pop("APPIMAGE", None)
        self.home.add_to(self.environment)
        self.data = Path(self.home.path) / "data/{Brimwell Labs}/{Veltrix}"

        # An installation of its own, which may be replaced.
        self.application = self.path / "application" / "veltrix"
        self.application.parent.mkdir()
        shutil.copy(PROGRAM, self.application)
        # The new version only leaves a note when it is run.
        self.note = self.path / "note"
        self.installer = self.path / "new-version"
        self.installer.write_text(f"#!/bin/sh\necho the new version > '{self.note}'\n", encoding="utf-8")

    def publish(self, version, priority):
        result = self.service.publish("--version", version, "--priority", priority, "--installer", self.installer)
        self.assertEqual(result.returncode, 0, result.stderr)

    def publish_library(self, version):
        result = self.service.publish("--library", LIBRARY, "--library-version", version)
        self.assertEqual(result.returncode, 0, result.stderr)

    def start(self, *arguments):
        program = Lines([self.application, *arguments], self.environment, "stderr")
        self.addCleanup(program.stop, signal.SIGKILL)
        self.assertTrue(program.wait_for("storage:"), program.texts())
        return program

    def start_with_device(self):
        link = os.path.join(self.home.path, "device")
        simulator = Lines([SIMULATOR, "--stdin", "--link", link], self.environment, "stderr", stdin=subprocess.PIPE)
        self.addCleanup(simulator.stop)
        self.assertTrue(wait_for(lambda: os.path.lexists(link)), simulator.texts())
        return self.start("--port", link)

    # What a user does

    def xdotool(self, *arguments):
        return subprocess.run(["xdotool", *map(str, arguments)], env=self.environment, stdout=subprocess.PIPE,
                              text=True, check=False).stdout

    def window(self, is_dialog):
        """The dialog or the main window, as xdotool's number; none when it is not there."""
        for number in self.xdotool("search", "--onlyvisible", "--name", "^Veltrix$").split():
            geometry = self.xdotool("getwindowgeometry", "--shell", number)
            if (f"WIDTH={DIALOG_WIDTH}\n" in geometry) == is_dialog:
                return number
        return None

    def press_in_dialog(self, key):
        dialog = wait_for(lambda: self.window(is_dialog=True))
        self.assertTrue(dialog, "no dialog")
        # There is no window manager that would give it the focus.
        self.xdotool("windowfocus", "--sync", dialog, "key", key)
        self.assertTrue(wait_for(lambda: not self.window(is_dialog=True)), "the dialog stays")

    def assert_replaced(self, program):
        self.assertEqual(program.process.wait(10), 0)
        self.assertTrue(program.wait_for("running LinuxZRUpdater /bin/sh"), program.texts())
        new = self.installer.read_bytes()
        self.assertTrue(wait_for(lambda: self.application.read_bytes() == new), "not replaced")
        self.assertFalse(self.note.exists())
        subprocess.run([self.application], check=True)
        self.assertEqual(self.note.read_text(encoding="utf-8"), "the new version\n")
        self.assertEqual([entry.name for entry in self.application.parent.iterdir() if "new" in entry.name], [])

    def assert_as_before(self, program):
        self.assertIsNone(program.process.poll())
        self.assertEqual(program.stop(), 0)
        self.assertEqual(self.application.read_bytes(), Path(PROGRAM).read_bytes())

    # The program

    def test_a_question_is_accepted_and_the_program_replaced_at_its_end(self):
        self.publish("1.11", "MID")
        program = self.start()
        self.press_in_dialog("Return")
        self.assert_replaced(program)

    def test_a_declined_question_changes_nothing(self):
        self.publish("1.11", "MID")
        program = self.start()
        self.press_in_dialog("Escape")
        self.assert_as_before(program)

    def test_an_order_is_followed(self):
        self.publish("1.10.0", "HIGH")
        program = self.start()
        self.press_in_dialog("Return")
        self.assert_replaced(program)

    def test_a_mandatory_version_comes_in_silence_and_asks_to_close(self):
        self.publish("2", "MAN")
        program = self.start()
        self.assertTrue(program.wait_for("file downloaded successfully"), program.texts())
        self.press_in_dialog("Return")
        self.assert_replaced(program)

    def test_a_mandatory_version_is_installed_however_the_program_ends(self):
        self.publish("2", "MAN")
        program = self.start()
        self.assertTrue(wait_for(lambda: self.window(is_dialog=True)), program.texts())
        program.process.send_signal(signal.SIGTERM)
        self.assert_replaced(program)

    def test_the_same_version_is_not_offered(self):
        self.publish("1.10", "MAN")
        program = self.start()
        self.assertIsNone(program.wait_for("downloaded|Update", timeout=1.0))
        self.assertIsNone(self.window(is_dialog=True))
        self.assert_as_before(program)

    def test_the_offer_in_the_header_is_taken_there(self):
        self.publish("1.11", "LOW")
        program = self.start_with_device()
        window = wait_for(lambda: self.window(is_dialog=False))
        self.assertTrue(program.wait_for("Checking server for updates", 10), program.texts())

        def click():
            # Until the page has slid in, the click falls on the page before.
            self.xdotool("mousemove", "--window", window, *UPDATE_BUTTON, "click", "1")
            return program.wait_for("onUpdateAllowed", timeout=0.3)

        self.assertTrue(wait_for(click, 10), program.texts())
        self.assert_replaced(program)

    # The library

    def test_the_library_is_fetched_when_the_page_is_shown(self):
        self.publish_library("2026.11")
        program = self.start_with_device()
        self.assertTrue(program.wait_for("Update requiered 2026.11", 10), program.texts())
        self.assertTrue(program.wait_for("file downloaded successfully"), program.texts())
        library = self.data / "ZR.xml"
        self.assertTrue(wait_for(library.exists), program.texts())  # it takes its place once it was looked at
        self.assertEqual(library.read_bytes(), LIBRARY.read_bytes())
        self.assertEqual(program.stop(), 0)

        again = self.start_with_device()
        self.assertTrue(again.wait_for("local settings ver:2026.11 server ver:2026.11", 10), again.texts())
        self.assertIsNone(again.wait_for("Update requiered", timeout=0.3))

    def test_what_is_no_library_is_replaced_by_the_last_one_at_the_next_start(self):
        self.publish_library("1")
        program = self.start_with_device()
        self.assertTrue(program.wait_for("file downloaded successfully", 10), program.texts())
        self.assertTrue(wait_for((self.data / "ZR.xml.kept").exists))
        self.assertEqual(program.stop(), 0)

        self.publish_library("2")
        newest = max((self.service.site / "files").iterdir(), key=lambda file: file.stat().st_mtime)
        newest.write_bytes(b"<html>Sign in to this network</html>")
        program = self.start_with_device()
        self.assertTrue(program.wait_for("file downloaded successfully", 10), program.texts())
        self.assertEqual(program.stop(), 0)
        program = self.start()
        self.assertTrue(program.wait_for("The last library that was read has been put back"), program.texts())
        self.assertEqual((self.data / "ZR.xml").read_bytes(), LIBRARY.read_bytes())

    def test_a_service_that_is_not_there_does_not_disturb(self):
        self.service.stop()
        program = self.start_with_device()
        self.assertTrue(program.wait_for("local settings ver: server ver:$", 10), program.texts())
        self.assert_as_before(program)


if __name__ == "__main__":
    unittest.main()
