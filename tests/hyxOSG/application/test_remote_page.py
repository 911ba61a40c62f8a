"""The remote page in a real browser: what it shows, and what a person's mouse and keys do."""

import math
import os
import select
import subprocess
import sys

import hyxIO
import numpy
import pytest
from application_stage import add_box
from browser import Browser
from PIL import Image
from subprocesses import BUILD, ROOT

# One browser at a time: two share the processors badly.
pytestmark = pytest.mark.xdist_group("browser")

LIVE = "document.querySelector('#parameters')?.rows.length > 0"
PICTURE = "document.querySelector('#picture').toDataURL()"


@pytest.fixture
def served(window):
    window.init(hyxIO.ArgumentParser(["--rpc-port", "0", "--rpc-token", "secret"]))
    add_box(window, static=True)
    window.createVisual(window.getSimulation())
    window.initRpc()
    return window


@pytest.fixture
def browser(served, tmp_path):
    made = Browser(served.step, tmp_path / "profile")
    try:
        made.open(f"http://127.0.0.1:{served.getControlChannelPort()}/?token=secret")
        assert made.wait(lambda: made.evaluate(LIVE), 20)
        yield made
    finally:
        made.close()


def middle_of_picture(browser):
    return browser.evaluate(
        "(() => { const b = document.querySelector('#picture').getBoundingClientRect();"
        " return [b.left + b.width / 2, b.top + b.height / 2]; })()"
    )


def test_dragging_turns_the_camera_and_the_live_picture(served, browser):
    assert browser.wait(lambda: browser.evaluate("document.querySelector('#picture').width") == 160)
    before, shown = served.getViewDirection(), browser.evaluate(PICTURE)
    x, y = middle_of_picture(browser)
    browser.drag((x, y), (x - 15, y), (x - 40, y + 10))
    assert browser.wait(lambda: abs(served.getViewDirection().x - before.x) > 0.05)
    assert browser.wait(lambda: browser.evaluate(PICTURE) != shown)
    browser.click("#home")
    assert browser.wait(lambda: abs(served.getViewDirection().x - before.x) < 1e-6)


def distance(app):
    eye = app.getCameraData().eye
    return math.hypot(eye.x, eye.y, eye.z)


def test_the_wheel_goes_nearer_and_further(served, browser):
    for amount in (-120, 120):
        before = distance(served)
        browser.scroll(middle_of_picture(browser), amount)
        assert browser.wait(lambda: (distance(served) - before) * amount > 10)


def test_buttons_pause_and_step(served, browser):
    browser.click("#pause")
    assert browser.wait(lambda: not served.getAutoStepping())
    assert browser.wait(lambda: browser.evaluate("document.querySelector('#pause').textContent") == "Run")
    time = served.getTimeStamp()
    browser.click("#step")
    assert browser.wait(lambda: served.getTimeStamp() > time)
    assert served.getTimeStamp() == pytest.approx(time + served.getTimeStep())
    browser.click("#pause")
    assert browser.wait(served.getAutoStepping)


def test_keys_reach_the_application(served, browser):
    browser.click("#picture")  # takes the focus
    browser.press("e")
    assert browser.wait(lambda: not served.getAutoStepping())


def test_the_time_step_is_typed_in(served, browser):
    browser.evaluate(
        "(() => { const field = document.querySelector('#timeStep'); field.value = '0.005';"
        " field.dispatchEvent(new Event('change')); })()"
    )
    assert browser.wait(lambda: served.getTimeStep() == 0.005)


def test_the_wrong_token_shows_nothing(served, browser):
    browser.open(f"http://127.0.0.1:{served.getControlChannelPort()}/?token=wrong")
    assert browser.wait(lambda: "token is missing or wrong" in (browser.evaluate("document.body?.innerText") or ""))


def test_the_example_is_steered_from_another_process(tmp_path):
    program = subprocess.Popen(
        [sys.executable, str(ROOT / "examples" / "08_remote_control.py"), "--rpc-port", "0", "--stop-after", "300"],
        env={**os.environ, "PYTHONPATH": str(BUILD / "python")},
        stdout=subprocess.PIPE,
        text=True,
    )
    browser = None
    try:
        browser = Browser(lambda: None, tmp_path / "profile", 1000, 640)
        assert select.select([program.stdout], [], [], 60)[0], "the example prints no address"
        browser.open(program.stdout.readline().split()[-1])
        assert browser.wait(lambda: browser.evaluate(LIVE), 20)
        assert browser.wait(lambda: browser.evaluate("document.querySelector('#picture').width") == 800)
        browser.screenshot(tmp_path / "page.png")
        page = numpy.asarray(Image.open(tmp_path / "page.png").convert("RGB")).astype(int)
        brick_red = (page[..., 0] > 90) & (page[..., 0] > 1.7 * page[..., 1])
        assert page.shape == (640, 1000, 3) and brick_red[:, :728].sum() > 1500 and not brick_red[:, 728:].any()
    finally:
        if browser:
            browser.close()
        program.kill()
        program.wait(10)
