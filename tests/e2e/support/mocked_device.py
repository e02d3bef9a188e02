"""A USB control surface made of mocked device entries and a pseudo-terminal."""

import array
import fcntl
import itertools
import os
import pty
import termios
import tty

# The serial port's lock is a file of the whole machine: names that no other test run has at the same time.
_numbers = itertools.count(os.getpid() * 100)


class MockedDevice:
    def __init__(self, testbed, serial=None, product="0001", vendor="1209", node=True):
        """Without a `node` the port is listed and cannot be opened, until make_node()."""
        number = next(_numbers)
        self._testbed = testbed
        self.name = f"ttyACM{number}"
        self.master, self._slave = pty.openpty()
        tty.setraw(self._slave)
        os.makedirs(os.path.dirname(self._node()), exist_ok=True)
        if node:
            self.make_node()
        properties = ["ID_BUS", "usb", "ID_VENDOR_ID", vendor, "ID_MODEL_ID", product]
        attributes = ["idVendor", vendor, "idProduct", product]
        if serial is not None:
            properties += ["ID_SERIAL_SHORT", serial, "ID_SERIAL", "Maker_" + serial]
            attributes += ["serial", serial]
        self._usb = testbed.add_device("usb", f"usb{number}", None, attributes, ["DEVTYPE", "usb_device"])
        self._interface = testbed.add_device(
            "usb", f"usb{number}:1.0", self._usb, ["bInterfaceNumber", "00"], ["DEVTYPE", "usb_interface"])
        self._tty = testbed.add_device("tty", self.name, self._interface, [], ["DEVNAME", "/dev/" + self.name] + properties)
        self.is_plugged = True

    def make_node(self):
        os.symlink(os.ttyname(self._slave), self._node())

    def tell(self, serial):
        """The system learns the serial number, after the port has been there for a while."""
        self._testbed.set_property(self._tty, "ID_SERIAL_SHORT", serial)
        self._testbed.set_attribute(self._usb, "serial", serial)
        self._testbed.uevent(self._tty, "change")

    def unread(self):
        """The bytes that the program has not taken yet."""
        count = array.array("i", [0])
        fcntl.ioctl(self._slave, termios.FIONREAD, count)
        return count[0]

    def _node(self):
        return os.path.join(self._testbed.get_root_dir(), "dev", self.name)

    def send(self, *reports):
        os.write(self.master, b"".join(report.encode() + b"\n\r\n" for report in reports))

    def hang_up(self):
        """The line breaks, while the system still lists the port."""
        for descriptor in (self._slave, self.master):
            os.close(descriptor)
        self.master = self._slave = -1

    def unplug(self):
        if not self.is_plugged:
            return
        self.is_plugged = False
        if self.master >= 0:
            self.hang_up()
        if os.path.islink(self._node()):
            os.unlink(self._node())
        for entry in (self._tty, self._interface, self._usb):
            self._testbed.uevent(entry, "remove")
            self._testbed.remove_device(entry)
