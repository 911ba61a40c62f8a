"""What the options of the command line do."""

import re

import hyxIO
import hyxOSG
import pytest
from application_stage import add_box, read_picture
from subprocesses import has_display, run_python
from video_file import probe


@pytest.fixture
def started():
    def start(*arguments):
        app = hyxOSG.ExampleApplication()
        assert app.init(hyxIO.ArgumentParser(list(arguments)))
        return app

    return start


def test_options_set_up_the_application(started):
    app = started(
        "--time-step",
        "0.02",
        "--stop-after",
        "0.1",
        "--target-fps",
        "500",
        "--solver",
        "multi",
        "--start-paused",
        "--real-time",
    )
    assert app.getTimeStep() == 0.02 and app.getTargetFPS() == 500 and app.getRealTimeSync()
    assert app.getSolverType() == hyxOSG.ExampleApplication.MULTI and not app.getAutoStepping()
    app.setRealTimeSync(False)
    app.setAutoStepping(True)
    app.initViewer(32, 32)
    app.run()
    assert app.getTimeStamp() == pytest.approx(0.1)


def test_the_arguments_are_kept(started):
    assert started("--time-step", "0.02").getArguments().getReal("--time-step") == 0.02
    assert hyxOSG.ExampleApplication().getArguments() is None


def test_the_window_has_the_size_of_the_options(started, shoot):
    app = started("--window-size", "80x60", "--offscreen")
    assert app.getViewer() is None
    app.initGraphics()
    assert app.getViewer() is not None
    assert shoot(app).shape == (60, 80, 3) and app.hasOffscreenWindow()


def test_without_graphics_the_loop_opens_no_window(started):
    app = started("--no-graphics", "--stop-after", "0.2")
    assert app.run() == 0 and app.getViewer() is None and app.getTimeStamp() == pytest.approx(0.2)


def test_help_leaves_nothing_to_do(capfd):
    parser = hyxIO.ArgumentParser(["--help"])
    assert hyxOSG.ExampleApplication().init(parser) is False
    assert "--window-size" in capfd.readouterr().out


def test_a_solver_that_there_is_not_is_refused():
    with pytest.raises(RuntimeError, match="multi or iterative"):
        hyxOSG.ExampleApplication().init(hyxIO.ArgumentParser(["--solver", "magic"]))


def test_everything_can_be_made_at_once():
    app = hyxOSG.ExampleApplication()
    assert not app.initialized()
    assert app.init(hyxIO.ArgumentParser(["--window-size", "40x30"]), True)
    assert app.initialized()


@pytest.fixture
def box_scene(tmp_path):
    path = tmp_path / "box.json"
    path.write_text('{"bodies": [{"name": "box", "geometries": [{"shape": "box", "halfExtents": [1, 1, 1]}]}]}')
    return str(path)


def test_files_among_the_arguments_are_opened(started, box_scene, tmp_path):
    app = started(box_scene, "of the program's own")
    assert app.getNumScenes() == 1
    app.initScene()
    assert [body.getName() for body in app.getSimulation().getRigidBodies()] == ["box"]
    with pytest.raises(FileNotFoundError, match="missing.urdf"):
        started(str(tmp_path / "missing.urdf"))


def test_a_scene_that_there_is_not_is_refused(started, box_scene):
    app = started(box_scene, "--scene", "5", "--no-graphics")
    with pytest.raises(RuntimeError, match="there is no scene 5"):
        app.run()
    assert started("--speed", "0.5").getSpeed() == 0.5
    assert started("--status").getEnableStatus()


WRONG = """
import sys
import hyxIO, hyxOSG
hyxOSG.ExampleApplication().init(hyxIO.ArgumentParser(sys.argv[1:]))
"""


@pytest.mark.parametrize("wrong", [["--time-step", "fast"], ["--solver", "direct"], ["--no-such"]])
def test_a_programs_wrong_arguments_end_it_with_a_line(tmp_path, wrong):
    program = tmp_path / "program.py"
    program.write_text(WRONG)
    done = run_python(str(program), *wrong)
    assert done.returncode == 2 and "Traceback" not in done.stderr
    assert done.stderr.startswith(str(program)) and "--help" in done.stderr


TEXTS = {"capture", "capture-video", "journal-record", "journal-play", "journal-session", "rpc-token", "script"}
TEXTS |= {"model", "bundle-path", "profile"}


def test_each_option_that_the_help_lists_refuses_what_it_cannot_take(capfd):
    assert not hyxOSG.ExampleApplication().init(hyxIO.ArgumentParser(["--help"]))
    options = set(re.findall(r"--([a-z-]+) TEXT", capfd.readouterr().out))
    assert options > TEXTS
    for option in options - TEXTS:
        for value in ("bad", "nan", "inf", "5x", "-1e999"):
            with pytest.raises((ValueError, RuntimeError), match=value):
                hyxOSG.ExampleApplication().init(hyxIO.ArgumentParser(["--no-graphics", f"--{option}={value}"]))


def test_a_film_by_option_has_the_size_of_the_window_and_the_rate_asked_for(started, tmp_path):
    film = tmp_path / "film.mp4"
    app = started("--capture-video", str(film), "--capture-rate", "20", "--stop-after", "1")
    add_box(app)
    app.initViewer(80, 60)
    app.createVisual(app.getSimulation())
    app.run()
    facts = probe(film)
    assert (facts["width"], facts["height"]) == (80, 60)
    assert int(facts["nb_read_frames"]) == pytest.approx(20, abs=1) and facts["r_frame_rate"] == "20/1"


@pytest.mark.skipif(not has_display, reason="needs xvfb-run")
def test_a_full_screen_is_drawn_full(tmp_path):
    picture = tmp_path / "full.ppm"
    done = run_python(
        "import hyxIO, hyxOSG\n"
        "app = hyxOSG.ExampleApplication()\n"
        "app.init(hyxIO.ArgumentParser(['--full-screen']))\n"
        "app.initGraphics()\n"
        f"app.takeScreenShot({str(picture)!r})\n",
        on_display=True,
    )
    assert done.returncode == 0, done.stderr
    assert read_picture(picture).shape == (600, 800, 3)


def test_a_recording_and_a_capture_are_started(started, tmp_path):
    app = started(
        "--journal-record",
        str(tmp_path / "run.h5"),
        "--journal-session",
        "named",
        "--journal-frequency",
        "30",
        "--capture",
        str(tmp_path / "frame"),
        "--capture-rate",
        "20",
        "--stop-after",
        "0.5",
        "--window-size",
        "40x30",
    )
    assert app.getJournal().isRecording() and app.getJournal().getSessionName() == "named"
    app.run()
    assert not app.getJournal().isRecording()
    assert len(list(tmp_path.glob("frame*.png"))) == 10


def test_members_are_read_and_written(started):
    app = started()
    for name in ("m_loadedSceneFile", "m_isLoadingScene", "m_isFMU"):
        assert getattr(app, name) is False
        setattr(app, name, True)
        assert getattr(app, name) is True
    assert app.m_hostName == ""


def test_saved_scenes_have_a_file_name(started):
    assert started().getSaveSceneFilename() == "hyx_saved_scene.state"
