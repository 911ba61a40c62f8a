"""Scenes that native functions build."""

import hyxOSG
import pytest
from _probe import native_scene


def bodies(app):
    return [body.getName() for body in app.getSimulation().getRigidBodies()]


@pytest.fixture
def scenes(app):
    assert app.addScene(native_scene("tower"), ord("t")) and app.addScene(native_scene("heap"), ord("h"))
    return app


def test_a_native_function_builds_the_scene(scenes):
    assert scenes.createSceneFromKey(ord("h"))
    assert bodies(scenes) == ["heap"] and scenes.getScene().getName() == "heap"
    assert not scenes.m_loadedSceneFile and scenes.getScriptFile() == ""


def test_next_previous_and_reload_call_the_functions_again(scenes):
    order = []
    for change in (
        scenes.createNextScene,
        scenes.createNextScene,
        scenes.createNextScene,
        scenes.createPreviousScene,
        scenes.reloadScene,
    ):
        change()
        order += bodies(scenes)
    assert order == ["tower", "heap", "tower", "heap", "heap"]


def test_reloading_builds_a_scene_anew(scenes):
    scenes.initScene()
    first = scenes.getSimulation().getRigidBody("tower")
    scenes.reloadScene()
    assert (
        bodies(scenes) == ["tower"]
        and scenes.getSimulation().getRigidBody("tower") != first
        and first.getSimulation() is None
    )


@pytest.mark.parametrize("key", [(), (77,)])
@pytest.mark.parametrize("rest", [(), (False,), (False, 2.5), (False, 2.5, True)])
def test_every_form_reaches_the_description(app, key, rest):
    assert app.addScene(native_scene("tower"), *key, *rest)
    found = app.getCallback(*key) if key else app.getCallbackIdx(0)
    unittest, stop_after, slow = rest + (True, -1.0, False)[len(rest) :]
    assert (found.unittest, found.stopAfter, found.slowUnittest) == (unittest, stop_after, slow)
    assert (
        found.isValid() and found.scene == native_scene("tower") and (found.fileName, found.scriptFunction) == ("", "")
    )


@pytest.mark.parametrize("rest", [(), (False,), (False, 2.5), (False, 2.5, True)])
def test_descriptions_carry_the_function(app, rest):
    made = hyxOSG.SceneDescription(native_scene("heap"), *rest)
    assert made.isValid() and made.scene == native_scene("heap") and made.scene != native_scene("tower")
    assert (made.unittest, made.stopAfter, made.slowUnittest) == rest + (True, -1.0, False)[len(rest) :]
    made.scene = native_scene("tower")
    assert app.addScene(made, 5) and app.createSceneFromKey(5) and bodies(app) == ["tower"]


def test_no_function_is_no_scene(app):
    assert native_scene("nothing") is None
    gone = hyxOSG.SceneDescription(native_scene("tower"))
    gone.scene = None
    assert not gone.isValid() and not app.addScene(gone) and app.getNumScenes() == 0
    for wrong in (len, "tower", 3, hyxOSG.SceneDescription):
        made = hyxOSG.SceneDescription(native_scene("tower"))
        with pytest.raises(TypeError):
            made.scene = wrong
        assert made.scene == native_scene("tower")


def test_an_exception_of_the_function_leaves_the_scene(scenes):
    scenes.createSceneFromIndex(0)
    scenes.addScene(native_scene("ruin"), ord("r"))
    with pytest.raises(RuntimeError, match="the blueprint is lost"):
        scenes.createSceneFromKey(ord("r"))
    assert bodies(scenes) == ["tower"] and scenes.getScene() is not None and not scenes.m_isLoadingScene
    assert scenes.createSceneFromIndex(1) and bodies(scenes) == ["heap"]


def test_the_time_of_a_native_scene_ends_the_loop(app):
    app.initViewer(32, 32)
    app.addScene(native_scene("tower"), ord("t"), True, 0.2)
    assert app.run() == 0 and app.getTimeStamp() == pytest.approx(0.2, abs=1e-6)
