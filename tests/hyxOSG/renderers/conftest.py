"""A stage for each test of a renderer."""

import pytest
from stage import Stage


@pytest.fixture
def stage(tmp_path):
    return Stage(tmp_path)
