"""What the tests in the machine have in common: an ordinary user, the program, a device on a pseudo-terminal.

Everything is emulated and slow: waits are for events, with limits that only a fault reaches.
"""
import os
import pty
import pwd
import subprocess
import tty

for name in ("PROGRAM", "SIMULATOR", "LISTENER", "START_SERVER"):
    os.environ.setdefault(name, "/usr/local/veltrix/veltrix" + {"LISTENER": "-listener"}.get(name, ""))

from desk import LISTENER, PROGRAM, Home, Lines, wait_for  # noqa: E402,F401

PATIENCE = 60.0
QUIET = 3.0  # what would arrive has arrived by then
OUT = "/out"
UINPUT = "/dev/uinput"
USER = pwd.getpwnam("user")


def as_user(groups=()):
    """Options for a process that runs as the ordinary user."""
    return {"user": USER.pw_uid, "group": USER.pw_gid, "extra_groups": list(groups), "cwd": USER.pw_dir}


def user_environment(**more):
    return {"PATH": os.environ["PATH"], "HOME": USER.pw_dir, "USER": "user", "LOGNAME": "user", "LANG": "C.UTF-8",
            "JACK_NO_START_SERVER": "1", "JACK_DEFAULT_SERVER": "none", **more}


def give_uinput(allowed=True):
    """What the session manager does when the user's session comes to the front, or another's does."""
    subprocess.run(["setfacl", *(["-m", "u:user:rw"] if allowed else ["-b"]), UINPUT], check=True)


def input_devices():
    """The names of the input devices that the kernel has."""
    with open("/proc/bus/input/devices", encoding="ascii") as file:
        return [line.split('"')[1] for line in file if line.startswith("N: Name=")]


OWN_DEVICES = {"Veltrix keyboard", "Veltrix pointer", "Veltrix pointer jumps"}


def has_own_devices():
    return OWN_DEVICES <= set(input_devices())


def has_no_own_device():
    return not OWN_DEVICES & set(input_devices())


class Device:
    """A control surface at a pseudo-terminal of the user's."""

    def __init__(self):
        self._master, self._slave = pty.openpty()
        tty.setraw(self._slave)
        self.path = os.ttyname(self._slave)
        os.chown(self.path, USER.pw_uid, USER.pw_gid)

    def send(self, *reports):
        os.write(self._master, b"".join(report.encode() + b"\n\r\n" for report in reports))

    def close(self):
        os.close(self._slave)
        os.close(self._master)


class Program(Lines):
    """The program of the ordinary user, with a home of its own."""

    def __init__(self, environment, *arguments, special=None, shortcuts=None, groups=(), runtime=None):
        self.home = Home(special, shortcuts)
        environment = user_environment(**environment)
        self.home.add_to(environment)
        if runtime:
            environment["XDG_RUNTIME_DIR"] = runtime
        subprocess.run(["chown", "-R", "user:user", self.home.path], check=True)
        super().__init__([PROGRAM, *arguments], environment, "stderr", **as_user(groups))

    def end(self):
        """Ends it and keeps what it said."""
        status = self.stop()
        log = os.path.join(OUT, f"program-{self.pid}.log")
        with open(log, "w", encoding="utf-8") as file:
            file.writelines(text + "\n" for text in self.texts())
        self.home.cleanup()
        return status
