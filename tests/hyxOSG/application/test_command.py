"""`python -m hyxOSG FILE...`, and pictures in notebooks."""

import io
import re
import shutil
import subprocess
import sys

import hyx
import hyxOSG
import numpy
import pytest
from application_stage import add_box
from browser import Browser
from PIL import Image
from subprocesses import ROOT, bare_environment, run_python

SCRIPT = """
import hyx, hyxCollide, hyxOSG
def buildScene(sim, app, root):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1)), "ball")
    sim.add(body)
    hyxOSG.createVisual(body, root)
"""
SCENE = '{"bodies": [{"name": "box", "geometries": [{"shape": "box", "halfExtents": [1, 1, 1]}]}]}'
ROBOT = """<robot name="r"><link name="base"><inertial><mass value="1"/><inertia ixx="1" iyy="1" izz="1" ixy="0" ixz="0"
 iyz="0"/></inertial><visual><geometry><box size="1 1 1"/></geometry></visual><collision><geometry><box size="1 1 1"/>
</geometry></collision></link></robot>"""
WORLD = """<sdf version="1.9"><world name="w"><model name="m"><static>true</static><link name="l"><visual name="v">
 <geometry><box><size>1 1 1</size></box></geometry></visual></link></model></world></sdf>"""
HINGED = """<mujoco><worldbody><body><freejoint/><geom type="box" size="1 1 1"/></body></worldbody></mujoco>"""
MODEL = "v 0 0 0\nv 2 0 0\nv 0 0 2\nf 1 2 3\n"


def open_file(*arguments):
    return run_python("-m", "hyxOSG", *map(str, arguments))


@pytest.mark.parametrize(
    "name, text",
    [("s.py", SCRIPT), ("s.json", SCENE), ("r.urdf", ROBOT), ("w.sdf", WORLD), ("m.xml", HINGED), ("m.obj", MODEL)],
    ids=lambda value: value[:6],
)
def test_each_kind_of_file_is_opened_and_drawn(tmp_path, name, text):
    file = tmp_path / name
    file.write_text(text)
    done = open_file(file, "--window-size", "64x48", "--stop-after", "0.05", "--capture", tmp_path / "frame")
    assert done.returncode == 0, done.stderr
    picture = numpy.asarray(Image.open(sorted(tmp_path.glob("frame*"))[0]).convert("RGB")).astype(int)
    side = picture[24, 1]
    assert abs(picture[24, 32] - side).max() > 20, "it is in the middle of the picture"


def test_a_program_is_run_as_one(tmp_path):
    file = tmp_path / "program.py"
    file.write_text("import sys\nprint(__name__, sys.argv[1:])\n")
    assert open_file(file, "--fast").stdout == "__main__ ['--fast']\n"


@pytest.mark.parametrize(
    "arguments, said",
    [([], "name a file"), (["missing.py"], "no file 'missing.py'"), (["--time-step", "x", "a.py"], "not a number")],
)
def test_what_cannot_be_done_is_said_in_a_line(arguments, said):
    done = open_file(*arguments)
    assert done.returncode == 2 and said in done.stderr and "Traceback" not in done.stderr


def test_the_help_is_in_groups_and_the_doctor_says_what_works():
    help_text = open_file("--help").stdout
    groups = ["Window", "Time", "Scenes", "Pictures and films", "Journals", "Other processes"]
    assert [group for group in groups if f"{group}:" in help_text] == groups and "F1" in help_text
    done = open_file("--doctor")
    assert done.returncode == 0 and "works    drawing off-screen" in done.stdout


@pytest.mark.parametrize("program", ["hyx_describe", "hyxOSG --doctor", "hyxOSG --help", "hyxsweep --help"])
def test_a_reader_that_has_enough_ends_a_program_quietly(program):
    command = f"{sys.executable} -m {program} | head -n 1"
    done = subprocess.run(["sh", "-c", command], capture_output=True, text=True, timeout=60, env=bare_environment())
    assert len(done.stdout.splitlines()) == 1 and not done.stderr


def test_the_doctor_finds_text_without_the_tools_of_fontconfig_and_without_numpy(tmp_path, monkeypatch):
    monkeypatch.setenv("PATH", str(tmp_path))
    (tmp_path / "numpy.py").write_text("raise ModuleNotFoundError('there is no numpy')")
    done = run_python("-m", "hyxOSG", "--doctor", extra_path=str(tmp_path))
    assert "works    text" in done.stdout


