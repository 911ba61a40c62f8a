"""Values of the scene graph: iteration, copies, pickling and NumPy."""

from .numbers import Numbers


class Vec2f(Numbers): ...


class Vec3f(Numbers): ...


class Vec3d(Numbers): ...


class Vec4f(Numbers): ...


class Quat(Numbers): ...
