"""Linking of type tables, look-ups by name, casts."""

import _sample
import pytest
from subprocesses import run_python


def test_both_names_of_a_type_find_its_descriptor():
    assert _sample.query_type("hyx::RigidBody *") == "_p_hyx__RigidBody"
    assert _sample.query_type("_p_hyx__RigidBody") == "_p_hyx__RigidBody"
    assert "hyx::RigidBody *" in _sample.cached_queries()


@pytest.mark.parametrize(
    "spelling", ["sample::Renamed*", "sample :: Renamed  *", "sample::OtherName *", "sample::ThirdName*"]
)
def test_blanks_and_equivalent_spellings_do_not_matter(spelling):
    assert _sample.query_type(spelling) == "_p_sample__Renamed"


@pytest.mark.parametrize("name", ["nothing::Here *", "sample::Rename *", "sample::Renamed", "", "_p_sample__Renamed_"])
def test_unknown_names_find_nothing_and_are_not_cached(name):
    assert _sample.query_type(name) is None
    assert name not in _sample.cached_queries()


def test_every_shape_of_cast_reaches_the_base():
    both, virtual = _sample.new_Both(), _sample.new_Virtual()
    assert _sample.base_value(_sample.new_Derived()) == 1  # same address
    assert _sample.other_value(both) == 2  # fixed offset
    assert _sample.other_value(virtual) == 2  # virtual base
    assert _sample.root_base_value(virtual) == 4  # offset inside a virtual base
    assert _sample.convert_object(both, "sample::Other *")[1] != int(both)


def test_a_found_cast_moves_to_the_front():
    derived, both = _sample.new_Derived(), _sample.new_Both()
    for handle, name in (
        (derived, "_p_sample__Derived+"),
        (both, "_p_sample__Both+"),
        (derived, "_p_sample__Derived+"),
    ):
        before = sorted(_sample.cast_list("sample::Base *"))
        _sample.base_value(handle)
        after = _sample.cast_list("sample::Base *")
        assert after[0] == name
        assert sorted(after) == before


def test_an_unrelated_type_does_not_convert_and_leaves_the_list_alone():
    before = _sample.cast_list("sample::Base *")
    for _ in range(3):
        assert _sample.convert_object(_sample.new_Unrelated(), "sample::Base *")[0] == -1
    assert _sample.cast_list("sample::Base *") == before


def test_shared_pointers_convert_by_sharing_ownership():
    leaf = _sample.shared_leaf(True)
    assert _sample.convert_shared(leaf, "_p_std__shared_ptrT_sample__Top_t") == (0, 2, 2, 1, 0)
    assert _sample.convert_shared(leaf, "_p_std__shared_ptrT_sample__Leaf_t")[1] == 0
    assert _sample.convert_shared(_sample.shared_leaf(False), "_p_std__shared_ptrT_sample__Middle_t") == (0, 2, 1, 1, 1)


MODEL_FAMILIES = [
    "Core::Object Physics::System Robotics::Joints::Joint Robotics::Joints::SingleAxisJoint"
    " Robotics::Joints::HingeJoint Robotics::Joints::PositionHingeJoint",
    "Core::Object Physics::System Physics3D::System",
    "Core::Object Physics3D::Geometry Physics3D::Geometries::Capsule",
    "Core::Object Control::Actuator Control::PositionActuator",
    "Core::Object Visuals::Light",
]


@pytest.mark.parametrize("held", ["_", "_p_"])  # by value, by pointer
@pytest.mark.parametrize("family", MODEL_FAMILIES, ids=lambda family: family.split("::")[-1])
def test_objects_of_models_convert_to_each_of_their_bases(held, family):
    import hyxtavlang

    assert hyxtavlang.ModelNode  # whose module knows these types
    names = [f"{held}std__shared_ptrT_tavlang__{name.replace('::', '__')}_t" for name in family.split()]
    for place, source in enumerate(names):
        for base in names[:place]:
            assert _sample.convert_shared(_sample.shared_leaf(True, source), base) == (0, 2, 2, 1, 0)
            assert _sample.convert_shared(_sample.shared_leaf(False, source), base)[4] == 1
        for derived in names[place + 1 :]:
            assert _sample.convert_shared(_sample.shared_leaf(True, source), derived)[0] < 0


FAMILY = """
import {first}, {second}
import _sample, plain_sibling as plain
assert _sample.base_value(plain.new_special(17)) == 17
assert plain.read_base(_sample.new_Base()) == 1
assert plain.read_base(_sample.new_Both()) == 1
assert len(_sample.chain_sizes()) == 2
assert _sample.cast_list("sample::Base *").count("_p_plain__Special+") == 1
assert _sample.cast_list("sample::Base *").count("_p_sample__Derived+") == 1
assert _sample.query_type("plain::Special *") == "_p_plain__Special"
assert _sample.publishes_chain() is ({first}.__name__ == "_sample")
print("linked")
"""


