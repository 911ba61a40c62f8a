"""Fracture keeps volume, mass and motion; pressure adds up to the contact force; wheels leave tracks."""

import math

import hyx
import hyxCollide
import hyxModel
import hyxSDK
import pytest
from physics_scene import GRAVITY


def box(half, position, mass=None):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(*half)))
    if mass:
        body.setMass(mass)
    body.setPosition(hyx.Vec3(*position))
    return body


def with_floor():
    simulation = hyxSDK.Simulation()
    simulation.add(hyxCollide.Geometry(hyxCollide.Plane()))
    return simulation


def run(simulation, steps):
    for _ in range(steps):
        simulation.step()


def test_pieces_have_the_mass_and_the_motion_of_the_whole():
    simulation = hyxSDK.Simulation()
    whole = box((0.5, 0.4, 0.3), (1, 2, 3), 120.0)
    whole.setVelocity(hyx.Vec3(1, 0, 2))
    whole.setAngularVelocity(hyx.Vec3(0, 0, 3))
    simulation.add(whole)
    generator = hyxModel.FractureGenerator()
    generator.setNumFragments(15)
    pieces = generator.fracture(whole, hyx.Vec3(1.5, 2, 3))
    assert len(pieces) == 15 and len(simulation.getRigidBodies()) == 15
    assert sum(piece.getMass() for piece in pieces) == pytest.approx(120)
    centre = sum((piece.getPosition() * piece.getMass() for piece in pieces), hyx.Vec3()) / 120
    assert (centre - hyx.Vec3(1, 2, 3)).length() < 1e-9
    momentum = sum((piece.getVelocity() * piece.getMass() for piece in pieces), hyx.Vec3()) / 120
    assert (momentum - hyx.Vec3(1, 0, 2)).length() < 1e-6
    volume = sum(piece.getGeometries()[0].getShape().getVolume() for piece in pieces)
    assert volume == pytest.approx(8 * 0.5 * 0.4 * 0.3, rel=1e-6)


def test_pieces_are_smaller_where_the_blow_was():
    generator = hyxModel.FractureGenerator()
    generator.setNumFragments(60)
    pieces = generator.fracture(box((1, 0.5, 0.5), (0, 0, 0)), hyx.Vec3(1, 0, 0))
    near = [piece.getMass() for piece in pieces if piece.getPosition().x > 0.3]
    far = [piece.getMass() for piece in pieces if piece.getPosition().x < -0.3]
    assert sum(near) / len(near) < 0.7 * sum(far) / len(far)


def test_a_hard_fall_breaks_and_a_soft_one_does_not():
    def fall(height):
        simulation = with_floor()
        brick = box((0.2, 0.2, 0.2), (0, 0, 0.2 + height), 10.0)
        simulation.add(brick)
        generator = hyxModel.FractureGenerator()
        # The four corners share the blow: 10 kg that lose 7.7 m/s in a step push each by 1150 N.
        generator.setBreakingForce(1000.0)
        generator.add(brick)
        simulation.add(generator)
        run(simulation, 120)
        return len(generator.getFragments())

    assert fall(0.001) == 0
    assert fall(3.0) == 12


def test_only_boxes_break():
    generator = hyxModel.FractureGenerator()
    ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1)))
    with pytest.raises(RuntimeError, match="box"):
        generator.add(ball)
    with pytest.raises(RuntimeError, match="not null"):
        generator.fracture(None, hyx.Vec3())
    with pytest.raises(RuntimeError, match="two pieces"):
        generator.setNumFragments(1)


def resting_field(tilt=0.0):
    simulation = with_floor()
    crate = box((0.5, 0.4, 0.25), (0, 0, 0.25), 80.0)
    simulation.add(crate)
    run(simulation, 60)
    crate.setRotation(hyx.Quat(tilt, hyx.Vec3(0, 1, 0)))
    field = hyxModel.PressureField(crate, 0.1)
    simulation.add(field)
    simulation.step()
    return field


