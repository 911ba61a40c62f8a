"""Playing journals back: sought, at a speed, again and again, with pictures and joints."""

import json
import time
import types

import h5py
import hyx
import hyxIO
import hyxOSG
import numpy
import pytest
from application_stage import add_box, difference


@pytest.fixture
def path(tmp_path):
    return str(tmp_path / "run.h5")


@pytest.fixture
def recorded(window, path, shoot):
    """Two seconds of a falling box and a turning door: heights and angles by step, and the last picture."""
    add_box(window, "ground", (0, 0, -3), static=True)
    box = add_box(window, "box", (0, 0, 2))
    door = add_box(window, "door", (3, 0, 2))
    sim = window.getSimulation()
    hinge = hyx.Hinge(hyx.Vec3(2.5, 0, 2), hyx.Vec3(0, 0, 1), door)
    hinge.setName("hinge")
    sim.add(hinge)
    door.setAngularVelocity(hyx.Vec3(0, 0, 1))
    window.createVisual(sim)
    hyxOSG.setDiffuseColor(box, hyx.Vec4f(0.9, 0.2, 0.1, 1), window.getRoot())
    window.getSceneDecorator().setBackgroundColor(hyx.Vec4f(0.1, 0.3, 0.1, 1))
    window.setJournalRecordPath(path)
    window.initRecordJournal()
    heights, angles = {}, {}
    for _ in range(120):
        window.stepSimulation()
        heights[round(window.getTimeStamp() * 60)] = box.getPosition().z
        angles[round(window.getTimeStamp() * 60)] = hinge.getAngle()
    window.setEnableJournalRecord(False)
    return types.SimpleNamespace(heights=heights, angles=angles, picture=shoot(window))


def player(path, *options):
    app = hyxOSG.ExampleApplication()
    app.init(hyxIO.ArgumentParser(["--journal-play", path, *options]))
    return app


def height(app):
    return app.getSimulation().getRigidBody("box").getPosition().z


def test_a_journal_alone_draws_the_recorded_picture(recorded, path, shoot):
    with player(path) as app:
        app.initViewer(160, 120)
        app.initScene()
        assert app.getJournal().isPlaying()
        while app.getAutoStepping():
            app.step()
        assert app.getTimeStamp() == pytest.approx(2)
        picture = shoot(app)
    assert difference(picture, recorded.picture) < 0.01 * 160 * 120


def test_playback_seeks_and_scrubs(recorded, path):
    with player(path) as app:
        app.initScene()
        for step in (60, 3, 120, 1, 77):
            assert app.goToTime(step / 60) and height(app) == recorded.heights[step]
            assert app.getTimeStamp() == pytest.approx(step / 60)
            assert app.getJournal().getJointPositions() == {"hinge": recorded.angles[step]}
        assert app.scrub(-7) and height(app) == recorded.heights[70]
        assert app.scrub(2) and height(app) == recorded.heights[72]
        assert app.scrub(999) and height(app) == recorded.heights[120]
        assert app.scrub(-999) and height(app) == recorded.heights[1]
        assert (app.getHistorySpan().x, app.getHistorySpan().y) == pytest.approx((1 / 60, 2))
        app.setAutoStepping(True)
        app.executeOneStepWithoutGraphics()
        assert height(app) == recorded.heights[2]


def test_playback_keeps_to_the_recorded_time_and_the_speed(recorded, path):
    with player(path, "--speed", "4") as app:
        app.initViewer(32, 32)
        app.initScene()
        start = time.monotonic()
        while app.getAutoStepping() and time.monotonic() - start < 10:
            app.step()
        assert time.monotonic() - start == pytest.approx(0.5, abs=0.2)


def test_playback_begins_again_where_it_is_asked_to(recorded, path):
    with player(path, "--journal-loop") as app:
        app.initScene()
        assert app.getEnableJournalLoop()
        for _ in range(125):
            app.executeOneStepWithoutGraphics()
        assert app.getAutoStepping() and app.getTimeStamp() < 0.2


def test_the_file_says_how_it_was_recorded(recorded, path):
    with h5py.File(path) as file:
        part = file["session_1/part_000000"]
        conditions = json.loads(part["conditions"][0])
        assert conditions["timeStep"] == pytest.approx(1 / 60) and conditions["version"] >= 2
        assert conditions["gravity"] == pytest.approx([0, 0, -9.80665])
        assert part["joint"].shape == (120, 1, 2) and part["joints"][0].decode().strip("\0") == "hinge"
        assert part["joint"][59, 0, 0] == recorded.angles[60]


def test_joints_are_played_too(recorded, path):
    with player(path) as app:
        app.initScene()
        for step in (60, 3, 120):
            app.goToTime(step / 60)
            (hinge,) = app.getSimulation().getConstraints()
            assert type(hinge) is hyx.Hinge and hinge.getName() == "hinge"
            assert hinge.getAngle() == pytest.approx(recorded.angles[step], abs=1e-6)
        app.getJournal().close()
        app.getSimulation().setGravity(hyx.Vec3(0, 0, 0))
        door = app.getSimulation().getRigidBody("door")
        for _ in range(60):
            app.getSimulation().step()
        assert abs(door.getPosition().z - 2) < 0.01 and hinge.getAngle() > recorded.angles[120] + 0.3, "it holds"