@pytest.mark.parametrize("order", [("_sample", "plain_sibling"), ("plain_sibling", "_sample")])
def test_a_sibling_built_from_the_records_alone_links_in_both_orders(order):
    result = run_python(FAMILY.format(first=order[0], second=order[1]))
    # The objects without destructors are announced through C's own buffer, so before or after.
    assert (result.stdout.splitlines().count("linked"), result.stderr) == (1, "")


def test_a_miss_is_forgotten_when_a_module_joins_the_chain():
    result = run_python("""
import _sample
vec = _sample.wrap_address(8, "hyx::Vec3 *")
assert _sample.convert_object(vec, "sample::Base *")[0] == -1
import plain_sibling
assert _sample.convert_object(plain_sibling.new_special(3), "sample::Base *")[0] == 0
assert _sample.convert_object(vec, "sample::Base *")[0] == -1
print("ok")
""")
    assert (result.stdout, result.stderr) == ("ok\n", "")


def test_owned_objects_keep_the_published_table_alive():
    result = run_python("""
import sys, _sample
class Base:
    __swig_destroy__ = _sample.delete_Base
_sample.Base_swigregister(Base)
capsule = sys.modules["swig_runtime_data4"].type_pointer_capsule
before = sys.getrefcount(capsule)
owned = _sample.new_Base()
assert sys.getrefcount(capsule) == before + 1
borrowed = _sample.Base_self(owned)
assert sys.getrefcount(capsule) == before + 1
del borrowed, owned
assert sys.getrefcount(capsule) == before and _sample.live_bases() == 0
""")
    assert (result.stdout, result.stderr, result.returncode) == ("", "", 0)


def test_teardown_drops_what_registered_classes_hold():
    result = run_python("""
import gc, sys, weakref, _sample
class Base: pass
_sample.Base_swigregister(Base)
proxy = weakref.ref(Base)
del Base; gc.collect()
assert proxy() is not None
del sys.modules["swig_runtime_data4"].type_pointer_capsule
gc.collect()
assert proxy() is None
""")
    assert (result.stdout, result.stderr, result.returncode) == ("", "", 0)


def test_objects_that_outlive_the_table_end_silently():
    result = run_python("""
import gc, sys, _sample
class Base:
    __swig_destroy__ = _sample.delete_Base
_sample.Base_swigregister(Base)
outliving = _sample.wrap_address(64, "sample::Base *")
outliving.this.acquire()
del sys.modules["swig_runtime_data4"].type_pointer_capsule
gc.collect()
del outliving
""")
    assert (result.stdout, result.stderr, result.returncode) == ("", "", 0)


def test_overrides_give_colours_where_a_sibling_has_another_type_of_that_name():
    result = run_python("""
import plain_sibling
import hyxOSG, osg
class Callback(hyxOSG.LidarOutputRendererColorFunctionCallback):
    def getLidarPointColor(self, intensity):
        return osg.Vec4(intensity, 1, 0, 1)
callback = Callback()
import _hyxOSG, _sample
assert _sample.query_type("osg::Vec4 *") == "_p_osg__Vec4"
color = _hyxOSG.LidarOutputRendererColorFunctionCallback_getLidarPointColor(callback.this, 0.25)
print([color[i] for i in range(4)])
""")
    assert result.stdout == "[0.25, 1.0, 0.0, 1.0]\n", result.stderr


BUILDER = "_p_f_p_hyxSDK__Simulation_p_hyxOSG__ExampleApplication__p_"


@pytest.mark.parametrize(
    "source, target",
    [
        ("_p_hyx__Clock", "_p_hyx__Component"),
        ("_p_hyx__CubicSplineLookupTable", "_p_hyxStream__Serializable"),
        (
            "_std__shared_ptrT_tavlang__Robotics__Joints__PositionHingeJoint_t",
            "_std__shared_ptrT_tavlang__Physics__System_t",
        ),
        ("_p_std__shared_ptrT_tavlang__Physics__System_t", "_p_std__shared_ptrT_tavlang__Core__Object_t"),
        (BUILDER + "osg__Camera", BUILDER + "osg__Group"),
        (BUILDER + "hyxOSG__GeometryNode", BUILDER + "osg__Group"),
    ],
)
def test_types_that_only_siblings_make_convert_to_their_bases(source, target):
    assert f"{source}+" in _sample.cast_list(target)


@pytest.mark.parametrize("name", ["hyx::ObjectPtrTable *", "HashTable<hyx::Name, hyx::Object *> *"])
def test_a_table_of_objects_has_two_spellings(name):
    assert _sample.query_type(name) == "_p_HashTableT_hyx__Name_hyx__Object_p_t"
