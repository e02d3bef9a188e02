"""The list of ports that the link's unit tests believe, compared with the system's on mocked USB devices."""

import os
import subprocess
import unittest

import gi

gi.require_version("UMockdev", "1.0")
from gi.repository import UMockdev  # noqa: E402

from mocked_device import MockedDevice  # noqa: E402


class PortList:
    def __init__(self, kind, environment):
        self._process = subprocess.Popen([os.environ["PORT_LIST"], kind], env=environment, text=True,
                                         stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def tell(self, line):
        self._process.stdin.write(line + "\n")
        self._process.stdin.flush()

    def look(self):
        self.tell("look")
        return self._process.stdout.readline().strip()

    def close(self):
        self._process.stdin.close()
        self._process.wait(10)
        self._process.stdout.close()


class PortListDouble(unittest.TestCase):
    def test_it_tells_what_the_systems_list_tells(self):
        testbed = UMockdev.Testbed.new()
        # The folder that the list looks at is there before the first device.
        os.makedirs(os.path.join(testbed.get_root_dir(), "dev"), exist_ok=True)
        real = PortList("real", {**os.environ, "UMOCKDEV_DIR": testbed.get_root_dir()})
        self.addCleanup(real.close)
        double = PortList("double", dict(os.environ))
        self.addCleanup(double.close)
        devices = []

        def plug(serial, product):
            device = MockedDevice(testbed, serial=serial, product=product)
            devices.append(device)
            self.addCleanup(device.unplug)
            double.tell(f"come {device.name} {serial} {product}")

        def unplug(device):
            device.unplug()
            double.tell(f"go {device.name}")

        def both_tell(stamp, count):
            told = real.look()
            self.assertEqual(double.look(), told)
            words = told.split(", ")
            self.assertEqual((words[0], len(words) - 1), (stamp, count), told)
            return told

        both_tell("same", 0)
        plug("HIDFG0001", "9206")
        self.assertRegex(both_tell("moved", 1), r" /dev/ttyACM\d+ HIDFG0001 9206$")
        both_tell("same", 1)
        plug("ANOTHER", "0001")
        both_tell("moved", 2)
        unplug(devices[0])
        both_tell("moved", 1)
        unplug(devices[1])
        both_tell("moved", 0)
        both_tell("same", 0)


if __name__ == "__main__":
    unittest.main()
