// Asks the X server once.
#include "reference/machinery/context/x_display.h"

#include <dlfcn.h>

#include <cstdlib>

namespace hyxOSG {
namespace {

bool probe() {
    void* library = dlopen("libX11.so.6", RTLD_NOW | RTLD_LOCAL);
    if (!library)
        return false;
    auto* open = reinterpret_cast<void* (*)(char const*)>(dlsym(library, "XOpenDisplay"));
    return open && open(nullptr);
}

} // namespace

bool xDisplayAnswers() {
    char const* name = std::getenv("DISPLAY");
    if (!name || !*name)
        return false;
    static bool answers = false; // a refusal is asked again: the server may have been started since
    if (!answers)
        answers = probe();
    return answers;
}

} // namespace hyxOSG
