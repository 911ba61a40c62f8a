"""The interactive scene: played by its recorded events, and by a person at a display."""

import json
import pathlib
import re

import pytest
from subprocesses import has_display, run_python

EXAMPLE = str(pathlib.Path(__file__).parents[3] / "examples" / "07_interactive.py")


def play(folder, *options, **way):
    """Where the cart went, and where the box that the recorded events drag."""
    result = run_python(
        EXAMPLE, "--output", str(folder), *options, **(way or {"DISPLAY": "", "HYX_DISPLAY": "offscreen"})
    )
    assert result.returncode == 0, result.stderr
    numbers = [float(number) for number in re.findall(r"-?\d+\.\d+", result.stdout.split("went to")[1])]
    return numbers[:3], numbers[3:]


def test_recorded_events_steer_the_cart_drag_a_box_and_make_a_video(tmp_path):
    (x, y, z), (box_x, box_y, box_z) = play(tmp_path, "--seconds", "4.1")
    assert y > -1.5 and x > 0.2, "pushed forwards, then to the right"
    assert box_x < -2 and box_z > 2.5, "hangs at the pointer, far to the left of its tower"
    videos = list(tmp_path.glob("interactive*"))
    assert videos and videos[0].stat().st_size > 10000


def test_what_was_recorded_plays_again(tmp_path):
    record = tmp_path / "events.json"
    first = play(tmp_path, "--seconds", "1", "--record", str(record))
    events = json.loads(record.read_text())
    assert [event[1] for event in events] == ["keyPress"]
    assert play(tmp_path, "--seconds", "1", "--events", str(record)) == first


PERSON = """
import subprocess, sys, time
example = subprocess.Popen([sys.executable, {example!r}, "--record", {record!r}])
def do(*arguments):
    subprocess.run(["xdotool", *arguments], check=True)
do("search", "--sync", "--onlyvisible", "--name", "hyxOSG", "windowfocus", "--sync", "%1")
time.sleep(0.5)
do("keydown", "w")
time.sleep(1)
do("keyup", "w")
do("mousemove", "--window", subprocess.check_output(["xdotool", "getwindowfocus"], text=True).strip(), "100", "90")
time.sleep(0.5)
do("key", "Escape")
sys.exit(example.wait(30))
"""


@pytest.mark.skipif(not has_display, reason="no xvfb or xdotool")
def test_a_person_plays_at_a_display_and_the_record_plays_again_there(tmp_path):
    record = tmp_path / "events.json"
    done = run_python(PERSON.format(example=EXAMPLE, record=str(record)), on_display=True)
    assert done.returncode == 0, done.stderr
    events = json.loads(record.read_text())
    assert [event[2] for event in events if event[1].startswith("key")][:2] == [[ord("w")], [ord("w")]]
    assert [100, 90] in [event[2] for event in events if event[1] == "mouseMotion"]
    (x, y, z), _ = play(tmp_path, "--seconds", "1.5", "--events", str(record), on_display=True)
    assert y > -1.999, "pushed forwards, for as long as the display's machine had time for in a second"
    assert list(tmp_path.glob("interactive*"))
