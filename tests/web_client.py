"""HTTP and WebSocket over one socket, for both sides of the remote control: its page and a browser's debugging port."""

import base64
import json
import os
import re
import select
import socket
import struct
import time


class Connection:
    """Calls `serve` while it waits: the other side may live in the same thread, or need the application."""

    def __init__(self, serve, port):
        self.serve = serve
        self.socket = socket.create_connection(("127.0.0.1", port))
        self.data = b""

    def wait(self, enough, seconds=5):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            if enough(self.data):
                return True
            self.serve()
            if select.select([self.socket], [], [], 0.001)[0]:
                got = self.socket.recv(65536)
                if not got:
                    return False
                self.data += got
        return False

    def get(self, path):
        self.socket.sendall(f"GET {path} HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n".encode())
        assert self.wait(self.whole_answer)
        head, _, body = self.data.partition(b"\r\n\r\n")
        return int(head.split()[1]), body.decode()

    @staticmethod
    def whole_answer(data):
        head, _, body = data.partition(b"\r\n\r\n")
        length = re.search(rb"(?i)content-length: *(\d+)", head)
        return length and len(body) >= int(length[1])

    def close(self):
        self.socket.close()


class WebSocket(Connection):
    """Messages are JSON objects, or the bytes of pictures."""

    def __init__(self, serve, port, path):
        super().__init__(serve, port)
        key = base64.b64encode(os.urandom(16)).decode()
        self.socket.sendall(
            (
                f"GET {path} HTTP/1.1\r\nHost: localhost\r\nUpgrade: websocket\r\n"
                f"Connection: Upgrade\r\nSec-WebSocket-Key: {key}\r\nSec-WebSocket-Version: 13\r\n\r\n"
            ).encode()
        )
        self.open = self.wait(lambda data: b"\r\n\r\n" in data) and b" 101 " in self.data.split(b"\r\n")[0]
        self.data = self.data.partition(b"\r\n\r\n")[2]

    def send(self, **message):
        text = json.dumps(message).encode()
        mask = os.urandom(4)
        length = bytes([0x80 | len(text)]) if len(text) < 126 else bytes([0x80 | 126]) + struct.pack(">H", len(text))
        self.socket.sendall(b"\x81" + length + mask + bytes(b ^ mask[i % 4] for i, b in enumerate(text)))

    def receive(self, wanted=lambda message: True, seconds=5):
        """The next message (a dict, or the bytes of a picture) that is wanted; None when none comes in time."""
        end = time.monotonic() + seconds
        while self.wait(lambda data: self.frame(data) is not None, end - time.monotonic()):
            kind, payload, rest = self.frame(self.data)
            self.data = rest
            message = json.loads(payload) if kind == 1 else payload
            if wanted(message):
                return message
        return None

    @staticmethod
    def frame(data):
        if len(data) < 2:
            return None
        size, at = data[1] & 127, 2
        if size >= 126:
            width = 2 if size == 126 else 8
            if len(data) < 2 + width:
                return None
            size, at = int.from_bytes(data[2 : 2 + width], "big"), 2 + width
        return (data[0] & 15, data[at : at + size], data[at + size :]) if len(data) >= at + size else None


def open_page(app, port, token):
    """The remote page of the application, as a browser would open it."""
    return WebSocket(app.updateRemoteDebugger, port, f"/control?token={token}")
