"""Starts into surroundings that are not as they should be: the real program on a real X server, or on none."""

import os
import resource
import signal
import stat
import subprocess
import time
import unittest

from desk import PROGRAM, Home, XServer, plain_environment, wait_for

STARTED = 20  # s: patience with a start
SETTINGS = os.path.join("config", "{Brimwell Labs}", "{Veltrix}.conf")


class Start(unittest.TestCase):
    def setUp(self):
        self.server = XServer()
        self.addCleanup(self.server.stop)
        self.home = Home()
        self.addCleanup(self.home.cleanup)
        self.environment = plain_environment()
        self.environment["DISPLAY"] = self.server.name
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = "disabled:"
        self.home.add_to(self.environment)

    def start(self, **options):
        process = subprocess.Popen([PROGRAM], env=self.environment, **options)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    def log(self):
        return self.home.file("veltrix.log")

    def assert_runs_and_ends_well(self, process):
        self.assertTrue(wait_for(lambda: "input goes" in self.log() or process.poll() is not None, STARTED), self.log())
        time.sleep(0.5)
        self.assertIsNone(process.poll(), self.log())
        process.send_signal(signal.SIGTERM)
        self.assertEqual(process.wait(10), 0)

    # What the log says

    def test_the_data_folder_stands_in_the_log_file(self):
        self.assert_runs_and_ends_well(self.start(stderr=subprocess.DEVNULL))
        self.assertIn("storage: " + self.home.data, self.log())

    # Standard error

    def test_without_a_standard_error_it_runs(self):
        self.assert_runs_and_ends_well(self.start(preexec_fn=lambda: os.close(2)))

    def test_without_any_standard_file_it_runs(self):
        self.assert_runs_and_ends_well(self.start(preexec_fn=lambda: os.closerange(0, 3)))

    def test_with_a_standard_error_that_nobody_reads_it_runs(self):
        reader, writer = os.pipe()
        process = self.start(stderr=writer)
        os.close(writer)
        os.close(reader)
        self.assert_runs_and_ends_well(process)

    # Files

    def test_where_no_file_may_grow_it_says_so_and_runs(self):
        limit = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (0, 0))
        process = self.start(stderr=subprocess.PIPE, text=True, preexec_fn=limit)
        time.sleep(3)
        self.assertIsNone(process.poll())
        process.send_signal(signal.SIGTERM)
        _, errors = process.communicate(timeout=10)
        self.assertEqual(process.returncode, 0, errors)
        self.assertIn("veltrix.log cannot be written", errors)

    def test_what_is_no_settings_file_is_left_alone(self):
        path = os.path.join(self.home.path, SETTINGS)
        os.makedirs(os.path.dirname(path))
        os.mkfifo(path)
        self.assert_runs_and_ends_well(self.start(stderr=subprocess.DEVNULL))
        self.assertTrue(stat.S_ISFIFO(os.stat(path).st_mode))
        self.assertIn("is no regular file", self.log())

    def test_an_empty_settings_lock_holds_nothing_up(self):
        path = os.path.join(self.home.path, SETTINGS)
        os.makedirs(os.path.dirname(path))
        with open(path + ".lock", "w", encoding="ascii"):
            pass
        os.utime(path + ".lock", (time.time() - 5, time.time() - 5))
        began = time.monotonic()
        self.assert_runs_and_ends_well(self.start(stderr=subprocess.DEVNULL))
        self.assertLess(time.monotonic() - began, 10)
        self.assertIn("ZR.ver", self.home.settings())

    def test_leftovers_of_killed_writes_are_cleared(self):
        left = [
            os.path.join(self.home.data, name)
            for name in ("custom.xml.veltrix-0123456789abcdef", "current.xml.veltrix-fedcba9876543210")
        ]
        copies = [os.path.join(self.home.data, name) for name in ("custom.xml.backup", "custom.xml.broken")]
        for path in left + copies:
            with open(path, "w", encoding="ascii"):
                pass
        self.assert_runs_and_ends_well(self.start(stderr=subprocess.DEVNULL))
        self.assertEqual([path for path in left + copies if os.path.exists(path)], copies)

    # No display

    def test_a_wayland_session_whose_socket_is_dead_gets_a_sentence(self):
        del self.environment["DISPLAY"]
        self.environment["WAYLAND_DISPLAY"] = "wayland-7"
        self.environment["XDG_SESSION_TYPE"] = "wayland"
        self.assert_runs_and_ends_well(self.start(stderr=subprocess.DEVNULL))
        self.assertIn("input goes nowhere", self.log())

    # At rest

    def test_no_thread_but_the_main_one_wakes(self):
        # While it waits for an answer the toolkit looks at the network, here twenty times a second. Nobody answers.
        self.environment.update({"QT_BEARER_POLL_TIMEOUT": "50", "VELTRIX_API_URL": "http://127.0.0.1:1/api/"})
        process = self.start(stderr=subprocess.DEVNULL)
        self.assertTrue(wait_for(lambda: "input goes" in self.log(), STARTED), self.log())
        time.sleep(2)
        self.assertTrue(wait_for(lambda: self.wake_ups_in_a_second(process.pid) < 5, STARTED),
                        self.wake_ups_of_other_threads(process.pid))
        self.assertIsNone(process.poll(), self.log())

    def wake_ups_in_a_second(self, pid):
        before = sum(self.wake_ups_of_other_threads(pid).values())
        time.sleep(1)
        return sum(self.wake_ups_of_other_threads(pid).values()) - before

    @staticmethod
    def wake_ups_of_other_threads(pid):
        wake_ups = {}
        for thread in os.listdir(f"/proc/{pid}/task"):
            if thread != str(pid):
                with open(f"/proc/{pid}/task/{thread}/status", encoding="ascii") as file:
                    fields = dict(line.rstrip("\n").partition(":\t")[::2] for line in file)
                wake_ups[thread + " " + fields["Name"]] = int(fields["voluntary_ctxt_switches"])
        return wake_ups


if __name__ == "__main__":
    unittest.main()
