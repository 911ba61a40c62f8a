"""The script of the README runs as it stands there, and its picture shows what it says."""

import subprocess
import sys

import numpy
from PIL import Image
from subprocesses import ROOT, bare_environment


def test_the_script_draws_the_box_on_its_ground(tmp_path):
    text = (ROOT / "README.md").read_text()
    script = tmp_path / "script.py"
    script.write_text(text.split("## A script")[1].split("```python\n")[1].split("```")[0])
    environment = {**bare_environment(), "HYX_DISPLAY": "offscreen"}
    subprocess.run([sys.executable, script], cwd=tmp_path, env=environment, check=True, timeout=60)
    picture = numpy.asarray(Image.open(tmp_path / "out.png").convert("RGB")).astype(int)
    height, width, _ = picture.shape
    red, green, blue = numpy.moveaxis(picture, 2, 0)
    box = (red > 1.5 * green) & (red > 1.5 * blue) & (red > 60)
    rows, columns = numpy.nonzero(box)
    assert box.mean() > 0.01
    # The box lies in the middle of the picture, and its ground fills a good part of what is around it.
    assert abs(columns.mean() - width / 2) < width / 10 and abs(rows.mean() - height / 2) < height / 5
    beside = picture[int(rows.max()) - 5, [int(columns.min()) - 20, int(columns.max()) + 20]]
    assert numpy.abs(beside - picture[5, 5]).max(axis=1).min() > 20
