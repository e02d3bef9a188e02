"""The reference service: what deploy/publish refuses, what it puts in place, and how nginx serves it."""

import email.utils
import http.client
import json
import os
import subprocess
import tempfile
import threading
import unittest
from pathlib import Path

from service import ROOT, Service, make_key

CLIENT = os.environ["CLIENT"]
LIBRARY = ROOT / "resources/mappings/ZR.xml"
UPDATE_QUERY = "/api/?call=zrversion"
LIBRARY_QUERY = "/api/?call=zrsettingsversion"


class ServiceTest(unittest.TestCase):
    def setUp(self):
        self.directory = tempfile.TemporaryDirectory()
        self.addCleanup(self.directory.cleanup)
        self.path = Path(self.directory.name)
        self.path.chmod(0o755)
        self.service = Service(self.path)
        self.service.start()
        self.addCleanup(self.service.stop)
        self.installer = self.file("installer", b"#!/bin/sh\nexit 0\n")

    def file(self, name, content):
        path = self.path / name
        path.write_bytes(content)
        return path

    def get(self, target, method="GET", **headers):
        connection = http.client.HTTPConnection("127.0.0.1", self.service.port, timeout=10)
        connection.request(method, target, headers=headers)
        response = connection.getresponse()
        response.body = response.read()
        connection.close()
        return response

    def answer(self, target):
        response = self.get(target)
        self.assertEqual(response.status, 200)
        return json.loads(response.body)

    def publish(self, *arguments):
        result = self.service.publish(*arguments)
        self.assertEqual(result.returncode, 0, result.stderr)

    def publish_version(self, version, *arguments):
        self.publish("--version", version, "--priority", "LOW", "--installer", self.installer, *arguments)

    def publish_library(self, version, *arguments):
        self.publish("--library", LIBRARY, "--library-version", version, *arguments)

    def assert_refused(self, reason, *arguments):
        result = self.service.publish(*arguments)
        self.assertEqual(result.returncode, 1)
        self.assertRegex(result.stderr, reason)


class Answers(ServiceTest):
    def test_the_query_item_chooses_the_answer(self):
        self.publish_version("1.11")
        self.publish_library("3")
        update = self.answer(UPDATE_QUERY)
        self.assertEqual((update["UPDATE_VERSION"], update["UPDATE_PRIORITY"]), ("1.11", "LOW"))
        self.assertEqual(set(update), {"UPDATE_VERSION", "UPDATE_PRIORITY", "UPDATE_URL"})
        self.assertEqual(set(self.answer(LIBRARY_QUERY)), {"ZR_VERSION", "ZR_URL"})
        self.assertEqual(self.answer("/api/?x=y&call=zrversion"), update)

    def test_other_queries_have_no_answer(self):
        self.publish_version("1.11")
        for target in ("/api/", "/api/?call=", "/api/?call=other", "/api/?call=../api/zrversion.json", "/", "/x",
                       "/api/zrversion.json", "/releases/1/api/zrversion.json", "/.lock", "/files/",
                       "/files/../.lock", LIBRARY_QUERY, "/linux/api/?call=zrversion"):
            self.assertIn(self.get(target).status, (400, 403, 404), target)
        self.assertEqual(self.get(UPDATE_QUERY, "POST").status, 403)

    def test_each_system_has_its_own_installer_and_the_same_library(self):
        other = self.file("other.exe", b"MZ")
        self.publish("--version", "2", "--priority", "MAN", "--installer", f"linux={self.installer}",
                     "--installer", f"windows={other}")
        self.publish_library("3")
        for system, file in (("linux", self.installer), ("windows", other)):
            update = self.answer(f"/{system}/api/?call=zrversion")
            content = self.get(update["UPDATE_URL"][len(self.service.url):]).body
            self.assertEqual(content, file.read_bytes())
            self.assertEqual(self.answer(f"/{system}/api/?call=zrsettingsversion"), self.answer(LIBRARY_QUERY))

    def test_answers_are_kept_for_minutes_and_files_for_ever(self):
        self.publish_version("1.11")
        response = self.get(UPDATE_QUERY)
        self.assertEqual(response.headers["Content-Type"], "application/json")
        self.assertEqual(response.headers["Cache-Control"], "public, max-age=300")
        self.assertEqual(int(response.headers["Content-Length"]), len(response.body))
        self.assertTrue(email.utils.parsedate_to_datetime(response.headers["Last-Modified"]))
        target = json.loads(response.body)["UPDATE_URL"][len(self.service.url):]
        file = self.get(target)
        self.assertEqual(file.body, self.installer.read_bytes())
        self.assertEqual(file.headers["Cache-Control"], "public, max-age=31536000, immutable")
        self.assertEqual(int(file.headers["Content-Length"]), len(file.body))
        for first, where in ((response, UPDATE_QUERY), (file, target)):
            again = self.get(where, **{"If-None-Match": first.headers["ETag"]})
            self.assertEqual((again.status, again.body), (304, b""))
            again = self.get(where, **{"If-Modified-Since": first.headers["Last-Modified"]})
            self.assertEqual(again.status, 304)
        part = self.get(target, Range="bytes=2-5")
        self.assertEqual((part.status, part.body), (206, self.installer.read_bytes()[2:6]))

    def test_one_address_cannot_ask_without_end(self):
        self.publish_version("1.11")
        statuses = [self.get(UPDATE_QUERY).status for _ in range(800)]
        self.assertEqual(set(statuses[:400]), {200})
        self.assertIn(429, statuses)

    def test_switching_is_never_seen(self):
        self.publish_version("1.11")
        seen, problems, end = set(), [], threading.Event()

        def ask():
            while not end.is_set():
                try:
                    answer = self.answer(UPDATE_QUERY)
                    seen.add(answer["UPDATE_VERSION"])
                    if self.get(answer["UPDATE_URL"][len(self.service.url):]).status != 200:
                        problems.append(answer)
                except Exception as problem:  # noqa: BLE001
                    problems.append(problem)
                end.wait(0.05)

        clients = [threading.Thread(target=ask) for _ in range(2)]
        for client in clients:
            client.start()
        for minor in range(12, 20):
            self.installer.write_bytes(b"#!/bin/sh\nexit %d\n" % minor)
            self.publish_version(f"1.{minor}")
        end.set()
        for client in clients:
            client.join()
        self.assertEqual(problems, [])
        self.assertGreater(len(seen), 1)


