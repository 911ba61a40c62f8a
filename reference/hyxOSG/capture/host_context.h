// Drawing in a context that belongs to somebody else.
#pragma once

#include <osg/State>

namespace hyxOSG {

/// The handle of the current GLX or EGL context, whoever made it; null for none. Only for comparison.
void* currentContext();

/// Refuses a current context that osg cannot draw in: its pictures would be blank, or the process would crash.
/// \throws std::runtime_error that says which one to ask for
void requireSuitableContext();

/// Prepares a host's context for osg while it lives. osg remembers what it set and leaves out what it thinks is set
/// already; but the host has drawn since.
class ContextStay {
public:
    /// Unbinds what the host left bound and sets OpenGL to what osg believes.
    explicit ContextStay(osg::State& state);
    /// Sets OpenGL back to what it starts with. Arrays too: osg disables them only when it draws next, and their memory
    /// may be gone by then.
    ~ContextStay();
    ContextStay(ContextStay const&) = delete;
    ContextStay& operator=(ContextStay const&) = delete;

private:
    osg::State& m_state;
};

} // namespace hyxOSG
