// What goes wrong while a scene is gathered or drawn, where nothing may throw.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace hyxOSG {

/// Of the thread that draws. Who calls for a frame throws what was noted in it.
class DrawingFailure {
public:
    static void note(std::string const& reason) { pending() = reason; }

    /// Throws std::runtime_error with the reason noted last, if any.
    static void raise() {
        if (std::string const reason = std::exchange(pending(), {}); !reason.empty())
            throw std::runtime_error(reason);
    }

private:
    static std::string& pending() {
        thread_local std::string reason;
        return reason;
    }
};

} // namespace hyxOSG