def test_playback_finds_its_bodies_again_in_a_scene_that_is_built_anew(recorded, path):
    with player(path) as app:
        app.initScene()
        app.goToTime(1)
        app.clearScene()
        box = add_box(app, "box")
        app.goToTime(0.5)
        assert box.getPosition().z == recorded.heights[30] and app.getSimulation().getRigidBody("box") == box


def touches(app):
    """Where the geometries touch: names, points, normals and forces on the second body."""
    return [
        (
            [contact.getRigidBody(side).getName() for side in (0, 1)],
            [(*point.point, *point.normal, *point.getForce()) for point in contact.points()],
        )
        for contact in app.getSimulation().getSpace().getGeometryContacts()
    ]


@pytest.fixture
def pressed(app, path):
    """A box of 1000 kg at rest on a ground, and how it touched it in each state."""
    add_box(app, "ground", (0, 0, -0.5), static=True)
    add_box(app, "box", (0, 0, 0.5)).setMass(1000)
    app.setJournalRecordPath(path)
    app.initRecordJournal()
    touched = []
    for _ in range(30):
        app.stepSimulation()
        touched.append(touches(app))
    app.setEnableJournalRecord(False)
    return touched


def test_contacts_are_played_with_their_forces(pressed, path):
    with player(path) as app:
        app.initScene()
        for step in (30, 11, 20):
            app.goToTime(step / 60)
            (names, points), (recorded_names, recorded) = touches(app)[0], pressed[step - 1][0]
            assert names == recorded_names and set(names) == {"box", "ground"}
            assert numpy.allclose(points, recorded, rtol=1e-6, atol=1e-3), "in single precision"
        assert abs(numpy.sum(points, axis=0)[8]) == pytest.approx(1000 * 9.80665, rel=0.01)
        assert app.getSimulation().getStatistics()["contactPoints"] == len(points)
        box = app.getSimulation().getRigidBody("box").getGeometries()[0]
        assert len(app.getSimulation().getSpace().getGeometryContacts(box)) == 1
        app.getJournal().close()
        app.getSimulation().getRigidBody("box").setPosition(hyx.Vec3(0, 0, 9))
        app.getSimulation().step()
        assert touches(app) == [], "a step finds them anew"


def test_contacts_are_read_by_other_programs_and_can_be_left_out(pressed, path, tmp_path):
    with h5py.File(path) as file:
        part = file["session_1/part_000000"]
        columns = [name.decode().strip("\0") for name in part["contactColumns"]]
        counts = part["contactCount"][:, 0, 0].astype(int)
        last = part["contacts"][counts[:-1].sum() : counts.sum(), 0]
        assert abs(last[:, columns.index("fz")].sum()) == pytest.approx(1000 * 9.80665, rel=0.01)
    choice = tmp_path / "choice.json"
    choice.write_text('{"contacts": false}')
    with hyxOSG.ExampleApplication() as app:
        add_box(app)
        app.setJournalConfigurationPath(str(choice))
        app.setJournalRecordPath(path)
        app.initRecordJournal()
        app.stepSimulation()
        app.setEnableJournalRecord(False)
    with h5py.File(path) as file:
        assert "contacts" not in file["session_1/part_000000"]


def test_a_scene_change_begins_another_session(window, path, tmp_path):
    script = tmp_path / "scenes.py"
    script.write_text("""
import hyx, hyxCollide
def ball(sim):
    sim.add(hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.5)), "ball"))
def box(sim):
    sim.add(hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(1, 1, 1)), "box"))
""")
    window.addScene(str(script), "ball")
    window.addScene(str(script), "box")
    window.setJournalRecordPath(path)
    window.initRecordJournal()
    for index, steps in ((0, 10), (1, 20)):
        window.createSceneFromIndex(index)
        for _ in range(steps):
            window.stepSimulation()
    window.setEnableJournalRecord(False)
    with h5py.File(path) as file:
        for session, name, states in (("session_1", b"ball", 10), ("session_2", b"box", 20)):
            part = file[session]["part_000000"]
            assert part["bodies"][0].strip(b"\0") == name and part["position"].shape == (states, 1, 3)
            assert numpy.ptp(part["position"][:, 0, 2]) > 0, "it moves"


def test_an_hour_is_sought_quickly(app, path):
    """Of a hundred bodies; recorded once a second, which makes as many rows as the reader searches in a minute."""
    for i in range(100):
        add_box(app, f"box{i}", (3 * i, 0, 0))
    app.getSimulation().setGravity(hyx.Vec3(0, 0, 0))
    app.setTimeStep(1)
    app.setJournalRecordPath(path)
    app.initRecordJournal()
    for _ in range(3600):
        app.getJournal().store(app.getSimulation(), True)
        app.getSimulation().setTimeStamp(app.getTimeStamp() + 1)
    app.setEnableJournalRecord(False)
    app.journalPlayback()
    app.goToTime(0)
    times = []
    for target in (3500, 12, 1800, 3599, 700):
        start = time.perf_counter()
        assert app.goToTime(target)
        times.append(time.perf_counter() - start)
        assert app.getTimeStamp() == target
    assert min(times) < 0.02
