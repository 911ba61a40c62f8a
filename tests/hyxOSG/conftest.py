"""The one small application that most tests of pictures share."""

import pytest
from studio import Studio


@pytest.fixture(scope="session")
def whole_studio():
    made = Studio()
    yield made
    made.app.close()


@pytest.fixture
def studio(whole_studio):
    whole_studio.clear()
    yield whole_studio
    whole_studio.clear()
