"""The panels behind what an application writes on its picture, and what scripts do with them."""

import hyx
import hyxOSG
import numpy
import pytest

RED = (255, 0, 0)


@pytest.fixture
def panel(app):
    app.initViewer(800, 480)
    app.setEnableHelp(True)
    app.step()
    return app.getHelpPanel()


def shown(app):
    app.step()
    return app.render()


def frame_of(picture, color):
    """First and last column, first and last row of a colour, rows from the top; None where it is not."""
    rows, columns = numpy.nonzero((picture == color).all(axis=2))
    return (columns.min(), columns.max(), rows.min(), rows.max()) if len(rows) else None


def painted(panel):
    panel.setColor(hyx.Vec4(1, 0, 0, 1))
    panel.update()
    return panel


def test_the_panel_lies_round_the_keys(app, panel):
    painted(panel)
    left, right, top, bottom = frame_of(shown(app), RED)
    (x, y), (width, height) = panel.getPosition(), panel.getSize()
    assert (left, right + 1, top, bottom + 1) == pytest.approx((x, x + width, 480 - y - height, 480 - y), abs=1)
    assert left < 12 and top < 12 and height > 100


def test_the_text_goes_with_a_moved_panel(app, panel):
    painted(panel)
    written = shown(app)[20:240, 10:400]
    panel.setPosition(panel.getPosition() + hyx.Vec2(60, -40))
    panel.update()
    assert (written[:, :, 1] > 100).sum() > 100, "the text lies over the panel"
    numpy.testing.assert_allclose(shown(app)[60:280, 70:460].astype(int), written, atol=1)


def test_what_a_script_placed_stays_in_a_window_of_another_size(app, panel):
    panel.setPosition(hyx.Vec2(30, 20))
    size = tuple(panel.getSize())
    app.setWindowRectangle(0, 0, 600, 500)
    shown(app)
    assert tuple(panel.getPosition()) == (30, 20)
    assert tuple(panel.getSize()) == size


def test_panels_belong_to_the_application_and_leave_its_picture(app, panel):
    assert panel.match(app) and not panel.match(hyx.Vec3())
    assert panel.isValid()
    painted(panel).uninitialize(app.getPanelGroup())
    assert not panel.isValid()
    assert frame_of(shown(app), RED) is None


def test_without_a_text_there_is_no_panel(app, panel):
    painted(panel)
    app.setEnableHelp(False)
    assert frame_of(shown(app), RED) is None
    painted(app.getStatusPanel())
    assert frame_of(shown(app), RED) is None
    app.setEnableStatus(True)
    assert frame_of(shown(app), RED)[3] > 440
