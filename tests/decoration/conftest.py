import pathlib
import sys

import pytest

sys.path.insert(0, str(pathlib.Path(__file__).parent))


@pytest.fixture(scope="session")
def one_stage(tmp_path_factory):
    from stage import Stage

    return Stage(tmp_path_factory.mktemp("stage"))


@pytest.fixture
def stage(one_stage):
    one_stage.reset()
    yield one_stage
    one_stage.reset()


@pytest.fixture
def decorator(stage):
    return stage.decorator
