// Passes notices on, to the scripts' log or the console unless somebody else takes them.
#include "platform/hyx/objects/notify.h"

#include "reference/hyxPython/native_work.h"
#include "reference/hyxPython/script_log.h"

#include <iostream>

namespace hyx {

namespace {

void writeToLog(int level, std::string const& text) {
    if (!hyxPython::logForScripts(level, text))
        (level >= Notify::NOTIFY_WARNING ? std::cerr : std::cout) << text << std::endl;
}

} // namespace

Notify::Notify() : m_sink(writeToLog) {}

Notify& Notify::instance() {
    // Never destroyed: notices may still come while the process ends.
    static Notify& stream = *new Notify;
    return stream;
}

void Notify::notify(int level, std::string const& text) {
    if (level < m_level)
        return;
    hyxPython::ScriptCall const turn; // the sink may be a script's
    m_sink(level, text);
}

void Notify::notify(int level, char const* function, int line, char const* source, std::string const& text) {
    if (level < m_level)
        return;
    notify(level, std::string(function ? function : "") + "(" + std::to_string(line) + "), " + (source ? source : "") +
                      ": " + text);
}

void Notify::setSink(Sink sink) {
    m_replaced = bool(sink);
    m_sink = sink ? std::move(sink) : writeToLog;
}

} // namespace hyx
