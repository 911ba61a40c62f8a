"""The live window in a notebook, run by a notebook's kernel; a cell of the test's own plays the browser's part."""

import json
import os

import pytest
from subprocesses import BUILD, ROOT, run_python

BROWSER = """
import asyncio, io, json
import numpy
from PIL import Image

sent = []
def receive(message, buffers):
    sent.append(numpy.asarray(Image.open(io.BytesIO(buffers[0])).convert("RGB")).astype(int))
    view._frame_feedback = {"index": message["index"], "timestamp": message["timestamp"], "localtime": 0}
view.send = receive
view._has_visible_views = True
start = app.getTimeStamp()
await asyncio.sleep(1.5)
report = {"frames": len(sent), "time": app.getTimeStamp() - start, "height": ball.getPosition().z}
report["moved"] = int((abs(sent[0] - sent[-1]).max(axis=2) > 40).sum())

async def act(*events):
    for event in events:
        view._rfb_handle_msg(view, event, [])
        await asyncio.sleep(0.2)

click = {"x": 240, "y": 160, "button": 1, "modifiers": []}
await act({"type": "pointer_down", **click}, {"type": "pointer_up", **click})
report["selected"] = app.getSelection() and app.getSelection().getName()
before = app.getViewDirection()
drag = [{**click, "x": 240 + 20 * step} for step in range(4)]
await act({"type": "pointer_down", **drag[0]}, *({"type": "pointer_move", **event} for event in drag),
          {"type": "pointer_up", **drag[-1]})
report["turned"] = abs(app.getViewDirection().x - before.x)
await act({"type": "key_down", "key": "e", "modifiers": []}, {"type": "key_up", "key": "e", "modifiers": []})
report["paused"] = not app.getAutoStepping()
await asyncio.sleep(1)
count = len(sent)
await asyncio.sleep(0.5)
report["while paused"] = len(sent) - count
await act({"type": "resize", "width": 320, "height": 200, "ratio": 1})
report["size"] = app.pixels.shape
app.setAutoStepping(True)
view.close()
stopped = app.getTimeStamp()
await asyncio.sleep(0.5)
report["after close"] = app.getTimeStamp() - stopped
print(json.dumps(report))
"""


def test_the_notebook_shows_a_window_that_lives(tmp_path):
    nbclient, nbformat = pytest.importorskip("nbclient"), pytest.importorskip("nbformat")
    pytest.importorskip("jupyter_rfb")
    notebook = nbformat.read(ROOT / "examples" / "tasks" / "live_view.ipynb", as_version=4)
    notebook.cells.append(nbformat.v4.new_code_cell(BROWSER))
    environment = {**os.environ, "PYTHONPATH": str(BUILD / "python"), "HYX_DISPLAY": "offscreen"}
    nbclient.NotebookClient(notebook, timeout=120, resources={"metadata": {"path": str(tmp_path)}}).execute(
        env=environment
    )
    shown = [out for out in notebook.cells[1].outputs if out.output_type == "execute_result"]
    assert "application/vnd.jupyter.widget-view+json" in shown[0].data
    errors = [out for cell in notebook.cells[1:] for out in cell.outputs if out.get("name") == "stderr"]
    assert errors == []
    report = json.loads(notebook.cells[2].outputs[-1].text)
    assert report["frames"] > 4 and report["moved"] > 200
    assert report["time"] == pytest.approx(1.5, abs=0.4), "in real time"
    assert report["height"] == pytest.approx(0.6, abs=0.02), "the ball lies on the ground"
    assert report["selected"] == "ball" and report["turned"] > 0.05 and report["paused"]
    assert report["while paused"] == 0 and report["size"] == [200, 320, 3]
    assert report["after close"] < 0.1


def test_without_the_widget_package_it_says_what_to_install():
    code = "import sys, hyxOSG\nsys.modules['jupyter_rfb'] = None\nhyxOSG.ExampleApplication().liveView()"
    done = run_python("-c", code)
    assert done.returncode == 1 and "ImportError: a live view needs the package jupyter_rfb" in done.stderr
