"""Programs that give numbers of every size to all that takes numbers, one after another, in a world that steps."""

from __future__ import annotations

import random

from fuzz import numbers
from fuzz.interface import REAL, WHOLE, Operation
from fuzz.programs import Generator, Maker, Program

# Values of so many numbers, or lists of any number of them.
VALUES = {"hyx::Vec2": 2, "hyx::Vec3": 3, "hyx::Vec3f": 3, "hyx::Vec4": 4, "hyx::Vec4f": 4, "hyx::Quat": 4}
VALUES |= {
    "hyxRender::Color": 4,
    "hyx::RangeReal": 2,
    "osg::Vec2f": 2,
    "osg::Vec3f": 3,
    "osg::Vec3d": 3,
    "osg::Vec4f": 4,
}
VALUES |= {"osg::Quat": 4, "osg::Matrixd": 16, "osg::Plane": 4, "hyx::Plane": 4}
LISTS = {"hyx::RealVector": "[{}] * 9", "hyx::Vec3Vector": "[({0}, {0}, {0})] * 3"}
NUMERIC = WHOLE | REAL | set(VALUES) | set(LISTS)
# Class and expression of what stands in the world; earlier ones have their places.
WORLD = [
    ("hyxSDK::Simulation", "hyxSDK.Simulation()"),
    ("hyxCollide::Geometry", "hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.5))"),
    ("hyx::RigidBody", "hyx.RigidBody(v[1])"),
    ("hyx::RigidBody", "hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.5)))"),
    ("hyx::Hinge", "hyx.Hinge((0, 0, 1), (0, 1, 0), v[2], v[3])"),
    ("hyx::ParticleSystem", "hyx.ParticleSystem()"),
    ("hyx::Emitter", "hyx.Emitter(v[5])"),
    ("hyx::RigidBodyEmitter", "hyx.RigidBodyEmitter()"),
    ("hyxWire::Wire", "hyxWire.Wire(0.02, 6)"),
    ("hyxCable::Cable", "hyxCable.Cable(0.012, 14)"),
    ("hyxTerrain::Terrain", "hyxTerrain.Terrain(9, 9, 0.5, 1.0)"),
    ("hyxSDK::TerrainInstance", "hyxSDK.TerrainInstance(v[10])"),
    ("hyxCollide::Geometry", "hyxCollide.Geometry(hyxCollide.HeightField(5, 5, 1.0, 1.0))"),
    ("hyxModel::HeightFieldDeformer", "hyxModel.HeightFieldDeformer(v[12])"),
    ("hyxModel::PressureField", "hyxModel.PressureField(v[2], 0.25)"),
    ("hyxSensor::Lidar", "hyxSensor.Lidar(hyx.Frame())"),
    ("hyxModel::FractureGenerator", "hyxModel.FractureGenerator()"),
    ("hyxCable::CableDamage", "hyxCable.CableDamage(v[9])"),
    ("hyxTerrain::DigTool", "hyxTerrain.DigTool(v[3], (0, -1, -1), (0, 1, -1), (0, 0, 1))"),
    ("hyx::BallJoint", "hyx.BallJoint(v[3], hyx.Frame())"),
    ("hyxUtil::CubicSpline", "hyxUtil.CubicSpline()"),
]
POINTS = ["(0, 0, 1)", "(0.5, 0, 2)", "(1, 0, 1)"]
SETTING = [f"v[{place}].add({point})" for place in (8, 9, 20) for point in POINTS]
SETTING += ["v[5].createParticle((0, 0, 1))", "v[10].addTool(v[18])", "v[3].setPosition((0, 0, 1))"]
SETTING += [f"v[0].add(v[{place}])" for place in (2, 3, 4, 5, 6, 8, 9, 11, 12, 13, 14, 15, 16, 17, 19)]
CALLS = 30  # a program


def takes_numbers(operation: Operation) -> bool:
    return not NUMERIC.isdisjoint(operation.parameters) and operation.role != "destructor"


class WorldMaker(Maker):
    """Takes its operations in turn: programs of successive seeds come to all of them."""

    def __init__(self, generator: Generator, seed: int) -> None:
        super().__init__(generator, random.Random(seed))
        self.proxies, self.wrong, self.hostility = True, 0, 0.6
        turns = [operation for operation in generator.all if takes_numbers(operation)]
        random.Random(seed // len(turns)).shuffle(turns)
        start = seed % len(turns) * CALLS
        self.turns = [turns[(start + call) % len(turns)] for call in range(CALLS)]

    def make(self) -> Program:
        for place, (kind, expression) in enumerate(WORLD):
            self.lines.append(f"v[{place}] = {expression}")
            for name in self.of.uses(kind):
                self.values.setdefault(name, []).append(place)
        self.lines += SETTING
        for operation in self.turns:
            self.lines_of(operation)
            if self.chance.random() < 0.3:
                self.lines.append("v[0].step()")
        self.lines += ["v[0].step()"] * 3
        return Program(tuple(self.lines))

    def argument(self, name: str) -> str:
        if name in VALUES:
            several = ", ".join(numbers.real(self.chance, self.hostility) for _ in range(VALUES[name]))
            return f"{name.replace('::', '.')}({several})"
        if name in LISTS:
            return LISTS[name].format(numbers.real(self.chance, self.hostility))
        return super().argument(name)

    def object(self, name: str) -> str:
        """Objects on which to call are sound ones."""
        hostility, self.hostility = self.hostility, 0
        found = super().object(name)
        self.hostility = hostility
        return found


def world_program(generator: Generator, seed: int) -> Program:
    return WorldMaker(generator, seed).make()
