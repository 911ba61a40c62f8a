"""Runs a simulation over many parameters, on this machine or a cluster, and puts what it measures into tables.

from hyxsweep import sweep

def build(friction, seed):
    ...                            # makes and returns a hyxSDK.Simulation

def measure(simulation):
    return {"height": simulation.getRigidBody("box").getPosition().z}

result = sweep(build, {"friction": [0.1, 0.5], "seed": range(10)}, measure=measure, seconds=5)
result.dataset()                   # xarray.Dataset with the dimensions friction and seed
"""

try:
    import cloudpickle as _cloudpickle  # noqa: F401
except ImportError as error:
    raise ImportError('sweeps need the package cloudpickle: pip install "hyxosg[sweep]"') from error

from .contact_sheet import contact_sheet
from .designs import grid, sample
from .environment import Environment
from .record import Record, RunFailed
from .results import Result
from .sweeps import rerun, sweep
from .vector_environment import VectorEnvironment

__all__ = [
    "Environment",
    "Record",
    "Result",
    "RunFailed",
    "VectorEnvironment",
    "contact_sheet",
    "grid",
    "rerun",
    "sample",
    "sweep",
]
