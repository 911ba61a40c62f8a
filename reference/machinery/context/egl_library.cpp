// Loads libEGL and the addresses of its functions.
#include "reference/machinery/context/egl_library.h"

#include <dlfcn.h>

#include <sstream>
#include <stdexcept>

namespace hyxOSG {
namespace {

template <class Function>
void find(void* library, char const* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    if (!function)
        throw std::runtime_error(std::string("libEGL lacks the function ") + name);
}

template <class Function>
void findExtension(EglLibrary const& egl, char const* name, Function& function) {
    function = reinterpret_cast<Function>(egl.getProcAddress(name));
}

EglLibrary load() {
    void* library = dlopen("libEGL.so.1", RTLD_NOW | RTLD_LOCAL);
    if (!library)
        throw std::runtime_error(std::string("off-screen drawing needs libEGL (package libegl1): ") + dlerror());
    EglLibrary egl{};
    find(library, "eglGetProcAddress", egl.getProcAddress);
    find(library, "eglGetDisplay", egl.getDisplay);
    find(library, "eglInitialize", egl.initialize);
    find(library, "eglQueryString", egl.queryString);
    find(library, "eglBindAPI", egl.bindApi);
    find(library, "eglChooseConfig", egl.chooseConfig);
    find(library, "eglGetConfigAttrib", egl.getConfigAttribute);
    find(library, "eglCreateContext", egl.createContext);
    find(library, "eglDestroyContext", egl.destroyContext);
    find(library, "eglCreatePbufferSurface", egl.createPbuffer);
    find(library, "eglDestroySurface", egl.destroySurface);
    find(library, "eglMakeCurrent", egl.makeCurrent);
    find(library, "eglGetCurrentContext", egl.currentContext);
    find(library, "eglGetCurrentSurface", egl.currentSurface);
    find(library, "eglGetCurrentDisplay", egl.currentDisplay);
    find(library, "eglGetError", egl.getError);
    findExtension(egl, "eglQueryDevicesEXT", egl.queryDevices);
    findExtension(egl, "eglQueryDeviceStringEXT", egl.queryDeviceString);
    findExtension(egl, "eglGetPlatformDisplayEXT", egl.getPlatformDisplay);
    return egl;
}

} // namespace

EglLibrary const& EglLibrary::instance() {
    static EglLibrary const library = load();
    return library;
}

std::string eglErrorText(EGLint error) {
    switch (error) {
    case EGL_SUCCESS:
        return "no error reported";
    case EGL_NOT_INITIALIZED:
        return "EGL_NOT_INITIALIZED";
    case EGL_BAD_ACCESS:
        return "EGL_BAD_ACCESS";
    case EGL_BAD_ALLOC:
        return "EGL_BAD_ALLOC";
    case EGL_BAD_ATTRIBUTE:
        return "EGL_BAD_ATTRIBUTE";
    case EGL_BAD_CONFIG:
        return "EGL_BAD_CONFIG";
    case EGL_BAD_CONTEXT:
        return "EGL_BAD_CONTEXT";
    case EGL_BAD_DISPLAY:
        return "EGL_BAD_DISPLAY";
    case EGL_BAD_MATCH:
        return "EGL_BAD_MATCH";
    case EGL_BAD_SURFACE:
        return "EGL_BAD_SURFACE";
    case EGL_CONTEXT_LOST:
        return "EGL_CONTEXT_LOST";
    default: {
        std::ostringstream text;
        text << "EGL error 0x" << std::hex << error;
        return text.str();
    }
    }
}

} // namespace hyxOSG
