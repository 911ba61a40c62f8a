"""The remote control: its page, its guard, what it shows and what it steers."""

import re
import socket
import time
from pathlib import Path

import hyx
import hyxIO
import hyxOSG
import pytest
from application_stage import add_box
from web_client import Connection, open_page

VERSION_6 = Path("/proc/net/if_inet6").exists() and Path("/proc/net/if_inet6").read_text()


@pytest.fixture
def served(window):
    window.init(hyxIO.ArgumentParser(["--rpc-port", "0", "--rpc-token", "secret"]))
    window.initRpc()
    assert window.getController() is not None and window.getControlChannelPort() > 0
    return window


@pytest.fixture
def page(served):
    made = open_page(served, served.getControlChannelPort(), "secret")
    assert made.open
    yield made
    made.close()


def test_the_page_is_given_to_who_brings_the_token(served):
    port = served.getControlChannelPort()
    status, body = Connection(served.updateRemoteDebugger, port).get("/?token=secret")
    assert status == 200 and "<canvas" in body and "WebSocket" in body
    assert Connection(served.updateRemoteDebugger, port).get("/?token=wrong")[0] == 403
    assert Connection(served.updateRemoteDebugger, port).get("/")[0] == 403
    assert Connection(served.updateRemoteDebugger, port).get("/other?token=secret")[0] == 404
    assert not open_page(served, port, "wrong").open


def listening(port):
    """The addresses, as the kernel names them, at which somebody listens."""
    found = set()
    for table in ("/proc/net/tcp", "/proc/net/tcp6"):
        for line in open(table).readlines()[1:]:
            address, number = line.split()[1].split(":")
            if line.split()[3] == "0A" and int(number, 16) == port:
                found.add(address)
    return found


def test_it_listens_on_loopback_only(app, capfd):
    app.init(hyxIO.ArgumentParser(["--rpc-port", "0", "--co-simulation-port", "0", "--click-port", "0"]))
    app.initRpc()
    ports = [int(port) for port in re.findall(r"://127.0.0.1:(\d+)", capfd.readouterr().out)]
    assert len(ports) == 3 and [listening(port) for port in ports] == 3 * [{"0100007F"}]


@pytest.mark.parametrize(
    "host, shown, address",
    [
        ("127.0.0.2", "127.0.0.2", "0200007F"),
        ("localhost", "127.0.0.1", "0100007F"),
        ("0.0.0.0", "0.0.0.0", "00000000"),
        pytest.param(
            "::1",
            "[::1]",
            24 * "0" + "01000000",
            marks=pytest.mark.skipif(not VERSION_6, reason="no addresses of version 6"),
        ),
    ],
)
def test_it_listens_where_it_is_told_to(app, capfd, host, shown, address):
    app.m_hostName = host
    app.init(hyxIO.ArgumentParser(["--rpc-port", "0", "--rpc-token", "secret"]))
    app.initRpc()
    port = app.getControlChannelPort()
    assert capfd.readouterr().out == f"Remote control: http://{shown}:{port}/?token=secret\n"
    assert listening(port) == {address} and app.m_hostName == host


def test_a_page_gets_a_picture_for_each_time_it_asks(served, page):
    is_picture = lambda message: isinstance(message, bytes)
    served.step()
    page.send(do="ready")
    for _ in range(50):
        served.step()
    first = page.receive(is_picture)
    assert first[:2] == b"\xff\xd8" and first[-2:] == b"\xff\xd9"
    for _ in range(5):
        served.step()
    assert page.receive(is_picture, 0.5) is None
    page.send(do="ready")
    for _ in range(50):
        served.pushFrameToRemoteViewer()
        served.updateRemoteDebugger()
    assert page.receive(is_picture) is not None


def test_a_page_that_does_not_keep_up_still_gets_its_picture(served, page):
    is_picture = lambda message: isinstance(message, bytes)
    served.step()
    page.send(do="ready")
    for _ in range(50):
        served.updateRemoteDebugger()
    for _ in range(100):  # more than a page is kept waiting for
        served.pushParametersToControlChannel()
    served.pushFrameToRemoteViewer()
    page.receive(lambda message: False, 0.2)  # takes what has come
    served.pushFrameToRemoteViewer()
    assert page.receive(is_picture) is not None


def test_a_page_is_told_the_parameters(served, page):
    add_box(served)
    served.setTimeStep(0.01)
    served.pushParametersToControlChannel()
    found = page.receive(
        lambda message: isinstance(message, dict) and "parameters" in message and message["parameters"]["bodies"] == 1
    )["parameters"]
    assert found["time step"] == 0.01 and found["paused"] is False and found["solver"] == "ITERATIVE"


def test_parameters_are_sent_as_often_as_they_are_pushed(served, page):
    for _ in range(10):  # far more often than the page is told by itself
        served.pushParametersToControlChannel()
    count, end = 0, time.monotonic() + 1
    while page.receive(lambda message: "parameters" in message, 0.1) is not None and time.monotonic() < end:
        count += 1
    assert count >= 10