def test_a_changed_script_is_built_anew(tmp_path):
    file = tmp_path / "s.py"
    change = f"""
    import threading
    def later():
        text = open({str(file)!r}).read().replace('"ball"', '"changed"').replace("CHANGE", "")
        open({str(file)!r}, "w").write(text)
    if app.getTimeStep() > 0 and "ball" == "ball" and not hasattr(hyxOSG, "changing"):
        hyxOSG.changing = threading.Timer(0.5, later)
        hyxOSG.changing.start()
    print("built", [body.getName() for body in sim.getRigidBodies()], flush=True)
    """
    file.write_text(SCRIPT + change)
    done = open_file(file, "--window-size", "32x24", "--real-time", "--stop-after", "4")
    assert done.stdout.splitlines() == ["built ['ball']", "built ['changed']"], done.stderr


def pixels(png):
    return numpy.asarray(Image.open(io.BytesIO(png)).convert("RGB")).astype(int)


def test_notebooks_show_the_picture(app, shoot):
    assert app._repr_png_() is None
    app.initViewer(64, 48)
    add_box(app, static=True)
    app.createVisual(app.getSimulation())
    target = hyxOSG.RenderToImage(32, 24)
    app.addRenderTarget(target)
    assert numpy.array_equal(pixels(app._repr_png_()), shoot(app))
    assert numpy.array_equal(pixels(target._repr_png_()), target.pixels[::-1, :, :3])


@pytest.fixture
def journal(app, tmp_path):
    """Half a second of a box that falls past the camera."""
    app.initViewer(64, 48)
    add_box(app, "falling", (0, 0, 3))
    app.createVisual(app.getSimulation())
    app.setCameraHome(hyx.Vec3(0, -9, 2), hyx.Vec3(0, 0, 2))
    app.setJournalRecordPath(str(tmp_path / "run.h5"))
    app.setEnableJournalRecord(True)
    app.stopAfter(0.5)
    app.run()
    app.setEnableJournalRecord(False)
    return tmp_path / "run.h5"


@pytest.mark.skipif(not shutil.which("chromium-headless-shell"), reason="no browser")
def test_a_journal_plays_as_a_page_without_a_server(journal, tmp_path):
    page = tmp_path / "run.html"
    done = open_file(journal, "--page", page, "--page-rate", "10", "--window-size", "64x48")
    assert done.returncode == 0 and "6 pictures" in done.stdout, done.stderr
    browser = Browser(lambda: None, tmp_path / "profile")
    try:
        browser.open(page.as_uri())
        shown = "document.getElementById('picture')"
        assert browser.wait(lambda: browser.evaluate(f"{shown} && {shown}.naturalWidth") == 64)
        place = "document.getElementById('place')"
        assert browser.wait(lambda: browser.evaluate(f"{place}.value") == "3"), "it plays by itself"

        def seek(index):
            browser.evaluate(f"{place}.value = {index}; {place}.oninput({{target: {place}}})")
            return browser.evaluate(f"{shown}.src"), browser.evaluate("document.getElementById('time').textContent")

        first, last = seek(0), seek(5)
        assert first[0] != last[0] and float(last[1].split()[0]) - float(first[1].split()[0]) > 0.4
        assert seek(0) == first and browser.evaluate("document.getElementById('play').textContent") == "Play"
    finally:
        browser.close()


def test_the_installed_command_is_there():
    module, function = re.search(
        r'^hyxosg = "(.+):(.+)"$', (ROOT / "pyproject.toml").read_text(), re.MULTILINE
    ).groups()
    done = run_python("-c", f"import sys, {module} as m; sys.argv[1:] = ['missing.py']; sys.exit(m.{function}())")
    assert done.returncode == 2 and "no file 'missing.py'" in done.stderr


def test_only_a_journal_becomes_a_page(tmp_path):
    file = tmp_path / "s.json"
    file.write_text(SCENE)
    done = open_file(file, "--page", tmp_path / "s.html")
    assert done.returncode == 2 and "needs a journal" in done.stderr and not (tmp_path / "s.html").exists()
