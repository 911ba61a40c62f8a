"""The looks that a script chooses by one word."""

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import numpy
import pytest
from PIL import Image

SIZE = 160


@pytest.fixture
def app(tmp_path):
    with hyxOSG.ExampleApplication() as application:
        application.init(None)
        application.initSimulation(hyxSDK.Simulation())
        application.initViewer(SIZE, SIZE, True)
        application.bodies = [
            hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(*half))) for half in ((3, 3, 0.1), (0.5, 0.5, 0.5))
        ]
        for body, height in zip(application.bodies, (-0.1, 0.5)):
            body.setPosition(hyx.Vec3(0, 0, height))
            hyxOSG.createVisual(body, application.getSceneRoot())
        application.setCameraHome(hyx.Vec3(2, -5, 3), hyx.Vec3(0, 0, 0.4))
        application.file = str(tmp_path / "picture.png")
        yield application


def picture(app):
    for _ in range(2):
        app.takeScreenShot(app.file)
    return numpy.asarray(Image.open(app.file).convert("RGB")).astype(int)


def test_plain_is_the_defaults_and_comes_back(app):
    before = picture(app)
    app.setLook("plain")
    assert (picture(app) == before).all()
    app.setLook("talk")
    assert (picture(app) != before).any()
    app.setLook("plain")
    assert (picture(app) == before).all()


def test_talk_grounds_the_scene(app):
    plain = picture(app)
    app.setLook("talk")
    talk = picture(app)
    ground = slice(SIZE // 2, SIZE)
    assert (plain[ground].max(axis=2) - talk[ground].max(axis=2) > 40).sum() > 100, "a shadow"
    shade = talk[ground][talk[ground].max(axis=2) < 130]
    assert len(shade) > 100 and (shade[:, 2] > shade[:, 0] + 2).mean() > 0.5, "in the colour of the sky"
    assert shade.min() > 30, "and never black"


def test_paper_is_white_behind_and_smoother(app):
    app.setLook("paper")
    assert (picture(app)[0] == 255).all()
    app.initViewer(SIZE, SIZE, True)
    assert app.getNumSamples() >= 4


def test_other_words_are_refused(app):
    with pytest.raises(ValueError, match="'plain', 'talk' or 'paper'"):
        app.setLook("glossy")
