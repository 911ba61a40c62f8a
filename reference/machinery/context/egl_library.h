// The EGL library, found at run time, so that programs start without it.
#pragma once

#define EGL_NO_X11
#define MESA_EGL_NO_X11_HEADERS
#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <string>

namespace hyxOSG {

/// The functions of libEGL that are used here. The extension functions are null when the library lacks them.
struct EglLibrary {
    decltype(&::eglGetProcAddress) getProcAddress;
    decltype(&::eglGetDisplay) getDisplay;
    decltype(&::eglInitialize) initialize;
    decltype(&::eglQueryString) queryString;
    decltype(&::eglBindAPI) bindApi;
    decltype(&::eglChooseConfig) chooseConfig;
    decltype(&::eglGetConfigAttrib) getConfigAttribute;
    decltype(&::eglCreateContext) createContext;
    decltype(&::eglDestroyContext) destroyContext;
    decltype(&::eglCreatePbufferSurface) createPbuffer;
    decltype(&::eglDestroySurface) destroySurface;
    decltype(&::eglMakeCurrent) makeCurrent;
    decltype(&::eglGetCurrentContext) currentContext;
    decltype(&::eglGetCurrentSurface) currentSurface;
    decltype(&::eglGetCurrentDisplay) currentDisplay;
    decltype(&::eglGetError) getError;
    PFNEGLQUERYDEVICESEXTPROC queryDevices;
    PFNEGLQUERYDEVICESTRINGEXTPROC queryDeviceString;
    PFNEGLGETPLATFORMDISPLAYEXTPROC getPlatformDisplay;

    /// The loaded library; throws std::runtime_error with the reason when there is none. Never unloaded: drivers keep
    /// threads and exit handlers of their own.
    static EglLibrary const& instance();
};

/// The name of an EGL error code.
std::string eglErrorText(EGLint error);

} // namespace hyxOSG
