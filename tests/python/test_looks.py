"""The looks that a script chooses by one word."""

from typing import NamedTuple

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import numpy
import pytest
from PIL import Image

SIZE = 160


class Shown(NamedTuple):
    app: hyxOSG.ExampleApplication
    bodies: list
    file: str

    def picture(self):
        for _ in range(2):  # the first frame after a change also places the lights
            self.app.takeScreenShot(self.file)
        return numpy.asarray(Image.open(self.file).convert("RGB")).astype(int)


@pytest.fixture
def shown(tmp_path):
    with hyxOSG.ExampleApplication() as application:
        application.init(None)
        application.initSimulation(hyxSDK.Simulation())
        application.initViewer(SIZE, SIZE, True)
        bodies = [hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(*half))) for half in ((3, 3, 0.1), (0.5, 0.5, 0.5))]
        for body, height in zip(bodies, (-0.1, 0.5)):
            body.setPosition(hyx.Vec3(0, 0, height))
            hyxOSG.createVisual(body, application.getSceneRoot())
        application.setCameraHome(hyx.Vec3(2, -5, 3), hyx.Vec3(0, 0, 0.4))
        yield Shown(application, bodies, str(tmp_path / "picture.png"))


def test_plain_is_the_defaults_and_comes_back(shown):
    before = shown.picture()
    shown.app.setLook("plain")
    assert (shown.picture() == before).all()
    shown.app.setLook("talk")
    assert (shown.picture() != before).any()
    shown.app.setLook("plain")
    assert (shown.picture() == before).all()


def test_talk_grounds_the_scene(shown):
    plain = shown.picture()
    shown.app.setLook("talk")
    talk = shown.picture()
    ground = slice(SIZE // 2, SIZE)
    assert (plain[ground].max(axis=2) - talk[ground].max(axis=2) > 40).sum() > 100, "a shadow"
    shade = talk[ground][talk[ground].max(axis=2) < 130]
    assert len(shade) > 100 and (shade[:, 2] > shade[:, 0] + 2).mean() > 0.5, "in the colour of the sky"
    assert shade.min() > 30, "and never black"


def test_paper_is_white_behind_and_smoother(shown):
    shown.app.setLook("paper")
    assert (shown.picture()[0] == 255).all()
    shown.app.initViewer(SIZE, SIZE, True)
    assert shown.app.getNumSamples() >= 4


def test_other_words_are_refused(shown):
    with pytest.raises(ValueError, match="'plain', 'talk' or 'paper'"):
        shown.app.setLook("glossy")
