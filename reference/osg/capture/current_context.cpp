/// Asking the window system libraries for the current context.

#include "reference/osg/capture/current_context.h"

#include <dlfcn.h>
#include <initializer_list>

namespace hyxOSG {
namespace {

using ContextQuery = void * (*)();

/// The query of a library that the host has loaded already; a library that is not loaded has no context.
ContextQuery findQuery(char const * library, char const * name) {
    void * const handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
    return handle ? reinterpret_cast<ContextQuery>(dlsym(handle, name)) : nullptr;
}

} // namespace

void * currentContext() {
    for (ContextQuery const query :
         {findQuery("libEGL.so.1", "eglGetCurrentContext"), findQuery("libGLX.so.0", "glXGetCurrentContext"),
          findQuery("libGL.so.1", "glXGetCurrentContext")}) {
        if (void * const context = query ? query() : nullptr) {
            return context;
        }
    }
    return nullptr;
}

} // namespace hyxOSG
