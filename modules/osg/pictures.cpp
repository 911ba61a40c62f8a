// The picture of an application's window, into memory of the caller's.
#include "modules/osg/scene_graph_rows.h"
#include "platform/hyxOSG/application/example_application.h"

namespace osgViewer {
namespace {

hyx::Vec2u picture_size(hyxOSG::ExampleApplication& application) {
    return application.getPictureSize();
}

// `memory` is a writable buffer of bytes without gaps: rows from the top, three bytes a pixel.
void read_picture(hyxOSG::ExampleApplication& application, PyObject* memory, bool fresh) {
    Py_buffer view;
    if (PyObject_GetBuffer(memory, &view, PyBUF_C_CONTIGUOUS | PyBUF_WRITABLE) != 0)
        throw vocabulary::PythonError();

    struct Released {
        ~Released() { PyBuffer_Release(view); }

        Py_buffer* view;
    } const released{&view};

    hyx::Vec2u const size = application.getPictureSize();
    if (static_cast<std::size_t>(view.len) != 3 * std::size_t(size.x) * size.y)
        throw std::invalid_argument("the picture takes " + std::to_string(3 * std::size_t(size.x) * size.y) + " bytes");
    application.readPicture(static_cast<unsigned char*>(view.buf), size, fresh);
}

} // namespace
} // namespace osgViewer

namespace {

constexpr Declared pictures_rows[] = {
    FUNCTION(getPictureSize, FREE(osgViewer::picture_size, (hyxOSG::ExampleApplication&))),
    FUNCTION(readPicture, FREE(osgViewer::read_picture, (hyxOSG::ExampleApplication&, PyObject*, bool))),
};

} // namespace

ROWS(pictures_rows);