class Publishing(ServiceTest):
    def test_what_is_not_given_stays(self):
        self.publish_version("1.11")
        update = self.answer(UPDATE_QUERY)
        self.publish_library("3")
        self.assertEqual(self.answer(UPDATE_QUERY), update)

    def test_rollback(self):
        self.publish_version("1.11")
        self.publish_version("1.12")
        self.publish_version("1.13")
        self.publish("--rollback")
        self.assertEqual(self.answer(UPDATE_QUERY)["UPDATE_VERSION"], "1.12")
        self.publish("--rollback")
        self.assertEqual(self.answer(UPDATE_QUERY)["UPDATE_VERSION"], "1.11")
        self.assert_refused("no such release", "--rollback")
        self.publish("--rollback", "3")
        self.assertEqual(self.answer(UPDATE_QUERY)["UPDATE_VERSION"], "1.13")
        self.assert_refused("no such release", "--rollback", "9")

    def test_a_bad_library_is_refused_and_nothing_changes(self):
        self.publish_library("3")
        for content in (b"", b"<html/>", LIBRARY.read_bytes()[:-100], LIBRARY.read_bytes().replace(b' default="yes"', b"")):
            bad = self.file("bad.xml", content)
            self.assert_refused("bad.xml: ", "--library", bad, "--library-version", "4")
        self.assertEqual(self.answer(LIBRARY_QUERY)["ZR_VERSION"], "3")
        self.assertEqual(len(list((self.service.site / "releases").iterdir())), 1)

    def test_library_versions_must_grow_as_texts(self):
        self.publish_library("9a")
        for version in ("10", "9", "9a", "9A"):
            self.assert_refused("no installation would fetch", "--library", LIBRARY, "--library-version", version)
        self.publish_library("9B")
        self.publish("--rollback")
        self.assert_refused("not greater than 9B", "--library", LIBRARY, "--library-version", "9b")
        self.publish_library("9c")

    def test_what_the_program_would_not_take_is_refused(self):
        update = ("--version", "1.11", "--priority", "LOW", "--installer")
        self.assert_refused("is no installer", *update, self.path / "missing")
        self.assert_refused("is no installer", *update, self.file("empty", b""))
        self.assert_refused("neither a program nor a script", *update, f"linux={self.file('x.zip', b'PK')}")
        self.assert_refused("dotted numbers", "--version", "1.11b", "--priority", "LOW", "--installer", self.installer)
        self.assert_refused("--priority is one of", "--version", "2", "--priority", "low", "--installer", self.installer)
        self.assert_refused("nothing to publish")
        for url in ("https://example.invalid", "http://example.invalid/", "http://a;b", "http://a/https"):
            self.assert_refused("--url", "--url", url, *update, self.installer)
        self.assertFalse((self.service.site / "current").is_symlink())

    def test_everybody_may_read_what_is_published(self):
        self.publish_version("1.11")
        self.publish_library("3")
        for path in (self.path / "site").rglob("*"):
            if path.name != ".lock":
                wanted = 0o755 if path.is_dir() else 0o644
                self.assertEqual(path.stat().st_mode & 0o777, wanted, path)

    def test_nothing_half_done_is_left(self):
        self.publish_version("1.11")
        names = [entry.name for folder in ("", "files", "releases") for entry in (self.service.site / folder).iterdir()]
        self.assertEqual([name for name in names if name.startswith(".") and name != ".lock"], [])


