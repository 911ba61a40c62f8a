"""Another process steps the simulation and calls functions of the script."""

import json

import hyx
import hyxIO
import hyxNet
import pytest
from application_stage import add_box
from zmq_client import Client


def free_port():
    import socket

    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


@pytest.fixture
def served(app):
    port = free_port()
    app.init(hyxIO.ArgumentParser(["--co-simulation-port", str(port), "--rpc-token", "secret"]))
    assert not app.useCoSimulation()
    app.initRpc()
    assert app.useCoSimulation()
    add_box(app, "box", (0, 0, 5))
    client = Client(port, "secret")
    yield app, client
    client.close()


def test_nothing_is_open_unless_asked_for(app):
    app.initRpc()
    app.updateCoSimulationServer()
    assert not app.useCoSimulation() and app.getController() is None and app.getControlChannelPort() == 0


def test_the_other_process_steps_the_simulation(served):
    app, client = served
    app.step()
    assert app.getTimeStamp() == 0  # the loop itself no longer steps
    assert client.ask(app, do="list")["bodies"] == ["box"]
    answer = client.ask(app, do="step", count=6)
    assert answer["ok"] and answer["time"] == pytest.approx(6 * app.getTimeStep()) == app.getTimeStamp()
    assert 4.9 < client.ask(app, do="get", body="box")["position"][2] < 5


def test_the_other_process_moves_a_body(served):
    app, client = served
    assert client.ask(app, do="set", body="box", position=[1, 2, 3], velocity=[0, 0, 1])["ok"]
    body = app.getSimulation().getRigidBody("box")
    assert (body.getPosition().x, body.getPosition().z, body.getVelocity().z) == (1, 3, 1)
    assert client.ask(app, do="stop")["ok"] and app.done()


@pytest.mark.parametrize(
    "request_, error",
    [
        (dict(do="get", body="none"), "no body 'none'"),
        (dict(do="dance"), "not 'dance'"),
        (dict(do="step", count=0), "count"),
        (dict(do="set", body="box", position=[1, 2]), "3 numbers"),
        (dict(do="set", body="box", rotation=[0, 0, 0, 0]), "rotation"),
        (dict(do="call", function="none"), "'none'"),
        (dict(token="wrong", do="list"), "token"),
    ],
)
def test_a_bad_request_is_answered_with_its_error(served, request_, error):
    app, client = served
    answer = client.ask(app, **request_)
    assert not answer["ok"] and error in answer["error"]
    assert app.getTimeStamp() == 0 and app.getSimulation().getRigidBody("box").getPosition().z == 5


SCRIPT = """
import json
def build():
    pass
def double(text):
    return json.dumps(2 * json.loads(text))
def fail(text):
    raise ValueError("no way")
"""


def test_functions_of_the_script_are_called(served, tmp_path, capfd):
    app, client = served
    path = tmp_path / "script.py"
    path.write_text(SCRIPT)
    app.executePythonScript(str(path), "build", hyx.Flag())
    assert client.ask(app, do="call", function="double", argument=21)["result"] == 42
    assert "failed" in client.ask(app, do="call", function="fail", argument=1)["error"]
    assert "ValueError: no way" in capfd.readouterr().err

    stream = hyx.StringStream("[1, 2]")
    assert app.updatePythonCoSimulationServer("double", stream) and stream.str() == "[1, 2, 1, 2]"
    assert not app.updatePythonCoSimulationServer("missing", stream)
    with pytest.raises(ValueError, match="no way"):
        app.updatePythonCoSimulationServer("fail", stream)


def test_the_application_answers_the_call_that_a_server_holds(app, tmp_path):
    path = tmp_path / "script.py"
    path.write_text(SCRIPT)
    app.executePythonScript(str(path), "build", hyx.Flag())
    server = hyxNet.CoSimulationServer(0, "secret")
    client = Client(server.getPort(), "secret")

    def ask(**request):
        """The answer to the next request; the call of one is answered by the application, when it can."""
        client.send(json.dumps({"token": "secret", **request}).encode())
        assert server.update(5000) == 1
        called = server.getCalledFunction()
        answered = app.coSimulationCallPython(server)
        server.update()
        return called, answered, client.receive()

    try:
        assert ask(do="call", function="double", argument=4) == ("double", True, {"ok": True, "result": 8})
        called, answered, answer = ask(do="call", function="nothing")
        assert (called, answered, answer["ok"]) == ("nothing", False, False) and "nothing" in answer["error"]
        called, answered, answer = ask(do="list")
        assert (called, answered, answer["ok"]) == ("", False, False)
    finally:
        client.close()


def test_requests_are_followed_when_the_server_is_updated(served):
    app, client = served
    client.send(b'{"token": "secret", "do": "step"}')
    for _ in range(1000):
        app.updateCoSimulationServer()
        if app.getTimeStamp() > 0:
            break
    assert app.getTimeStamp() == app.getTimeStep() and client.receive()["ok"]


def test_a_server_without_a_call_has_nothing_to_answer(app):
    assert not app.coSimulationCallPython(None)
    assert not app.coSimulationCallPython(hyxNet.CoSimulationServer())


def test_a_port_in_use_is_an_exception(served):
    app, client = served
    taken = hyxNet.CoSimulationServer()
    with pytest.raises(RuntimeError, match=str(taken.getPort())):
        hyxNet.CoSimulationServer(taken.getPort())
