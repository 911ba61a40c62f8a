// A child process that is fed through its standard input and says on its standard error what goes wrong.
#pragma once

#include "reference/machinery/context/owner_process.h"

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <vector>

namespace hyxOSG {

/// Starts the program at construction; `finish` or the destructor ends it. No call waits for ever: a child that takes
/// no data, or does not end while its file does not grow either, is killed. When it has ended its film is mended, so
/// that what it wrote can be read before anybody asks for more. Not for use by several threads at once.
///
/// The child runs in its own process group with default signal handling, so that an interrupt typed at the terminal
/// does not cut its file. It reads from a socket and not from a pipe, because a write to a socket can be told not to
/// raise SIGPIPE.
class EncoderProcess {
public:
    /// \param command the program, looked up in the PATH, and its arguments.
    /// \param file what it writes
    /// \throws std::runtime_error with the reason when it cannot be started
    EncoderProcess(std::vector<std::string> const& command, std::string const& file);
    /// Kills a child that still runs, but not out of a forked copy of the process that started it.
    ~EncoderProcess();
    EncoderProcess(EncoderProcess const&) = delete;
    EncoderProcess& operator=(EncoderProcess const&) = delete;

    /// Hands over all the bytes.
    /// \throws std::runtime_error with the child's words when it has ended or takes nothing more
    void write(unsigned char const* data, std::size_t size);

    /// Whether the child has not ended yet.
    bool isRunning() const;

    /// Ends the input and waits for the child to end. On a pending interrupt (Ctrl-C) it is left to end by itself.
    /// \throws std::runtime_error with the child's words when it reports failure or had to be killed
    void finish();

private:
    void drainMessages();
    void mendFilm() const;
    bool hasToldFailure() const;
    bool waitForEnd(double seconds, bool mayLeave);
    void endChild();
    void closeStreams();
    [[noreturn]] void fail(std::string const& what);
    std::string failureText(std::string const& what) const;

    std::string m_program;
    std::string m_file;
    std::string m_messages;
    pid_t m_child = -1;
    int m_input = -1;
    int m_errors = -1;
    int m_status = 0;
    OwnerProcess m_owner;
};

} // namespace hyxOSG
