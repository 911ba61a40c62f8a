// Images, textures and lists of images.
#include "binding/vocabulary/lists.h"
#include "modules/osg/scene_graph_rows.h"
#include "platform/hyxOSG/visuals/cube_map.h"

#include <osg/Image>
#include <osg/Texture2D>
#include <osg/TextureCubeMap>

#include <algorithm>

namespace osg {
// The list of pictures of a cube map, under the name that scripts use.
using ImageVector = hyxOSG::ImageList;
} // namespace osg

namespace {

void check_place(osg::Image const& self, int s, int t) {
    if (!self.data() || s < 0 || t < 0 || s >= self.s() || t >= self.t())
        throw std::out_of_range("there is no pixel " + std::to_string(s) + ", " + std::to_string(t));
}

osg::Vec4f image_color(osg::Image const& self, int s, int t) {
    check_place(self, s, t);
    return self.getColor(static_cast<unsigned int>(s), static_cast<unsigned int>(t));
}

void set_image_color(osg::Image& self, osg::Vec4f const& value, int s, int t) {
    check_place(self, s, t);
    self.setColor(value, static_cast<unsigned int>(s), static_cast<unsigned int>(t));
}

// An RGB or RGBA image of bytes, black.
osg::Image* make_image(int width, int height, bool alpha) {
    if (width < 1 || height < 1 || width > 32768 || height > 32768)
        throw std::invalid_argument("an image needs 1 to 32768 pixels each way");
    auto* const image = new osg::Image;
    image->allocateImage(width, height, 1, alpha ? GL_RGBA : GL_RGB, GL_UNSIGNED_BYTE, 1);
    std::fill(image->data(), image->data() + image->getTotalSizeInBytes(), static_cast<unsigned char>(0));
    return image;
}

PyObject* pixels(osg::Image const& self) {
    return PyBytes_FromStringAndSize(reinterpret_cast<char const*>(self.data()),
                                     static_cast<Py_ssize_t>(self.data() ? self.getTotalSizeInBytes() : 0));
}

void set_pixels(osg::Image& self, PyObject* bytes) {
    Py_buffer view;
    if (PyObject_GetBuffer(bytes, &view, PyBUF_SIMPLE) < 0)
        throw vocabulary::PythonError();
    bool const fits = self.data() && static_cast<std::size_t>(view.len) == self.getTotalSizeInBytes();
    if (fits)
        std::copy_n(static_cast<unsigned char const*>(view.buf), view.len, self.data());
    PyBuffer_Release(&view);
    if (!fits)
        throw std::invalid_argument("the image takes " + std::to_string(self.getTotalSizeInBytes()) + " bytes");
    self.dirty();
}

std::string file_name(osg::Image const& self) {
    return self.getFileName();
}

osg::Image* cube_side(osg::TextureCubeMap& self, unsigned int side) {
    if (side > 5)
        throw std::out_of_range("a cube map has sides 0 to 5");
    return self.getImage(side);
}

osg::Image* texture_image(osg::Texture2D& self) {
    return self.getImage();
}

void set_texture_image(osg::Texture2D& self, osg::Image* image) {
    self.setImage(image);
}

int texture_width(osg::Texture2D const& self) {
    return self.getTextureWidth();
}

int texture_height(osg::Texture2D const& self) {
    return self.getTextureHeight();
}

bool repeats(osg::Texture2D const& self) {
    return self.getWrap(osg::Texture::WRAP_S) == osg::Texture::REPEAT;
}

constexpr Declared images_rows[] = {
    FUNCTION(new_Image, NEW(osg::Image, ()), MAKE(osg::Image, make_image, (int, int, bool), false)),
    FUNCTION(Image_s, METHOD(osg::Image, s, () const)),
    FUNCTION(Image_t, METHOD(osg::Image, t, () const)),
    FUNCTION(Image_getPixelFormat, METHOD(osg::Image, getPixelFormat, () const)),
    FUNCTION(Image_getColor, CONTAINER(ADAPTER(osg::Image, getColor, image_color, (int, int) const))),
    FUNCTION(Image_setColor, CONTAINER(ADAPTER(osg::Image, setColor, set_image_color, (osg::Vec4f const&, int, int)))),
    FUNCTION(Image_getData, ADAPTER(osg::Image, getData, pixels, () const)),
    FUNCTION(Image_setData, ADAPTER(osg::Image, setData, set_pixels, (PyObject*))),
    FUNCTION(Image_getFileName, ADAPTER(osg::Image, getFileName, file_name, () const)),
    FUNCTION(Image_flipVertical, METHOD(osg::Image, flipVertical, ())),
    FUNCTION(Image_dirty, METHOD(osg::Image, dirty, ())),
    SHARED_CLASS_ROWS(osg::Image, Image),

    SHARED_CLASS_ROWS(osg::Texture, Texture),
    FUNCTION(new_Texture2D, NEW(osg::Texture2D, ()), NEW(osg::Texture2D, (osg::Image*))),
    FUNCTION(Texture2D_getImage, SHARED(ADAPTER(osg::Texture2D, getImage, texture_image, ()))),
    FUNCTION(Texture2D_setImage, ADAPTER(osg::Texture2D, setImage, set_texture_image, (osg::Image*))),
    FUNCTION(Texture2D_getTextureWidth, ADAPTER(osg::Texture2D, getTextureWidth, texture_width, () const)),
    FUNCTION(Texture2D_getTextureHeight, ADAPTER(osg::Texture2D, getTextureHeight, texture_height, () const)),
    FUNCTION(Texture2D_isRepeating, ADAPTER(osg::Texture2D, isRepeating, repeats, () const)),
    SHARED_CLASS_ROWS(osg::Texture2D, Texture2D),
    FUNCTION(new_TextureCubeMap, NEW(osg::TextureCubeMap, ())),
    FUNCTION(TextureCubeMap_getImage,
             CONTAINER(SHARED(ADAPTER(osg::TextureCubeMap, getImage, cube_side, (unsigned int))))),
    SHARED_CLASS_ROWS(osg::TextureCubeMap, TextureCubeMap),

    LIST_ROWS(osg::ImageVector, ImageVector, osg::Image*, SHARED),
};

} // namespace

ROWS(images_rows);
