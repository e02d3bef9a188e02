"""The control surface as a USB device: a CDC ACM serial port that is plugged in and pulled out.

The kernel's vhci-hcd driver is a host controller whose ports lead to sockets. This holds the other end of one and speaks
the USB/IP protocol on it; everything above (class driver, udev, the port's file) is the real thing.
"""
import collections
import socket
import struct
import threading

ATTACH = "/sys/devices/platform/vhci_hcd.0/attach"
FULL_SPEED = 2
STALLED, UNLINKED = -32, -104  # -EPIPE, -ECONNRESET
SUBMIT, UNLINK, SUBMIT_ANSWER, UNLINK_ANSWER = 1, 2, 3, 4
TO_HOST, FROM_HOST = 2, 1  # the endpoints for data


def _configuration():
    """One configuration: a control interface with a notification endpoint, and one for data."""
    def interface(number, endpoints, *kind):
        return struct.pack("9B", 9, 4, number, 0, endpoints, *kind, 0)

    def endpoint(address, kind, size, interval):
        return struct.pack("<4BHB", 7, 5, address, kind, size, interval)

    body = (interface(0, 1, 2, 2, 0) + bytes((5, 0x24, 0, 0x10, 1, 5, 0x24, 1, 1, 1, 4, 0x24, 2, 6, 5, 0x24, 6, 0, 1))
            + endpoint(0x83, 3, 16, 64)
            + interface(1, 2, 10, 0, 0) + endpoint(FROM_HOST, 2, 64, 0) + endpoint(0x80 | TO_HOST, 2, 64, 0))
    return struct.pack("<BBHBBBBB", 9, 2, 9 + len(body), 2, 1, 0, 0xA0, 250) + body


class UsbDevice:
    """`serial` and `product` are what the program goes by. `baud` and `is_ready` (DTR) are what it has asked for."""

    def __init__(self, serial, product=0x0001):
        self._description = struct.pack("<BBHBBBBHHHBBBB", 18, 1, 0x200, 2, 0, 0, 64, 0x1209, product, 0x100, 1, 2, 3, 1)
        self._strings = ("Test", "Control surface", serial)
        self._wire = None

    def plug(self):
        self.baud, self.is_ready = None, False
        self._coding = struct.pack("<IBBB", 9600, 0, 0, 8)
        self._reads = collections.deque()  # the host's open requests for data
        self._notifications = []  # those for news of the line, of which there are none
        self._unsent = b""
        self._lock = threading.Lock()
        self._wire, kernel = socket.socketpair()
        with kernel, open(ATTACH, "w", encoding="ascii") as attach:
            attach.write(f"0 {kernel.fileno()} {0x10001} {FULL_SPEED}")
        self._thread = threading.Thread(target=self._serve, daemon=True)
        self._thread.start()

    def unplug(self):
        if self._wire:
            self._wire.shutdown(socket.SHUT_RDWR)
            self._thread.join()
            self._wire.close()
            self._wire = None

    def send(self, *reports):
        with self._lock:
            self._unsent += b"".join(report.encode() + b"\n\r\n" for report in reports)
            self._move()

    def _move(self):
        while self._reads and self._unsent:
            sequence, length = self._reads.popleft()
            data, self._unsent = self._unsent[:min(length, 64)], self._unsent[min(length, 64):]
            self._answer(sequence, 0, data)

    def _answer(self, sequence, status, data=b"", length=None):
        length = len(data) if length is None else length
        self._wire.sendall(struct.pack(">5I3i2i8x", SUBMIT_ANSWER, sequence, 0, 0, 0, status, length, 0, 0, 0) + data)

    def _receive(self, size):
        data = self._wire.recv(size, socket.MSG_WAITALL) if size else b""
        if len(data) < size:
            raise ConnectionResetError
        return data

    def _serve(self):
        try:
            while True:
                head = self._receive(48)
                with self._lock:
                    self._handle(head)
        except OSError:
            pass  # unplugged

    def _handle(self, head):
        command, sequence, _, to_host, endpoint = struct.unpack_from(">5I", head)
        if command == UNLINK:
            target, = struct.unpack_from(">I", head, 20)
            found = [entry for entry in (*self._reads, *self._notifications) if entry[0] == target]
            for entry in found:
                (self._reads if entry in self._reads else self._notifications).remove(entry)
            status = UNLINKED if found else 0
            self._wire.sendall(struct.pack(">5Ii24x", UNLINK_ANSWER, sequence, 0, 0, 0, status))
            return
        length, = struct.unpack_from(">i", head, 24)
        data = b"" if to_host else self._receive(length)
        if endpoint == 0:
            answer = self._control(head[40:48], data)
            if answer is None:
                self._answer(sequence, STALLED)
            elif to_host:
                self._answer(sequence, 0, answer[:length])
            else:
                self._answer(sequence, 0, length=length)
        elif to_host and endpoint == TO_HOST:
            self._reads.append((sequence, length))
            self._move()
        elif to_host:
            self._notifications.append((sequence, length))
        else:
            self._answer(sequence, 0, length=length)  # what the program writes is of no interest

    def _control(self, setup, data):
        """The answer to a control request; None for one that is not known."""
        kind, request, value, _, length = struct.unpack("<BBHHH", setup)
        if kind & 0x60 == 0x20:
            if request == 0x20:
                self._coding = data
                self.baud, = struct.unpack_from("<I", data)
            elif request == 0x21:
                return self._coding
            elif request == 0x22:
                self.is_ready = bool(value & 1)
            return b""
        if request == 6:
            return self._descriptor(value >> 8, value & 0xFF)
        answers = {0: b"\0\0", 8: b"\1", 10: b"\0", 1: b"", 3: b"", 9: b"", 11: b""}
        return answers.get(request)

    def _descriptor(self, kind, number):
        if kind == 1:
            return self._description
        if kind == 2:
            return _configuration()
        if kind == 3 and number <= len(self._strings):
            text = self._strings[number - 1].encode("utf-16le") if number else b"\x09\x04"
            return bytes((2 + len(text), 3)) + text
        return None
