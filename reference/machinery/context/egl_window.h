// An off-screen window over an EGL pixel buffer.
#pragma once

#include "reference/machinery/context/egl_library.h"
#include "reference/machinery/context/sampled_frame.h"

#include <osgViewer/GraphicsWindow>

#include <memory>

namespace hyxOSG {

/// Behaves like a window of the windowing system (events, resize, several at once), but is never seen.
///
/// With samples it draws into a frame buffer of its own, which its default one names; else into the pixel buffer, which
/// has one colour buffer only. Cameras draw to and read from `colorBuffer()`. Used by one thread.
class EglWindow : public osgViewer::GraphicsWindow {
public:
    explicit EglWindow(osg::GraphicsContext::Traits* traits);

    GLenum colorBuffer() const { return m_frame ? GL_COLOR_ATTACHMENT0_EXT : GL_FRONT; }

    char const* libraryName() const override { return "hyxOSG"; }

    char const* className() const override { return "EglWindow"; }

    bool valid() const override { return m_valid; }

    bool realizeImplementation() override;

    bool isRealizedImplementation() const override { return m_realized; }

    void closeImplementation() override;
    bool makeCurrentImplementation() override;
    bool makeContextCurrentImplementation(osg::GraphicsContext* readContext) override;
    bool releaseContextImplementation() override;

    void bindPBufferToTextureImplementation(GLenum) override {}

    void swapBuffersImplementation() override;

    bool setWindowRectangleImplementation(int x, int y, int width, int height) override;

    bool setWindowDecorationImplementation(bool) override { return true; }

    void setWindowName(std::string const& name) override { _traits->windowName = name; }

    void setCursor(MouseCursor) override {}

    void setSyncToVBlank(bool on) override { _traits->vsync = on; }

    void grabFocus() override {}

    void grabFocusIfPointerInWindow() override {}

    void raiseWindow() override {}

protected:
    ~EglWindow() override;

private:
    EGLSurface makeSurface(int width, int height) const;
    bool bind(EGLSurface read);
    void makeFrame();

    EGLDisplay m_display = EGL_NO_DISPLAY;
    EGLConfig m_config = nullptr;
    EGLContext m_context = EGL_NO_CONTEXT;
    EGLSurface m_surface = EGL_NO_SURFACE;
    std::unique_ptr<SampledFrame> m_frame; ///< null without samples
    int m_width, m_height;                 ///< of the surface; the traits follow later
    bool m_valid = false;                  ///< context and surface were made
    bool m_realized = false;               ///< between realize and close
};

} // namespace hyxOSG