class Signing(ServiceTest):
    def setUp(self):
        super().setUp()
        self.key = self.path / "key"
        self.public = make_key(self.key)

    def client(self, public):
        with tempfile.TemporaryDirectory() as home:
            result = subprocess.run([CLIENT, self.service.url + "/api/", public, home], stdout=subprocess.PIPE,
                                    stderr=subprocess.PIPE, text=True, timeout=30, check=True)
            files = {file.name: file.read_bytes() for file in Path(home).rglob("*") if file.is_file()}
        return set(result.stdout.split("\n")) - {""}, files

    def test_what_is_signed_is_used_with_its_key_and_with_none_other(self):
        self.publish_version("1.11", "--key", self.key)
        self.publish_library("3", "--key", self.key)
        ends, files = self.client(self.public)
        self.assertEqual(ends, {"installer: fetched", "library: fetched"})
        self.assertEqual(files["ZR.xml"], LIBRARY.read_bytes())
        self.assertEqual(files["installer"], self.installer.read_bytes())
        ends, files = self.client(make_key(self.path / "other"))
        self.assertEqual(ends, {"installer: refused", "library: refused"})
        self.assertEqual(set(files), {"settings.ini"})

    def test_what_is_signed_is_of_its_kind_and_version(self):
        self.publish_version("1.11", "--key", self.key)
        self.publish_library("3", "--key", self.key)
        for file in (self.service.site / "releases").rglob("*.json"):
            answer = json.loads(file.read_text())
            for member in ("UPDATE_VERSION", "ZR_VERSION"):
                if member in answer:
                    answer[member] += ".1"
            file.write_text(json.dumps(answer))
        self.assertEqual(self.client(self.public)[0], {"installer: refused", "library: refused"})

    def test_what_is_not_signed_is_refused_by_a_program_with_a_key(self):
        self.publish_version("1.11")
        self.publish_library("3")
        self.assertEqual(self.client(self.public)[0], {"installer: refused", "library: refused"})
        self.assertEqual(self.client("")[0], {"installer: fetched", "library: fetched"})

    def test_what_was_changed_on_the_server_is_refused(self):
        self.publish_version("1.11", "--key", self.key)
        self.publish_library("3", "--key", self.key)
        for file in (self.service.site / "files").iterdir():
            content = bytearray(file.read_bytes())
            content[-2] ^= 1
            file.write_bytes(content)
        self.assertEqual(self.client(self.public)[0], {"installer: refused", "library: refused"})

    def test_a_signed_site_stays_signed(self):
        self.publish_version("1.11", "--key", self.key)
        self.assert_refused("is signed", "--library", LIBRARY, "--library-version", "3")

    def test_a_key_is_private_and_never_written_over(self):
        self.assertEqual(self.key.stat().st_mode & 0o777, 0o600)
        before = self.key.read_bytes()
        with self.assertRaises(subprocess.CalledProcessError):
            make_key(self.key)
        self.assertEqual(self.key.read_bytes(), before)

    def test_what_is_no_key_is_refused(self):
        self.assert_refused("could not be signed", "--version", "2", "--priority", "LOW", "--installer",
                            self.installer, "--key", self.installer)
        self.assertFalse((self.service.site / "current").is_symlink())


if __name__ == "__main__":
    unittest.main()
