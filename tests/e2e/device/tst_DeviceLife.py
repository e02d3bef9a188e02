"""The program from the plugging in of its device to its own end, on mocked USB devices and a real X server."""

import os
import signal
import subprocess
import sys
import time
import unittest

from desk import LISTENER, SIMULATOR, Lines, children_of, cpu_seconds, is_alive, plain_environment, wait_for
from mocked_device_test import NEVER, NOTICED, MockedDeviceTest


class DeviceLife(MockedDeviceTest):
    def setUp(self):
        super().setUp()
        self.listener = Lines([LISTENER], self.server_environment, "stdout", stdin=subprocess.PIPE)
        self.addCleanup(lambda: self.listener.stop())
        self.assertTrue(self.listener.wait_for("^ready$"))

    def assert_arrives(self, *expected):
        heard = wait_for(lambda: len(self.listener.lines) > len(expected) and self.listener.texts()[1:])
        self.assertEqual(heard, list(expected))

    def assert_nothing_held(self, timeout=1.0):
        self.assertEqual(wait_for(lambda: not self.server.keys_held(), timeout), True, self.server.keys_held())

    # Finding the device

    def test_plugged_after_the_start_it_is_used(self):
        _, device = self.start_with_device()
        device.send("BP0", "BR0", "BP9", "BR9")
        self.assert_arrives("key 65 down", "key 65 up", "key 74 down", "key 74 up")

    def test_plugged_before_the_start_it_is_used(self):
        device = self.plug(serial="HIDFG01")
        program = self.start()
        self.assertTrue(program.wait_for(": plugged$", NOTICED), program.texts())
        device.send("BP0", "BR0")
        self.assert_arrives("key 65 down", "key 65 up")

    def test_letters_in_the_serial_number_match_anywhere(self):
        self.start_with_device(serial="0042-HIDFG-7")

    def test_the_product_identifier_matches_whatever_the_serial_number(self):
        self.start_with_device(serial="hidfg", product="9206")

    def test_the_product_identifier_matches_without_a_serial_number(self):
        self.start_with_device(product="9206")

    def test_lower_case_letters_do_not_match(self):
        program = self.start()
        self.plug(serial="hidfg01")
        self.assertIsNone(program.wait_for(": (plugged|failed)", NEVER))

    def test_another_product_does_not_match(self):
        program = self.start()
        self.plug(serial="9206", product="9207", vendor="9206")
        self.assertIsNone(program.wait_for(": (plugged|failed)", NEVER))

    def test_a_wrong_device_beside_the_right_one_is_left_alone(self):
        wrong_before = self.plug(serial="A0001", product="0043")
        program, right = self.start_with_device()
        wrong_after = self.plug(serial="Z9999", product="0044")
        for wrong in (wrong_before, wrong_after):
            wrong.send("BP1", "BR1")
        right.send("BP2", "BR2")
        self.assert_arrives("key 67 down", "key 67 up")
        wrong_before.unplug()
        self.assertIsNone(program.wait_for(": unplugged$", NEVER))
        right.send("BP3", "BR3")
        self.assert_arrives("key 67 down", "key 67 up", "key 68 down", "key 68 up")

    # Losing the device

    def test_unplugged_while_keys_are_held_they_are_released(self):
        program, device = self.start_with_device()
        device.send("BP0", "BP3", "KND")
        self.assert_arrives("key 65 down", "key 68 down", "left down")
        device.unplug()
        self.assertTrue(program.wait_for(": unplugged$", NOTICED), program.texts())
        # The knob is let go in circular mode: the pointer goes back to where it was touched, the middle of the screen.
        self.assert_arrives("key 65 down", "key 68 down", "left down", "left up", "move 640 512", "key 65 up",
                            "key 68 up")
        self.assert_nothing_held()

    def test_plugged_in_again_it_is_used_again(self):
        program, device = self.start_with_device()
        for round_number in range(3):
            device.send("BP0", "BR0")
            device.unplug()
            self.assertTrue(program.wait_for(": unplugged$", NOTICED), program.texts())
            seen = len(program.lines)
            device = self.plug(serial="HIDFG01")
            self.assertTrue(program.wait_for(": plugged$", NOTICED, seen), program.texts())
        device.send("BP1", "BR1")
        self.assertTrue(self.listener.wait_for("key 66 up"))

    def test_gone_and_back_between_two_looks_it_works(self):
        program, device = self.start_with_device()
        device.send("BP0")
        self.assertTrue(self.listener.wait_for("key 65 down"))
        device.unplug()
        device = self.plug(serial="HIDFG01")
        self.assertTrue(self.listener.wait_for("key 65 up", NOTICED))
        plugged = wait_for(lambda: sum(text.endswith(": plugged") for text in program.texts()) == 2, 2 * NOTICED)
        self.assertTrue(plugged, program.texts())
        device.send("BP1", "BR1")
        self.assertTrue(self.listener.wait_for("key 66 up"))

    def test_a_hang_up_without_a_word_releases_and_does_not_spin(self):
        program, device = self.start_with_device()
        device.send("BP0")
        self.assertTrue(self.listener.wait_for("key 65 down"))
        device.hang_up()
        self.assertTrue(self.listener.wait_for("key 65 up", NOTICED), program.texts())
        before = cpu_seconds(program.pid)
        time.sleep(2)
        # A port that cannot be opened is tried, and the ports are listed, at each look: dear, but far from a whole core.
        self.assertLess(cpu_seconds(program.pid) - before, 0.3, program.texts()[-10:])

    def test_the_virtual_device_killed_while_a_key_is_held_releases_it_and_does_not_spin(self):
        link = os.path.join(self.home.path, "device")
        environment = plain_environment()
        simulator = Lines([SIMULATOR, "--stdin", "--link", link], environment, "stdout", stdin=subprocess.PIPE)
        program = self.start("--port", link, mocked=False)
        self.assertTrue(simulator.wait_for("^opened$"), program.texts())
        simulator.process.stdin.write("BP0\n")
        simulator.process.stdin.flush()
        self.assertTrue(self.listener.wait_for("key 65 down"))
        simulator.stop(signal.SIGKILL)
        self.assertTrue(self.listener.wait_for("key 65 up", NOTICED), program.texts())
        time.sleep(1)  # the window slides back to its first page, which takes half a second
        before = cpu_seconds(program.pid)
        time.sleep(2)
        self.assertLess(cpu_seconds(program.pid) - before, 0.1)

    # The program's own end

    def end_while_held(self, number):
        program, device = self.start_with_device()
        device.send("BP0", "BP3", "KND")
        self.assertTrue(self.listener.wait_for("left down"))
        helpers = children_of(program.pid)
        sent = time.monotonic()
        status = program.stop(number)
        for text in ("key 65 up", "key 68 up", "left up"):
            self.assertTrue(self.listener.wait_for(text), (text, program.texts()))
        released = max(when for when, text in self.listener.lines if text.endswith(" up"))
        self.assert_nothing_held()
        self.assertTrue(wait_for(lambda: not any(map(is_alive, helpers)), 1.0), helpers)
        return status, released - sent, device

    def test_sigterm_while_held_releases_everything_and_ends_well(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(signal=number.name):
                status, _, device = self.end_while_held(number)
                self.assertEqual(status, 0)
                device.unplug()
                self.listener.stop()
                self.listener = Lines([LISTENER], self.server_environment, "stdout", stdin=subprocess.PIPE)
                self.assertTrue(self.listener.wait_for("^ready$"))

    def test_sigkill_while_held_releases_everything_within_50_ms(self):
        status, seconds, _ = self.end_while_held(signal.SIGKILL)
        self.assertEqual(status, -signal.SIGKILL)
        print(f"released {seconds * 1000:.1f} ms after SIGKILL", file=sys.stderr)
        self.assertLess(seconds, 0.050)

    def test_after_a_kill_the_next_start_uses_the_device(self):
        program, device = self.start_with_device()
        device.send("BP0")
        self.assertTrue(self.listener.wait_for("key 65 down"))
        program.stop(signal.SIGKILL)
        self.assertTrue(self.listener.wait_for("key 65 up"))
        program = self.start()
        self.assertTrue(program.wait_for(": plugged$", NOTICED), program.texts())
        device.send("BP1", "BR1")
        self.assertTrue(self.listener.wait_for("key 66 up"))


if __name__ == "__main__":
    unittest.main()
