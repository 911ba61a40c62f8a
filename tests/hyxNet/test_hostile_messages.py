"""Messages, floods and connections that are to do harm."""

import resource
import socket
import threading
import time

import hyxNet
import pytest
from hostile_messages import STRANGERS, WRONG
from test_co_simulation import served  # noqa: F401
from zmq_client import Client


@pytest.mark.parametrize("parts", STRANGERS.values(), ids=STRANGERS.keys())
def test_strangers_are_refused_for_their_token(served, parts):  # noqa: F811
    app, client = served
    answer = client.exchange(app, parts)
    assert not answer["ok"] and "token" in answer["error"] and not app.done()
    assert client.ask(app, do="list")["ok"]


@pytest.mark.parametrize("parts", WRONG.values(), ids=WRONG.keys())
def test_wrong_requests_are_refused_in_words(served, parts):  # noqa: F811
    app, client = served
    answer = client.exchange(app, parts)
    assert not answer["ok"] and answer["error"] and not app.done() and app.getTimeStamp() == 0
    assert client.ask(app, do="list")["ok"]


def test_a_message_beyond_the_limit_is_not_taken(served):  # noqa: F811
    app, client = served
    before = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
    client.send(bytes(100_000_000))
    sent = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss - before  # the sender's own copies, in kB
    end = time.monotonic() + 1
    while time.monotonic() < end:
        app.updateServices()
    assert resource.getrusage(resource.RUSAGE_SELF).ru_maxrss - before - sent < 50_000
    other = Client(client.port, "secret")
    assert other.ask(app, do="list")["ok"]
    other.close()


def frames_per_second(app, seconds=2):
    begun, frames = time.monotonic(), 0
    while time.monotonic() < begun + seconds:
        app.updateServices()
        frames += 1
        time.sleep(max(0, begun + frames / 60 - time.monotonic()))
    return frames / (time.monotonic() - begun)


def test_floods_leave_time_for_frames(served):  # noqa: F811
    """Two clients send as fast as they are answered; the loop wants 60 frames a second."""
    app, client = served
    ended, answered = threading.Event(), [0, 0]

    def flood(number):
        stranger = Client(client.port, "")
        while not ended.is_set():
            stranger.send(b"{}")
            stranger.receive()
            answered[number] += 1

    threads = [threading.Thread(target=flood, args=(number,), daemon=True) for number in (0, 1)]
    for thread in threads:
        thread.start()
    rate = frames_per_second(app)
    ended.set()
    while any(thread.is_alive() for thread in threads):
        app.updateServices()
    assert rate >= 50 and min(answered) > 20


def test_broken_connections_do_not_make_it_deaf(served):  # noqa: F811
    app, client = served
    for number in range(200):
        with socket.create_connection(("127.0.0.1", client.port)) as broken:
            broken.sendall((b"\xff" + bytes(9) + b"\x03", b"GET / HTTP/1.0\r\n\r\n", b"")[number % 3])
    begun = time.monotonic()
    other = Client(client.port, "secret")
    assert other.ask(app, do="list")["ok"] and time.monotonic() - begun < 1
    other.close()


def test_a_server_without_a_handler_takes_messages_of_many_parts():
    server = hyxNet.CoSimulationServer(0, "secret")
    client = Client(server.getPort(), "secret")
    client.send_parts([b"a", b"b"])
    assert server.update(5000) == 1 and "token" in client.receive()["error"]
    client.close()
