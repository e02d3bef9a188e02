"""What other processes of the user's ask of the running program: real processes, real sockets, a real X server."""

import json
import os
import signal
import socket
import subprocess
import time
import unittest

import desk
from desk import PROGRAM, Home, Lines, XServer, plain_environment, wait_for
from windows import Windows

WINDOW_SIZE = (900, 650)
STARTED = 20  # s: patience with a start
NOT_RUNNING = (3, "", "veltrix: Veltrix is not running.\n")
MIX = ('<?xml version="1.0" encoding="UTF-8"?><ZR><MAPPING software="Mix"><BUTTON id="0"><NORMAL label="Q">'
       '<KEY1 type="int">81</KEY1></NORMAL></BUTTON></MAPPING><MAPPING software="Other"/></ZR>')


class Remote(unittest.TestCase):
    def setUp(self):
        self.server = XServer()
        self.addCleanup(self.server.stop)
        self.windows = Windows(self.server.display)
        self.home = Home()
        self.addCleanup(self.home.cleanup)
        with open(os.path.join(self.home.data, "custom.xml"), "w", encoding="utf-8") as file:
            file.write(MIX)
        self.environment = plain_environment()
        self.environment["DISPLAY"] = self.server.name
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = "disabled:"
        self.home.add_to(self.environment)
        self.socket = os.path.join(self.home.path, "run", "veltrix", "remote")

    def start(self, *arguments):
        program = Lines([PROGRAM, *arguments], self.environment, "stderr")
        self.addCleanup(program.stop, signal.SIGKILL)
        self.assertTrue(wait_for(lambda: self.windows.shown(WINDOW_SIZE), STARTED), program.texts())
        return program

    def ask(self, *arguments, **environment):
        """Status, output and errors of a command. It has no display: it must not need one."""
        without = {name: value for name, value in self.environment.items() if name != "DISPLAY"}
        done = subprocess.run([PROGRAM, *arguments], env={**without, **environment}, timeout=STARTED, check=False, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        return done.returncode, done.stdout, done.stderr

    def status(self):
        code, output, errors = self.ask("--status", "--json")
        self.assertEqual((code, errors), (0, ""))
        return json.loads(output)

    def test_without_a_running_copy_each_command_says_so(self):
        for arguments in (["--use", "Mix"], ["--list"], ["--show"], ["--status"], ["--status", "--json"]):
            with self.subTest(arguments=arguments):
                self.assertEqual(self.ask(*arguments), NOT_RUNNING)

    def test_after_a_kill_too(self):
        self.start().stop(signal.SIGKILL)
        self.assertTrue(os.path.exists(self.socket))
        self.assertEqual(self.ask("--show"), NOT_RUNNING)
        self.start()
        self.assertEqual(self.ask("--show"), (0, "", ""))

    def test_the_list_has_the_users_own_first(self):
        self.start()
        code, output, errors = self.ask("--list")
        self.assertEqual((code, errors), (0, ""))
        names = output.splitlines()
        self.assertEqual(names[:2], ["Mix", "Other"])
        self.assertIn("Everyday desktop", names)
        code, output, _ = self.ask("--list", "--json")
        self.assertEqual(json.loads(output)[0], {"name": "Mix", "custom": True})
        self.assertEqual([entry["name"] for entry in json.loads(output)], names)

    def test_a_mapping_is_put_to_use_and_the_status_tells(self):
        self.start()
        self.assertEqual(self.status(), {"connected": False, "mapping": None, "layer": "Normal", "mode": "circular"})
        self.assertEqual(self.ask("--use", "Mix"), (0, "", ""))
        self.assertEqual(self.status()["mapping"], "Mix")
        self.assertEqual(self.ask("--use", "Everyday desktop"), (0, "", ""))
        self.assertEqual(self.ask("--status"), (
            0, "device: not connected\nmapping: Everyday desktop\nlayer: Normal\nknob mode: circular\n", ""))
        self.assertEqual(self.ask("--use", "None such"),
                         (1, "", "veltrix: There is no mapping \u201cNone such\u201d.\n"))
        self.assertEqual(self.status()["mapping"], "Everyday desktop")

    def test_the_device_does_what_the_mapping_says_that_was_asked_for(self):
        link = os.path.join(self.home.path, "device")
        device = Lines([desk.SIMULATOR, "--stdin", "--stay", "--link", link], self.environment, "stdout",
                       stdin=subprocess.PIPE)
        self.addCleanup(device.stop, signal.SIGKILL)
        self.assertTrue(device.wait_for("plugged"))
        self.start("--port", link)
        self.assertTrue(wait_for(lambda: self.status()["connected"], STARTED))
        self.assertEqual(self.ask("--use", "Mix"), (0, "", ""))
        listener = Lines([desk.LISTENER, "--size", "150x150"], self.environment, "stdout", stdin=subprocess.PIPE)
        self.addCleanup(listener.stop, signal.SIGKILL)
        self.assertTrue(listener.wait_for("^ready$"))
        device.process.stdin.write("BP0\nBR0\n")
        device.process.stdin.flush()
        self.assertTrue(listener.wait_for("key 81 up"), listener.texts())

    def test_the_window_comes_to_the_front(self):
        program = self.start()
        self.windows.cover()
        self.assertEqual(self.ask("--show"), (0, "", ""))
        self.assertTrue(wait_for(lambda: self.windows.process(self.windows.shown()[-1]) == program.pid))

    def test_what_only_a_start_can_take_is_refused(self):
        program = self.start()
        # A start needs the display.
        for arguments, names in ((["--port", "/dev/ttyX"], "--port"), (["--input=x11"], "--input"),
                                 (["--input", "x11", "--port=COM3"], "--port, --input")):
            with self.subTest(arguments=arguments):
                self.assertEqual(self.ask(*arguments, DISPLAY=self.server.name), (
                    2, "", f"veltrix: Veltrix is running already and cannot take {names}: quit it first.\n"))
        code, _, errors = self.ask("--nonsense", DISPLAY=self.server.name)
        self.assertEqual(code, 2)
        self.assertIn("nonsense", errors)
        self.assertIsNone(program.process.poll())

    def test_a_second_start_can_ask_for_every_event(self):
        program = self.start()
        self.assertEqual(self.ask("--verbose", DISPLAY=self.server.name), (0, "", ""))
        self.assertTrue(program.wait_for("remote control: verbose"))
        self.ask("--use", "Other")
        self.assertEqual(self.ask("--verbose", DISPLAY=self.server.name), (0, "", ""))

    def test_that_no_answer_comes_holds_no_second_start_up(self):
        program = self.start()
        program.process.send_signal(signal.SIGSTOP)
        self.addCleanup(program.process.send_signal, signal.SIGCONT)
        began = time.monotonic()
        code, output, _ = self.ask("--verbose", DISPLAY=self.server.name)
        self.assertEqual((code, output), (0, ""))
        self.assertLess(time.monotonic() - began, 10)

    def test_the_answers_are_in_the_users_language(self):
        self.assertEqual(self.ask("--show", LC_ALL="de_DE.UTF-8", LANGUAGE="de"),
                         (3, "", "veltrix: Veltrix l\u00e4uft nicht.\n"))

    def test_noise_at_its_socket_does_not_stop_it(self):
        self.start()
        for noise in (b"", b"\n", b"\xff" * 300000, b"nonsense plain\n", b"use plain\n"):
            with self.subTest(noise=noise[:30]):
                client = socket.socket(socket.AF_UNIX)
                client.settimeout(5)
                client.connect(self.socket)
                try:
                    client.sendall(noise)
                except OSError:
                    pass  # it has heard enough
                client.close()
        self.assertEqual(self.status()["connected"], False)

    def test_a_place_of_somebody_elses_is_not_used(self):
        os.mkdir(os.path.dirname(self.socket))
        os.chmod(os.path.dirname(self.socket), 0o777)
        program = self.start()
        self.assertTrue(program.wait_for("no remote control: .* is open to other users"), program.texts())
        code, output, errors = self.ask("--show")
        self.assertEqual((code, output), (3, ""))
        self.assertIn("is open to other users", errors)

    def test_commands_while_the_program_ends_do_not_hang(self):
        program = self.start()
        program.process.send_signal(signal.SIGTERM)
        began = time.monotonic()
        self.assertIn(self.ask("--status")[0], (0, 1, 3))
        self.assertLess(time.monotonic() - began, 10)
        self.assertEqual(program.process.wait(10), 0)


if __name__ == "__main__":
    unittest.main()
