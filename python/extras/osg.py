"""Values of the scene graph: components by name, iteration, copies, pickling and NumPy."""

from .numbers import Numbers, component


class Vec2f(Numbers):
    x = component(0)
    y = component(1)


class Vec3f(Numbers):
    x = component(0)
    y = component(1)
    z = component(2)


class Vec3d(Numbers):
    x = component(0)
    y = component(1)
    z = component(2)


class Vec4f(Numbers):
    x = component(0)
    y = component(1)
    z = component(2)
    w = component(3)


class Quat(Numbers): ...
