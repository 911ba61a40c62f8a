"""Every native list behaves as a list: random changes on both agree. Where the legend differs, it is said here."""

import copy
import pickle
import random
from collections import namedtuple

import hyx
import hyxCollide
import hyxOSG
import hyxRender
import hyxSDK
import numpy
import osg
import pytest
from subprocesses import run_python


def point(number):
    return hyxOSG.LidarOutputRendererLegendPoint(number, osg.Vec4f())


def image(number):
    made = osg.Image(1, 1)
    made.setColor(osg.Vec4f(number / 255, 0, 0, 1), 0, 0)
    return made


def contacts():
    """The contacts of 50 pairs of boxes, by the number of the pair."""
    simulation = hyxSDK.Simulation()
    for pair in range(50):
        for height in (0, 0.9):
            body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.5)))
            body.setPosition(hyx.Vec3(3 * pair, 0, height))
            simulation.add(body)
    simulation.step()
    return {contact_number(contact): contact for contact in simulation.getSpace().getGeometryContacts()}


def contact_number(contact):
    return round(contact.getPoint(0).point.x / 3)


# How an element is made from a number below 50, and the number that it was made from.
Kind = namedtuple("Kind", "list make number")
CONTACTS = contacts()
KINDS = {
    "RealVector": Kind(hyx.RealVector, float, float),
    "Vec3Vector": Kind(hyx.Vec3Vector, lambda n: hyx.Vec3(n, 1, 2), lambda e: e.x),
    "Vec3fVector": Kind(hyx.Vec3fVector, lambda n: hyx.Vec3f(n, 1, 2), lambda e: e.x),
    "ColorVector": Kind(hyxRender.ColorVector, lambda n: hyxRender.Color(n, 0, 1), lambda e: e.r),
    "ImageVector": Kind(osg.ImageVector, image, lambda e: round(255 * e.getColor(0, 0)[0])),
    "LocalGeometryContactVector": Kind(hyx.LocalGeometryContactVector, CONTACTS.get, contact_number),
    "LidarOutputRendererLegend": Kind(hyxOSG.LidarOutputRendererLegend, point, lambda e: e.intensity),
}
LISTS = [name for name in KINDS if name != "LidarOutputRendererLegend"]
BUFFERS = {"RealVector": ("d", ()), "Vec3Vector": ("d", (3,)), "Vec3fVector": ("f", (3,)), "ColorVector": ("f", (4,))}


@pytest.fixture(params=KINDS)
def kind(request):
    return KINDS[request.param]


@pytest.fixture(params=LISTS)
def plain(request):
    """The kinds without the legend."""
    return KINDS[request.param]


def is_legend(kind):
    return kind.list is hyxOSG.LidarOutputRendererLegend


def read(kind, model, taken):
    """What reading a slice gives: with the legend one that starts at or behind the end counts from the front."""
    if is_legend(kind) and (taken.step or 1) > 0 and (taken.start or 0) >= len(model):
        taken = slice(0, taken.stop, taken.step)
    return model[taken]


