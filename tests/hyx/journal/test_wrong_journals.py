"""Journals of other programs: what is wrong with them is said, and nothing else happens."""

import re

import numpy
import pytest
import wrong_journals
from subprocesses import run_python


def test_wrong_journals_are_refused_in_words(tmp_path):
    wrong_journals.write_all(tmp_path)
    done = run_python(wrong_journals.__file__, str(tmp_path))
    assert done.returncode == 0, done.stderr[-500:]
    assert int(done.stdout) < 1_000_000  # kB
    told = dict(re.findall(r"^## (.*)\n([^#]*)", done.stderr, re.MULTILINE))
    assert set(told) == {*wrong_journals.CONTENTS, *wrong_journals.LAYOUTS}
    unsaid = {name: words for name, words in told.items() if "journal" not in words or "bad_alloc" in words}
    assert unsaid == {}
    shown = {name for name, words in told.items() if re.search(r"shown [1-9]", words)}
    assert shown == set()


@pytest.mark.parametrize("padding", ["S16", "S3"])
def test_journals_of_other_programs_are_played(padding, app, tmp_path):
    path = tmp_path / "other.h5"
    wrong_journals.write(path, {"bodies": numpy.array([b"one", b"two"], padding)})
    app.setJournalRecordPath(str(path))
    app.journalPlayback()
    app.step()
    assert [body.getName() for body in app.getSimulation().getRigidBodies()] == ["one", "two"]
    assert app.getJournal().getNumStates() == wrong_journals.STATES
