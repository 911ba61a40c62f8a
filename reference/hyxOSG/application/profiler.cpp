// Writes trace events.
#include "reference/hyxOSG/application/profiler.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace hyxOSG {
namespace {

double microseconds(Profiler::Clock::duration time) {
    return std::chrono::duration<double, std::micro>(time).count();
}

} // namespace

Profiler::~Profiler() {
    try {
        close();
    } catch (std::exception const&) { // nobody is left to tell
    }
}

bool Profiler::open() {
    if (m_file)
        return true;
    if (m_failed)
        return false;
    m_file = std::fopen(m_path.c_str(), "w");
    m_failed = !m_file;
    m_reason = errno;
    if (m_file)
        std::fputs("[\n", m_file);
    return m_file != nullptr;
}

void Profiler::add(char const* name, Clock::time_point start, Clock::time_point end) {
    if (m_taskProfile) {
        Sum& sum = m_sums[name];
        ++sum.count;
        sum.total += end - start;
    }
    if (!m_timeline || !open())
        return;
    std::fprintf(m_file, "{\"name\":\"%s\",\"ph\":\"X\",\"pid\":%d,\"tid\":%d,\"ts\":%.3f,\"dur\":%.3f},\n", name,
                 getpid(), gettid(), microseconds(start - m_begin), microseconds(end - start));
}

void Profiler::close() {
    if (!m_sums.empty() && open()) {
        double const now = microseconds(Clock::now() - m_begin);
        for (auto const& [name, sum] : m_sums)
            std::fprintf(m_file,
                         "{\"name\":\"total of %s\",\"ph\":\"i\",\"s\":\"p\",\"pid\":%d,\"tid\":%d,\"ts\":%.3f,"
                         "\"args\":{\"count\":%zu,\"milliseconds\":%.6f}},\n",
                         name.c_str(), getpid(), gettid(), now, sum.count, microseconds(sum.total) / 1000);
    }
    m_sums.clear();
    int reason = m_failed ? m_reason : 0;
    if (m_file) {
        std::fprintf(m_file, "{\"name\":\"end\",\"ph\":\"i\",\"s\":\"p\",\"pid\":%d,\"tid\":%d,\"ts\":%.3f}\n]\n",
                     getpid(), gettid(), microseconds(Clock::now() - m_begin));
        bool const written = !std::ferror(m_file);
        if (std::fclose(m_file) != 0 || !written)
            reason = errno ? errno : EIO;
    }
    m_file = nullptr;
    m_failed = false;
    if (reason)
        throw std::filesystem::filesystem_error("cannot write the trace", m_path,
                                                std::error_code(reason, std::generic_category()));
}

} // namespace hyxOSG
