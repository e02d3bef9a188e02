"""A Wayland session without a screen: sway under seatd, as the ordinary user, with every input device there is."""
import os
import re
import subprocess

from guest import PATIENCE, USER, Lines, as_user, user_environment, wait_for

CONFIG = """
output HEADLESS-1 resolution 1280x800 position 0 0
output HEADLESS-2 resolution 1280x800 position 1280 0
workspace 1 output HEADLESS-1
workspace 2 output HEADLESS-2
workspace 9 output HEADLESS-1
default_border none
focus_follows_mouse no
focus_on_window_activation none
input * xkb_layout LAYOUT
input type:pointer accel_profile flat
for_window [class=".*"] move container to workspace 9
exec env > $XDG_RUNTIME_DIR/part && mv $XDG_RUNTIME_DIR/part $XDG_RUNTIME_DIR/environment
"""

OWNERS_DEVICES = ("QEMU Virtio Keyboard", "QEMU Virtio Mouse")


class Sway:
    def __init__(self, layout="de"):
        self.runtime = "/run/session"
        subprocess.run(["rm", "-rf", self.runtime], check=True)
        os.mkdir(self.runtime, 0o700)
        os.chown(self.runtime, USER.pw_uid, USER.pw_gid)
        self._config = os.path.join(self.runtime, "config")
        self._start_seatd()
        self.start(layout)

    def _start_seatd(self):
        self._seatd = Lines(["seatd", "-u", "user"], {**os.environ, "SEATD_VTBOUND": "0"}, "stderr")
        assert wait_for(lambda: os.path.exists("/run/seatd.sock"), PATIENCE), self._seatd.texts()

    def start(self, layout):
        with open(self._config, "w", encoding="utf-8") as file:
            file.write(CONFIG.replace("LAYOUT", layout))
        environment = user_environment(
            XDG_RUNTIME_DIR=self.runtime, WLR_BACKENDS="headless,libinput", WLR_HEADLESS_OUTPUTS="2",
            WLR_LIBINPUT_NO_DEVICES="1", WLR_RENDERER="pixman", LIBSEAT_BACKEND="seatd", SEATD_VTBOUND="0",
            XDG_SESSION_TYPE="wayland")
        self._sway = Lines(["sway", "--debug", "--config", self._config], environment, "stderr", **as_user())
        variables = os.path.join(self.runtime, "environment")
        assert wait_for(lambda: os.path.exists(variables), PATIENCE), \
            "sway does not start: " + "\n".join(self._sway.texts()[-20:])
        with open(variables, encoding="utf-8") as file:
            found = dict(line.rstrip("\n").split("=", 1) for line in file if "=" in line)
        self.environment = {name: found[name] for name in
                            ("WAYLAND_DISPLAY", "DISPLAY", "XDG_RUNTIME_DIR", "SWAYSOCK", "XDG_SESSION_TYPE")}
        # Without a screen it takes devices that come, not those that are there: let them come once more.
        subprocess.run(["udevadm", "trigger", "--action=add", "--subsystem-match=input"], check=True)
        assert wait_for(lambda: self.takes(*OWNERS_DEVICES), PATIENCE), "sway takes no input device"

    def message(self, *words):
        """What sway answers: asked again when swaymsg's own three seconds are too few for an emulated machine."""
        def asked():
            result = subprocess.run(["swaymsg", *words], env=user_environment(**self.environment), check=False, text=True,
                                    stdout=subprocess.PIPE, **as_user())
            return result if result.returncode == 0 else None
        result = wait_for(asked, PATIENCE)
        assert result, f"sway does not answer {words}"
        return result.stdout

    def takes(self, *devices):
        """Whether the session reads these input devices."""
        found = self.message("--raw", "-t", "get_inputs")
        return all(f'"name": "{device}"' in found for device in devices)

    def end_compositor(self):
        self._sway.stop()
        with open("/out/sway.log", "a", encoding="utf-8") as file:
            file.writelines(text + "\n" for text in self._sway.texts())
        os.unlink(os.path.join(self.runtime, "environment"))

    def stop(self):
        self.end_compositor()
        self._seatd.stop()


class Client:
    """A program with a native Wayland window that fills one output, and what arrives there."""

    KEY = re.compile(r"key: serial: .* key: (\d+); state: (\d)")
    SYMBOL = re.compile(r"sym: (\S+)")
    MOTION = re.compile(r"\bx, y: (-?[\d.]+), (-?[\d.]+)")
    BUTTON = re.compile(r"button: (\d+) .*state: (\d)")

    def __init__(self, sway, workspace=1):
        sway.message("workspace", str(workspace))
        self.lines = Lines(["stdbuf", "-oL", "wev"], user_environment(**sway.environment), "stdout", **as_user())
        assert self.lines.wait_for(r"wl_keyboard.* enter", PATIENCE), self.lines.texts()
        self._seen = 0

    def events(self):
        """What has arrived since forget(): ("down"|"up", symbol), ("moved", x, y), ("button", pressed)."""
        events, key = [], None
        for text in self.lines.texts()[self._seen:]:
            if found := self.KEY.search(text):
                key = "down" if found[2] == "1" else "up"
            elif key and (found := self.SYMBOL.search(text)):
                events.append((key, found[1]))
                key = None
            elif found := self.MOTION.search(text):
                events.append(("moved", float(found[1]), float(found[2])))
            elif found := self.BUTTON.search(text):
                events.append(("button", found[2] == "1"))
        return events

    def keys(self):
        return [event for event in self.events() if event[0] in ("down", "up")]

    def buttons(self):
        return [event[1] for event in self.events() if event[0] == "button"]

    def places(self):
        return [event[1:] for event in self.events() if event[0] == "moved"]

    def forget(self):
        self._seen = len(self.lines.lines)

    def stop(self):
        with open("/out/wev.log", "a", encoding="utf-8") as file:
            file.writelines(text + "\n" for text in self.lines.texts())
        self.lines.stop()
