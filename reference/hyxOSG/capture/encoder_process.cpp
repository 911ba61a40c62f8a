// Starting, feeding and ending the encoder's process.

#include "reference/hyxOSG/capture/encoder_process.h"

#include "reference/hyxOSG/capture/film_container.h"
#include "reference/hyxPython/native_work.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <utility>

extern char** environ;

namespace hyxOSG {
namespace {

constexpr int writePatienceMs = 20000;
constexpr double finishPatience = 30; // seconds without growth of the file
constexpr double terminatePatience = 2;
constexpr std::size_t longestMessages = 4096;

/// 0 for none, too.
std::uintmax_t sizeOf(std::string const& file) {
    struct stat found;
    return stat(file.c_str(), &found) == 0 ? std::uintmax_t(found.st_size) : 0;
}

void closeDescriptor(int& descriptor) {
    if (descriptor >= 0) {
        close(descriptor);
        descriptor = -1;
    }
}

/// A quiet AV1 encoder: what it tells of itself at each start would stand before the reason of a failure.
char quietEncoders[] = "SVT_LOG=1";

/// That of this process, and quiet encoders where it does not say otherwise. Null at its end.
std::vector<char*> childEnvironment() {
    std::vector<char*> settings;
    for (char** setting = environ; setting && *setting; ++setting)
        settings.push_back(*setting);
    if (!std::getenv("SVT_LOG"))
        settings.push_back(quietEncoders);
    settings.push_back(nullptr);
    return settings;
}

/// What the child gets: the three standard streams, no inherited signal settings, a process group of its own.
class SpawnPlan {
public:
    SpawnPlan(int input, int errors) {
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_adddup2(&actions, errors, STDERR_FILENO);
        posix_spawnattr_init(&attributes);
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        sigdelset(&all, SIGXFSZ); // the interpreter ignores it: a file too large is an error to tell, not a death
        posix_spawnattr_setsigmask(&attributes, &none);
        posix_spawnattr_setsigdefault(&attributes, &all);
        posix_spawnattr_setpgroup(&attributes, 0);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    }

