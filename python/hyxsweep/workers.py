"""Worker processes on this machine: fresh interpreters, so that each may draw and a script needs no guard around its
main part. What they call comes to them by value."""

from __future__ import annotations

import contextlib
import os
import socket
import subprocess
import sys
from collections.abc import Callable
from multiprocessing.connection import Connection
from typing import Any

import cloudpickle

PROGRAM = "import sys; sys.path[:] = {path!r}; from hyxsweep.workers import serve; serve({descriptor})"


class WorkerDied(Exception):
    """The process of a worker has ended by itself."""


class Worker:
    """A process that calls one function again and again."""

    def __init__(self, function: Callable[..., Any], *arguments: Any) -> None:
        ours, theirs = socket.socketpair()
        with theirs:
            path = [entry or os.getcwd() for entry in sys.path]
            program = PROGRAM.format(path=path, descriptor=theirs.fileno())
            environment = {**os.environ, "OMP_NUM_THREADS": os.environ.get("OMP_NUM_THREADS", "1")}
            self.process = subprocess.Popen(
                [sys.executable, "-c", program], pass_fds=[theirs.fileno()], stdin=subprocess.DEVNULL, env=environment
            )
        self.connection = Connection(ours.detach())
        self.send(function, arguments)

    def send(self, *message: Any) -> None:
        try:
            self.connection.send_bytes(cloudpickle.dumps(message))
        except OSError as error:
            raise WorkerDied from error

    def receive(self) -> Any:
        """What the function has returned; what it has raised is raised here."""
        try:
            answer, error = cloudpickle.loads(self.connection.recv_bytes())
        except (EOFError, OSError) as broken:
            raise WorkerDied from broken
        if error is not None:
            raise error
        return answer

    def close(self, patience: float = 5.0) -> None:
        """Lets the process end; one that does not in `patience` seconds is killed."""
        self.connection.close()
        try:
            self.process.wait(patience)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()


def serve(descriptor: int) -> None:
    """The main loop of a worker."""
    connection = Connection(descriptor)
    with contextlib.suppress(EOFError, OSError, KeyboardInterrupt):
        function, arguments = cloudpickle.loads(connection.recv_bytes())
        while True:
            call = cloudpickle.loads(connection.recv_bytes())
            answer, error = None, None
            try:
                answer = function(*arguments, *call)
            except Exception as raised:
                error = raised
            connection.send_bytes(cloudpickle.dumps((answer, error)))