def test_pressure_adds_up_to_the_weight_on_the_lower_face():
    field = resting_field()
    triangles = field.getTriangles()
    assert field.getForce() == pytest.approx(80 * GRAVITY, rel=0.02)
    assert len(triangles) == 2 * 10 * 8
    assert all(triangle.normal.z == pytest.approx(-1) for triangle in triangles)
    assert sum(triangle.getArea() for triangle in triangles) == pytest.approx(1.0 * 0.8)
    assert sum(triangle.getForce() for triangle in triangles) == pytest.approx(field.getForce())


def test_pressure_is_even_under_a_flat_face():
    pressures = [triangle.getPressure(corner) for triangle in resting_field().getTriangles() for corner in range(3)]
    assert min(pressures) > 0.5 * max(pressures)
    assert max(pressures) == pytest.approx(80 * GRAVITY / 0.8, rel=0.5)


def test_no_contact_no_pressure():
    simulation = hyxSDK.Simulation()
    crate = box((0.5, 0.5, 0.5), (0, 0, 5))
    simulation.add(crate)
    field = hyxModel.PressureField(crate, 0.1)
    simulation.add(field)
    simulation.step()
    assert field.getTriangles() == [] and field.getForce() == 0
    with pytest.raises(RuntimeError, match="with a box"):
        hyxModel.PressureField(hyx.RigidBody(), 0.1)
    with pytest.raises(RuntimeError, match="resolution"):
        hyxModel.PressureField(crate, 0.0)


def ground(simulation):
    geometry = hyxCollide.Geometry(hyxCollide.HeightField(41, 41, 4, 4))
    simulation.add(geometry)
    deformer = hyxModel.HeightFieldDeformer(geometry)
    return deformer


def test_a_load_sinks_until_the_ground_carries_it():
    deformer = ground(hyxSDK.Simulation())
    area = math.pi * deformer.getContactRadius() ** 2
    expected = 2000 / (deformer.getStiffness() * area)
    assert deformer.press(hyx.Vec3(0, 0, 0), 2000.0) == pytest.approx(expected)
    assert deformer.getSinkage(20, 20) == pytest.approx(expected)
    assert deformer.getSinkage(30, 30) == 0
    revision = deformer.getRevision()
    assert deformer.press(hyx.Vec3(0, 0, 0), 2000.0) == 0 and deformer.getRevision() == revision
    deformer.press(hyx.Vec3(0, 0, 0), 1e9)
    assert deformer.getSinkage(20, 20) == pytest.approx(deformer.getMaximumSinkage())
    deformer.reset()
    assert deformer.getSinkage(20, 20) == 0


def test_a_rolling_wheel_leaves_a_track():
    simulation = hyxSDK.Simulation()
    deformer = ground(simulation)
    simulation.add(deformer)
    wheel = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.4)))
    wheel.setMass(500.0)
    wheel.setPosition(hyx.Vec3(-1.2, 0, 0.4))
    wheel.setVelocity(hyx.Vec3(1.5, 0, 0))
    wheel.setAngularVelocity(hyx.Vec3(0, 1.5 / 0.4, 0))
    simulation.add(wheel)
    run(simulation, 80)
    # What it pushes down ahead brakes it, by about the square root of depth over diameter.
    assert -0.8 < wheel.getPosition().x < 0 and wheel.getVelocity().x < 1.5
    track = [deformer.getSinkage(i, 20) for i in range(9, 13)]
    assert min(track) > 0.01
    assert all(deformer.getSinkage(i, 32) == 0 for i in range(41))


def test_only_height_fields_deform():
    with pytest.raises(RuntimeError, match="height field"):
        hyxModel.HeightFieldDeformer(hyxCollide.Geometry(hyxCollide.Sphere(1)))
    with pytest.raises(RuntimeError, match="height field"):
        hyxModel.HeightFieldDeformer(None)
