// Where notices for the user go.
#pragma once

#include <functional>
#include <string>

namespace hyx {

/// The stream of notices of all libraries. Notices of a level below the threshold are dropped; the others go to the
/// sink.
class Notify {
public:
    enum Level { NOTIFY_DEBUG = 1, NOTIFY_INFO = 2, NOTIFY_WARNING = 3, NOTIFY_ERROR = 4 };

    /// Receives one notice, without a line end.
    using Sink = std::function<void(int level, std::string const& text)>;

    /// The one of the process.
    static Notify& instance();

    /// Sends one notice. The exact text is "text" alone; where it came from is not added.
    void notify(int level, std::string const& text);
    /// Sends one notice that names its place: "function(line), source: text".
    void notify(int level, char const* function, int line, char const* source, std::string const& text);

    /// The lowest level that is passed on. NOTIFY_WARNING at the start.
    void setLevel(int level) { m_level = level; }

    int getLevel() const { return m_level; }

    /// Replaces the sink; an empty one restores the first: Python's logger "hyx" where `logging` has been set up, else
    /// standard error for warnings and errors, standard output below.
    void setSink(Sink sink);

    /// Whether somebody has replaced the sink.
    bool hasSink() const { return m_replaced; }

private:
    Notify();
    int m_level = NOTIFY_WARNING;
    bool m_replaced = false;
    Sink m_sink;
};

} // namespace hyx
