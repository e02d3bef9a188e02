"""The program of an ordinary user in a Wayland session: what arrives in native Wayland windows."""
import signal
import unittest

from guest import (OWN_DEVICES, PATIENCE, QUIET, Device, Program, give_uinput, has_no_own_device, has_own_devices,
                   wait_for)
from sway import Client, Sway

MONITOR_RIGHT, VERTICAL, CIRCULAR, UP_DOWN_KEYS = 3, 5, 6, 8
SAVE_AS, AT, LETTER_Y, TO_RIGHT, TO_VERTICAL, TO_CIRCULAR, TO_ARROWS = range(7)
SPECIAL = {TO_RIGHT: MONITOR_RIGHT, TO_VERTICAL: VERTICAL, TO_CIRCULAR: CIRCULAR, TO_ARROWS: UP_DOWN_KEYS}
CONTROL, SHIFT, ALT_GR = 17, 16, 165
SHORTCUTS = {SAVE_AS: (CONTROL, SHIFT, ord("S")), AT: (ALT_GR, ord("Q")), LETTER_Y: (ord("Y"),)}
SAVE_AS_DOWN = [("down", "Control_L"), ("down", "Shift_L"), ("down", "S")]


class WaylandTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.session = Sway()
        cls.addClassCleanup(cls.session.stop)
        cls.client = Client(cls.session)
        cls.addClassCleanup(lambda: cls.client.stop())

    def setUp(self):
        give_uinput()
        self.device = Device()
        self.addCleanup(self.device.close)

    def start(self, **environment):
        program = Program({**self.session.environment, **environment}, "--verbose", "--port", self.device.path,
                          special=SPECIAL, shortcuts=SHORTCUTS, runtime=self.session.runtime)
        self.addCleanup(program.end)
        self.assertTrue(program.wait_for(": plugged$", PATIENCE), program.texts())
        return program

    def start_ready(self, **environment):
        """Starts the program and waits until the session reads its devices."""
        program = self.start(**environment)
        self.assertTrue(program.wait_for("input goes through uinput", PATIENCE), program.texts())
        self.wait_until_taken()
        self.client.forget()
        return program

    def wait_until_taken(self):
        self.assertTrue(wait_for(lambda: self.session.takes(*OWN_DEVICES), PATIENCE), "the session took no device")

    def assert_keys(self, *expected):
        wait_for(lambda: len(self.client.keys()) >= len(expected), PATIENCE)
        self.assertEqual(self.client.keys(), list(expected))
        self.client.forget()

    def assert_buttons(self, *expected):
        wait_for(lambda: len(self.client.buttons()) >= len(expected), PATIENCE)
        self.assertEqual(self.client.buttons(), list(expected))

    def pointer_to_this_client(self):
        """Brings the pointer onto the client's output; returns where in its window it is."""
        self.client.forget()
        for _ in range(2):  # one of two outputs; the first jump's start is not known
            self.device.send(f"BP{TO_RIGHT}", f"BR{TO_RIGHT}")
            # A jump is two places, lest it be the one that the kernel knows already.
            if wait_for(lambda: len(self.client.places()) >= 2, QUIET):
                return self.client.places()[-1]
        self.fail("the pointer came to no place of the client")


