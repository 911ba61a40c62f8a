// Rows of ExampleApplication: the window and what it is like.
#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/application/example_application.h"

namespace {

constexpr Declared window_rows[] = {
    FUNCTION(ExampleApplication_setWindowRectangle, METHOD(hyxOSG::ExampleApplication, setWindowRectangle,
                                                           (unsigned int, unsigned int, unsigned int, unsigned int))),
    FUNCTION(ExampleApplication_setWindowTitle,
             METHOD(hyxOSG::ExampleApplication, setWindowTitle, (std::string const&))),
    FUNCTION(ExampleApplication_setAllowWindowResizing,
             METHOD(hyxOSG::ExampleApplication, setAllowWindowResizing, (bool))),
    FUNCTION(ExampleApplication_getAllowWindowResizing,
             METHOD(hyxOSG::ExampleApplication, getAllowWindowResizing, () const)),
    FUNCTION(ExampleApplication_hasOffscreenWindow, METHOD(hyxOSG::ExampleApplication, hasOffscreenWindow, () const)),
    FUNCTION(ExampleApplication_getHWND, METHOD(hyxOSG::ExampleApplication, getHWND, () const)),
    FUNCTION(ExampleApplication_setEnableVSync, METHOD(hyxOSG::ExampleApplication, setEnableVSync, (bool, bool), true)),
    FUNCTION(ExampleApplication_getEnableVSync, METHOD(hyxOSG::ExampleApplication, getEnableVSync, () const)),
    FUNCTION(ExampleApplication_setEnableDebugRenderer,
             METHOD(hyxOSG::ExampleApplication, setEnableDebugRenderer, (bool))),
    FUNCTION(ExampleApplication_getEnableDebugRenderer,
             METHOD(hyxOSG::ExampleApplication, getEnableDebugRenderer, () const)),
    FUNCTION(ExampleApplication_setEnableTextDebugRendering,
             METHOD(hyxOSG::ExampleApplication, setEnableTextDebugRendering, (bool))),
    FUNCTION(ExampleApplication_getEnableTextDebugRendering,
             METHOD(hyxOSG::ExampleApplication, getEnableTextDebugRendering, () const)),
    FUNCTION(ExampleApplication_setEnableOSGRenderer, METHOD(hyxOSG::ExampleApplication, setEnableOSGRenderer, (bool))),
    FUNCTION(ExampleApplication_getEnableOSGRenderer,
             METHOD(hyxOSG::ExampleApplication, getEnableOSGRenderer, () const)),
};

} // namespace

ROWS(window_rows);
