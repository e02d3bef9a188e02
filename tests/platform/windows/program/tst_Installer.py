"""The installer, the portable zip and the uninstaller, with the program that they carry."""

import os
import re
import shutil
import subprocess
import tempfile
import time
import unittest
import zipfile
from pathlib import Path

import wine
from wine import DRIVE, STAGE, Program, registry, run, wait_for

PACKAGES = Path(os.environ["PACKAGES"])
MAKE = Path(__file__).resolve().parents[4] / "packaging/windows/make-package"
FOLDER = DRIVE / "Program Files" / "Veltrix"
UNINSTALL = r"HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Veltrix"


def files(folder):
    return {str(path.relative_to(folder)): path.read_bytes() for path in folder.rglob("*") if path.is_file()}


def links():
    return [str(path) for path in DRIVE.rglob("Veltrix.lnk")]


def make(stage, version, output, environment=None):
    without = [] if (STAGE / "Qt5SerialPort.dll").exists() else ["--without-serial-ports"]
    return subprocess.run([MAKE, *without, stage, version, output], capture_output=True, text=True, check=False,
                          env={**os.environ, **(environment or {})})


def uninstall(*arguments):
    """The uninstaller goes on in a copy of itself."""
    done = run(FOLDER / "uninstall.exe", "/S", *arguments)
    wait_for(lambda: not wine.desk("processes", "Un.exe").stdout and not wine.desk("processes", "Un_A.exe").stdout, 60)
    wait_for(lambda: registry(UNINSTALL, "DisplayName") is None, 30)
    time.sleep(1)
    return done.returncode


