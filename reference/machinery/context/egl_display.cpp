// Chooses the EGL display by trying a context on each candidate.
#include "reference/machinery/context/egl_display.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

namespace hyxOSG {
namespace {

struct Candidate {
    std::string name;
    EGLenum platform; ///< 0 for eglGetDisplay
    void* native;
};

bool hasWord(char const* list, char const* word) {
    if (!list)
        return false;
    size_t const length = std::strlen(word);
    for (char const* at = std::strstr(list, word); at; at = std::strstr(at + length, word)) {
        bool const starts = at == list || at[-1] == ' ';
        if (starts && (at[length] == ' ' || at[length] == '\0'))
            return true;
    }
    return false;
}

/// Devices first, those of graphics cards before the software one.
std::vector<Candidate> findCandidates(EglLibrary const& egl) {
    std::vector<Candidate> hardware, software;
    if (egl.queryDevices && egl.queryDeviceString && egl.getPlatformDisplay) {
        EGLint count = 0;
        egl.queryDevices(0, nullptr, &count);
        std::vector<EGLDeviceEXT> devices(count > 0 ? count : 0);
        if (count > 0)
            egl.queryDevices(count, devices.data(), &count);
        for (EGLDeviceEXT device : devices) {
            char const* extensions = egl.queryDeviceString(device, EGL_EXTENSIONS);
            bool const isSoftware = hasWord(extensions, "EGL_MESA_device_software");
            auto& list = isSoftware ? software : hardware;
            list.push_back({isSoftware ? "software device" : "graphics card", EGL_PLATFORM_DEVICE_EXT, device});
        }
    }
    std::vector<Candidate> all = hardware;
    all.insert(all.end(), software.begin(), software.end());
    if (egl.getPlatformDisplay)
        all.push_back({"surfaceless platform", EGL_PLATFORM_SURFACELESS_MESA, nullptr});
    all.push_back({"default display", 0, nullptr});
    return all;
}

/// A driver may initialize on a card that the process may not use, so only a context made current counts.
bool canDraw(EglLibrary const& egl, EGLDisplay display) {
    EGLConfig const config = chooseEglConfig(display, true);
    if (!config || !egl.bindApi(EGL_OPENGL_API))
        return false;
    EGLint const size[] = {EGL_WIDTH, 1, EGL_HEIGHT, 1, EGL_NONE};
    EGLDisplay const oldDisplay = egl.currentDisplay();
    EGLContext const oldContext = egl.currentContext();
    EGLSurface const oldDraw = egl.currentSurface(EGL_DRAW), oldRead = egl.currentSurface(EGL_READ);
    EGLContext const context = egl.createContext(display, config, EGL_NO_CONTEXT, nullptr);
    EGLSurface const surface = egl.createPbuffer(display, config, size);
    bool works = false;
    if (context != EGL_NO_CONTEXT && surface != EGL_NO_SURFACE && egl.makeCurrent(display, surface, surface, context)) {
        works = true;
        egl.makeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    }
    if (surface != EGL_NO_SURFACE)
        egl.destroySurface(display, surface);
    if (context != EGL_NO_CONTEXT)
        egl.destroyContext(display, context);
    if (oldContext != EGL_NO_CONTEXT)
        egl.makeCurrent(oldDisplay, oldDraw, oldRead, oldContext);
    return works;
}

EGLDisplay choose() {
    EglLibrary const& egl = EglLibrary::instance();
    std::string reasons;
    for (Candidate const& candidate : findCandidates(egl)) {
        EGLDisplay const display = candidate.platform
                                       ? egl.getPlatformDisplay(candidate.platform, candidate.native, nullptr)
                                       : egl.getDisplay(EGL_DEFAULT_DISPLAY);
        if (display != EGL_NO_DISPLAY && egl.initialize(display, nullptr, nullptr) && canDraw(egl, display))
            return display;
        reasons += (reasons.empty() ? "" : "; ") + candidate.name + ": " + eglErrorText(egl.getError());
    }
    throw std::runtime_error("no off-screen drawing (a driver such as libgl1-mesa-dri is needed): " + reasons);
}

} // namespace

EGLDisplay eglDisplay() {
    static EGLDisplay const display = choose();
    return display;
}

EGLConfig chooseEglConfig(EGLDisplay display, bool stencil) {
    EGLint const attributes[] = {EGL_SURFACE_TYPE,
                                 EGL_PBUFFER_BIT,
                                 EGL_RENDERABLE_TYPE,
                                 EGL_OPENGL_BIT,
                                 EGL_RED_SIZE,
                                 8,
                                 EGL_GREEN_SIZE,
                                 8,
                                 EGL_BLUE_SIZE,
                                 8,
                                 EGL_ALPHA_SIZE,
                                 8, // stored anyway, and read back at half the speed where it does not count
                                 EGL_DEPTH_SIZE,
                                 24,
                                 EGL_STENCIL_SIZE,
                                 stencil ? 8 : 0,
                                 EGL_NONE};
    EglLibrary const& egl = EglLibrary::instance();
    EGLint count = 0;
    if (!egl.chooseConfig(display, attributes, nullptr, 0, &count) || count == 0)
        return nullptr;
    std::vector<EGLConfig> configs(static_cast<std::size_t>(count));
    egl.chooseConfig(display, attributes, configs.data(), count, &count);
    // The deepest come first, and software draws into ten bits a colour and reads them back at half the speed.
    auto const isEightBits = [&](EGLConfig config) {
        EGLint red = 0;
        return egl.getConfigAttribute(display, config, EGL_RED_SIZE, &red) && red == 8;
    };
    auto const end = configs.begin() + count;
    auto const found = std::find_if(configs.begin(), end, isEightBits);
    return found == end ? configs.front() : *found;
}

} // namespace hyxOSG
