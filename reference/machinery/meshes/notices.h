// Notices of why something could not be done.
#pragma once

#include "platform/hyx/objects/notify.h"

#include <string>

namespace hyxOSG {

inline void warn(std::string const& text) {
    hyx::Notify::instance().notify(hyx::Notify::NOTIFY_WARNING, text);
}

} // namespace hyxOSG