class Packages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.setup = next(PACKAGES.glob("*-setup*.exe"))
        cls.directory = tempfile.TemporaryDirectory()
        cls.path = Path(cls.directory.name)

    @classmethod
    def tearDownClass(cls):
        cls.directory.cleanup()

    def tearDown(self):
        run("taskkill", "/f", "/im", "veltrix.exe")

    def test_1_the_same_files_give_the_same_bytes(self):
        done = make(STAGE, "1.10", self.path / "again")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(files(self.path / "again"), files(PACKAGES))

    def test_1_the_zip_holds_the_folder(self):
        with zipfile.ZipFile(next(PACKAGES.glob("*.zip"))) as archive:
            archive.extractall(self.path / "zip")
        self.assertEqual(files(next((self.path / "zip").iterdir())), files(STAGE))

    def test_1_what_does_not_start_is_not_packed(self):
        broken = self.path / "broken"
        shutil.copytree(STAGE, broken)
        shutil.rmtree(broken / "platforms")
        done = make(broken, "1.10", self.path / "none")
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("start-once", done.stderr)
        self.assertEqual(files(self.path / "none"), {})
        run("taskkill", "/f", "/im", "veltrix.exe")

    def test_1_a_build_without_serial_ports_is_packed_only_when_asked_for(self):
        if (STAGE / "Qt5SerialPort.dll").exists():
            self.skipTest("this one has them")
        done = subprocess.run([MAKE, STAGE, "1.10", self.path / "refused"], capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 1)
        self.assertIn("VELTRIX_SERIAL_PORT=OFF", done.stderr)
        self.assertTrue(all("virtual-device-only" in name for name in files(PACKAGES)), files(PACKAGES).keys())

    def test_1_packages_are_made_outside_of_a_repository(self):
        elsewhere = self.path / "elsewhere"
        for folder in ("packaging/windows", "resources/icons/app"):
            shutil.copytree(MAKE.parents[2] / folder, elsewhere / folder)
        environment = {name: value for name, value in os.environ.items() if name != "SOURCE_DATE_EPOCH"}
        without = [] if (STAGE / "Qt5SerialPort.dll").exists() else ["--without-serial-ports"]
        done = subprocess.run([elsewhere / "packaging/windows/make-package", *without, STAGE, "1.10", self.path / "out"],
                              capture_output=True, text=True, check=False, env={**environment, "GIT_DIR": "/nowhere"})
        self.assertEqual(done.returncode, 0, done.stderr)

    def test_1_program_and_installer_are_signed(self):
        key, certificate, both = (self.path / name for name in ("key.pem", "certificate.pem", "both.p12"))
        subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=Veltrix test",
                        "-addext", "extendedKeyUsage=codeSigning", "-keyout", key, "-out", certificate],
                       check=True, capture_output=True)
        subprocess.run(["openssl", "pkcs12", "-export", "-inkey", key, "-in", certificate, "-passout", "pass:secret", "-out", both],
                       check=True)
        (self.path / "password").write_text("secret", encoding="ascii")
        done = make(STAGE, "1.10", self.path / "signed", {"VELTRIX_SIGN_WITH": str(both),
                                                          "VELTRIX_SIGN_PASSWORD_FILE": str(self.path / "password")})
        self.assertEqual(done.returncode, 0, done.stderr)
        with zipfile.ZipFile(next((self.path / "signed").glob("*.zip"))) as archive:
            archive.extractall(self.path / "signed-zip")
        programs = [next((self.path / "signed").glob("*.exe"))]
        programs += (self.path / "signed-zip").rglob("veltrix*.exe")
        self.assertEqual(len(programs), 4)
        for program in programs:
            found = subprocess.run(["osslsigncode", "verify", "-CAfile", certificate, "-in", program],
                                   capture_output=True, text=True, check=False)
            self.assertIn("Signature verification: ok", found.stdout, program)
        unsigned = subprocess.run(["osslsigncode", "verify", "-in", self.setup], capture_output=True, text=True, check=False)
        self.assertIn("No signature found", unsigned.stdout + unsigned.stderr)

    def test_2_install_upgrade_start_uninstall(self):
        # An older version, which had one file more.
        older = self.path / "older"
        shutil.copytree(STAGE, older)
        (older / "leftover.dll").write_text("old", encoding="ascii")
        self.assertEqual(make(older, "1.9", self.path / "first").returncode, 0)
        self.assertEqual(run(next((self.path / "first").glob("*.exe")), "/S").returncode, 0)
        self.assertTrue((FOLDER / "leftover.dll").exists())
        self.assertEqual(registry(UNINSTALL, "DisplayVersion"), "1.9")

        data = wine.data_folder()
        data.mkdir(parents=True, exist_ok=True)
        (data / "custom.xml").write_text("mine", encoding="ascii")
        wine.set_registry(wine.SETTINGS, "Slider.Normal", "80")
        wine.set_registry(*wine.RUN, r"C:\Program Files\Veltrix\veltrix.exe")

        def is_kept():
            return (data / "custom.xml").read_text(encoding="ascii") == "mine" and registry(wine.SETTINGS, "Slider.Normal") == "80"

        # A running program is not replaced.
        program = Program(folder=FOLDER)
        program.wait_for_window()
        self.assertEqual(run(self.setup, "/S").returncode, 2)
        self.assertTrue((FOLDER / "veltrix.exe").exists())
        run("taskkill", "/im", "veltrix.exe")
        self.assertEqual(program.process.wait(20), 0)
        program.stop()

        self.assertEqual(run(self.setup, "/S").returncode, 0)
        installed = files(FOLDER)
        installed.pop("uninstall.exe")
        self.assertEqual(installed, files(STAGE))
        self.assertEqual(registry(UNINSTALL, "DisplayVersion"), "1.10")
        self.assertIsNotNone(registry(*wine.RUN))
        self.assertTrue(links())
        self.assertTrue(is_kept())

        # From the place where it was installed.
        program = Program(folder=FOLDER)
        program.wait_for_window()
        run("taskkill", "/im", "veltrix.exe")
        self.assertEqual(program.process.wait(20), 0)
        program.stop()
        version = run("reg", "query", UNINSTALL, "/v", "DisplayIcon").stdout
        self.assertIn("veltrix.exe", version)

        (FOLDER / "notes.txt").write_text("theirs", encoding="ascii")
        self.assertEqual(uninstall(), 0)
        self.assertEqual([path.name for path in FOLDER.iterdir()], ["notes.txt"])
        self.assertIsNone(registry(*wine.RUN))
        self.assertFalse(links())
        self.assertTrue(is_kept())

        shutil.rmtree(FOLDER)
        self.assertEqual(run(self.setup, "/S").returncode, 0)
        self.assertEqual(uninstall("/REMOVEDATA"), 0)
        self.assertFalse(FOLDER.exists())
        self.assertTrue(wait_for(lambda: not data.parent.exists()))
        self.assertIsNone(registry(wine.SETTINGS, "Slider.Normal"))

    def test_3_the_manifest_is_in_the_program(self):
        content = (STAGE / "veltrix.exe").read_bytes()
        for what in (b"longPathAware", b"PerMonitor", b"8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a", b"asInvoker"):
            self.assertIn(what, content)
        self.assertTrue(re.search("1.10".encode("utf-16-le"), content))


if __name__ == "__main__":
    unittest.main()