    ~SpawnPlan() {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }

    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
};

} // namespace

EncoderProcess::EncoderProcess(std::vector<std::string> const& command, std::string const& file)
    : m_program(command.at(0)), m_file(file) {
    std::array<int, 2> input{-1, -1};
    std::array<int, 2> errors{-1, -1};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, input.data()) != 0) {
        throw std::runtime_error("no socket for the encoder: " + std::string(std::strerror(errno)));
    }
    if (pipe2(errors.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        int const reason = errno;
        close(input[0]);
        close(input[1]);
        throw std::runtime_error("no pipe for the encoder: " + std::string(std::strerror(reason)));
    }
    std::vector<char*> arguments;
    for (std::string const& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    SpawnPlan plan(input[1], errors[1]);
    int const reason = posix_spawnp(&m_child, arguments[0], &plan.actions, &plan.attributes, arguments.data(),
                                    childEnvironment().data());
    close(input[1]);
    close(errors[1]);
    m_input = input[0];
    m_errors = errors[0];
    if (reason != 0) {
        m_child = -1;
        closeDescriptor(m_input);
        closeDescriptor(m_errors);
        char const* const advice =
            reason == ENOENT && m_program == "ffmpeg" ? " (install ffmpeg, or the Python package imageio-ffmpeg)" : "";
        throw std::runtime_error("the program \"" + m_program + "\" cannot be started: " + std::strerror(reason) +
                                 advice);
    }
}

EncoderProcess::~EncoderProcess() {
    endChild();
}

void EncoderProcess::write(unsigned char const* data, std::size_t size) {
    while (size > 0) {
        if (m_child < 0) {
            fail("has ended");
        }
        ssize_t const sent = send(m_input, data, size, MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent > 0) {
            data += sent;
            size -= static_cast<std::size_t>(sent);
            continue;
        }
        if (errno == EAGAIN) {
            std::array<pollfd, 2> waiting{pollfd{m_input, POLLOUT, 0}, pollfd{m_errors, POLLIN, 0}};
            // Once the child has closed its messages only the input can tell more.
            if (poll(waiting.data(), m_errors < 0 ? 1 : 2, writePatienceMs) == 0) {
                fail("takes no more images");
            }
            drainMessages();
        } else if (errno != EINTR) {
            fail("has ended before the video was complete");
        }
    }
}

bool EncoderProcess::isRunning() const {
    // Looks without collecting the child's status, which `finish` reads.
    siginfo_t ended{};
    return m_child >= 0 && waitid(P_PID, static_cast<id_t>(m_child), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           ended.si_pid == 0;
}

void EncoderProcess::finish() {
    if (m_child < 0) {
        return;
    }
    // Shutting down reaches the child even if a forked copy of this process still holds the socket.
    shutdown(m_input, SHUT_WR);
    if (!waitForEnd(finishPatience, true)) {
        fail("did not end");
    }
    closeStreams();
    // ffmpeg calls it a success when only the end of the file did not fit on the disk.
    bool const success = WIFEXITED(m_status) && WEXITSTATUS(m_status) == 0 && !hasToldFailure();
    if (!success) {
        throw std::runtime_error(failureText("failed"));
    }
}

/// Keeps the end of what the child says, so that it never waits for a reader.
void EncoderProcess::drainMessages() {
    std::array<char, 4096> text;
    while (m_errors >= 0) {
        ssize_t const count = read(m_errors, text.data(), text.size());
        if (count > 0) {
            m_messages.append(text.data(), static_cast<std::size_t>(count));
            if (m_messages.size() > longestMessages) {
                m_messages.erase(0, m_messages.size() - longestMessages);
            }
        } else if (count == 0) {
            closeDescriptor(m_errors);
        } else if (errno != EINTR) {
            return;
        }
    }
}

/// The child's last act, which it may have been kept from: makes readable what it has written.
void EncoderProcess::mendFilm() const {
    if (auto const mend = filmContainer(std::filesystem::path(m_file).extension().string()).mend)
        mend(m_file);
}

bool EncoderProcess::hasToldFailure() const {
    return m_messages.find("Error ") != std::string::npos;
}

/// Whether the child has ended, or was left to do so. It has `seconds` from the last time that its file grew.
bool EncoderProcess::waitForEnd(double seconds, bool mayLeave) {
    using Clock = std::chrono::steady_clock;
    hyxPython::InterruptWatch watch;
    Clock::time_point lastGrowth = Clock::now();
    std::uintmax_t size = 0;
    while (m_child >= 0) {
        drainMessages();
        std::uintmax_t const sizeNow = sizeOf(m_file);
        if (std::exchange(size, sizeNow) != sizeNow) {
            lastGrowth = Clock::now();
        }
        pid_t const ended = waitpid(m_child, &m_status, WNOHANG);
        if (ended == m_child) {
            m_child = -1;
            mendFilm();
        } else if (ended < 0 && errno == ECHILD) {
            // Somebody else has waited for all children of the process: only the words tell how it went.
            m_child = -1;
            m_status = m_messages.empty() ? 0 : SIGKILL;
            mendFilm();
        } else if (mayLeave && watch.interrupted()) {
            m_child = -1;
            m_status = 0;
        } else if (double const patience = hasToldFailure() ? std::min(seconds, terminatePatience) : seconds;
                   Clock::now() - lastGrowth > std::chrono::duration<double>(patience)) {
            return false;
        } else {
            hyxPython::IdleWait const idle;
            pollfd waiting{m_errors, POLLIN, 0};
            poll(&waiting, 1, 5);
        }
    }
    drainMessages();
    return true;
}

void EncoderProcess::endChild() {
    if (m_child >= 0 && !m_owner.isOther()) {
        if (m_input >= 0) {
            shutdown(m_input, SHUT_WR);
        }
        kill(m_child, SIGTERM);
        if (!waitForEnd(terminatePatience, false)) {
            kill(m_child, SIGKILL);
            waitForEnd(terminatePatience, false);
        }
    }
    closeStreams();
}

void EncoderProcess::closeStreams() {
    closeDescriptor(m_input);
    closeDescriptor(m_errors);
}

void EncoderProcess::fail(std::string const& what) {
    // A child that is ending by itself may still be saying why.
    if (m_child >= 0) {
        shutdown(m_input, SHUT_WR);
        waitForEnd(terminatePatience, false);
    }
    endChild();
    throw std::runtime_error(failureText(what));
}

std::string EncoderProcess::failureText(std::string const& what) const {
    std::string text = "the encoder \"" + m_program + "\" " + what;
    if (WIFSIGNALED(m_status)) {
        text += ", ended by signal " + std::to_string(WTERMSIG(m_status));
    }
    std::string words = m_messages;
    words.erase(std::find_if(words.rbegin(), words.rend(), [](char c) { return c != '\n'; }).base(), words.end());
    return words.empty() ? text : text + ": " + words;
}

} // namespace hyxOSG
