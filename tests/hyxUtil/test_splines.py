"""Curves: they go through their points, have the stated smoothness and length."""

import math

import hyx
import hyxUtil
import pytest

KINDS = [hyxUtil.Spline, hyxUtil.CubicSpline, hyxUtil.HermiteSpline]
CORNERS = [(0, 0, 0), (1, 0, 0), (1, 1, 0), (2, 1, 1)]


def made(kind, points=CORNERS):
    spline = kind()
    for point in points:
        spline.add(hyx.Vec3(*point))
    return spline


@pytest.mark.parametrize("kind", KINDS)
def test_every_kind_goes_through_its_points(kind):
    spline = made(kind)
    for i, corner in enumerate(CORNERS):
        assert (spline.evaluate(i) - hyx.Vec3(*corner)).length() < 1e-12
    assert spline.evaluate(-5) == spline.evaluate(0) and spline.evaluate(99) == spline.evaluate(3)


@pytest.mark.parametrize("kind", KINDS)
def test_a_straight_row_of_points_gives_a_straight_line(kind):
    spline = made(kind, [(i, 0, 0) for i in range(5)])
    assert spline.getLength() == pytest.approx(4)
    assert spline.evaluate(2.25).x == pytest.approx(2.25)
    assert spline.getCurvature(1.5) == pytest.approx(0, abs=1e-9)
    assert spline.getTangent(3.3).x == pytest.approx(1)


def test_the_cubic_spline_follows_a_circle():
    turn = [i * math.pi / 8 for i in range(17)]
    spline = made(hyxUtil.CubicSpline, [(2 * math.cos(a), 2 * math.sin(a), 0) for a in turn])
    assert spline.getCurvature(8.5) == pytest.approx(0.5, rel=0.01)
    assert spline.getLength() == pytest.approx(4 * math.pi, rel=1e-3)
    assert spline.evaluate(7.5).length() == pytest.approx(2, rel=1e-3)


def test_the_cubic_spline_has_no_kinks_but_the_polygon_has():
    def turn(kind):
        spline = made(kind)
        return spline.getTangent(1 - 1e-6).dot(spline.getTangent(1 + 1e-6))

    assert turn(hyxUtil.CubicSpline) > 0.999999 and turn(hyxUtil.HermiteSpline) > 0.999999
    assert turn(hyxUtil.Spline) == pytest.approx(0, abs=1e-6)


def test_moving_a_point_far_away_leaves_a_hermite_segment_alone():
    spline = made(hyxUtil.HermiteSpline, [(i, i % 2, 0) for i in range(8)])
    before = spline.evaluate(0.5)
    spline.setPoint(6, hyx.Vec3(6, 9, 0))
    assert spline.evaluate(0.5) == before and spline.evaluate(5.5) != before


def test_tension_straightens():
    def bow(tension):
        spline = hyxUtil.HermiteSpline(tension)
        for corner in CORNERS:
            spline.add(hyx.Vec3(*corner))
        return spline.getLength()

    straight = 2 + math.sqrt(2)
    assert bow(1.0) == pytest.approx(straight) and bow(0.0) > bow(0.5) > straight
    with pytest.raises(RuntimeError, match="between 0 and 1"):
        hyxUtil.HermiteSpline(1.5)


@pytest.mark.parametrize("kind", KINDS)
def test_degenerate_curves_are_defined(kind):
    spline = kind()
    assert spline.evaluate(0.5) == hyx.Vec3() and spline.getLength() == 0
    spline.add(hyx.Vec3(1, 2, 3))
    assert spline.evaluate(7) == hyx.Vec3(1, 2, 3)
    spline.add(hyx.Vec3(1, 2, 3))
    assert spline.getLength() == 0 and spline.getTangent(0.5) == hyx.Vec3(1, 0, 0) and spline.getCurvature(0.5) == 0
    assert spline.evaluate(math.nan) == hyx.Vec3(1, 2, 3)


def test_points_are_checked_and_changes_counted():
    spline = made(hyxUtil.CubicSpline)
    revision = spline.getRevision()
    with pytest.raises(RuntimeError, match="control point"):
        spline.add(hyx.Vec3(0, math.inf, 0))
    assert spline.getRevision() == revision and spline.getNumPoints() == 4
    spline.setPoints(hyx.Vec3Vector([hyx.Vec3(), hyx.Vec3(3, 0, 4)]))
    assert spline.getRevision() > revision and spline.getLength() == pytest.approx(5)
    with pytest.raises(RuntimeError):
        spline.getPoint(2)
