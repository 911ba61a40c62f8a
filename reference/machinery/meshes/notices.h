// Notices of why something could not be done.
#pragma once

#include "platform/hyx/objects/notify.h"
#include "reference/hyxPython/script_log.h"

#include <string>

namespace hyxOSG {

/// A warning of Python's where a script has called, so that it is shown with the script's line and can be made an
/// error.
inline void warn(std::string const& text) {
    if (hyx::Notify::instance().hasSink() || !hyxPython::warnScript(text))
        hyx::Notify::instance().notify(hyx::Notify::NOTIFY_WARNING, text);
}

} // namespace hyxOSG
