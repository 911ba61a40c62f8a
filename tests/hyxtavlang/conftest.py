"""The tests of models run in folders of their own."""

import pytest


@pytest.fixture(autouse=True)
def own_folder(tmp_path, monkeypatch):
    """MuJoCo writes its warnings to a file in the working folder."""
    monkeypatch.chdir(tmp_path)
