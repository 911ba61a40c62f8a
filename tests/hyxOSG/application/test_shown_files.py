"""Files that are opened in place of what is shown: by a call, and by dragging them onto the window."""

import json
import pathlib

import hyx
import hyxOSG
import osgDB
import pytest
from application_stage import add_box
from subprocesses import has_display, run_python

PROGRAM = str(pathlib.Path(__file__).parent / "dropped_files.py")
SCENE = '{"bodies": [{"name": "%s", "geometries": [{"shape": "box", "halfExtents": [1, 1, 1]}]}]}'
SCRIPT = """
import hyx, hyxCollide
def buildScene(sim):
    sim.add(hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1)), "ball"))
"""


def names(app):
    return [body.getName() for body in app.getSimulation().getRigidBodies()]


@pytest.fixture
def shown(window, tmp_path):
    """An application that shows a box from a file."""
    (tmp_path / "box.json").write_text(SCENE % "box")
    assert window.showFile(str(tmp_path / "box.json")) and names(window) == ["box"]
    return window


def test_a_script_takes_the_place_of_a_scene(shown, tmp_path):
    (tmp_path / "ball.py").write_text(SCRIPT)
    assert shown.showFile(str(tmp_path / "ball.py")) and names(shown) == ["ball"]
    shown.createPreviousScene()
    assert names(shown) == ["box"], "both stay in the list"
    for name in ("ball", "box"):
        assert shown.showFile(str(tmp_path / ("ball.py" if name == "ball" else "box.json"))) and names(shown) == [name]
    assert shown.getNumScenes() == 2, "each once, however often it is shown"


def test_a_state_is_restored_into_the_scene(shown, tmp_path):
    state = str(tmp_path / "here.state")
    shown.getSimulation().save(state)
    shown.getSimulation().getRigidBodies()[0].setPosition(hyx.Vec3(9, 9, 9))
    assert shown.showFile(state) and shown.getSimulation().getRigidBodies()[0].getPosition().x == 0


def test_a_journal_plays_in_an_empty_scene_until_another_file_comes(app, shown, tmp_path):
    app.clearScene()
    add_box(app, "falling")
    app.setJournalRecordPath(str(tmp_path / "run.h5"))
    app.initRecordJournal()
    for _ in range(5):
        app.stepSimulation()
    app.setEnableJournalRecord(False)
    assert shown.showFile(str(tmp_path / "box.json"))
    assert shown.showFile(str(tmp_path / "run.h5"))
    shown.step()
    assert shown.getJournal().isPlaying() and names(shown) == ["falling"]
    assert shown.showFile(str(tmp_path / "box.json"))
    assert not shown.getJournal().isPlaying() and names(shown) == ["box"]


@pytest.mark.parametrize("name, content", [("notes.txt", "x"), ("bad.json", "{"), ("bad.h5", "x"), ("bad.py", "(")])
def test_what_cannot_be_shown_is_said_and_nothing_changes(name, content, shown, tmp_path):
    (tmp_path / name).write_text(content)
    assert not shown.showFile(str(tmp_path / name))
    assert shown.getSceneError() and names(shown) == ["box"]
    with pytest.raises(FileNotFoundError, match="missing.json"):
        shown.showFile(str(tmp_path / "missing.json"))


def dropped(*files):
    done = run_python(PROGRAM, *map(str, files), on_display=True)
    assert done.returncode == 0, done.stderr
    return json.loads(done.stdout)


@pytest.mark.skipif(not has_display, reason="no xvfb or xdotool")
def test_files_are_dragged_onto_the_window(tmp_path):
    first, second = tmp_path / "first.json", tmp_path / "ein Würfel 100%.json"
    first.write_text(SCENE % "first")
    second.write_text(SCENE % "cube")
    assert dropped(first, second) == {"bodies": ["cube"], "taken": ["CopyAction"], "error": "", "said": ""}
    (tmp_path / "notes.txt").write_text("x")
    report = dropped(tmp_path / "notes.txt")
    assert report["bodies"] == [] and "of no kind that can be opened" in report["error"]


@pytest.mark.parametrize("ending", ["py", "json", "urdf", "stl", "journal", "h5", "png"])
def test_a_folder_is_said_to_be_one(shown, tmp_path, ending):
    folder = tmp_path / f"folder.{ending}"
    folder.mkdir()
    with pytest.raises(IsADirectoryError):
        shown.showFile(str(folder))
    with pytest.raises(IsADirectoryError):
        shown.openFile(str(folder))
    for read in (hyxOSG.readNodeFile, osgDB.readImageFile):
        with pytest.warns(RuntimeWarning, match="is a folder"):
            assert read(str(folder)) is None
    assert names(shown) == ["box"]


@pytest.mark.parametrize("text, line", [("\0" + SCRIPT, 1), (SCRIPT + "\0pass", 5)])
def test_a_script_with_a_null_byte_is_a_syntax_error(shown, tmp_path, capfd, text, line):
    (tmp_path / "null.py").write_text(text)
    assert not shown.showFile(str(tmp_path / "null.py")) and names(shown) == ["box"]
    said = capfd.readouterr().err
    assert "SyntaxError" in said and f'null.py", line {line}' in said
