// Starts the process that reads files first, asks it, and ends it when it does not answer.
#include "reference/machinery/model_files/reader_process.h"

#include "reference/hyxPython/interpreter.h"
#include "reference/hyxPython/native_work.h"
#include "reference/machinery/context/owner_process.h"
#include "reference/machinery/model_files/trial_message.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <memory>
#include <vector>

extern char** environ;

namespace hyxOSG {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds longestReading{5};
constexpr double secondsPerMegabyte = 1;

std::string ownLibrary() {
    Dl_info info{};
    return dladdr(reinterpret_cast<void const*>(&tryReading), &info) && info.dli_fname ? info.dli_fname : "";
}

Clock::duration longestTime(std::string const& path) {
    std::error_code error;
    auto const bytes = std::filesystem::file_size(path, error);
    double const more = error ? 0 : secondsPerMegabyte * double(bytes) / 1e6;
    return longestReading + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(more));
}

/// The other process and the socket to it.
class Reader {
public:
    static std::unique_ptr<Reader> start();
    ~Reader();

    /// Whether this process started it.
    bool isOwn() const { return !m_owner.isOther(); }

    /// The answer; "" when there came none in time or at all.
    std::string ask(std::string const& request, Clock::duration longest);

    bool timedOut = false;
    bool interrupted = false;

private:
    int m_socket = -1;
    pid_t m_process = -1;
    OwnerProcess m_owner;
};

std::unique_ptr<Reader> Reader::start() {
    std::string program = hyxPython::interpreterProgram();
    std::string library = ownLibrary();
    std::array<int, 2> ends{-1, -1};
    if (program.empty() || library.empty() || socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return nullptr;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], trialSocket);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    // Without the environment's, the user's and the working folder's modules.
    std::array<std::string, 6> words{
        program, "-I", "-S", "-c", "import ctypes, sys; ctypes.CDLL(sys.argv[1]).hyxServeTrials()", library};
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    auto reader = std::make_unique<Reader>();
    int const failure = posix_spawn(&reader->m_process, program.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    reader->m_socket = ends[0];
    if (failure == 0)
        return reader;
    reader->m_process = -1;
    return nullptr;
}

Reader::~Reader() {
    if (m_socket >= 0)
        close(m_socket);
    if (m_process < 0 || m_owner.isOther())
        return;
    kill(m_process, SIGKILL);
    while (waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

std::string Reader::ask(std::string const& request, Clock::duration longest) {
    auto const end = Clock::now() + longest;
    std::string answer(longestTrialMessage, '\0');
    if (send(m_socket, request.data(), request.size(), MSG_NOSIGNAL) < 0)
        return "";
    for (;;) {
        {
            hyxPython::NativeWork const work;
            pollfd waiting{m_socket, POLLIN, 0};
            poll(&waiting, 1, static_cast<int>(hyxPython::longestSleep.count()));
        }
        ssize_t const size = recv(m_socket, answer.data(), answer.size(), MSG_DONTWAIT);
        if (size >= 0 || (errno != EAGAIN && errno != EINTR)) {
            answer.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
            return answer;
        }
        interrupted = hyxPython::interpreterInterrupts();
        timedOut = Clock::now() > end;
        if (interrupted || timedOut)
            return "";
    }
}

/// The process that waits for the next file, while no reading uses it.
std::unique_ptr<Reader>& waitingReader() {
    static std::unique_ptr<Reader> reader;
    return reader;
}

} // namespace

std::string tryReading(TrialKind kind, std::string const& path, std::string const& options) {
    std::error_code error;
    std::string const absolute = std::filesystem::absolute(path, error); // its working folder may be another one
    std::string const request = static_cast<char>(kind) + absolute + '\0' + options;
    if (request.size() > longestTrialMessage)
        return "its path is too long";
    std::unique_ptr<Reader> reader = std::move(waitingReader());
    if (!reader || !reader->isOwn())
        reader = Reader::start();
    if (!reader)
        return "no process could be started to try it in";
    std::string const answer = reader->ask(request, longestTime(path));
    if (reader->interrupted)
        return "the reading was interrupted";
    if (reader->timedOut)
        return "it is damaged: its reader does not end";
    if (answer.empty())
        return "it is damaged: its reader crashes on it";
    waitingReader() = std::move(reader);
    return answer == " " ? "" : answer;
}

} // namespace hyxOSG
