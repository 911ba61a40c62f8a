// The EGL display that off-screen windows draw with.
#pragma once

#include "reference/machinery/context/egl_library.h"

namespace hyxOSG {

/// The first display that can really draw, in the order: graphics card, software device, surfaceless platform, default
/// display. Chosen once and never terminated, so that windows may be closed in any order up to the end of the process.
/// Throws std::runtime_error with the reasons when there is none.
EGLDisplay eglDisplay();

/// A configuration of `display` for off-screen windows; null when there is none.
EGLConfig chooseEglConfig(EGLDisplay display, bool stencil);

} // namespace hyxOSG
