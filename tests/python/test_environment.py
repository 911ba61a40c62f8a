"""Environments keep Gymnasium's contract, alone and side by side."""

import os
import signal

import numpy
import pytest

gymnasium = pytest.importorskip("gymnasium")
import hyx
import hyxCollide
import hyxSDK
from hyxsweep import Environment, VectorEnvironment


class Rise(Environment):
    """A ball that a force lifts: the episode ends when it has risen or fallen a metre."""

    observation_space = gymnasium.spaces.Box(-numpy.inf, numpy.inf, (2,), numpy.float64)
    action_space = gymnasium.spaces.Box(-20, 20, (1,), numpy.float32)
    longest_episode = 50

    def build(self):
        simulation = hyxSDK.Simulation()
        self.ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.1)))
        self.ball.setMass(1)
        self.ball.setPosition(hyx.Vec3(0, 0, self.random.uniform(-0.1, 0.1)))
        simulation.add(self.ball)
        return simulation

    def act(self, action):
        if action[0] == 13:
            os.kill(os.getpid(), signal.SIGKILL)
        self.ball.addForce(hyx.Vec3(0, 0, float(action[0])))

    def observe(self):
        return numpy.array([self.ball.getPosition().z, self.ball.getVelocity().z])

    def reward(self):
        return self.ball.getPosition().z

    def is_over(self):
        return abs(self.ball.getPosition().z) > 1


def test_it_passes_the_checks_of_the_interface():
    from gymnasium.utils.env_checker import check_env

    check_env(Rise(), skip_render_check=True)
    assert Rise.__mro__[2] is gymnasium.Env


def test_it_shows_its_state():
    environment = Rise()
    environment.reset(seed=1)
    picture = environment.render(64, 48)
    assert picture.shape == (48, 64, 3) and picture.dtype == numpy.uint8
    assert abs(picture[24, 32].astype(int) - picture[2, 2]).max() > 20
    time = environment.simulation.getTimeStamp()
    assert (environment.render(64, 48) == picture).all() and environment.simulation.getTimeStamp() == time
    for _ in range(4):
        environment.step([-20])
    assert (environment.render(64, 48) != picture).any()  # the view stays: the ball is seen to have fallen
    assert environment.reset(seed=1) and (environment.render(64, 48) == picture).all()
    environment.close()


def test_it_is_made_by_its_name():
    gymnasium.register("Rise-v0", entry_point=Rise, max_episode_steps=20)
    environment = gymnasium.make("Rise-v0", render_mode="rgb_array")
    environment.reset(seed=1)
    assert environment.render().shape == (240, 320, 3)
    environment.close()
    many = gymnasium.make_vec("Rise-v0", 2, vectorization_mode="async")
    assert many.reset(seed=1)[0].shape == (2, 2) and many.step(many.action_space.sample())[1].shape == (2,)
    many.close()
    with pytest.raises(ValueError, match="no render mode 'human': there is rgb_array"):
        Rise(render_mode="human")


def test_a_vector_of_them_equals_them_one_by_one_and_survives_a_death():
    alone = [Rise(), Rise()]
    starts = [environment.reset(seed=7 + place)[0] for place, environment in enumerate(alone)]
    with VectorEnvironment(Rise, 2) as both:
        observations, _ = both.reset(seed=7)
        assert numpy.array_equal(observations, starts) and not numpy.array_equal(*starts)
        over = numpy.zeros(2, bool)
        while not over.any():
            expected = [environment.step([force]) for environment, force in zip(alone, (0, 12))]
            observations, rewards, over, cut, informations = both.step([[0], [12]])
            assert rewards.tolist() == [answer[1] for answer in expected]
        ended = int(over.argmax())
        assert numpy.array_equal(informations[ended]["final_observation"], expected[ended][0])
        assert abs(observations[ended, 0]) <= 0.1 and not cut.any()
        _, rewards, _, cut, informations = both.step([[0], [13]])
        assert informations[1]["died"] and cut.tolist() == [False, True]
        assert both.step([[0], [0]])[0].shape == (2, 2)
        with pytest.raises(ValueError, match="1 actions for 2"):
            both.step([[0]])
