// The enumerators of notices.
#pragma once

#include "binding/runtime/integer_constants.h"
#include "platform/hyx/objects/notify.h"

namespace modules {

inline constexpr runtime::Constant notify_constants[] = {
    {"Notify_NOTIFY_DEBUG", hyx::Notify::NOTIFY_DEBUG},
    {"Notify_NOTIFY_INFO", hyx::Notify::NOTIFY_INFO},
    {"Notify_NOTIFY_WARNING", hyx::Notify::NOTIFY_WARNING},
    {"Notify_NOTIFY_ERROR", hyx::Notify::NOTIFY_ERROR},
};

} // namespace modules
