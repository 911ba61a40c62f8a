#pragma once
/// Which OpenGL context the calling thread draws into.

namespace hyxOSG {

/// The handle of the current GLX or EGL context, whoever made it; null for none. Only for comparison.
void * currentContext();

} // namespace hyxOSG
