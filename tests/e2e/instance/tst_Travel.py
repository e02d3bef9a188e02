"""Mappings travel as files: out of one user's folders and into another's, with a running program and without."""

import json
import os
import signal
import subprocess
import time
import unittest
from xml.etree import ElementTree

from desk import PROGRAM, SIMULATOR, Home, Lines, XServer, plain_environment, wait_for
from windows import Windows

WINDOW_SIZE = (900, 650)
STARTED = 20  # s: patience with a start
CORNER = ("10", "10")
IN_THE_CORNER = (60, 60)
IN_THE_WINDOW = (640, 600)
SELECTOR = ((1280 - 900) // 2 + 760, (1024 - 650) // 2 + 37)
UNDO = ((1280 - 900) // 2 + 730, (1024 - 650) // 2 + 112)  # beside "Keep"
NAME_LINE = ((1280 - 900) // 2 + 450, (1024 - 650) // 2 + 461)
PAGE_SHOWN = 2.5    # s: from the port's opening to the end of the slide
DOUBLE_CLICK = 0.45  # s: two clicks at one place in less are one, and open no menu


def button(label, key, layer="NORMAL"):
    return f'<BUTTON id="3"><{layer} label="{label}"><KEY1 type="int">{key}</KEY1></{layer}></BUTTON>'


MINE = ('<?xml version="1.0" encoding="UTF-8"?>\n<ZR>\n'
        f'<MAPPING software="Mix">{button("Q", 81)}</MAPPING>\n'
        f'<MAPPING software="M\u00fcller &amp; S\u00f6hne">{button("F5", 116, "SHIFT1")}</MAPPING>\n'
        '<MAPPING software="Faders"><BUTTON id="0"><NORMAL label="Fader"><KEY1 type="midi_knob" channel="2" cc="7" '
        'on_touch="127" after_touch="0" note="0" after_touch_on="1" knobcc="20" m01h="0" m3fh="1" m0_127="0"/></NORMAL>'
        '</BUTTON></MAPPING>\n</ZR>\n')


PROGRAMS = ('<?xml version="1.0" encoding="UTF-8"?>\n<ZR>\n'
            f'<MAPPING software="" program="gimp" title="Gimp">{button("G", 71)}</MAPPING>\n'
            f'<MAPPING software="Mix" program="firefox" title="Firefox" off="yes">{button("B", 66)}</MAPPING>\n</ZR>\n')


class Travel(unittest.TestCase):
    def setUp(self):
        self.home = Home()
        self.addCleanup(self.home.cleanup)
        with open(os.path.join(self.home.data, "custom.xml"), "w", encoding="utf-8") as file:
            file.write(MINE)

    def environment_of(self, home):
        environment = plain_environment()
        environment.pop("DISPLAY", None)
        environment["DBUS_SESSION_BUS_ADDRESS"] = "disabled:"
        home.add_to(environment)
        return environment

    def run_in(self, home, *arguments, **options):
        done = subprocess.run([PROGRAM, *arguments], env={**self.environment_of(home), **options.pop("environment", {})},
                              timeout=STARTED, check=False, text=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              cwd=home.path)
        return done.returncode, done.stdout, done.stderr

    def start_in(self, home, *arguments):
        """Returns the display of its X server and its windows."""
        server = XServer()
        self.addCleanup(server.stop)
        windows = Windows(server.display)
        program = Lines([PROGRAM, *arguments], {**self.environment_of(home), "DISPLAY": server.name}, "stderr")
        self.addCleanup(program.stop, signal.SIGKILL)
        self.assertTrue(wait_for(lambda: windows.shown(WINDOW_SIZE), STARTED), program.texts())
        return server.name, windows

    def start_with_device_in(self, home):
        """The same with the device's page."""
        link = os.path.join(home.path, "device")
        device = Lines([SIMULATOR, "--stdin", "--stay", "--link", link], self.environment_of(home), "stdout",
                       stdin=subprocess.PIPE)
        self.addCleanup(device.stop, signal.SIGKILL)
        self.assertTrue(device.wait_for("plugged"))
        display, windows = self.start_in(home, "--port", link)
        self.assertTrue(device.wait_for("opened", STARTED))
        time.sleep(PAGE_SHOWN)
        return display, windows

    def hands(self, display, *arguments):
        subprocess.run(["xdotool", *map(str, arguments)], check=True,
                       env={**self.environment_of(self.home), "DISPLAY": display})

    def choose_from_context_menu(self, display, windows, entry):
        """Opens the selector's context menu and chooses; then there is a dialog that wants a file's name."""
        before = windows.shown()
        time.sleep(DOUBLE_CLICK)
        self.hands(display, "mousemove", *SELECTOR, "click", 3)
        menu = wait_for(lambda: [window for window in windows.shown() if window not in before])
        self.assertTrue(menu, "no context menu")
        self.hands(display, "key", "--delay", 50, *["Down"] * entry, "Return")
        self.assertTrue(wait_for(lambda: windows.focused() in [window for window in windows.shown()
                                                               if window not in before + menu], STARTED), "no dialog")
        return before

    def dragger(self, display, *arguments):
        """Another program in the screen's corner, out of which and into which files are dragged."""
        program = Lines([os.environ["DRAGGER"], *CORNER, *arguments],
                        {**self.environment_of(self.home), "DISPLAY": display}, "stdout")
        self.addCleanup(program.stop, signal.SIGKILL)
        self.assertTrue(program.wait_for("^ready$"))
        return program

    def drag(self, display, start, end):
        """With the mouse, as slowly as a hand."""
        steps = ["mousemove", *start, "sleep", 0.3, "mousedown", 1, "sleep", 0.1]
        for step in range(1, 11):
            steps += ["mousemove", *(round(a + (b - a) * step / 10) for a, b in zip(start, end)), "sleep", 0.05]
        subprocess.run(["xdotool", *map(str, steps), "sleep", "0.3", "mouseup", "1"], check=True,
                       env={**self.environment_of(self.home), "DISPLAY": display})

    def content(self, home, name):
        with open(os.path.join(home.path, name), "rb") as file:
            return file.read()

    def names(self, home):
        code, output, errors = self.run_in(home, "--list", "--json")
        self.assertEqual((code, errors), (0, ""))
        return [entry["name"] for entry in json.loads(output) if entry["custom"]]

    def test_all_of_it_moves_to_a_second_data_directory(self):
        self.start_in(self.home)
        names = self.names(self.home)
        self.assertEqual(names, ["Mix", "M\u00fcller & S\u00f6hne", "Faders"])
        there = Home()
        self.addCleanup(there.cleanup)
        self.start_in(there)
        self.assertEqual(self.names(there), [])
        for number, name in enumerate(names):
            file = f"{number}.xml"
            self.assertEqual(self.run_in(self.home, "--export", name, file), (0, "", ""))
            path = os.path.join(self.home.path, file)
            self.assertEqual(self.run_in(there, "--import", path), (0, f"\u201c{name}\u201d was imported.\n", ""))
            self.assertEqual(self.run_in(there, "--export", name, file), (0, "", ""))
            self.assertEqual(self.content(there, file), self.content(self.home, file))
        self.assertEqual(self.names(there), names)
        self.assertEqual(self.run_in(there, "--use", "M\u00fcller & S\u00f6hne"), (0, "", ""))

        # What acts for one program each goes with the file in which it stands.
        path = os.path.join(self.home.path, "programs.xml")
        with open(path, "w", encoding="utf-8") as file:
            file.write(PROGRAMS)
        imported = (0, "Imported, each for one program: Gimp, Firefox\n", "")
        self.assertEqual(self.run_in(there, "--import", path), imported)
        again = (1, "", "veltrix: \u201cprograms.xml\u201d was not imported: these programs have mappings of their own here: "
                        "Gimp, Firefox.\n")
        self.assertEqual(self.run_in(there, "--import", path), again)
        third = Home()
        self.addCleanup(third.cleanup)
        self.assertEqual(self.run_in(third, "--import", path), imported)  # without a running program too
        for home in (there, third):
            mappings = ElementTree.fromstring(home.file("programs.xml")).findall("MAPPING")
            self.assertEqual([(each.get("program"), each.get("title"), each.get("off"),
                               each.find("BUTTON[@id='3']/NORMAL/KEY1").text) for each in mappings],
                             [("gimp", "Gimp", None, "71"), ("firefox", "Firefox", "yes", "66")])
        self.assertEqual(self.names(there), names)

    def test_without_a_running_program_it_is_done_all_the_same(self):
        there = Home()
        self.addCleanup(there.cleanup)
        self.assertEqual(self.run_in(self.home, "--export", "Mix", "Mix.xml"), (0, "", ""))
        path = os.path.join(self.home.path, "Mix.xml")
        for name in ("Mix", "Mix (2)", "Mix (3)"):
            self.assertEqual(self.run_in(there, "--import", path), (0, f"\u201c{name}\u201d was imported.\n", ""))
        self.start_in(there)
        self.assertEqual(self.names(there), ["Mix", "Mix (2)", "Mix (3)"])

    def test_an_example_can_be_exported_before_the_first_start(self):
        there = Home()
        self.addCleanup(there.cleanup)
        self.assertEqual(self.run_in(there, "--export", "GIMP", "GIMP.xml"), (0, "", ""))
        self.assertIn(b'software="GIMP"', self.content(there, "GIMP.xml"))

    def test_what_is_wrong_is_said_and_nothing_is_written(self):
        bad = os.path.join(self.home.path, "bad.xml")
        with open(bad, "w", encoding="utf-8") as file:
            file.write('<ZR>\n<MAPPING software="Good"/>\n<MAPPING software="Bad">\n<BUTTON id="12"/>\n</MAPPING>\n</ZR>\n')
        answer = (1, "", "veltrix: \u201cbad.xml\u201d was not imported: line 4, \u201cBad\u201d: \u201c12\u201d is no "
                         "number of a control, which are 0 to 9.\n")
        self.assertEqual(self.run_in(self.home, "--import", "bad.xml"), answer)
        self.start_in(self.home)
        self.assertEqual(self.run_in(self.home, "--import", "bad.xml"), answer)
        self.assertEqual(self.home.file("custom.xml"), MINE)
        code, _, errors = self.run_in(self.home, "--import", "bad.xml",
                                      environment={"LC_ALL": "de_DE.UTF-8", "LANGUAGE": "de"})
        self.assertEqual(code, 1)  # in the language of the running one

    def test_an_export_replaces_no_file(self):
        with open(os.path.join(self.home.path, "letter.xml"), "w", encoding="utf-8") as file:
            file.write("Dear Ada")
        code, _, errors = self.run_in(self.home, "--export", "Mix", "letter.xml")
        self.assertEqual(code, 1)
        self.assertIn("letter.xml is there already", errors)
        self.assertEqual(self.content(self.home, "letter.xml"), b"Dear Ada")
        self.assertEqual(self.run_in(self.home, "--export", "None such", "x.xml"),
                         (1, "", "veltrix: There is no mapping \u201cNone such\u201d.\n"))
        self.assertFalse(os.path.exists(os.path.join(self.home.path, "x.xml")))
        code, _, errors = self.run_in(self.home, "--export", "Mix", os.path.join("no", "such", "folder.xml"))
        self.assertEqual(code, 1)
        self.assertIn("was not exported", errors)
        self.assertEqual(self.run_in(self.home, "--export", "Mix")[0], 2)

    def test_a_file_is_dropped_on_the_window(self):
        display, windows = self.start_in(self.home)
        path = os.path.join(self.home.path, "from outside.xml")
        with open(path, "w", encoding="utf-8") as file:
            file.write('<ZR><MAPPING software="Mix"/><MAPPING software="New"/></ZR>')
        dragger = self.dragger(display, path)
        self.drag(display, IN_THE_CORNER, IN_THE_WINDOW)
        self.assertTrue(dragger.wait_for("^dragged 1$"), dragger.texts())  # a copy: the file stays where it is
        names = ["Mix", "M\u00fcller & S\u00f6hne", "Faders", "Mix (2)", "New"]
        self.assertTrue(wait_for(lambda: self.names(self.home) == names), self.names(self.home))
        self.assertTrue(os.path.exists(path))
        # No device is there, and with it the page that would say so: a message does.
        self.assertTrue(wait_for(lambda: len(windows.shown()) == 3), windows.shown())
        subprocess.run(["xdotool", "key", "Return"], check=True,
                       env={**self.environment_of(self.home), "DISPLAY": display})
        self.assertTrue(wait_for(lambda: len(windows.shown()) == 2), windows.shown())

    def test_a_file_with_a_fault_is_dropped_and_changes_nothing(self):
        display, windows = self.start_in(self.home)
        path = os.path.join(self.home.path, "bad.xml")
        with open(path, "w", encoding="utf-8") as file:
            file.write('<ZR><MAPPING software="Mix"/>')
        dragger = self.dragger(display, path)
        self.drag(display, IN_THE_CORNER, IN_THE_WINDOW)
        self.assertTrue(dragger.wait_for("^dragged 1$"), dragger.texts())
        self.assertTrue(wait_for(lambda: len(windows.shown()) == 3), windows.shown())
        self.assertEqual(self.home.file("custom.xml"), MINE)

    def test_by_the_context_menu_a_mapping_goes_out_and_comes_in(self):
        display, windows = self.start_with_device_in(self.home)
        self.assertEqual(self.run_in(self.home, "--use", "Mix"), (0, "", ""))
        path = os.path.join(self.home.path, "out.xml")
        before = self.choose_from_context_menu(display, windows, 1)
        self.hands(display, "type", "--delay", 10, path)
        self.hands(display, "key", "Return")
        self.assertTrue(wait_for(lambda: os.path.exists(path)))
        self.assertTrue(wait_for(lambda: windows.shown() == before), "the dialog stays")
        self.assertEqual(self.run_in(self.home, "--export", "Mix", "again.xml"), (0, "", ""))
        self.assertEqual(self.content(self.home, "out.xml"), self.content(self.home, "again.xml"))

        self.choose_from_context_menu(display, windows, 2)
        self.hands(display, "type", "--delay", 10, path)
        self.hands(display, "key", "Return")
        self.assertTrue(wait_for(lambda: self.names(self.home)[-1] == "Mix (2)"), self.names(self.home))
        # And it never has been.
        self.hands(display, "mousemove", *UNDO, "click", 1)
        self.assertTrue(wait_for(lambda: "Mix (2)" not in self.names(self.home)), self.names(self.home))

    def test_the_mapping_is_dragged_out_of_the_window_by_its_name(self):
        display, windows = self.start_with_device_in(self.home)
        self.assertEqual(self.run_in(self.home, "--use", "Faders"), (0, "", ""))
        target = self.dragger(display)
        before = windows.shown(WINDOW_SIZE)
        places = [(windows.attributes(window).x, windows.attributes(window).y) for window in before]
        self.drag(display, NAME_LINE, IN_THE_CORNER)
        url = target.wait_for("^url file:///.*/Faders.xml$")
        self.assertTrue(url, target.texts())
        content = target.wait_for("^bytes [0-9a-f]+$")
        self.assertTrue(content, target.texts())
        self.assertEqual(self.run_in(self.home, "--export", "Faders", "Faders.xml"), (0, "", ""))
        # What the program uses lacks the knob's encoding, as every mapping that is read does.
        exported = self.content(self.home, "Faders.xml").replace(b'knobcc="20"', b'knobcc="0"')
        self.assertEqual(bytes.fromhex(content[1].split()[1]), exported.replace(b'm3fh="1"', b'm3fh="0"'))
        # The window stays where it is, and a drop on the window it comes from is none.
        self.assertEqual([(windows.attributes(window).x, windows.attributes(window).y) for window in before], places)
        self.drag(display, NAME_LINE, IN_THE_WINDOW)
        self.assertEqual(self.names(self.home), ["Mix", "M\u00fcller & S\u00f6hne", "Faders"])


if __name__ == "__main__":
    unittest.main()
