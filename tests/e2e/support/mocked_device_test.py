"""The frame of tests of the program on mocked USB devices and a real X server."""

import os
import signal
import unittest

import gi

gi.require_version("UMockdev", "1.0")
from gi.repository import UMockdev  # noqa: E402

from desk import PROGRAM, Home, Lines, XServer, plain_environment  # noqa: E402
from mocked_device import MockedDevice  # noqa: E402

NOTICED = 1.5  # s: a scan each half second, and some for a loaded machine
NEVER = 1.2    # s: long enough for two scans
STARTED = 10   # s: patience with a start


class MockedDeviceTest(unittest.TestCase):
    special = None  # codes of special actions for buttons

    @classmethod
    def setUpClass(cls):
        cls.server = XServer()
        cls.addClassCleanup(cls.server.stop)
        cls.server_environment = plain_environment()
        cls.server_environment["DISPLAY"] = cls.server.name

    def setUp(self):
        self.testbed = UMockdev.Testbed.new()
        self.home = Home(self.special)
        self.addCleanup(self.home.cleanup)
        self.more_environment = {}  # of the programs
        self.devices = []
        self.programs = []
        self.addCleanup(self._clear_away)

    def _clear_away(self):
        for program in self.programs:
            program.stop(signal.SIGKILL)
        for device in self.devices:
            device.unplug()

    def start(self, *arguments, mocked=True):
        environment = dict(os.environ) if mocked else plain_environment()
        if mocked:
            environment.update({k: v for k, v in plain_environment().items() if k.startswith("JACK_")})
            environment["UMOCKDEV_DIR"] = self.testbed.get_root_dir()
        environment["DISPLAY"] = self.server.name
        environment.update(self.more_environment)
        self.home.add_to(environment)
        program = Lines([PROGRAM, *arguments], environment, "stderr")
        self.programs.append(program)
        self.assertTrue(program.wait_for("input goes through X11", STARTED), program.texts())
        return program

    def plug(self, **properties):
        device = MockedDevice(self.testbed, **properties)
        self.devices.append(device)
        return device

    def start_with_device(self, *arguments, **properties):
        program = self.start(*arguments)
        device = self.plug(**(properties or {"serial": "HIDFG01"}))
        self.assertTrue(program.wait_for(": plugged$", STARTED), program.texts())
        return program, device
