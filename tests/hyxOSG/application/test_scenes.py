"""Scenes: added, chosen, built by scripts, restored."""

import os
import textwrap

import hyx
import hyxOSG
import pytest
from application_stage import add_box

SCENE = """
import hyx, hyxCollide
import osg

def {name}(sim, app, root):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.5)), "{name}")
    sim.add(body)
    group = osg.Group()
    group.setName("{name}")
    return group
"""


@pytest.fixture
def script(tmp_path):
    def write(text, name="scenes.py"):
        path = tmp_path / name
        path.write_text(textwrap.dedent(text))
        return str(path)

    return write


def bodies(app):
    return [body.getName() for body in app.getSimulation().getRigidBodies()]


@pytest.fixture
def scenes(app, script):
    """An application with three scenes, one, two and three."""
    path = script("".join(SCENE.format(name=name) for name in ("one", "two", "three")))
    for key, name in zip("123", ("one", "two", "three")):
        assert app.addScene(path, name, ord(key))
    return app


def test_scenes_are_built_by_key_and_by_index(scenes):
    assert scenes.getNumScenes() == 3
    assert scenes.createSceneFromKey(ord("2"))
    assert bodies(scenes) == ["two"] and scenes.getScene().getName() == "two"
    assert scenes.createSceneFromIndex(2, True) and bodies(scenes) == ["three"]
    assert not scenes.createSceneFromKey(ord("9"))
    assert not scenes.createSceneFromIndex(3) and not scenes.createSceneFromIndex(-1)
    assert bodies(scenes) == ["three"]


def test_next_and_previous_go_around(scenes):
    order = []
    for change in (
        scenes.createNextScene,
        scenes.createNextScene,
        scenes.createNextScene,
        scenes.createNextScene,
        scenes.createPreviousScene,
        scenes.createPreviousScene,
    ):
        change()
        order += bodies(scenes)
    assert order == ["one", "two", "three", "one", "three", "two"]


def test_initialising_builds_the_first_scene(scenes):
    loaded = []
    scenes.m_sceneLoadEvent.add(hyx.Callback(lambda: loaded.append(bodies(scenes))))
    scenes.initScene()
    assert loaded == [["one"]] and scenes.m_loadedSceneFile and not scenes.m_isLoadingScene


def test_a_key_is_taken_once_and_scenes_without_a_key_get_a_free_one(app, script):
    path = script(SCENE.format(name="one"))
    assert app.addScene(path, "one", ord("1"))
    assert not app.addScene(path, "one", ord("1"))
    assert app.addScene(path, "one")
    assert app.getCallback(ord("2")).scriptFunction == "one"
    assert app.addScene(hyxOSG.SceneDescription(path, "one"), 77) and app.getCallback(77).fileName == path
    assert app.addScene(hyxOSG.SceneDescription(path, "one"))
    assert not app.addScene(hyxOSG.SceneDescription())
    assert app.getNumScenes() == 4
    app.clearAddedScenes()
    assert app.getNumScenes() == 0 and not app.getCallback(ord("1")).isValid()


def test_the_forms_with_defaults_reach_the_description(app):
    app.addScene("a.py", "f", 65, False, 2.5, True)
    app.addScene("a.py", "f", False, 1.5)
    app.addScene("a.py", "f", 66, False)
    first, second, third = (app.getCallbackIdx(i) for i in range(3))
    assert (first.unittest, first.stopAfter, first.slowUnittest) == (False, 2.5, True)
    assert (second.unittest, second.stopAfter, second.slowUnittest) == (False, 1.5, False)
    assert (third.unittest, third.stopAfter) == (False, -1.0)
    first.fileName = "changed"
    assert app.getCallbackIdx(0).fileName == "a.py"  # results are copies
    with pytest.raises(RuntimeError, match="3 scenes"):
        app.getCallbackIdx(3)


