"""Which contexts of a host the embedded window draws in."""

import hyxOSG
import pytest
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
    unsuitable.release()
    suitable = Host(version=(0x3098, 3, 0x30FB, 3, 0x30FD, 2))
    assert made.init(0, 0, *suitable.size)
    made.frame()
    del made
    suitable.release()
