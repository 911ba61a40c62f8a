"""Code of the user that a call runs, while it reads slices and iterables, cannot end what the call uses."""

import pytest
from subprocesses import run_python

LISTS = {
    "hyx.RealVector": "float",
    "hyx.Vec3Vector": "lambda n: hyx.Vec3(n, 1, 2)",
    "hyx.Vec3fVector": "lambda n: hyx.Vec3f(n, 1, 2)",
    "hyxRender.ColorVector": "lambda n: hyxRender.Color(n, 0, 1)",
    "osg.ImageVector": "lambda n: osg.Image(1, 1)",
    "hyxOSG.LidarOutputRendererLegend": "lambda n: hyxOSG.LidarOutputRendererLegendPoint()",
}
# How the list, and that which is assigned to it, come to an end.
ENDINGS = {
    "deleted": "delete(of)",
    "given up": "delattr(of, 'this') if hasattr(of, 'this') else None",
    "exchanged": "of.this = make().this",
}
EVERY_READING = """
import hyx, hyxOSG, hyxRender, osg, importlib
cls, element = {cls}, {element}
modules = [importlib.import_module("_" + name) for name in ("hyx", "osg", "hyxOSG", "hyxCollide", "hyxModel", "hyxSDK")]
delete = next(vars(each)["delete_" + cls.__name__] for each in modules if "delete_" + cls.__name__ in vars(each))

def make():
    return cls([element(n) for n in range(2000)])

def end():
    for of in (used, given):
        try:
            {ending}
        except RuntimeError as error:
            assert str(error) == "the object is used by a call that has not ended and cannot be deleted"
    kept.extend(make() for _ in range(3))  # takes the memory that was freed
    return 7

class Place:
    def __index__(self):
        return end()

def items():
    yield element(1)
    end()
    yield element(2)

def assign(at, value):
    used[at] = value

def extend():
    used.extend(items()) if hasattr(used, "extend") else assign(slice(2000, None), items())

def delete_slice(at):
    del used[at]

for reading in (
    lambda: used[Place():],
    lambda: used[: Place() : -1],
    lambda: delete_slice(slice(Place(), None)),
    lambda: delete_slice(slice(None, None, Place())),
    lambda: assign(slice(Place(), 9), items()),
    lambda: assign(slice(Place(), 9), given),
    lambda: assign(slice(1, 9), items()),
    extend,
):
    kept, used, given = [], make(), make()
    try:
        reading()
    except TypeError as error:
        assert "argument" in str(error) or "holds no native one" in str(error), error
    try:
        assert len(list(used)) <= 4002
    except TypeError as error:
        assert "holds no native one" in str(error)
print("survived")
"""


@pytest.mark.parametrize("ending", ENDINGS)
@pytest.mark.parametrize("cls", LISTS)
def test_lists_outlive_the_calls_that_read_for_them(cls, ending):
    done = run_python(EVERY_READING.format(cls=cls, element=LISTS[cls], ending=ENDINGS[ending]))
    assert "survived\n" in done.stdout and done.returncode == 0, done.stderr[-2000:]


READERS = {
    "Trimesh": (
        "hyxCollide.Trimesh([hyx.Vec3(0, 0, 0), hyx.Vec3(1, 0, 0), hyx.Vec3(0, 1, 0)], [0, 1, 2])",
        "used.updateVertices(given(lambda: hyx.Vec3(1, 2, 3), 3))",
    ),
    "HeightField": (
        "hyxCollide.HeightField(3, 3, 1.0, 1.0, [0.0] * 9)",
        "used.setHeights(given(lambda: 1.0, 9))",
    ),
}


@pytest.mark.parametrize("cls", READERS)
def test_shapes_outlive_the_calls_that_read_for_them(cls):
    make, call = READERS[cls]
    done = run_python(f"""
import hyx, hyxCollide, _hyxCollide
def given(make, count):
    for number in range(count):
        yield make()
        try:
            _hyxCollide.delete_{cls}(used)
        except RuntimeError as error:
            refused.append(str(error))
refused, used = [], {make}
{call}
print(set(refused) == {{"the object is used by a call that has not ended and cannot be deleted"}}, used)
_hyxCollide.delete_{cls}(used)
""")
    assert done.stdout.startswith("True") and done.returncode == 0, done.stderr[-2000:]


HOLDERS = {
    "dict": "H()",
    "slot": "hyxOSG.LidarOutputRendererLegend.__new__(hyxOSG.LidarOutputRendererLegend)",
    "property": "Computed()",
}


@pytest.mark.parametrize("holder", HOLDERS)
@pytest.mark.parametrize(
    "call",
    [
        "LidarOutputRendererLegend_swap(used, Ending(flat.new_LidarOutputRendererLegend))",
        "LidarOutputRendererLegend_push_back(used, Ending(flat.new_LidarOutputRendererLegendPoint))",
        "LidarOutputRendererLegend___setitem__(used, 1, Ending(flat.new_LidarOutputRendererLegendPoint))",
        "LidarOutputRendererLegend___setslice__(used, 1, 2, points())",
    ],
)
@pytest.mark.parametrize("end", ["del used.this", "flat.delete_LidarOutputRendererLegend(used)"])
def test_what_an_earlier_argument_held_is_not_used_after_a_later_one_has_ended_it(holder, call, end):
    done = run_python(f"""
import _hyxOSG as flat, hyxOSG
class H: pass
class Computed:
    def get(self):
        return self.kept
    def set(self, value):
        self.kept = value
    def forget(self):
        del self.kept
    this = property(get, set, forget)
class Ending:
    def __init__(self, make): self.make = make
    @property
    def this(self):
        if hasattr(used, "this"):
            {end}
        kept.extend(flat.new_LidarOutputRendererLegend(3000) for _ in range(3))
        return self.make()
def points():
    yield hyxOSG.LidarOutputRendererLegendPoint()
    yield Ending(flat.new_LidarOutputRendererLegendPoint)
kept, used = [], {HOLDERS[holder]}
used.this = flat.new_LidarOutputRendererLegend(3000)
try:
    flat.{call}
except TypeError as error:
    print("refused" if "argument 1 of type 'std::vector<" in str(error) else error)
print("survived", flush=True)
""")
    assert "survived\n" in done.stdout and done.returncode == 0, (done.stdout[-300:], done.stderr[-2000:])
