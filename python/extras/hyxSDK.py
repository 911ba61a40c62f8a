"""The state of a simulation as arrays."""

from __future__ import annotations

from .names import named
from .numbers import assign

TYPE_CHECKING = False
if TYPE_CHECKING:
    import hyx

    from .hints import Doubles, Rows


class Assembly:
    def body(self, name: str) -> hyx.RigidBody:
        """The body of this name, here or in assemblies in this one. KeyError, with the nearest names, for none."""
        return named(self.getRigidBody(name), name, self, "getRigidBodies")  # type: ignore[attr-defined, no-any-return]

    def constraint(self, name: str) -> hyx.Constraint:
        """The joint of this name, here or in assemblies in this one. KeyError, with the nearest names, for none."""
        return named(self.getConstraint(name), name, self, "getConstraints")  # type: ignore[attr-defined, no-any-return]


class Simulation:
    """`positions`, `rotations`, `velocities` and `angularVelocities` are NumPy arrays of float64 with a row for each
    body, in the order of `getRigidBodies`: copies when read; what is assigned, one row for all or a row each, is set.
    The methods of the same names take or give chosen bodies.
    """

    def body(self, name: str) -> hyx.RigidBody:
        """The body of this name. KeyError, with the nearest names, for none."""
        return named(self.getRigidBody(name), name, self, "getRigidBodies")  # type: ignore[attr-defined, no-any-return]

    def constraint(self, name: str) -> hyx.Constraint:
        """The joint of this name. KeyError, with the nearest names, for none."""
        return named(self.getConstraint(name), name, self, "getConstraints")  # type: ignore[attr-defined, no-any-return]

    @property
    def positions(self) -> Doubles:
        """Metres, shape (n, 3)."""
        return self.getPositions()  # type: ignore[attr-defined, no-any-return]

    @positions.setter
    def positions(self, values: Rows) -> None:
        assign("positions", self.setPositions, values)  # type: ignore[attr-defined]

    @property
    def rotations(self) -> Doubles:
        """Quaternions x y z w, shape (n, 4)."""
        return self.getRotations()  # type: ignore[attr-defined, no-any-return]

    @rotations.setter
    def rotations(self, values: Rows) -> None:
        assign("rotations", self.setRotations, values)  # type: ignore[attr-defined]

    @property
    def velocities(self) -> Doubles:
        """m/s, shape (n, 3)."""
        return self.getVelocities()  # type: ignore[attr-defined, no-any-return]

    @velocities.setter
    def velocities(self, values: Rows) -> None:
        assign("velocities", self.setVelocities, values)  # type: ignore[attr-defined]

    @property
    def angularVelocities(self) -> Doubles:
        """rad/s, shape (n, 3)."""
        return self.getAngularVelocities()  # type: ignore[attr-defined, no-any-return]

    @angularVelocities.setter
    def angularVelocities(self, values: Rows) -> None:
        assign("angularVelocities", self.setAngularVelocities, values)  # type: ignore[attr-defined]

    @property
    def jointPositions(self) -> Doubles:
        """Radians or metres of the joints with one free direction, in their order."""
        return self.getJointPositions()  # type: ignore[attr-defined, no-any-return]

    @property
    def jointSpeeds(self) -> Doubles:
        """rad/s or m/s of the joints with one free direction."""
        return self.getJointSpeeds()  # type: ignore[attr-defined, no-any-return]

    @property
    def contacts(self) -> dict[str, Doubles]:
        """The contact points of the last step, an array for each: `bodies` (places in `getRigidBodies`, -1 for none),
        `points`, `normals` (from the first body to the second), `depths`, `forces` (on the second body, newtons).
        """
        return self.getContactArrays()  # type: ignore[attr-defined, no-any-return]
