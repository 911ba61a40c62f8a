"""The remote page in a real browser: what it shows, and what a person's mouse and keys do."""

import math
import os
import select
import subprocess
import sys

import hyx
import hyxIO
import hyxOSG
import numpy
import pytest
from application_stage import add_box
from browser import Browser
from path_proxy import PathProxy
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


def test_a_body_is_selected_looked_into_and_plotted(served, browser):
    text = lambda place: browser.evaluate(f"document.querySelector('{place}').innerText")
    assert browser.wait(lambda: "box" in text("#tree"))
    browser.click("#tree div")
    assert browser.wait(lambda: "position, m" in text("#details"))
    node = hyxOSG.findGeometryNode(served.getSimulation().getRigidBodies()[0].getGeometries()[0], served.getRoot())
    assert hyxOSG.getEnableOutline(node)
    figures = browser.evaluate(
        "[...document.querySelectorAll('#details tr')].map(row => [row.cells[1].innerText, row.offsetHeight])"
    )
    heights = [height for _, height in figures]
    assert len(figures) > 5 and max(heights) - min(heights) < 5, "each in a line"
    assert not any("-0.000" in text for text, _ in figures)
    plotted = "document.querySelector('#plot').getContext('2d').getImageData(0, 0, 240, 90).data.some(v => v > 0)"
    assert browser.wait(lambda: browser.evaluate(plotted))
    browser.click("#tree div input")
    assert browser.wait(lambda: node.getNodeMask() == 0)
    typed = "(() => { const s = document.querySelector('#search'); s.value = 'nothing'; s.oninput(); })()"
    browser.evaluate(typed)
    assert browser.wait(lambda: text("#tree").strip() == "")


def test_a_click_in_the_picture_selects(served, browser):
    assert browser.wait(lambda: browser.evaluate("document.querySelector('#picture').width") == 160)
    browser.drag(middle_of_picture(browser))
    assert browser.wait(lambda: served.getSelection() and served.getSelection().getName() == "box")
    details = "document.querySelector('#details').innerText"
    assert browser.wait(lambda: "mass, kg" in browser.evaluate(details))


def test_it_works_behind_a_proxy_that_gives_it_a_path(served, browser):
    proxy = PathProxy(served.getControlChannelPort(), "/user/lab/7/")
    try:
        browser.open(f"http://127.0.0.1:{proxy.port}/user/lab/7/?token=secret")
        assert browser.wait(lambda: browser.evaluate("location.port") == str(proxy.port))
        assert browser.wait(lambda: browser.evaluate(LIVE))
        assert browser.wait(lambda: browser.evaluate("document.querySelector('#picture').width") == 160)
        browser.click("#pause")
        assert browser.wait(lambda: not served.getAutoStepping())
    finally:
        proxy.close()


def slide(browser, place, value):
    browser.evaluate(
        f"(() => {{ const s = document.querySelector('{place}'); s.value = {value};"
        " s.dispatchEvent(new Event('input')); })()"
    )


def test_a_joint_is_driven_and_time_is_scrubbed(served, browser):
    door, drawer = add_box(served, "door", (2, 0, 0)), add_box(served, "drawer", (-3, 0, 0))
    hinge = hyx.Hinge(hyx.Vec3(1, 0, 0), hyx.Vec3(0, 0, 1), door)
    served.getSimulation().add(hinge)
    served.getSimulation().add(hyx.Prismatic(hyx.Vec3(-3, 0, 0), hyx.Vec3(1, 0, 0), drawer))
    served.setHistoryLength(30)
    assert browser.wait(lambda: browser.evaluate("document.querySelectorAll('#joints label').length") == 2)
    slide(browser, "#joints input", 0.4)
    assert browser.wait(lambda: abs(hinge.getAngle() - 0.4) < 0.01)
    shown = "document.querySelector('#joints span').textContent"
    assert browser.wait(lambda: abs(float(browser.evaluate(shown).split()[-1]) - 0.4) < 0.02)
    span = "(() => { const s = document.querySelector('#seek'); return [+s.min, +s.max]; })()"
    assert browser.wait(lambda: numpy.ptp(browser.evaluate(span)) > 0.2)
    past = numpy.mean(browser.evaluate(span))
    slide(browser, "#seek", past)
    assert browser.wait(lambda: served.getTimeStamp() == pytest.approx(past, abs=0.02) and not served.getAutoStepping())


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