def test_ticks_are_sent_when_they_are_wanted(served, page):
    served.stepSimulation()
    served.setEnableControlChannelTickSignals(True)
    served.stepSimulation()
    tick = page.receive(lambda message: "tick" in message)["tick"]
    assert tick["number"] == 1 and tick["time"] == pytest.approx(2 * served.getTimeStep())


def follow(app, page, message, done):
    """Whether the application does what the page asks, in time."""
    page.send(**message)
    end = time.monotonic() + 5
    while not done() and time.monotonic() < end:
        app.updateRemoteDebugger()
        time.sleep(0.001)
    return done()


def test_the_page_pauses_steps_and_sets_parameters(served, page):
    assert follow(served, page, {"do": "pause"}, lambda: not served.getAutoStepping())
    assert follow(served, page, {"do": "step"}, lambda: served.getTimeStamp() > 0)
    assert follow(served, page, {"do": "timeStep", "value": 0.02}, lambda: served.getTimeStep() == 0.02)
    page.send(do="timeStep", value=-1)
    assert "error" in page.receive(lambda message: "error" in message)
    page.send(do="dance")
    assert "dance" in page.receive(lambda message: "error" in message)["error"]
    assert served.getTimeStep() == 0.02


def test_the_page_moves_the_camera(served, page):
    before = served.getViewDirection()
    for message in (
        {"do": "press", "x": 80, "y": 60, "button": 1},
        {"do": "move", "x": 40, "y": 60},
        {"do": "move", "x": 20, "y": 60},
    ):
        page.send(**message)

    def turned():
        served.step()
        return abs(served.getViewDirection().x - before.x) > 0.05

    assert follow(served, page, {"do": "move", "x": 10, "y": 60}, turned)
    assert follow(served, page, {"do": "home"}, lambda: abs(served.getViewDirection().x - before.x) < 1e-6)


@pytest.mark.parametrize(
    "message",
    [
        {"do": 5},
        {"do": "key"},
        {"do": "key", "key": "e"},
        {"do": "key", "key": 1e300},
        {"do": "timeStep"},
        {"do": "timeStep", "value": "1"},
        {"do": "press", "button": "left"},
        {"do": "move", "x": [1]},
        {},
    ],
)
def test_wrong_messages_are_answered_and_change_nothing(served, page, message):
    page.send(**message)
    assert page.receive(lambda answer: "error" in answer)["error"]
    assert served.getAutoStepping() and served.getTimeStep() == pytest.approx(1 / 60)


def test_places_far_outside_leave_the_camera_sound(served, page):
    for place in (1e300, -1e300, 1e30):
        for message in (
            {"do": "press", "x": place, "y": place},
            {"do": "move", "x": -place, "y": 3},
            {"do": "release", "x": 0, "y": 0},
        ):
            page.send(**message)
    for _ in range(50):
        served.step()
    assert served.getViewDirection().length() == pytest.approx(1)


def test_keys_of_the_page_reach_the_application(served, page):
    served.step()
    page.send(do="key", key=ord("e"), down=True)

    def paused():
        served.step()
        return not served.getAutoStepping()

    assert follow(served, page, {"do": "key", "key": ord("e"), "down": False}, paused)


@pytest.mark.parametrize("do", ["next", "previous"])
def test_the_page_goes_through_the_scenes(served, page, tmp_path, do):
    script = tmp_path / "scenes.py"
    script.write_text("def one(sim, app, root): pass\ndef two(sim, app, root): app.setTimeStep(0.002)\n")
    served.addScene(str(script), "one")
    served.addScene(str(script), "two")
    served.createSceneFromIndex(0)
    assert follow(served, page, {"do": do}, lambda: served.getTimeStep() == 0.002)


