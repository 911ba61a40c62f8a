"""Cables bend and twist, and wear by the cycles they bear."""

import hyx
import hyxCable
import pytest

STEP = 1 / 60


def run(thing, steps):
    for _ in range(steps):
        thing.step(STEP)


def cable(slack=0.0):
    made = hyxCable.Cable(0.01, 20)
    made.add(hyx.Vec3(0, 0, 0))
    made.add(hyx.Vec3(1, 0, -slack))
    made.add(hyx.Vec3(2, 0, 0))
    return made


def test_a_bent_cable_has_the_curvature_of_its_shape():
    bent = cable(0.3)
    run(bent, 600)
    points = bent.getPoints()
    middle = len(points) // 2
    a, b, c = (points[middle + d] for d in (-4, 0, 4))
    area = (b - a).cross(c - a).length() / 2
    expected = 4 * area / ((b - a).length() * (c - b).length() * (c - a).length())
    assert bent.getLoad(middle).curvature == pytest.approx(expected, rel=0.05)
    assert bent.getLoad(middle).curvature > 2 * bent.getLoad(1).curvature


def test_a_stiff_cable_sags_less_than_a_soft_one():
    def sag(modulus):
        properties = hyxCable.CableProperties()
        properties.youngModulus = modulus
        properties.density = 8000.0
        made = hyxCable.Cable(0.01, 10, properties)
        made.add(hyx.Vec3(0, 0, 0))
        made.add(hyx.Vec3(2, 0, 0))
        run(made, 300)
        return -made.getPoints()[10].z

    assert 0 < sag(1e10) < 0.5 * sag(1e7)


def test_twist_is_spread_along_the_cable():
    twisted = cable()
    run(twisted, 1)
    twisted.setEndTwist(3.0)
    assert twisted.getLoad(3).twist == pytest.approx(3.0 / twisted.getLength())


def worn(*twists, exponent=5.0, bend=1.0):
    properties = hyxCable.DamageProperties()
    properties.exponent = exponent
    properties.referenceStress = 1e8
    properties.tensionWeight = properties.bendWeight = 0.0
    still = cable()
    still.setGravity(hyx.Vec3())
    still.step(STEP)
    damage = hyxCable.CableDamage(still, properties)
    for twist in twists:
        still.setEndTwist(twist)
        damage.update()
    return damage


def test_damage_sums_the_cycles_by_their_range():
    """Twisting to t and back is one cycle, whose harm goes with t to the exponent."""
    one = worn(0, 2, 0).getAccumulatedDamage(5)
    assert one > 0
    assert worn(0, 2, 0, 2, 0).getAccumulatedDamage(5) == pytest.approx(2 * one)
    assert worn(0, 4, 0).getAccumulatedDamage(5) == pytest.approx(one * 2**5)
    assert worn(0, 4, 0, exponent=3.0).getAccumulatedDamage(5) == pytest.approx(
        8 * worn(0, 2, 0, exponent=3.0).getAccumulatedDamage(5)
    )


def test_a_small_cycle_inside_a_large_one_counts_beside_it():
    large, small = worn(0, 4, 0).getAccumulatedDamage(0), worn(1, 2, 1).getAccumulatedDamage(0)
    assert worn(0, 2, 1, 4, 0).getAccumulatedDamage(0) == pytest.approx(large + small)
    steps = [0, 0.5, 1, 2, 3, 4, 3, 2, 1, 0]
    assert worn(*steps).getAccumulatedDamage(0) == pytest.approx(large)


def test_a_steady_load_does_no_harm_but_shows_as_current():
    damage = worn(*[2] * 20)
    assert damage.getAccumulatedDamage(0) == 0
    assert damage.getCurrentDamage(0) > 0 and damage.getStress(0) > 1e6
    damage.reset()
    assert damage.getStress(0) == 0


def test_weights_choose_what_harms():
    bent = cable(0.3)
    run(bent, 200)
    properties = hyxCable.DamageProperties()
    properties.tensionWeight = properties.twistWeight = 0.0
    damage = hyxCable.CableDamage(bent, properties)
    damage.update()
    middle = bent.getNumSegments() // 2
    expected = 1e9 * 0.01 * bent.getLoad(middle).curvature
    assert damage.getStress(middle) == pytest.approx(expected)
    with pytest.raises(RuntimeError):
        damage.getStress(10_000)
    with pytest.raises(RuntimeError, match="needs a cable"):
        hyxCable.CableDamage(None)
