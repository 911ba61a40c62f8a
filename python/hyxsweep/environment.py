"""A simulation as an environment to learn in: Gymnasium's interface, and its class where that is installed."""

from __future__ import annotations

import random
from typing import TYPE_CHECKING, Any

import hyxSDK

if TYPE_CHECKING:
    Base = object
else:
    try:
        from gymnasium import Env as Base
    except ImportError:
        Base = object


class Environment(Base):
    """Derive from it: `build` makes the simulation of an episode, `act` passes an action on, `observe`, `reward` and
    `is_over` say what came of it. `observation_space` and `action_space` are Gymnasium's, for its algorithms.
    """

    metadata: dict[str, Any] = {"render_modes": ["rgb_array"]}
    observation_space: Any = None
    action_space: Any = None
    render_mode: str | None = None
    #: simulated seconds of a step
    step_time = 1 / 30
    #: steps after which an episode is cut off; 0 for never
    longest_episode = 0

    simulation: hyxSDK.Simulation
    #: draws this environment's random numbers; `reset(seed=...)` starts it anew
    random: random.Random = random.Random()
    _steps = 0
    _shown: Any = None  # the application that draws this episode
    _shown_size = (0, 0)

    def __init__(self, render_mode: str | None = None) -> None:
        """`render_mode`: None or "rgb_array", as `gymnasium.make` gives it."""
        if render_mode not in (None, *self.metadata["render_modes"]):
            raise ValueError(f"no render mode {render_mode!r}: there is {', '.join(self.metadata['render_modes'])}")
        self.render_mode = render_mode or self.render_mode

    def build(self) -> hyxSDK.Simulation:
        """The simulation of a new episode, its start drawn from `self.random`."""
        raise NotImplementedError("an environment has to build its simulation")

    def act(self, action: Any) -> None:
        """Passes an action on to motors and forces."""

    def observe(self) -> Any:
        """What the learner sees: an array."""
        raise NotImplementedError("an environment has to observe")

    def reward(self) -> float:
        return 0.0

    def is_over(self) -> bool:
        """Whether the task has ended, well or badly."""
        return False

    def information(self) -> dict[str, Any]:
        return {}

    def reset(self, *, seed: int | None = None, options: dict[str, Any] | None = None) -> tuple[Any, dict[str, Any]]:
        """Starts an episode. Returns the first observation and further information."""
        if Base is not object:
            super().reset(seed=seed, options=options)  # type: ignore[misc]
        if seed is not None or "random" not in vars(self):
            self.random = random.Random(seed)
        self.close()
        self.simulation = self.build()
        self._steps = 0
        return self.observe(), self.information()

    def step(self, action: Any) -> tuple[Any, float, bool, bool, dict[str, Any]]:
        """Acts and simulates `step_time` seconds. Returns observation, reward, whether the task is over, whether the
        episode was cut off, and further information."""
        self.act(action)
        self.simulation.stepTo(self.simulation.getTimeStamp() + self.step_time)
        self._steps += 1
        cut = bool(self.longest_episode) and self._steps >= self.longest_episode
        return self.observe(), float(self.reward()), bool(self.is_over()), cut, self.information()

    def render(self, width: int = 320, height: int = 240) -> Any:
        """The present state as an array of shape (height, width, 3), uint8, its first row on top. The first picture of
        an episode chooses the view, so that what moves is seen to move."""
        import hyxOSG

        if self._shown is None or self._shown_size != (width, height):
            self.close()
            self._shown_size = (width, height)
            self._shown = hyxOSG.ExampleApplication(self.simulation)
            self._shown.initViewer(width, height, True)
            self._shown.createVisual(self.simulation)
            self._shown.fitSceneIntoView()
        return self._shown.render()

    def close(self) -> None:
        """Lets go of what draws."""
        shown, self._shown = self._shown, None
        if shown is not None:
            shown.close()