class Wayland(WaylandTest):
    def test_shortcuts_arrows_pointer_and_sudden_death(self):
        program = self.start_ready()

        with self.subTest("a shortcut, in its order"):
            self.device.send(f"BP{SAVE_AS}")
            self.assert_keys(*SAVE_AS_DOWN)
            self.device.send(f"BR{SAVE_AS}")
            wait_for(lambda: len(self.client.keys()) == 3, PATIENCE)
            self.assertEqual(sorted(key.lower() for _, key in self.client.keys()), ["control_l", "s", "shift_l"])
            self.assertEqual({state for state, _ in self.client.keys()}, {"up"})
            self.client.forget()

        with self.subTest("what the layout types with AltGr"):
            self.device.send(f"BP{AT}")
            self.assert_keys(("down", "ISO_Level3_Shift"), ("down", "at"))
            self.device.send(f"BR{AT}")
            wait_for(lambda: len(self.client.keys()) == 2, PATIENCE)
            self.assertEqual({state for state, _ in self.client.keys()}, {"up"})
            self.client.forget()

        with self.subTest("the layout's own places"):
            self.device.send(f"BP{LETTER_Y}", f"BR{LETTER_Y}")
            self.assert_keys(("down", "y"), ("up", "y"))

        with self.subTest("arrow taps"):
            self.device.send(f"BP{TO_ARROWS}", f"BR{TO_ARROWS}", "KND", "KNL", "KNR", "KNU")
            self.assert_keys(("down", "Up"), ("up", "Up"), ("down", "Down"), ("up", "Down"))

        with self.subTest("the pointer jumps to an output, to the same place again"):
            first = self.pointer_to_this_client()
            self.assertAlmostEqual(first[0], 640, delta=2)
            self.assertAlmostEqual(first[1], 400, delta=2)

        with self.subTest("dragging: the left button while the knob is touched, one pixel a step"):
            self.device.send(f"BP{TO_VERTICAL}", f"BR{TO_VERTICAL}")
            x, y = self.pointer_to_this_client()
            self.client.forget()
            self.device.send("KND")
            self.assert_buttons(True)
            self.device.send("KNR", "KNR", "KNR")
            wait_for(lambda: len(self.client.places()) == 3, PATIENCE)
            self.assertEqual(self.client.places(), [(x, y - 1), (x, y - 2), (x, y - 3)])
            self.device.send("KNU")
            self.assert_buttons(True, False)
            again = self.pointer_to_this_client()
            self.assertAlmostEqual(again[1], y - 3, delta=0.1, msg="there and back it is at its place again")

        with self.subTest("circular: the pointer goes back by its own steps"):
            self.device.send(f"BP{TO_CIRCULAR}", f"BR{TO_CIRCULAR}")
            x, y = again
            self.client.forget()
            self.device.send("KND", "KNL", "KNL", "KNL", "KNU")
            wait_for(lambda: self.client.places()[-1:] == [(x, y)], PATIENCE)
            self.assertEqual(self.client.places(), [(x, y + 1), (x, y + 2), (x, y + 3), (x, y)])
            self.assert_buttons(True, False)  # libinput holds a release back that comes soon after its press

        with self.subTest("killed while keys and the button are held: nothing stays"):
            self.device.send(f"BP{TO_VERTICAL}", f"BR{TO_VERTICAL}")
            self.client.forget()
            self.device.send(f"BP{SAVE_AS}")
            self.assert_keys(*SAVE_AS_DOWN)
            self.device.send("KND")
            self.assert_buttons(True)
            self.client.forget()
            program.process.send_signal(signal.SIGKILL)
            self.assert_buttons(False)
            wait_for(lambda: len(self.client.keys()) == 3, PATIENCE)
            self.assertEqual(sorted(key.lower() for _, key in self.client.keys()), ["control_l", "s", "shift_l"])
            self.assertEqual({state for state, _ in self.client.keys()}, {"up"})
            self.assertTrue(wait_for(has_no_own_device, PATIENCE))

    def test_the_right_is_taken_away_and_given_back(self):
        program = self.start_ready()
        self.device.send(f"BP{SAVE_AS}")
        self.assert_keys(*SAVE_AS_DOWN)
        give_uinput(False)
        wait_for(lambda: len(self.client.keys()) == 3, PATIENCE)
        self.assertEqual({state for state, _ in self.client.keys()}, {"up"}, "what was held is let go")
        self.assertTrue(wait_for(has_no_own_device, PATIENCE), "another's session must not get keys")
        self.client.forget()
        self.device.send(f"BR{SAVE_AS}", f"BP{LETTER_Y}", f"BR{LETTER_Y}")
        self.assertFalse(wait_for(self.client.keys, QUIET))
        give_uinput()
        self.assertTrue(wait_for(has_own_devices, PATIENCE), program.texts())
        self.wait_until_taken()
        self.device.send(f"BP{LETTER_Y}", f"BR{LETTER_Y}")
        self.assert_keys(("down", "y"), ("up", "y"))

    def test_without_the_right_x11_is_used_and_the_log_says_so(self):
        give_uinput(False)
        self.client.forget()
        program = self.start()
        self.assertTrue(program.wait_for("a better way for input is closed: /dev/uinput: Permission denied", PATIENCE),
                        program.texts())
        self.assertTrue(program.wait_for("input goes through X11", PATIENCE), program.texts())
        self.assertTrue(has_no_own_device())
        self.device.send(f"BP{LETTER_Y}", f"BR{LETTER_Y}")
        self.assertFalse(wait_for(self.client.keys, QUIET), "else nothing here shows that uinput is needed")

    def test_another_layout_is_followed(self):
        self.start_ready()
        self.addCleanup(self.session.message, "input", "*", "xkb_layout", "de")
        self.session.message("input", "*", "xkb_layout", "us")
        self.assertTrue(wait_for(lambda: "German" not in self.session.message("--raw", "-t", "get_inputs"), PATIENCE))
        self.client.forget()
        self.device.send(f"BP{LETTER_Y}", f"BR{LETTER_Y}")
        self.assert_keys(("down", "y"), ("up", "y"))


class CompositorRestart(WaylandTest):
    def test_the_program_goes_on_in_the_new_one(self):
        # The window is on another screen: one on XWayland's would go with the compositor, and the program with it.
        program = self.start_ready(QT_QPA_PLATFORM="offscreen")
        self.device.send(f"BP{SAVE_AS}")
        self.assert_keys(*SAVE_AS_DOWN)
        self.client.stop()
        self.session.end_compositor()
        self.assertTrue(program.wait_for("the connection to the compositor is lost", PATIENCE), program.texts())
        self.device.send(f"BR{SAVE_AS}")
        self.session.start("us")
        type(self).client = Client(self.session)
        self.wait_until_taken()
        self.client.forget()

        def letter_arrives():
            # With the map of the old compositor, until the program has the new one's.
            self.device.send(f"BP{LETTER_Y}", f"BR{LETTER_Y}")
            return wait_for(lambda: ("up", "y") in self.client.keys(), QUIET)

        self.assertTrue(wait_for(letter_arrives, PATIENCE), (self.client.events(), program.texts()))
        self.assertIsNone(program.process.poll())


if __name__ == "__main__":
    unittest.main()
