"""Colours: iteration, copies, pickling and NumPy."""

from .numbers import Numbers


class Color(Numbers): ...


class ColorVector(Numbers): ...
