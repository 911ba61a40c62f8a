"""Colours: iteration, copies, pickling and NumPy."""

from .lists import NumberList
from .numbers import Numbers


class Color(Numbers):
    __stands_for_numbers__ = True  # where a vector is a colour, calls take it as they take a tuple


class ColorVector(NumberList): ...
