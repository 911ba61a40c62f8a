"""Makes random programs: legal life cycles, wrong types, wrong order, hostile objects, callbacks that destroy."""

from __future__ import annotations

import random
import re
from dataclasses import dataclass

from fuzz import numbers
from fuzz.interface import FAMILY, PACKAGES, REAL, TEXT, WHOLE, Operation, base_classes, operations

HEAD = """import fuzz.hostile as hostile
import {modules}
v = hostile.pool
hostile.begin()
def step(line):
    try:
        exec(line)
    except (Exception, KeyboardInterrupt):
        pass
"""
HOSTILE = ["loop", "fresh", "failing", "shrinking", "destroying", "chained", "named", "derived", "slots", "object"]
HOSTILE += ["generator", "lone surrogate", "bytes", "huge", "nan", "class"]
DIRECTORS = {
    "hyxSDK::EventListener": "listener",
    "hyxOSG::GuiEventListener": "gui",
    "hyxOSG::ExampleApplicationListener": "frames",
    "hyxOSG::LidarOutputRendererColorFunctionCallback": "colors",
}
DESTROYING = "hostile.make('destroying')"
UNCOUNTED = ("_hyxOSG.new_SplineShader(", "_hyxOSG.new_ParticleSystemDrawable(")
VALUES = {"legend", "hyxOSG::CameraData", "hyxOSG::LidarOutputRendererLegendPoint", "osg::Vec4f", "osg::Matrixd"}
VALUES |= {"hyx::Vec3", "hyx::Vec4", "hyx::Quat", "hyx::AffineMatrix4x4", "hyx::Event"}
MODULES = ", ".join([*FAMILY, *PACKAGES, "numpy"])
# What they take out of something may end with it, where flat functions have lent it: a program has no reference to it.
LETS_GO = re.compile(
    r"(remove|clear|replace|erase|pop|set|init|reset|restore|load|detach|stop|step|update|__del|__set)\w*"
)
SEQUENCES = {"hyx::Vec3": 3, "hyx::Vec4": 4, "hyx::Vec4f": 4, "hyx::Quat": 4, "osg::Vec3f": 3, "osg::Vec4f": 4}


@dataclass(frozen=True)
class Program:
    """Lines that stand alone: each one's failure, or its absence, leaves the others what they are."""

    lines: tuple[str, ...]

    @staticmethod
    def joined(programs: list[Program]) -> Program:
        """One after another, each with values of its own."""
        return Program(tuple(line for program in programs for line in ("hostile.begin()", *program.lines)))

    def script(self) -> str:
        return HEAD.format(modules=MODULES) + "".join(f"step({line!r})\n" for line in self.lines)


class Generator:
    """The same seed gives the same program."""

    def __init__(self) -> None:
        self.all = operations()
        self.makers: dict[str, list[Operation]] = {}
        self.users: dict[str, list[Operation]] = {}
        self.bases = base_classes()
        for operation in self.all:
            if operation.role != "destructor":
                for name in self.uses(operation.result):
                    self.makers.setdefault(name, []).append(operation)
            for parameter in set(operation.parameters):
                self.users.setdefault(parameter, []).append(operation)

    def uses(self, name: str) -> list[str]:
        """The classes that an object of this one may stand for."""
        return self.bases.get(name, [name])

    def program(self, seed: int) -> Program:
        return Maker(self, random.Random(seed)).make()


