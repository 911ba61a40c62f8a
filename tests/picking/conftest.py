import pathlib
import sys

import pytest

sys.path.insert(0, str(pathlib.Path(__file__).parent))


@pytest.fixture(scope="session")
def one_playground(tmp_path_factory):
    from playground import Playground

    return Playground(tmp_path_factory.mktemp("playground"))


@pytest.fixture
def playground(one_playground):
    one_playground.reset()
    yield one_playground
    one_playground.reset()