class Pair:
    """A native list and the list that it is compared with, which holds the numbers that its elements are made from."""

    def __init__(self, kind, chance):
        self.kind = kind
        self.chance = chance
        self.model = [self.fresh() for _ in range(chance.randint(0, 8))]
        self.list = kind.list(self.elements(self.model))

    def fresh(self):
        return self.chance.randint(0, 49)

    def elements(self, numbers):
        return [self.kind.make(number) for number in numbers]

    def numbers(self, elements):
        return [self.kind.number(element) for element in elements]

    def both(self, change_model, change_list):
        """The same change on both; where the list refuses, the native one refuses with the same exception."""
        try:
            expected = change_model()
        except (IndexError, ValueError) as refusal:
            with pytest.raises(type(refusal), match="index out of range|pop from empty|attempt to assign"):
                change_list()
        else:
            result = change_list()
            if expected is not None:
                assert self.kind.number(result) == expected
        assert self.numbers(self.list) == self.model
        assert len(self.list) == len(self.model)
        assert bool(self.list) == bool(self.model)

    def index(self):
        return self.chance.randint(-len(self.model) - 2, len(self.model) + 1)

    def slice(self):
        def bound():
            return self.chance.choice([None, self.chance.randint(-len(self.model) - 3, len(self.model) + 3)])

        return slice(bound(), bound(), self.chance.choice([None, 1, 1, 2, 3, -1, -2, -5]))

    def get_item(self):
        i = self.index()
        self.both(lambda: self.model[i], lambda: self.list[i])

    def get_slice(self):
        taken = self.slice()
        part = self.list[taken]
        assert type(part) is self.kind.list and self.numbers(part) == read(self.kind, self.model, taken)

    def set_item(self):
        i, number = self.index(), self.fresh()
        self.both(lambda: self.model.__setitem__(i, number), lambda: self.list.__setitem__(i, self.kind.make(number)))

    def set_slice(self):
        taken = self.slice()
        count = self.chance.choice([len(self.model[taken]), self.chance.randint(0, 5)])
        new = [self.fresh() for _ in range(count)]
        given = self.elements(new)
        given = self.chance.choice([given, self.kind.list(given), iter(given)])
        self.both(lambda: self.model.__setitem__(taken, new), lambda: self.list.__setitem__(taken, given))

    def delete_item(self):
        i = self.index()
        self.both(lambda: self.model.__delitem__(i), lambda: self.list.__delitem__(i))

    def delete_slice(self):
        taken = self.slice()
        self.both(lambda: self.model.__delitem__(taken), lambda: self.list.__delitem__(taken))

    def append(self):
        number = self.fresh()
        self.both(lambda: self.model.append(number), lambda: self.list.append(self.kind.make(number)))

    def pop(self):
        self.both(lambda: self.model.pop(), lambda: self.list.pop())

    def pop_at(self):
        i = self.index()
        self.both(lambda: self.model.pop(i) if self.model else [][i], lambda: self.list.pop(i))

    def insert(self):
        i, number = self.index(), self.fresh()
        self.both(lambda: self.model.insert(i, number), lambda: self.list.insert(i, self.kind.make(number)))

    def extend(self):
        new = [self.fresh() for _ in range(self.chance.randint(0, 3))]
        self.both(lambda: self.model.extend(new), lambda: self.list.extend(self.elements(new)))

    def insert_before_position(self):
        number, at = self.fresh(), self.chance.randint(0, len(self.model))

        def insert():
            self.list.insert(self.list.begin() + at, self.kind.make(number))

        self.both(lambda: self.model.insert(at, number), insert)

    def erase(self):
        first = self.chance.randint(0, len(self.model))
        last = self.chance.randint(first, len(self.model))

        def erase():
            self.list.erase(self.list.begin() + first, self.list.begin() + last)

        self.both(lambda: self.model.__delitem__(slice(first, last)), erase)


STEPS = [
    *(Pair.get_item, Pair.get_slice, Pair.set_item, Pair.set_slice, Pair.delete_item, Pair.delete_slice),
    *(Pair.append, Pair.append, Pair.pop),
]
LEGEND_STEPS = [*STEPS, Pair.insert_before_position, Pair.erase]
LIST_STEPS = [*STEPS, Pair.pop_at, Pair.insert, Pair.extend]


@pytest.mark.parametrize("seed", range(20))
def test_random_changes_agree_with_a_list(kind, seed):
    chance = random.Random(seed)
    pair = Pair(kind, chance)
    steps = LEGEND_STEPS if is_legend(kind) else LIST_STEPS
    for _ in range(60):
        chance.choice(steps)(pair)


def test_refusals_are_in_words(kind):
    values = kind.list([kind.make(number) for number in range(4)])
    for index in (4, -5, 2**62):
        with pytest.raises(IndexError, match="^index out of range$"):
            values[index]
        with pytest.raises(IndexError, match="^index out of range$"):
            del values[index]
    with pytest.raises(ValueError, match="^slice step cannot be zero$"):
        values[::0]
    with pytest.raises(ValueError, match="^attempt to assign sequence of size 1 to extended slice of size 2$"):
        values[::2] = values[:1]
    with pytest.raises(IndexError, match="^pop from empty container$"):
        kind.list().pop()


