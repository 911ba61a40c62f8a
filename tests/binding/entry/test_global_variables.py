"""The live native variable behind cvar."""

import _hyxOSG
import pytest

NAME = "VideoFFMPEGPipeCapture_OutputCodecStrings"
TEXT = (
    "in variable 'hyxOSG::VideoFFMPEGPipeCapture::OutputCodecStrings' of type "
    "'hyxOSG::VideoFFMPEGPipeCapture::CodecStringConversionMap'"
)


def test_texts():
    assert str(_hyxOSG.cvar) == f"({NAME})" and repr(_hyxOSG.cvar) == "<Swig global variables>"
    assert type(_hyxOSG.cvar).__name__ == "swigvarlink" and type(_hyxOSG.cvar).__module__ == "swig_runtime_data4"


def test_unknown_names():
    for access in (lambda: _hyxOSG.cvar.unknown, lambda: setattr(_hyxOSG.cvar, "unknown", 1)):
        with pytest.raises(AttributeError, match="^Unknown C global variable 'unknown'$"):
            access()


def test_reading_gives_the_map_itself_and_assigning_it_back_changes_nothing():
    first = getattr(_hyxOSG.cvar, NAME)
    flat = _hyxOSG.VideoFFMPEGPipeCapture_OutputCodecStrings_get()
    address = lambda handle: int(getattr(handle, "this", handle))
    assert address(first) == address(flat)
    setattr(_hyxOSG.cvar, NAME, first)
    assert _hyxOSG.VideoFFMPEGPipeCapture_OutputCodecStrings_set(flat) is None
    assert address(getattr(_hyxOSG.cvar, NAME)) == address(first)


@pytest.mark.parametrize(
    "assign", [lambda value: setattr(_hyxOSG.cvar, NAME, value), _hyxOSG.VideoFFMPEGPipeCapture_OutputCodecStrings_set]
)
def test_wrong_values_are_refused(assign):
    for value, text in ((3, TEXT), ("x", TEXT), (None, "invalid null reference " + TEXT)):
        with pytest.raises(TypeError) as caught:
            assign(value)
        assert str(caught.value) == text


def test_deleting_is_refused():
    with pytest.raises(TypeError) as caught:
        delattr(_hyxOSG.cvar, NAME)
    assert str(caught.value) == TEXT
    with pytest.raises(TypeError, match="expected 0 arguments, got 1"):
        _hyxOSG.VideoFFMPEGPipeCapture_OutputCodecStrings_get(1)
