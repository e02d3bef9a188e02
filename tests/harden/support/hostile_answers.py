"""A web service that answers as nobody sound would: every answer is bytes on a connection, and when they come."""

import contextlib
import gzip
import json
import select
import socket
import threading

MIB = 1024 * 1024
MOST_SENT = 64 * MIB  # of an answer without an end: more than the program may take
ROLES = ("version query", "library query", "library download", "installer download")


class Answer:
    """`pieces(body, numbers, service)` yields bytes, or the seconds to wait."""

    def __init__(self, name, pieces, closes=True):
        self.name, self.pieces, self.closes = name, pieces, closes


def head(*lines, status="200 OK", version="HTTP/1.1"):
    return "\r\n".join([f"{version} {status}", *lines, "", ""]).encode("latin-1")


def _fixed(name, make, **options):
    return Answer(name, lambda body, numbers, service: [make(body)], **options)


def _endless(name, begin, piece, **options):
    def pieces(body, numbers, service):
        yield begin
        for _ in range(MOST_SENT // len(piece)):
            yield piece
    return Answer(name, pieces, **options)


def _drip(name, content):
    def pieces(body, numbers, service):
        for byte in content(body):
            yield bytes([byte])
            yield 0.05
    return Answer(name, pieces, closes=False)


def _redirect(name, status, target):
    return Answer(name, lambda body, numbers, service: [
        head(f"Location: {target(service)}", "Content-Length: 0", status=status)])


def length(body):
    return f"Content-Length: {len(body)}"


def whole(body, *lines):
    return head(length(body), *lines) + body


def chunk(piece):
    return f"{len(piece):x}\r\n".encode() + piece + b"\r\n"


def _random(body, numbers, service):
    yield numbers.randbytes(64 * 1024)


def _random_body(body, numbers, service):
    noise = numbers.randbytes(30_000)
    yield whole(noise)


CHUNKED = head("Transfer-Encoding: chunked")
BOMB = gzip.compress(bytes(256 * MIB))  # compressed a thousandfold

ANSWERS = [
    Answer("silence", lambda *_: [], closes=False),
    Answer("closed at once", lambda *_: []),
    Answer("random bytes", _random),
    Answer("a body of random bytes", _random_body),
    _drip("a head byte by byte", lambda body: whole(body)),
    _drip("a body byte by byte", lambda body: whole(body * 100)),
    _endless("an endless status line", b"HTTP/1.1 200 ", b"O" * 65536),
    _endless("endless headers", b"HTTP/1.1 200 OK\r\n", b"X-A: b\r\n" * 8192),
    _endless("one endless header", b"HTTP/1.1 200 OK\r\nX-A: ", b"b" * 65536),
    _endless("endless interim answers", b"", b"HTTP/1.1 100 Continue\r\n\r\n" * 2048),
    _endless("an endless body", head(), b"x" * 65536),
    _endless("an endless body of blanks", head("Content-Length: 999999999999"), b" " * 65536),
    _endless("endless chunks", CHUNKED, chunk(b"x" * 65536)),
    _endless("endless chunks of a byte", CHUNKED, chunk(b"x") * 8192),
    _endless("an endless chunk extension", CHUNKED + b"5;", b"a" * 65536),
    _endless("endless trailers", CHUNKED + b"0\r\n", b"X-A: b\r\n" * 8192),
    _fixed("cut in the head", lambda body: whole(body)[:20]),
    _fixed("cut in the body", lambda body: whole(body)[:-5]),
    _fixed("cut in a chunk", lambda body: CHUNKED + chunk(body)[:-5]),
    _fixed("a length too long", lambda body: head(f"Content-Length: {len(body) + 100}") + body),
    _fixed("a length too short", lambda body: head(f"Content-Length: {len(body) - 5}") + body),
    _fixed("two lengths", lambda body: head(length(body), "Content-Length: 5") + body),
    _fixed("a length below zero", lambda body: head("Content-Length: -1") + body),
    _fixed("a length beyond all numbers", lambda body: head("Content-Length: 99999999999999999999999") + body),
    _fixed("a length and chunks", lambda body: head(length(body), "Transfer-Encoding: chunked") + chunk(body) + b"0\r\n\r\n"),
    _fixed("a chunk beyond all numbers", lambda body: CHUNKED + b"fffffffffffffffff\r\n" + body),
    _fixed("compressed a thousandfold", lambda body: whole(BOMB, "Content-Encoding: gzip")),
    _fixed("compressed", lambda body: whole(gzip.compress(body), "Content-Encoding: gzip")),
    _redirect("a redirect to a file", "302 Found", lambda service: "file://" + service.canary),
    _redirect("a redirect elsewhere", "301 Moved Permanently", lambda service: service.url + "elsewhere"),
    _redirect("a redirect in a circle", "307 Temporary Redirect", lambda service: service.url),
    _fixed("TLS on the plain port", lambda body: b"\x15\x03\x01\x00\x02\x02\x46\x16\x03\x03\x00\x7a\x02\x00\x00\x76" * 50),
    _fixed("a failure with the body of a success", lambda body: head(length(body), status="500 Oh") + body),
    _fixed("an old protocol", lambda body: head(status="200 OK", version="HTTP/0.9") + body),
    _fixed("another protocol", lambda body: b"220 ready\r\n" * 1000),
]


class HostileService:
    """Answers what the role asks for with the answer, and all else as it should be."""

    def __init__(self, role, answer, numbers):
        self.role, self.answer, self.numbers = role, answer, numbers
        self.asked = False      # whether the program has come for the answer
        self.elsewhere = False  # whether it has gone where a redirect points
        self.canary = "/etc/hostname"
        self._listener = socket.create_server(("127.0.0.1", 0))
        self.url = f"http://127.0.0.1:{self._listener.getsockname()[1]}/api/"
        self._stop = threading.Event()
        self._threads = []

    def __enter__(self):
        self._begin(self._accept)
        return self

    def __exit__(self, *_):
        self._stop.set()
        self._listener.close()
        for thread in list(self._threads):
            thread.join(10)

    def _begin(self, *call):
        thread = threading.Thread(target=call[0], args=call[1:])
        self._threads.append(thread)
        thread.start()

    def _accept(self):
        while not self._stop.is_set():
            if select.select([self._listener], [], [], 0.1)[0]:
                with contextlib.suppress(OSError):
                    self._begin(self._serve, self._listener.accept()[0])

    def _serve(self, connection):
        with connection, contextlib.suppress(OSError):
            connection.settimeout(0.2)
            request = b""
            while b"\r\n\r\n" not in request and not self._stop.is_set():
                with contextlib.suppress(TimeoutError):
                    piece = connection.recv(4096)
                    if not piece:
                        return
                    request += piece
            target = request.split(b" ")[1].decode("latin-1")
            role, body = self._body_for(target)
            if role != self.role:
                self._send(connection, whole(body))
                return
            self.asked = True
            for piece in self.answer.pieces(body, self.numbers, self):
                if isinstance(piece, float):
                    if self._stop.wait(piece):
                        return
                else:
                    self._send(connection, piece)
            while not self.answer.closes and not self._stop.wait(0.1):
                pass

    def _send(self, connection, data):
        while data and not self._stop.is_set():
            with contextlib.suppress(TimeoutError):
                data = data[connection.send(data):]

    def _body_for(self, target):
        """What is asked for, and how a sound service would answer."""
        self.elsewhere = self.elsewhere or "elsewhere" in target
        if "zrversion" in target:
            # Mandatory, as nobody is there to be asked; its downloads are never whole.
            priority = "MAN" if self.role == "installer download" else "LOW"
            return "version query", json.dumps({"UPDATE_VERSION": "9.9", "UPDATE_PRIORITY": priority,
                                                "UPDATE_URL": self.url + "installer"}).encode()
        if "zrsettingsversion" in target:
            return "library query", json.dumps({"ZR_VERSION": "9", "ZR_URL": self.url + "library"}).encode()
        if "library" in target:
            return "library download", (b'<?xml version="1.0" encoding="UTF-8"?><ZR><MAPPING software="Newer"/>' +
                                        b"<!-- room -->" * 20 + b"</ZR>")
        return "installer download", b"#!/bin/sh\nexit 0\n"
