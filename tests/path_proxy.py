"""A proxy that gives a server a path, as those of notebooks and clusters do."""

import contextlib
import socket
import threading


def pump(source, sink):
    with contextlib.suppress(OSError):
        while data := source.recv(65536):
            sink.sendall(data)
    for end in (source, sink):
        with contextlib.suppress(OSError):
            end.shutdown(socket.SHUT_RDWR)


class PathProxy:
    """What is asked for below `path` comes from the server at `port`; for anything else there is no answer."""

    def __init__(self, port, path):
        self.target, self.path = port, path.encode()
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self.accept, daemon=True).start()

    def accept(self):
        with contextlib.suppress(OSError):
            while True:
                client, _ = self.listener.accept()
                threading.Thread(target=self.follow, args=(client,), daemon=True).start()

    def follow(self, client):
        head = b""
        while b"\r\n\r\n" not in head:
            data = client.recv(65536)
            if not data:
                return
            head += data
        method, target, rest = head.split(b" ", 2)
        if not target.startswith(self.path):
            client.close()
            return
        server = socket.create_connection(("127.0.0.1", self.target))
        server.sendall(b" ".join((method, target.removeprefix(self.path.rstrip(b"/")), rest)))
        threading.Thread(target=pump, args=(server, client), daemon=True).start()
        pump(client, server)

    def close(self):
        self.listener.close()
