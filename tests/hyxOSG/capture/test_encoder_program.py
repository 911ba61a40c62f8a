"""Where no ffmpeg is on the path, that of the Python package encodes."""

import shutil

import pytest
from subprocesses import run_python

FILM = """
import sys, types
package = types.ModuleType("imageio_ffmpeg")
package.get_ffmpeg_exe = lambda: {program!r}
sys.modules["imageio_ffmpeg"] = package
import hyxOSG
app = hyxOSG.ExampleApplication()
app.initViewer(64, 48)
video = app.getVideoServerCapture()
video.setFilename({file!r})
app.stopAfter(0.2)
with video:
    app.run()
"""


@pytest.mark.skipif(not shutil.which("ffmpeg"), reason="ffmpeg is not installed")
def test_the_packaged_program_encodes(tmp_path):
    program = tmp_path / "ffmpeg-of-the-package"
    program.write_text(f'#!/bin/sh\n: >{tmp_path / "called"}\nexec {shutil.which("ffmpeg")} "$@"\n')
    program.chmod(0o755)
    done = run_python(FILM.format(program=str(program), file=str(tmp_path / "film")), PATH="/nowhere")
    assert done.returncode == 0, done.stderr
    assert (tmp_path / "called").exists() and (tmp_path / "film.mp4").stat().st_size > 500
