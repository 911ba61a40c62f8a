// Asking for the current context, and agreeing with its host about its state.

#include "reference/hyxOSG/capture/host_context.h"

#include <dlfcn.h>
#include <osg/GLExtensions>

#include <cstdlib>
#include <initializer_list>
#include <stdexcept>
#include <string>

namespace hyxOSG {
namespace {

using ContextQuery = void* (*)();

/// The query of a library that the host has loaded already; a library that is not loaded has no context.
ContextQuery findQuery(char const* library, char const* name) {
    void* const handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
    return handle ? reinterpret_cast<ContextQuery>(dlsym(handle, name)) : nullptr;
}

/// What osg takes for off until it meets it for the first time.
constexpr GLenum hostModes[] = {GL_ALPHA_TEST,   GL_BLEND,        GL_CULL_FACE,      GL_DEPTH_TEST,
                                GL_FOG,          GL_LIGHTING,     GL_NORMALIZE,      GL_TEXTURE_2D,
                                GL_SCISSOR_TEST, GL_STENCIL_TEST, GL_COLOR_LOGIC_OP, GL_POLYGON_OFFSET_FILL};

} // namespace

void* currentContext() {
    for (ContextQuery const query :
         {findQuery("libEGL.so.1", "eglGetCurrentContext"), findQuery("libGLX.so.0", "glXGetCurrentContext"),
          findQuery("libGL.so.1", "glXGetCurrentContext")}) {
        if (void* const context = query ? query() : nullptr) {
            return context;
        }
    }
    return nullptr;
}

void requireSuitableContext() {
    constexpr GLenum profileMask = 0x9126;
    constexpr GLint coreProfile = 1;
    auto const* const text = reinterpret_cast<char const*>(glGetString(GL_VERSION));
    std::string const version = text ? text : "";
    double const number = std::strtod(version.c_str(), nullptr); // 0 for the letters that OpenGL ES begins with
    GLint profile = 0;
    if (number >= 3.2)
        glGetIntegerv(profileMask, &profile);
    if (number < 2.0 || profile & coreProfile)
        throw std::runtime_error(
            "the current context is of \"" + version + "\"" + (profile & coreProfile ? " in the core profile" : "") +
            ": ask for OpenGL, not OpenGL ES, of version 2.0 or later in the compatibility profile");
}

ContextStay::ContextStay(osg::State& state) : m_state(state) {
    state.initializeExtensionProcs();
    auto const& gl = *state.get<osg::GLExtensions>();
    gl.glUseProgram(0);
    gl.glBindVertexArray(0);
    gl.glBindBuffer(GL_ARRAY_BUFFER_ARB, 0);
    gl.glBindBuffer(GL_ELEMENT_ARRAY_BUFFER_ARB, 0);
    gl.glBindBuffer(GL_PIXEL_PACK_BUFFER_ARB, 0);
    gl.glBindBuffer(GL_PIXEL_UNPACK_BUFFER_ARB, 0);
    state.setLastAppliedProgramObject(nullptr);
    state.setActiveTextureUnit(0);
    gl.glActiveTexture(GL_TEXTURE0);
    for (GLenum const mode : hostModes) {
        glDisable(mode);
    }
    // Whatever osg left off counts as on now, so that applying its defaults turns it off for certain.
    state.dirtyAllModes();
    state.dirtyAllAttributes();
    state.dirtyAllVertexArrays();
    state.apply();
}

ContextStay::~ContextStay() {
    m_state.disableAllVertexArrays();
    m_state.unbindVertexArrayObject();
    m_state.unbindVertexBufferObject();
    m_state.unbindElementBufferObject();
    m_state.popAllStateSets();
    m_state.apply();
}

} // namespace hyxOSG
