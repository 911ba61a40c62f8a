"""The linked map from codec to encoder name, through `cvar` and through the flat functions."""

import _hyxOSG
import hyxOSG
import pytest
from video_file import probe

NAME = "VideoFFMPEGPipeCapture_OutputCodecStrings"
VARIABLE = "in variable 'hyxOSG::VideoFFMPEGPipeCapture::OutputCodecStrings' of type"
MAP = "'hyxOSG::VideoFFMPEGPipeCapture::CodecStringConversionMap'"


def read():
    return getattr(_hyxOSG.cvar, NAME)


def test_both_ways_read_the_one_live_map():
    assert read() == _hyxOSG.VideoFFMPEGPipeCapture_OutputCodecStrings_get()
    assert dict(read().items()) == {0: "libx264", 1: "libx264rgb", 2: "libxvid"}


def test_assigning_the_map_to_itself_changes_nothing():
    before = dict(read().items())
    setattr(_hyxOSG.cvar, NAME, read())
    assert _hyxOSG.VideoFFMPEGPipeCapture_OutputCodecStrings_set(read()) is None
    assert dict(read().items()) == before


@pytest.mark.parametrize("value", [3, "libx264", {0: "libx264"}])
def test_something_else_is_refused(value):
    for assign in (
        lambda: setattr(_hyxOSG.cvar, NAME, value),
        lambda: _hyxOSG.VideoFFMPEGPipeCapture_OutputCodecStrings_set(value),
    ):
        with pytest.raises(TypeError, match=f"^{VARIABLE} {MAP}$"):
            assign()


def test_no_map_is_refused():
    for assign in (
        lambda: setattr(_hyxOSG.cvar, NAME, None),
        lambda: _hyxOSG.VideoFFMPEGPipeCapture_OutputCodecStrings_set(None),
    ):
        with pytest.raises(TypeError, match=f"^invalid null reference {VARIABLE} {MAP}$"):
            assign()


def test_the_map_cannot_be_deleted():
    with pytest.raises(TypeError, match=VARIABLE):
        delattr(_hyxOSG.cvar, NAME)


def test_a_changed_name_is_the_encoder_that_runs(stage, tmp_path):
    video = hyxOSG.VideoFFMPEGPipeCapture(320, 240, 30.0, stage.simulation)
    video.setFilename(str(tmp_path / "video"))
    stage.capture(video)
    read()[0] = "mpeg4"
    try:
        video.startCapture()
        stage.draw(20)
        video.stopCapture()
        del read()[0]
        with pytest.raises(RuntimeError, match="no encoder name for codec 0"):
            video.init()
    finally:
        read()[0] = "libx264"
    assert probe(tmp_path / "video.mp4")["codec_name"] == "mpeg4"