def test_the_page_saves_and_restores_the_state(served, page, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    page.send(do="restore")
    assert "no state was saved" in page.receive(lambda message: "error" in message)["error"]
    box = add_box(served, "box", (0, 0, 7))
    assert follow(served, page, {"do": "save"}, lambda: (tmp_path / served.getSaveSceneFilename()).exists())
    box.setPosition(hyx.Vec3(0, 0, 1))
    assert follow(served, page, {"do": "restore"}, lambda: box.getPosition().z == 7)


def test_the_address_is_printed_with_its_token(app, capfd):
    app.init(hyxIO.ArgumentParser(["--rpc-port", "0", "--co-simulation-port", "0"]))
    app.initRpc()
    address, co_simulation = capfd.readouterr().out.splitlines()
    token = address.rpartition("=")[2]
    assert (
        len(token) == 32 and address == f"Remote control: http://127.0.0.1:{app.getControlChannelPort()}/?token={token}"
    )
    assert open_page(app, app.getControlChannelPort(), token).open
    assert co_simulation.startswith("Co-simulation: tcp://127.0.0.1:")


def test_a_host_that_is_not_here_is_an_exception(app):
    app.m_hostName = "198.51.100.7"  # kept for documents
    app.init(hyxIO.ArgumentParser(["--rpc-port", "0", "--co-simulation-port", "0"]))
    with pytest.raises(RuntimeError, match="198.51.100.7"):
        app.initRpc()
    assert app.getController() is None and not app.useCoSimulation()


def test_a_port_in_use_is_an_exception(app):
    with socket.socket() as taken:
        taken.bind(("127.0.0.1", 0))
        taken.listen()
        app.init(hyxIO.ArgumentParser(["--rpc-port", str(taken.getsockname()[1])]))
        with pytest.raises(RuntimeError, match="in use"):
            app.initRpc()
    assert app.getController() is None


def details(app, page, done=lambda found: True):
    """What the page is told next, of which `done` holds."""
    app.pushParametersToControlChannel()
    return page.receive(lambda message: isinstance(message, dict) and "details" in message and done(message))


def test_a_page_looks_into_the_simulation(served, page):
    add_box(served, "ground", (0, 0, -1), static=True)
    box = add_box(served, "box", (0, 0, 0))
    served.createVisual(served.getSimulation())
    for _ in range(60):
        served.stepSimulation()
    page.send(do="list")
    whole = lambda message: len(message.get("tree", [])) == 2
    assert follow(served, page, {"do": "list"}, lambda: served.pushParametersToControlChannel() is None)
    assert [body["name"] for body in details(served, page, whole)["tree"]] == ["ground", "box"]
    selected = lambda: details(served, page)["details"]["body"]
    assert follow(served, page, {"do": "select", "body": 1}, lambda: selected() is not None)
    found = selected()
    assert found["name"] == "box" and found["mass"] == pytest.approx(box.getMass())
    assert found["position"][2] == pytest.approx(box.getPosition().z)
    weight = box.getMass() * 9.80665
    assert found["forces"]["contacts"][0] == {"with": "ground", "force": pytest.approx(weight, rel=0.02)}
    node = hyxOSG.findGeometryNode(box.getGeometries()[0], served.getRoot())
    assert hyxOSG.getEnableOutline(node)
    assert follow(served, page, {"do": "visible", "body": 1, "on": False}, lambda: node.getNodeMask() == 0)
    assert follow(served, page, {"do": "select", "body": None}, lambda: not hyxOSG.getEnableOutline(node))
    page.send(do="select", body=17)
    for _ in range(20):
        served.updateRemoteDebugger()
    assert "no such body" in page.receive(lambda message: "error" in message)["error"]


def test_a_page_selects_what_is_under_the_pointer(served, page):
    add_box(served, "target", static=True)
    served.createVisual(served.getSimulation())
    served.step()
    name = lambda: (details(served, page)["details"]["body"] or {}).get("name")
    for x, y, wanted in ((80, 60, "target"), (2, 2, None)):
        page.send(do="press", x=x, y=y, button=1)
        shown = lambda wanted=wanted: served.step() or name() == wanted
        assert follow(served, page, {"do": "release", "x": x, "y": y, "button": 1}, shown)


def test_a_page_holds_a_joint_and_reads_it_back(served, page):
    door = add_box(served, "door", (1, 0, 0))
    hinge = hyx.Hinge(hyx.Vec3(0, 0, 0), hyx.Vec3(0, 0, 1), door)
    served.getSimulation().add(hinge)
    known = lambda message: message["details"]["joints"]
    position = lambda: details(served, page, known)["details"]["joints"][0]["position"]

    def reached():
        served.stepSimulation()
        return abs(position() - 0.5) < 0.01

    assert follow(served, page, {"do": "joint", "joint": 0, "position": 0.5}, reached)
    assert hinge.getAngle() == pytest.approx(0.5, abs=0.01)
    assert follow(
        served, page, {"do": "joint", "joint": 0, "position": None}, lambda: not hinge.getLock1D().isEnabled()
    )


def test_a_page_goes_back_in_time_and_changes_the_speed(served, page):
    add_box(served)
    served.setHistoryLength(10)
    for _ in range(60):
        served.stepSimulation()
    assert follow(served, page, {"do": "seek", "value": 0.5}, lambda: abs(served.getTimeStamp() - 0.5) < 1e-6)
    assert not served.getAutoStepping()
    assert follow(served, page, {"do": "scrub", "value": 6}, lambda: abs(served.getTimeStamp() - 0.6) < 1e-6)
    assert follow(served, page, {"do": "speed", "value": 0.5}, lambda: served.getSpeed() == 0.5)
    assert follow(served, page, {"do": "debug"}, served.getEnableDebugRenderer)


def test_a_page_resumes_what_it_has_paused_while_listeners_rest(served, page):
    served.setEnablePauseUpdate(False)
    for stepping in (False, True):
        page.send(do="pause")
        end = time.monotonic() + 5
        while served.getAutoStepping() is not stepping and time.monotonic() < end:
            served.step()
        assert served.getAutoStepping() is stepping


def test_a_script_asks_for_the_address_of_the_page(served):
    controller = served.getController()
    assert controller.getUrl() == f"http://127.0.0.1:{controller.getPort()}/?token={controller.getToken()}"
    assert controller.getNumClients() == 0
    assert served.getRenderProxyFactory().getNumProxies() == 0
