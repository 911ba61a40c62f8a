"""Colours: iteration, copies, pickling and NumPy."""

from .lists import NumberList
from .numbers import Numbers


class Color(Numbers): ...


class ColorVector(NumberList): ...
