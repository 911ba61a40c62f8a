// Measures what a loop spends its time on.
#pragma once

#include <chrono>
#include <cstdio>
#include <map>
#include <memory>
#include <string>

namespace hyxOSG {

/// Writes the tasks of a loop as trace events (JSON, one a line, an open-ended array), which common trace viewers open
/// also when the program did not end well.
///
/// With the timeline each task is an event with its start and length; with the task profile each task's count and total
/// are written at the end. Costs one test a task while both are off.
class Profiler {
public:
    using Clock = std::chrono::steady_clock;

    /// Measures from its making to its end.
    class Task {
    public:
        Task(Profiler& profiler, char const* name)
            : m_profiler(profiler.enabled() ? &profiler : nullptr), m_name(name) {
            if (m_profiler)
                m_start = Clock::now();
        }

        ~Task() {
            if (m_profiler)
                m_profiler->add(m_name, m_start, Clock::now());
        }

        Task(Task const&) = delete;
        Task& operator=(Task const&) = delete;

    private:
        Profiler* m_profiler;
        char const* m_name;
        Clock::time_point m_start;
    };

    ~Profiler();

    void setTimeline(bool enable) { m_timeline = enable; }

    void setTaskProfile(bool enable) { m_taskProfile = enable; }

    bool enabled() const { return m_timeline || m_taskProfile; }

    void setPath(std::string const& path) { m_path = path; }

    std::string const& path() const { return m_path; }

    /// Writes the sums of the task profile and closes the file; measuring again makes a new one. Throws
    /// std::filesystem::filesystem_error when the file could not be written.
    void close();

private:
    struct Sum {
        size_t count = 0;
        Clock::duration total{};
    };

    void add(char const* name, Clock::time_point start, Clock::time_point end);
    bool open();

    bool m_timeline = false;
    bool m_taskProfile = false;
    bool m_failed = false; ///< the file cannot be opened; said when closed
    int m_reason = 0;      ///< and why
    std::string m_path = "hyx_profile.json";
    FILE* m_file = nullptr;
    Clock::time_point m_begin = Clock::now();
    std::map<std::string, Sum> m_sums;
};

} // namespace hyxOSG
