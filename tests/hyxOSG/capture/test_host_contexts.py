"""The contexts of a host: which the embedded window draws in, several at once, and what ends first."""

import hyx
import hyxOSG
import numpy
import pytest
from capture_stage import GREEN, RED
from egl_host import OPENGL_API, OPENGL_ES_API, Host

# The attributes of a context: its major and minor version, and the core profile.
UNSUITABLE = {
    "OpenGL ES": (OPENGL_ES_API, (0x3098, 2), "OpenGL ES"),
    "core profile": (OPENGL_API, (0x3098, 3, 0x30FB, 3, 0x30FD, 1), "core profile"),
}


@pytest.mark.parametrize("api, version, words", UNSUITABLE.values(), ids=UNSUITABLE.keys())
def test_a_context_that_cannot_be_drawn_in_is_refused_in_words(api, version, words):
    unsuitable, made = Host(api=api, version=version), hyxOSG.EmbeddedGLWindow()
    with pytest.raises(RuntimeError, match=f"{words}.*ask for OpenGL.*compatibility profile"):
        made.init(0, 0, 320, 240)
    unsuitable.close()
    suitable = Host(version=(0x3098, 3, 0x30FB, 3, 0x30FD, 2))
    assert made.init(0, 0, *suitable.size)
    made.frame()
    del made
    suitable.close()


def flat(window, color):
    window.getSceneDecorator().setBackgroundColor(hyx.Vec3(*color))


def test_several_windows_draw_beside_each_other(host, window):
    other_host = Host(200, 100)
    other = hyxOSG.EmbeddedGLWindow()
    other.init(0, 0, 200, 100)
    flat(other, GREEN)
    flat(window, RED)
    for _ in range(3):
        host.make_current()
        window.frame()
        assert (host.pixels() == (255, 0, 0)).all()
        other_host.make_current()
        other.frame()
        assert (other_host.pixels() == (0, 255, 0)).all()
    with pytest.raises(RuntimeError, match="another OpenGL context"):
        window.frame()
    del other
    other_host.close()
    host.make_current()
    window.frame()
    assert (host.pixels() == (255, 0, 0)).all()


def test_windows_come_and_go_in_one_context(host):
    for _ in range(10):
        made = hyxOSG.EmbeddedGLWindow()
        made.init(0, 0, *host.size)
        made.getRoot().addChild(hyxOSG.createSphere(hyx.Vec3(), hyx.Vec4(1, 1, 1, 1), 1.0))
        made.fitSceneIntoView()
        made.frame()
        picture = host.pixels()
        assert len(numpy.unique(picture.reshape(-1, 3), axis=0)) > 20
        del made
    assert host.error() == 0


@pytest.mark.parametrize("drawn", [True, False])
def test_a_window_may_outlive_the_current_context(host, drawn):
    for _ in range(3):  # the next window gets the number of the one before
        host.make_current()
        made = hyxOSG.EmbeddedGLWindow()
        made.init(0, 0, *host.size)
        if drawn:
            made.frame()
        host.release()
        del made
    host.make_current()
    made = hyxOSG.EmbeddedGLWindow()
    made.init(0, 0, *host.size)
    made.frame()


def test_a_window_moves_to_another_context_with_all_that_it_shows(host, window):
    flat(window, (0, 0, 0))
    window.getRoot().addChild(hyxOSG.createSphere(hyx.Vec3(), hyx.Vec4(1, 0, 0, 1), 1.0))
    window.getSceneDecorator().setText(0, "moves along")
    window.fitSceneIntoView()
    for _ in range(2):
        window.frame()
    before = host.pixels()
    assert not window.init(0, 0, *host.size)
    host.close()
    other = Host(*host.size)
    assert window.init(0, 0, *other.size)
    for _ in range(2):
        window.frame()
    assert before.any() and (other.pixels() == before).all()
    assert other.error() == 0
    host.make_current = other.make_current  # for the end of the window