@pytest.mark.parametrize("wrong", [["x"], [object()], 3, [[1, 2]]], ids=["text", "object", "number", "pair"])
def test_foreign_items_leave_a_list_unchanged(kind, wrong):
    numbers = [3, 4]
    values = kind.list([kind.make(number) for number in numbers])
    changes = [lambda: values.__setitem__(slice(0, 1), wrong)]
    if not is_legend(kind):
        changes += [lambda: values.extend(wrong), lambda: kind.list(wrong), lambda: values.append("x")]
    for change in changes:
        with pytest.raises((TypeError, ValueError)):
            change()
    assert [kind.number(value) for value in values] == numbers


def test_a_failing_iterable_is_reported_as_it_failed(plain):
    def broken():
        yield plain.make(1)
        raise ZeroDivisionError

    values = plain.list([plain.make(2)])
    with pytest.raises(ZeroDivisionError):
        values.extend(broken())
    assert len(values) == 1


def test_a_list_in_itself_is_read_first(plain):
    values = plain.list([plain.make(number) for number in (1, 2, 3)])
    values[1:2] = values
    values.extend(values)
    assert [plain.number(value) for value in values] == [1, 1, 2, 3, 3] * 2


def test_iteration_sees_what_is_added_on_the_way(plain):
    values = plain.list([plain.make(1)])
    seen = []
    for value in values:
        seen.append(plain.number(value))
        if len(values) < 3:
            values.append(plain.make(len(values) + 1))
    assert seen == [1, 2, 3]


def test_elements_outlive_what_happens_to_their_list(plain):
    values = plain.list([plain.make(7)])
    kept = [values[0], next(iter(values)), values.pop()]
    values.extend([plain.make(1)] * 100)
    del values
    assert [plain.number(value) for value in kept] == [7, 7, 7]


def test_images_are_shared_and_not_copied():
    first = image(1)
    images = osg.ImageVector([first, None])
    assert images[0] == first and images[1] is None and images[:1][0] == first


@pytest.mark.parametrize("name", BUFFERS)
def test_lists_of_numbers_are_arrays(name):
    kind, (form, shape) = KINDS[name], BUFFERS[name]
    for count in (0, 1, 5):
        values = kind.list([kind.make(number) for number in range(count)])
        view = memoryview(values)
        assert view.format == form and view.readonly
        array = numpy.asarray(values)
        assert array.dtype == numpy.dtype(form) and len(array) == count
        if count:
            assert array.shape == (count, *shape)
            assert numpy.array_equal(array.reshape(count, -1)[:, 0], numpy.arange(count))
            assert numpy.array_equal(numpy.asarray(kind.list(array)), array)
        values.append(kind.make(9))
        assert len(view) == count, "a view does not follow its list"


@pytest.mark.parametrize("name", BUFFERS)
def test_lists_of_numbers_copy_and_pickle(name):
    kind = KINDS[name]
    values = kind.list([kind.make(number) for number in (1, 2)])
    for other in (copy.copy(values), copy.deepcopy(values), pickle.loads(pickle.dumps(values))):
        other.append(kind.make(3))
        assert [kind.number(value) for value in other] == [1, 2, 3] and len(values) == 2


@pytest.mark.parametrize(
    "made",
    [
        "hyx.RealVector([1, 2])",
        "hyxRender.ColorVector([(0, 0, 0, 1), (1, 1, 1, 1)])",
        "osg.ImageVector([osg.Image(), None])",
    ],
)
def test_a_list_is_iterated_where_its_package_is_the_only_one(made):
    package = made.split(".")[0]
    result = run_python(f"import {package}; print(len(list({made})))")
    assert result.stdout == "2\n", result.stderr
