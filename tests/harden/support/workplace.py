"""The desk of tests/e2e with everything on it at once: X server, JACK server, listeners, virtual device, program."""

import contextlib
import os
import signal
import subprocess
import tempfile
import time

from campaign import Broken
from desk import LISTENER, PROGRAM, SIMULATOR, Home, Lines, XServer, children_of, is_alive, plain_environment, wait_for
from sight import Sight

JACK_KEEPER = os.environ["JACK_KEEPER"]
STARTED = 30   # s: patience with a start on a busy machine
RELEASED = 60  # s: patience with the release process, which looks for a MIDI server for thirty
NOTICED = 3.0  # s: patience with what should take half a second


class JackServer:
    """The tests' own; another test may have to end first."""

    def __init__(self):
        self._keeper = Lines([JACK_KEEPER], plain_environment(), "stdout", stdin=subprocess.PIPE)
        wait_for(lambda: self._keeper.lines or self._keeper.process.poll() is not None, 300)
        ready = self._keeper.wait_for("^ready ", 1)
        if not ready:
            self._keeper.stop()
            raise Broken("no JACK server")
        self.environment = {"JACK_DEFAULT_SERVER": ready[1].split()[1], "JACK_NO_START_SERVER": "1"}
        self.pid = children_of(self._keeper.pid)[0]

    def signal(self, number):
        with contextlib.suppress(ProcessLookupError):
            os.kill(self.pid, number)

    def stop(self):
        self.signal(signal.SIGCONT)
        self._keeper.process.stdin.close()
        with contextlib.suppress(subprocess.TimeoutExpired):
            self._keeper.process.wait(60)
        self._keeper.stop()


class Device:
    """The virtual device."""

    def __init__(self, link, environment):
        self._lines = Lines([SIMULATOR, "--stdin", "--link", link], environment, "stdout", stdin=subprocess.PIPE)
        self.link = link

    def send(self, *lines):
        self._lines.process.stdin.write("".join(line + "\n" for line in lines))
        self._lines.process.stdin.flush()

    def wait_opened(self, since=0, timeout=STARTED):
        if not self._lines.wait_for("^opened$", timeout, since):
            raise Broken("the device was not opened")

    def replug(self):
        since = len(self._lines.lines)
        self.send("unplug", "wait 700", "plug")
        self.wait_opened(since, STARTED)

    def stop(self, number=signal.SIGTERM):
        self._lines.stop(number)


class Workplace:
    """One user's desk. Everything ends with close(); what is started twice replaces the first."""

    def __init__(self, files=None, midi=False, server_options=()):
        """`files`: the mapping files by name; without any, Home's."""
        self._stack = contextlib.ExitStack()
        picture = self._stack.enter_context(tempfile.TemporaryDirectory())
        self.server = XServer(options=("-fbdir", picture, *server_options))
        self._stack.callback(self.server.stop)
        self.sight = Sight(self.server, os.path.join(picture, "Xvfb_screen0"))
        self.home = Home()
        self._stack.callback(self.home.cleanup)
        for name, text in (files or {}).items():
            with open(os.path.join(self.home.data, name), "w", encoding="utf-8") as file:
                file.write(text)
        self.environment = plain_environment()
        self.environment["DISPLAY"] = self.server.name
        self.home.add_to(self.environment)
        self.jack = self.midi = self.listener = self.device = self.program = None
        if midi:
            self.start_jack()
        self._stack.callback(self._end_programs)  # before its server: what is owed would reach the next one

    def start_jack(self):
        self.jack = JackServer()
        self._stack.callback(lambda: self.jack and self.jack.stop())
        self.environment.update(self.jack.environment)
        self.midi = self.listen("--midi-only")

    def restart_jack(self):
        self.midi.stop(signal.SIGKILL)
        self.jack.stop()
        self.jack = JackServer()
        self.midi = self.listen("--midi-only")

    def listen(self, *arguments):
        """Another program: a window, or what MIDI brings."""
        listener = Lines([LISTENER, *arguments], self.environment, "stdout", stdin=subprocess.PIPE)
        if not listener.wait_for("^ready$", STARTED):
            listener.stop(signal.SIGKILL)
            raise Broken("the listener does not start")
        return listener

    def take_focus(self):
        """Another program's window comes to the front, in the corner."""
        if self.listener:
            self.listener.stop()
        self.listener = self.listen("--size", "150x150")
        return self.listener

    def plug_in(self):
        self.device = Device(os.path.join(self.home.path, "device"), self.environment)

    def start(self, *arguments, **more_environment):
        self.program = Lines([PROGRAM, "--port", os.path.join(self.home.path, "device"), *arguments],
                             {**self.environment, **more_environment}, "stderr")
        if not self.program.wait_for("input goes through X11", STARTED):
            raise Broken(f"the program does not start: {self.program.texts()[-5:]}")
        return self.program

    def start_with_device(self, **more_environment):
        self.plug_in()
        self.start(**more_environment)
        self.device.wait_opened()
        if not self.program.wait_for(": plugged$", STARTED):
            raise Broken(f"the device is not used: {self.program.texts()[-5:]}")

    def end(self, number=signal.SIGTERM):
        """Ends the program, and waits until its release process is gone, too. Returns the status; last_end has the
        seconds that the program itself took."""
        helpers = children_of(self.program.pid) if is_alive(self.program.pid) else []
        begun = time.monotonic()
        status = self.program.stop(number)
        self.last_end = time.monotonic() - begun
        if not wait_for(lambda: not any(map(is_alive, helpers)), RELEASED):
            raise Broken(f"{helpers} outlive the program")
        self.program = None
        return status

    def check_nothing_held(self, timeout=NOTICED):
        if not wait_for(lambda: not self.server.keys_held() and not self.server.buttons_held(), timeout):
            raise Broken(f"held: keys {self.server.keys_held()}, buttons {self.server.buttons_held()}")

    def check_pointer_visible(self):
        if not wait_for(self.sight.pointer_is_visible, NOTICED):
            raise Broken("the pointer is not visible")

    def use(self, name):
        """Another mapping, as a script of the user's would choose it."""
        return subprocess.run([PROGRAM, "--use", name], env=self.environment, timeout=STARTED, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL).returncode

    def _end_programs(self):
        helpers = children_of(self.program.pid) if self.program and is_alive(self.program.pid) else []
        for each, number in ((self.program, signal.SIGKILL), (self.device, signal.SIGTERM),
                             (self.listener, signal.SIGTERM), (self.midi, signal.SIGTERM)):
            if each:
                each.stop(number)
        wait_for(lambda: not any(map(is_alive, helpers)), RELEASED)

    def close(self):
        self._stack.close()
