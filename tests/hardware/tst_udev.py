"""The package's rule for /dev/uinput, on the real file. Whether a session then gets the right is the session manager's
matter, and there is none in the machine."""
import subprocess
import unittest

from guest import UINPUT, as_user, user_environment


class Udev(unittest.TestCase):
    def test_uinput_is_tagged_for_the_user_at_the_seat(self):
        found = subprocess.run(["udevadm", "info", "--query=property", UINPUT], check=True, text=True,
                               stdout=subprocess.PIPE).stdout.splitlines()
        tags = [line for line in found if line.startswith("CURRENT_TAGS=")]
        self.assertTrue(tags and ":uaccess:" in tags[0], found)

    def test_nobody_else_gets_the_right(self):
        opened = subprocess.run(["sh", "-c", f": >{UINPUT}"], env=user_environment(), stderr=subprocess.DEVNULL, **as_user())
        self.assertNotEqual(opened.returncode, 0)
