"""An X11 session with real input devices: Xorg with libinput, without a screen."""
import os
import subprocess

from guest import LISTENER, OUT, PATIENCE, Lines, user_environment, as_user, wait_for

DISPLAY = ":0"


class Xorg:
    def __init__(self, layout="us"):
        self._process = subprocess.Popen(
            ["Xorg", DISPLAY, "-config", "/project/tests/hardware/guest/xorg.conf", "-noreset", "-nolisten", "tcp", "-ac",
             "-logfile", os.path.join(OUT, "Xorg.log")],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.environment = {"DISPLAY": DISPLAY, "XDG_SESSION_TYPE": "x11"}
        assert wait_for(self._answers, PATIENCE), "Xorg does not start"
        self._call("setxkbmap", layout)

    def _call(self, *command):
        return subprocess.run(command, env=user_environment(**self.environment), text=True, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, **as_user())

    def _answers(self):
        return self._call("xset", "q").returncode == 0

    def takes(self, *devices):
        """Whether the server reads these input devices."""
        found = self._call("xinput", "list", "--name-only").stdout.splitlines()
        return set(devices) <= set(found)

    def listen(self):
        """Another program's window in front; its lines say what arrives."""
        listener = Lines([LISTENER], user_environment(**self.environment), "stdout", stdin=subprocess.PIPE, **as_user())
        assert listener.wait_for("^ready$", PATIENCE), listener.texts()
        return listener

    def stop(self):
        self._process.terminate()
        self._process.wait()
