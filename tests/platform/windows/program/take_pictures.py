"""Takes the pictures of the guide's chapter on Windows anew: the real program under Wine, in the environment that
scripts/windows gives its tests. Usage: take_pictures.py FOLDER"""

import os
import subprocess
import sys
import time
from pathlib import Path

import wine
from wine import Device, Display, Program

# Wine's DirectWrite loses the program's fonts; its variables of the toolkit are named so.
os.environ["WINEQT_QPA_PLATFORM"] = "windows:nodirectwrite"
DPI = (r"HKCU\Control Panel\Desktop", "LogPixels")


def take(folder, name, percent, screen):
    """The device's page at this scale."""
    wine.stop_everything()
    display = Display(screen)
    wine.set_registry(*DPI, 96 * percent // 100, "REG_DWORD")
    wine.stop_everything()
    (wine.data_folder() / "current.xml").unlink(missing_ok=True)
    device = Device()
    program = Program("--port", device.address)
    place = program.wait_for_window()
    assert program.wait_for(": plugged"), program.texts()
    time.sleep(6)
    wine.picture(name, place)
    subprocess.run(["mv", wine.PICTURES / (name + ".png"), folder], check=True)
    program.stop()
    device.stop()
    wine.stop_everything()
    display.stop()


folder = Path(sys.argv[1]).resolve()
take(folder, "windows-device-page", 100, "1280x1024")
take(folder, "windows-device-page@2x", 200, "2560x2048")
take(folder, "windows-scaled", 125, "1280x1024")
take(folder, "windows-scaled@2x", 250, "2560x2048")