class Maker:
    """Writes one program, and knows what its values are."""

    def __init__(self, generator: Generator, chance: random.Random) -> None:
        self.of, self.chance = generator, chance
        self.lines: list[str] = []
        self.values: dict[str, list[int]] = {}  # places of values by their class
        self.owned: dict[str, list[int]] = {}  # those that a constructor has made and nothing has deleted
        self.borrowed: list[tuple[str, int]] = []
        self.proxies = chance.random() < 0.5  # which face of the library the program uses
        self.depth = 0
        self.wrong = chance.choice([0, 0, 0.05, 0.3])  # how often an argument is a wrong one
        self.hostility = chance.choice([0, 0.1, 0.5])  # how often a number is one that nobody would write

    def make(self) -> Program:
        length = self.chance.randint(30, 60)
        while len(self.lines) < length:
            self.lines_of(self.choose())
        return Program(tuple(self.lines[:length]))

    def choose(self) -> Operation:
        known = [name for name in self.values if name in self.of.users]
        if known and self.chance.random() < 0.8:
            return self.chance.choice(self.of.users[self.chance.choice(known)])
        return self.chance.choice(self.of.all)

    def lines_of(self, operation: Operation) -> int:
        """Adds the lines of one call; returns the place of its result."""
        if operation.role == "destructor":
            return self.deletion(operation)
        arguments = [self.argument(name) for name in operation.parameters]
        if not self.proxies and any(DESTROYING in argument for argument in arguments) and self.borrowed:
            self.lines.append("pass" + self.without_borrowed())  # it would end while the call uses it
        place = len(self.lines)
        call = self.call(operation, arguments)
        line = f"v[{place}] = {f'hostile.kept({call})' if call.startswith(UNCOUNTED) else call}"
        if not self.proxies and LETS_GO.fullmatch(operation.name.partition("_")[2] or operation.name):
            line += self.without_borrowed()
        self.lines.append(line)
        if operation.result not in WHOLE | REAL | TEXT | {"void", "bool"}:
            for name in self.of.uses(operation.result):
                self.values.setdefault(name, []).append(place)
            if operation.role != "constructor":
                self.borrowed.append((operation.result, place))
        if operation.role == "constructor":
            self.owned.setdefault(operation.result, []).append(place)
        return place

    def call(self, operation: Operation, arguments: list[str]) -> str:
        if not self.proxies or not operation.proxy:
            return f"{operation.module}.{operation.name}({', '.join(arguments)})"
        if operation.role == "constructor" and operation.parameters[:1] == ("PyObject",):
            del arguments[0]
        return operation.proxy.format(", ".join(arguments))

    def deletion(self, operation: Operation) -> int:
        """The end of what a constructor has made, once: who deletes what others hold has counted wrong. Its pointer
        object knows where it is a value; what counts references may live on, nobody says how long. Nothing knows where
        it lies in what has ended. Proxies know all of it, so that they only go out of reach."""
        owned = self.owned.get(operation.parameters[0])
        if not owned:
            self.lines.append(f"{operation.module}.{operation.name}(hostile.make({self.chance.choice(HOSTILE)!r}))")
        else:
            place = owned.pop(self.chance.randrange(len(owned)))
            if self.proxies:
                self.lines.append(f"v.pop({place}, None)")
                return len(self.lines) - 1
            line = f"{operation.module}.{operation.name}(v.get({place}))"
            if operation.parameters[0] not in VALUES:
                self.forget(operation.parameters[0], place)
                line += f"; v.pop({place}, None)"  # wrong arguments are any of the values
            self.lines.append(line + self.without_borrowed())
        return len(self.lines) - 1

    def without_borrowed(self) -> str:
        """Puts what has been lent out of the program's reach."""
        places = [place for _, place in self.borrowed]
        for name, lent in self.borrowed:
            self.forget(name, lent)
        self.borrowed.clear()
        return f"; [v.pop(place, None) for place in {places}]" if places else ""

    def forget(self, name: str, place: int) -> None:
        for use in self.of.uses(name):
            self.values[use].remove(place)

    def argument(self, name: str) -> str:
        if self.chance.random() < self.wrong:
            return self.wrong_argument()
        if name in WHOLE:
            return numbers.whole(self.chance, self.hostility)
        if self.proxies and name in REAL and self.chance.random() < 0.1:
            return self.chance.choice(["numpy.float32(0.5)", "numpy.int64(1)"])
        if name in REAL:
            return numbers.real(self.chance, self.hostility)
        if name == "bool":
            return self.chance.choice(["True", "False"])
        if name in TEXT:
            return self.chance.choice(["''", "'x'", "'a b'", "'nowhere.obj'"])
        if name == "SWIGPY_SLICEOBJECT":
            return f"slice({self.chance.choice([None, 0, 1, -9, 99])}, {self.chance.choice([None, 0, 2, -1])}, None)"
        return self.object(name)

    def object(self, name: str) -> str:
        if name in DIRECTORS and self.chance.random() < 0.4:
            return f"hostile.make({DIRECTORS[name]!r})"
        if name == "PyObject":
            return self.chance.choice(["None", "[1.0, 2.0, 3.0]", f"hostile.make({self.chance.choice(HOSTILE)!r})"])
        if self.proxies and name in SEQUENCES and self.chance.random() < 0.3:
            return self.sequence(SEQUENCES[name])
        known = self.values.get(name, ())
        if known and self.chance.random() < 0.85:
            return f"v.get({self.chance.choice(known)})"
        makers = self.of.makers.get(name, ())
        if not makers or self.depth > 2 or self.chance.random() < 0.05:
            enumeration = "::" in name and not makers
            return numbers.whole(self.chance, self.hostility) if enumeration else "None" if makers else "0"
        constructors = [maker for maker in makers if maker.role == "constructor"]
        self.depth += 1
        place = self.lines_of(self.chance.choice(constructors or list(makers)))
        self.depth -= 1
        return f"v.get({place})"

    def sequence(self, size: int) -> str:
        size += self.chance.random() < 0.05
        numbers = ", ".join(self.argument("float") for _ in range(size))
        return self.chance.choice([f"({numbers})", f"[{numbers}]", f"numpy.array([{numbers}])"])

    def wrong_argument(self) -> str:
        kind = self.chance.random()
        if kind < 0.6 or not self.lines:
            return f"hostile.make({self.chance.choice(HOSTILE)!r})"
        return f"v.get({self.chance.randrange(len(self.lines))})"
