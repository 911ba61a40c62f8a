"""Images and the scene graph's values cross to NumPy and back."""

import hyxOSG
import numpy
import osg
import pytest
from PIL import Image


def test_the_pixels_of_an_image_are_an_array_with_the_lowest_row_first(tmp_path):
    pixels = numpy.arange(5 * 7 * 3, dtype=numpy.uint8).reshape(5, 7, 3)
    Image.fromarray(pixels).save(tmp_path / "pixels.png")
    image = hyxOSG.createTexture(str(tmp_path / "pixels.png")).getImage()
    array = numpy.array(image)
    assert (array.shape, array.dtype) == ((5, 7, 3), numpy.uint8)
    assert numpy.array_equal(array[::-1], pixels)


def test_an_image_without_pixels_is_refused():
    with pytest.raises(ValueError, match="no pixels"):
        numpy.array(osg.Image())


@pytest.mark.parametrize("kind", [osg.Vec2f, osg.Vec3f, osg.Vec4f, osg.Vec3d, osg.Quat])
def test_values_of_the_scene_graph_cross_both_ways(kind):
    size = len(kind())
    value = kind(*range(1, size + 1))
    assert tuple(value) == tuple(range(1, size + 1))
    assert numpy.array_equal(numpy.array(value), numpy.arange(1, size + 1))
