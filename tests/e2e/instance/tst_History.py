"""Earlier versions of the mapping files are listed and brought back: real processes, with and without a running copy."""

import os
import re
import signal
import subprocess
import unittest

from desk import PROGRAM, Home, Lines, XServer, plain_environment, wait_for
from windows import Windows

WINDOW_SIZE = (900, 650)
STARTED = 20  # s: patience with a start
OLD = '<ZR>\n <!-- mine -->\n<MAPPING software="Mix"/>   <MAPPING software="Work"/></ZR>\n'
PRESENT = '<ZR><MAPPING software="New"/></ZR>'
WORKING_COPY = ('<ZR><MAPPING software="current_map"><BUTTON id="3"><NORMAL label="Q"><KEY1 type="int">81</KEY1></NORMAL>'
                "</BUTTON></MAPPING></ZR>")
VERSION = "custom-20260301T120000000Z.xml"
WORKING_VERSION = "current-20260302T120000000Z.xml"


class History(unittest.TestCase):
    def setUp(self):
        self.home = Home()
        self.addCleanup(self.home.cleanup)
        self.history = os.path.join(self.home.data, "history")
        self.environment = plain_environment()
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = "disabled:"
        self.environment["TZ"] = "UTC"
        self.home.add_to(self.environment)

    def write(self, name, content):
        path = os.path.join(self.home.data, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            file.write(content)
        return path

    def read(self, name):
        with open(os.path.join(self.home.data, name), encoding="utf-8") as file:
            return file.read()

    def versions(self):
        return sorted(os.listdir(self.history))

    def fill(self):
        self.write("custom.xml", PRESENT)
        self.write("history/" + VERSION, OLD)
        self.write("history/" + WORKING_VERSION, WORKING_COPY)

    def start(self):
        server = XServer()
        self.addCleanup(server.stop)
        windows = Windows(server.display)
        program = Lines([PROGRAM], {**self.environment, "DISPLAY": server.name}, "stderr")
        self.addCleanup(program.stop, signal.SIGKILL)
        self.assertTrue(wait_for(lambda: windows.shown(WINDOW_SIZE), STARTED), program.texts())
        return program

    def ask(self, *arguments, **environment):
        done = subprocess.run([PROGRAM, *arguments], env={**self.environment, **environment}, timeout=STARTED, check=False,
                              text=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        return done.returncode, done.stdout, done.stderr

    def test_the_list(self):
        self.assertEqual(self.ask("--history"), (0, "There are no earlier versions yet.\n", ""))
        self.fill()
        self.write("history/custom-20260301T115900000Z.xml", "<ZR>\n<MAPPING")
        self.write("history/notes.txt", "mine")
        code, output, errors = self.ask("--history")
        self.assertEqual((code, errors), (0, ""))
        lines = output.splitlines()
        self.assertEqual(lines[:2], [f"2026-03-02 12:00:00  {WORKING_VERSION}  1: current_map",
                                     f"2026-03-01 12:00:00  {VERSION}  2: Mix, Work"])
        self.assertRegex(lines[2], r"^2026-03-01 11:59:00  custom-20260301T115900000Z.xml  damaged: line 2: ")
        self.assertEqual(len(lines), 3)

    def test_names_do_not_command_the_terminal(self):
        self.write("history/" + VERSION, '<ZR><MAPPING software="a\u009b31m&#x85;b"/></ZR>')
        code, output, _ = self.ask("--history", LC_ALL="C.UTF-8")
        self.assertEqual(code, 0)
        self.assertIn("1: a?31m?b", output)

    def test_a_version_comes_back_byte_for_byte(self):
        self.fill()
        code, output, errors = self.ask("--restore", VERSION)
        self.assertEqual((code, errors), (0, ""))
        self.assertEqual(output, f"{VERSION} is back. What was there before is in the history now.\n")
        self.assertEqual(self.read("custom.xml"), OLD)
        added = set(self.versions()) - {VERSION, WORKING_VERSION}
        self.assertEqual(len(added), 1)
        self.assertEqual(self.read("history/" + added.pop()), PRESENT)

    def test_what_is_no_version_is_refused_with_the_place(self):
        self.fill()
        self.write("current.xml", WORKING_COPY)
        cases = {
            "damaged/custom.xml": ("<ZR>\n<MAPPING></ZR>", r"line 2: .+ \(column \d+\)\.$"),
            "page/custom.xml": ("<!-- -->\n<html/>", r"line 2: <html> is no mapping file's \(column \d+\)\.$"),
            "empty/current.xml": ("<ZR/>", r"it holds no mapping\.$"),
            "mine.xml": (OLD, r"by its name it is no version of custom\.xml, current\.xml or programs\.xml\.$"),
        }
        for name, (content, reason) in cases.items():
            with self.subTest(name=name):
                path = self.write("elsewhere/" + name, content)
                code, output, errors = self.ask("--restore", path)
                self.assertEqual((code, output), (1, ""))
                self.assertEqual(errors.count("\n"), 1)
                self.assertRegex(errors.rstrip("\n"), "^veltrix: " + re.escape(path) + " was not brought back: " + reason)
                self.assertEqual(self.read("custom.xml"), PRESENT)
                self.assertEqual(self.read("current.xml"), WORKING_COPY)
                self.assertEqual(self.versions(), [WORKING_VERSION, VERSION])
        code, _, errors = self.ask("--restore", "custom-20200101T000000000Z.xml")
        self.assertEqual(code, 1)
        self.assertIn("there is none", errors)

    def test_the_running_copy_takes_it_over(self):
        self.fill()
        program = self.start()
        self.assertEqual(self.ask("--list")[1].splitlines()[0], "New")
        code, _, errors = self.ask("--restore", VERSION)
        self.assertEqual((code, errors), (0, ""))
        self.assertTrue(program.wait_for("remote control: restore"))
        self.assertEqual(self.ask("--list")[1].splitlines()[:2], ["Mix", "Work"])
        self.assertEqual(self.read("custom.xml"), OLD)

        self.assertEqual(self.ask("--restore", WORKING_VERSION)[0], 0)
        self.assertEqual(self.read("current.xml"), WORKING_COPY)
        damaged = self.write("elsewhere/custom.xml", "<ZR>")
        code, _, errors = self.ask("--restore", damaged)
        self.assertEqual(code, 1)
        self.assertIn("line 1: ", errors)

        program.process.send_signal(signal.SIGTERM)
        self.assertEqual(program.process.wait(10), 0)
        self.assertEqual(self.read("custom.xml"), OLD)
        self.assertEqual(self.read("current.xml"), WORKING_COPY)

    def test_the_name_of_what_was_replaced_is_forgotten(self):
        self.fill()
        settings = os.path.join(self.home.path, "config", "{Brimwell Labs}", "{Veltrix}.conf")
        os.makedirs(os.path.dirname(settings), exist_ok=True)
        with open(settings, "w", encoding="utf-8") as file:
            file.write("[General]\nExtra.Mapping=Work\n")
        self.assertEqual(self.ask("--restore", VERSION)[0], 0)
        self.assertEqual(self.home.settings().get("Extra.Mapping"), "Work")
        self.assertEqual(self.ask("--restore", WORKING_VERSION)[0], 0)
        self.assertNotIn("Extra.Mapping", self.home.settings())

    def test_in_german(self):
        self.fill()
        german = {"LC_ALL": "de_DE.UTF-8", "LANGUAGE": "de"}
        _, output, _ = self.ask("--restore", VERSION, **german)
        self.assertIn("ist wieder da", output)


if __name__ == "__main__":
    unittest.main()
