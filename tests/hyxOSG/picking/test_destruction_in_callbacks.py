"""Callbacks may end their listener, their simulation, their window or their application while these call them."""

import collections
import pathlib

import pytest
from destructive_callbacks import ACTS, FRAMES, INPUT
from overrides import VIRTUAL, good_answer, native, overriding
from subprocesses import run_python
from test_listener_life import DESTROY

PROGRAM = pathlib.Path(__file__).parent / "destructive_callbacks.py"


@pytest.mark.xdist_group("heavy")  # one at a time: each takes up to 400 MB
@pytest.mark.parametrize("act", [act.__name__ for act in ACTS])
def test_every_callback_may_do_it(act):
    done = run_python(str(PROGRAM), act, HYX_DISPLAY="offscreen")
    assert (done.returncode, done.stderr) == (0, "")
    assert collections.Counter(done.stdout.split()) == {"end": 1, **dict.fromkeys((*FRAMES, *INPUT), 3)}


@pytest.mark.parametrize("cls, name", [(cls, name) for cls, methods in VIRTUAL.items() for name in methods])
def test_every_method_may_delete_its_native_object(cls, name):
    def delete(self, *arguments):
        DESTROY[cls](self)
        return good_answer(name)

    listener = overriding(name, answer=delete, base=cls)()
    listener.calls.clear()
    getattr(native(listener), name)(*VIRTUAL[cls][name])
    assert [call[0] for call in listener.calls] == [name]
    assert not listener.thisown


@pytest.mark.parametrize("cls, name", [(cls, name) for cls, methods in VIRTUAL.items() for name in methods])
def test_every_method_may_drop_the_last_reference_to_its_object(cls, name):
    kept = []

    def drop(self, *arguments):
        kept.clear()
        return good_answer(name)

    listener = overriding(name, answer=drop, base=cls)()
    handle = listener.this
    alias = cls.__new__(cls)
    alias.this = handle
    kept.append(listener)
    del listener
    getattr(alias, name)(*VIRTUAL[cls][name])
    assert kept == []
    result = getattr(alias, name)(*VIRTUAL[cls][name])
    assert name != "getLidarPointColor" or [result[i] for i in range(3)] == [0.5, 0.5, 0.5], "native from now on"
