"""A request to the co-simulation server, as another process would make it."""

import ctypes
import ctypes.util
import json
import threading

ZMQ = ctypes.CDLL(ctypes.util.find_library("zmq"))
ZMQ.zmq_ctx_new.restype = ZMQ.zmq_socket.restype = ctypes.c_void_p
REQUEST, LINGER, TIMEOUT = 3, 17, 27


class Client:
    def __init__(self, port, token):
        self.token, self.port = token, port
        self.socket = ctypes.c_void_p(ZMQ.zmq_socket(ctypes.c_void_p(ZMQ.zmq_ctx_new()), REQUEST))
        for option, value in ((LINGER, 0), (TIMEOUT, 20000)):
            ZMQ.zmq_setsockopt(self.socket, option, ctypes.byref(ctypes.c_int(value)), 4)
        assert ZMQ.zmq_connect(self.socket, f"tcp://127.0.0.1:{port}".encode()) == 0

    def send(self, text):
        ZMQ.zmq_send(self.socket, text, len(text), 0)

    def send_parts(self, parts):
        more = 2
        for place, part in enumerate(parts, 1):
            ZMQ.zmq_send(self.socket, part, len(part), more if place < len(parts) else 0)

    def receive(self):
        buffer = ctypes.create_string_buffer(65536)
        size = ZMQ.zmq_recv(self.socket, buffer, len(buffer), 0)
        assert size >= 0
        return json.loads(buffer.raw[:size])

    def ask(self, app, **request):
        """The answer that the application gives while it is served."""
        self.send(json.dumps({"token": self.token, **request}).encode())
        return self.answer(app)

    def exchange(self, app, parts):
        """The same for a message of some parts."""
        self.send_parts(parts)
        return self.answer(app)

    def answer(self, app):
        answers = []
        reader = threading.Thread(target=lambda: answers.append(self.receive()))
        reader.start()
        while reader.is_alive():
            app.updateServices()
            reader.join(0.001)
        return answers[0]

    def close(self):
        ZMQ.zmq_close(self.socket)
