"""The program of an ordinary user in an X11 session of the real X server: XTEST as ever, and uinput where it is asked for."""
import grp
import signal
import unittest

from guest import (OWN_DEVICES, PATIENCE, QUIET, Device, Program, give_uinput, has_no_own_device, wait_for)
from usb_device import UsbDevice
from xorg import Xorg


class XorgTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.session = Xorg()
        cls.addClassCleanup(cls.session.stop)

    def setUp(self):
        give_uinput()
        self.listener = self.session.listen()
        self.addCleanup(self.listener.stop)

    def start(self, *arguments, **options):
        program = Program(self.session.environment, "--verbose", *arguments, **options)
        self.addCleanup(program.end)
        return program

    def heard(self):
        return [text for text in self.listener.texts() if text.startswith(("key", "left"))]

    def assert_arrives(self, *expected):
        wait_for(lambda: len(self.heard()) >= len(expected), PATIENCE)
        self.assertEqual(self.heard(), list(expected))


class Session(XorgTest):
    def setUp(self):
        super().setUp()
        self.device = Device()
        self.addCleanup(self.device.close)

    def start_plugged(self, *arguments):
        program = self.start("--port", self.device.path, *arguments)
        self.assertTrue(program.wait_for(": plugged$", PATIENCE), program.texts())
        return program

    def press_and_die(self, program):
        self.device.send("BP0", "BR0")
        self.assert_arrives("key 65 down", "key 65 up")
        self.device.send("BP3", "KND")
        self.assert_arrives("key 65 down", "key 65 up", "key 68 down", "left down")
        program.process.send_signal(signal.SIGKILL)
        wait_for(lambda: len(self.heard()) >= 6, PATIENCE)
        self.assertEqual(sorted(self.heard()[4:]), ["key 68 up", "left up"])

    def test_an_x11_session_uses_xtest_and_makes_no_devices(self):
        program = self.start_plugged()
        self.assertTrue(program.wait_for("input goes through X11", PATIENCE), program.texts())
        self.assertTrue(has_no_own_device())
        self.press_and_die(program)

    def test_uinput_where_it_is_asked_for(self):
        program = self.start_plugged("--input=uinput")
        self.assertTrue(program.wait_for("input goes through uinput", PATIENCE), program.texts())
        self.assertTrue(wait_for(lambda: self.session.takes(*OWN_DEVICES), PATIENCE))
        self.press_and_die(program)
        self.assertTrue(wait_for(has_no_own_device, PATIENCE))


class HotPlug(XorgTest):
    """The device on a USB socket."""

    def setUp(self):
        super().setUp()
        self.device = UsbDevice("HIDFG42")
        self.addCleanup(self.device.unplug)

    def test_it_is_used_when_plugged_and_let_go_when_pulled(self):
        # The group stands for the right that the session manager gives.
        program = self.start(groups=[grp.getgrnam("dialout").gr_gid])
        self.assertIsNone(program.wait_for(": plugged$", QUIET))
        self.device.plug()
        self.assertTrue(program.wait_for(": plugged$", PATIENCE), program.texts())
        self.assertTrue(wait_for(lambda: self.device.baud == 115200 and self.device.is_ready, PATIENCE),
                        (self.device.baud, self.device.is_ready))
        self.device.send("BP0")
        self.assert_arrives("key 65 down")
        self.device.unplug()
        self.assert_arrives("key 65 down", "key 65 up")
        self.assertTrue(program.wait_for(": unplugged$", PATIENCE), program.texts())

        before = len(program.lines)
        self.device.plug()
        self.assertTrue(program.wait_for(": plugged$", PATIENCE, before), program.texts())
        self.device.send("BP1", "BR1")
        self.assert_arrives("key 65 down", "key 65 up", "key 66 down", "key 66 up")
