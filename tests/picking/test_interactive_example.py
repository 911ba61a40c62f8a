"""The interactive scene, played by its recorded events."""
import json
import pathlib
import re

from subprocesses import run_python

EXAMPLE = pathlib.Path(__file__).parents[2] / "examples" / "07_interactive.py"


def play(folder, *options):
    code = f"import runpy, sys; sys.argv = ['07', '--output', {str(folder)!r}, *{options!r}]; runpy.run_path({str(EXAMPLE)!r}, run_name='__main__')"
    result = run_python(code, DISPLAY="", HYX_DISPLAY="offscreen")
    assert result.returncode == 0, result.stderr
    return [float(number) for number in re.findall(r"-?\d+\.\d+", result.stdout.split("went to")[1])]


def test_recorded_events_steer_the_cart_and_make_a_video(tmp_path):
    x, y, z = play(tmp_path, "--seconds", "3")
    assert y > -1.5 and x > 0.2, "pushed forwards, then to the right"
    videos = list(tmp_path.glob("interactive*"))
    assert videos and videos[0].stat().st_size > 10000


def test_what_was_recorded_plays_again(tmp_path):
    record = tmp_path / "events.json"
    first = play(tmp_path, "--seconds", "1", "--record", str(record))
    events = json.loads(record.read_text())
    assert [event[1] for event in events] == ["keyPress"]
    assert play(tmp_path, "--seconds", "1", "--events", str(record)) == first