def test_a_scene_ends_the_loop_after_its_time(app, script):
    app.initViewer(32, 32)
    app.addScene(script(SCENE.format(name="one")), "one", True, 0.25)
    assert app.run() == 0
    assert app.getTimeStamp() == pytest.approx(0.25, abs=1e-6)


def test_reloading_reads_a_changed_script(app, script):
    path = script(SCENE.format(name="one"))
    app.addScene(path, "one")
    assert app.createSceneFromIndex(0)
    script(SCENE.format(name="one").replace("0.5", "0.25").replace('), "one")', '), "changed")'))
    os.utime(path, (1, 1))
    app.reloadScene()
    assert bodies(app) == ["changed"] and app.getScriptFile() == path


def test_a_script_that_cannot_be_read_leaves_the_scene(scenes, script):
    scenes.createSceneFromIndex(1)
    broken = script("def one(:\n", "broken.py")
    scenes.addScene(broken, "one", ord("b"))
    with pytest.raises(SyntaxError) as error:
        scenes.createSceneFromKey(ord("b"))
    assert error.value.filename == broken
    scenes.addScene("/nowhere/missing.py", "one", ord("m"))
    with pytest.raises(FileNotFoundError, match="missing.py"):
        scenes.createSceneFromKey(ord("m"))
    assert bodies(scenes) == ["two"]


def test_an_error_in_a_scene_has_the_scripts_traceback(app, script):
    path = script("def build(sim):\n    return sim.noSuchThing()\n")
    app.addScene(path, "build")
    with pytest.raises(AttributeError) as error:
        app.createSceneFromIndex(0)
    assert [entry.path for entry in error.traceback][-1] == path or path in str(error.getrepr(style="native"))
    assert bodies(app) == [] and app.getScene() is None


def test_a_script_sees_that_its_scene_is_being_loaded(app, script):
    path = script("""
        def build(sim, app):
            app.setTimeStep(0.5 if app.m_isLoadingScene else 0.25)
    """)
    app.addScene(path, "build")
    assert app.createSceneFromIndex(0) and app.getTimeStep() == 0.5
    for flag in ("m_isLoadingScene", "m_loadedSceneFile"):
        before = getattr(app, flag)
        setattr(app, flag, not before)
        assert getattr(app, flag) is not before


def test_events_are_copied_with_who_listens(app, script):
    app.addScene(script("def build(sim): pass\n"), "build")
    other, heard = hyxOSG.ExampleApplication(), []
    other.m_sceneLoadEvent.add(hyx.Callback(lambda: heard.append("loaded")))
    other.autoStepEvent.add(lambda stepping: heard.append(stepping))
    app.m_sceneLoadEvent, app.autoStepEvent = other.m_sceneLoadEvent, other.autoStepEvent
    app.createSceneFromIndex(0)
    app.setAutoStepping(False)
    app.setAutoStepping(True, False)  # without the event
    assert heard == ["loaded", False]


def test_a_function_of_a_script_is_run(app, script):
    path = script("""
        import osg
        def group(sim, app, root):
            made = osg.Group()
            made.setName("made")
            return made
        def nothing():
            pass
        def wrong():
            return 3
    """)
    ok = hyx.Flag()
    assert app.executePythonScript(path, "group", ok).getName() == "made" and ok.get()
    ok.set(False)
    assert app.executePythonScript(path, "nothing", ok) is None and ok.get()
    with pytest.raises(RuntimeError, match="must return a group"):
        app.executePythonScript(path, "wrong", ok)
    assert not ok.get()
    with pytest.raises(AttributeError, match="missing"):
        app.executePythonScript(path, "missing", ok)


def test_the_state_of_a_simulation_is_restored(app, tmp_path):
    body = add_box(app, "box", (1, 2, 3))
    path = str(tmp_path / "state")
    app.getSimulation().save(path)
    for _ in range(10):
        app.step()
    assert body.getPosition().z < 3
    assert app.restoreFromFile(path)
    assert body.getPosition().z == 3 and app.getTimeStamp() == 0
    assert not app.restoreFromFile(str(tmp_path / "missing"))


