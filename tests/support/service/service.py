"""The web service: a site made with deploy/publish and a real nginx, unprivileged and on loopback."""

import os
import socket
import subprocess
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
LINT = os.environ["LINT"]

CONFIGURATION = """
{user}
daemon off;
worker_processes 2;
pid {prefix}/nginx.pid;
error_log {prefix}/error.log;
events {{ worker_connections 4096; }}
http {{
    client_body_temp_path {prefix}/body;
    proxy_temp_path {prefix}/proxy;
    fastcgi_temp_path {prefix}/fastcgi;
    scgi_temp_path {prefix}/scgi;
    uwsgi_temp_path {prefix}/uwsgi;
    include {prefix}/veltrix.conf;
}}
"""


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def _processor_time(process):
    proc = Path(f"/proc/{process}")
    times = (proc / "stat").read_text(encoding="ascii").rpartition(")")[2].split()
    children = (proc / f"task/{process}/children").read_text(encoding="ascii").split()
    return sum(map(int, times[11:13])) / os.sysconf("SC_CLK_TCK") + sum(map(_processor_time, children))


class Service:
    def __init__(self, directory, limits=True):
        self.directory = Path(directory)
        self.site = self.directory / "site"
        self.site.mkdir()
        self.port = free_port()
        self.url = f"http://127.0.0.1:{self.port}"
        self._nginx = None
        self._write_configuration(limits)

    def _write_configuration(self, limits):
        text = (ROOT / "deploy/nginx/veltrix.conf").read_text(encoding="utf-8")
        replacements = {"listen 80;": f"listen 127.0.0.1:{self.port};", "listen [::]:80;": "",
                        "root /srv/veltrix/current;": f"root {self.site}/current;",
                        "root /srv/veltrix;": f"root {self.site};"}
        if not limits:  # all clients of a measurement have one address
            replacements["limit_req zone=veltrix_queries burst=400 nodelay;"] = ""
            replacements["limit_conn veltrix_files 20;"] = ""
        for what, by in replacements.items():
            assert text.count(what) == 1, f"{what} is not there once"
            text = text.replace(what, by)
        (self.directory / "veltrix.conf").write_text(text, encoding="utf-8")
        # Workers of a master that is root would be another user, who may not look into this directory.
        user = "user root;" if os.geteuid() == 0 else ""
        (self.directory / "nginx.conf").write_text(
            CONFIGURATION.format(prefix=self.directory, user=user), encoding="utf-8")

    def start(self):
        self._nginx = subprocess.Popen([ROOT / "scripts/desk.d/start-server", "nginx", self.directory])
        end = time.monotonic() + 10
        while time.monotonic() < end:
            try:
                socket.create_connection(("127.0.0.1", self.port), 1).close()
                return
            except ConnectionRefusedError:
                assert self._nginx.poll() is None, self.errors()
                time.sleep(0.02)
        raise AssertionError("nginx does not answer")

    def errors(self):
        log = self.directory / "error.log"
        return log.read_text(encoding="utf-8", errors="replace") if log.exists() else ""

    def processor_time(self):
        """Seconds that nginx and its workers have used so far."""
        return _processor_time(self._nginx.pid)

    def stop(self):
        if self._nginx:
            self._nginx.terminate()
            self._nginx.wait()
            self._nginx = None

    def publish(self, *arguments):
        return subprocess.run(
            [ROOT / "deploy/publish", "--site", self.site, "--url", self.url, "--lint", LINT, *arguments],
            capture_output=True, text=True, check=False, umask=0o077)


def make_key(path):
    """Makes a private key and returns its public half."""
    result = subprocess.run([ROOT / "deploy/make-key", path], capture_output=True, text=True, check=True)
    return result.stdout.strip().partition("VELTRIX_SIGNING_KEY=")[2]