def test_a_damaged_state_is_refused_and_changes_nothing(app, tmp_path):
    body, path = add_box(app, "box", (1, 2, 3)), tmp_path / "state"
    app.getSimulation().save(str(path))
    saved = path.read_bytes()
    app.step()
    before = tuple(body.getPosition()), app.getTimeStamp()
    damaged = [saved[:20], saved[:-1], b"", b"x" * 400]
    damaged += [saved[:place] + bytes([saved[place] ^ 1]) + saved[place + 1 :] for place in range(0, len(saved), 7)]
    for data in damaged:
        path.write_bytes(data)
        with pytest.raises(RuntimeError, match="damaged|no saved state|another version"):
            app.restoreFromFile(str(path))
        assert (tuple(body.getPosition()), app.getTimeStamp()) == before


def test_clearing_empties_simulation_and_groups(scenes):
    scenes.createSceneFromIndex(0)
    scenes.createVisual(scenes.getSimulation())
    scenes.step()
    assert scenes.getSceneHyxOSGRoot().getNumChildren() == 1
    scenes.clearScene()
    assert bodies(scenes) == [] and scenes.getScene() is None and scenes.getTimeStamp() == 0
    assert scenes.getSceneRoot().getNumChildren() == 0 and scenes.getSceneHyxOSGRoot().getNumChildren() == 0


def test_a_group_is_shown_and_replaced(app):
    import osg

    first, second = osg.Group(), osg.Group()
    app.initScene(first)
    assert app.getScene() == first and app.getSceneRoot().getNumChildren() == 1
    app.setScene(second)
    assert app.getScene() == second and app.getSceneRoot().getNumChildren() == 1
    app.setScene(None)
    assert app.getScene() is None and app.getSceneRoot().getNumChildren() == 0


def test_a_group_above_the_scene_is_no_scene_and_no_target_of_itself(app):
    target = hyxOSG.RenderToImage(64, 64)
    for call in (
        lambda: app.initScene(app.getRoot()),
        lambda: app.addRenderTarget(target, app.getRoot()),
        lambda: app.addRenderTarget(target, target.getCamera()),
    ):
        with pytest.raises(RuntimeError, match="cannot stand below itself"):
            call()
    app.initScene(app.getSceneRoot())
    app.addRenderTarget(target, app.getSceneRoot())


def test_scene_descriptions_are_values():
    made = hyxOSG.SceneDescription("file.py", "build", False, 3.0, True)
    assert made.isValid() and (made.fileName, made.scriptFunction) == ("file.py", "build")
    assert (made.unittest, made.stopAfter, made.slowUnittest, made.valid) == (False, 3.0, True, True)
    assert hyxOSG.SceneDescription("model.obj").isValid() and hyxOSG.SceneDescription("model.obj").scriptFunction == ""
    assert not hyxOSG.SceneDescription().isValid() and not hyxOSG.SceneDescription("", "build").isValid()
    assert made.scene is None
    made.valid = False
    assert not made.isValid() and made.valid is False
    made.fileName = "other.py"
    assert made.fileName == "other.py"
    made.unittest, made.stopAfter, made.slowUnittest, made.scriptFunction = True, 1.5, False, "other"
    assert (made.unittest, made.stopAfter, made.slowUnittest, made.scriptFunction) == (True, 1.5, False, "other")


def test_a_removed_geometrys_visual_leaves_at_the_next_frame(window):
    body = add_box(window)
    node = hyxOSG.createVisual(body.getGeometries()[0], window.getSceneRoot())
    window.step()
    assert window.getSceneRoot().getNumChildren() == 1
    hyxOSG.ExampleApplication.registerRemovedGeometry(node)
    window.step()
    assert window.getSceneRoot().getNumChildren() == 0
