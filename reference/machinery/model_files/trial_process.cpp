// Runs something dangerous in a child process with bounds.
#include "reference/machinery/model_files/trial_process.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace hyxOSG {
namespace {

constexpr rlim_t mostSeconds = 20;
constexpr rlim_t mostBytes = rlim_t(8) << 30;

[[noreturn]] void runAndLeave(std::function<bool()> const& work) {
    for (int const signal : {SIGSEGV, SIGABRT, SIGFPE, SIGBUS, SIGILL, SIGINT})
        std::signal(signal, SIG_DFL); // a crash ends the copy, whatever handlers the script has installed
    rlimit const seconds{mostSeconds, mostSeconds}, bytes{mostBytes, mostBytes}, noCore{0, 0};
    setrlimit(RLIMIT_CPU, &seconds);
    setrlimit(RLIMIT_AS, &bytes);
    setrlimit(RLIMIT_CORE, &noCore);
    alarm(2 * mostSeconds); // work that waits instead of computing
    int const nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    bool succeeded = false;
    try {
        succeeded = work();
    } catch (...) {
    }
    _exit(succeeded ? 0 : 1);
}

} // namespace

Trial tryInChild(std::function<bool()> const& work) {
    pid_t const child = fork();
    if (child < 0)
        return Trial::SUCCEEDED;
    if (child == 0)
        runAndLeave(work);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status))
        return WEXITSTATUS(status) == 0 ? Trial::SUCCEEDED : Trial::FAILED;
    int const signal = WTERMSIG(status);
    return signal == SIGXCPU || signal == SIGALRM || signal == SIGKILL ? Trial::ENDLESS : Trial::CRASHED;
}

} // namespace hyxOSG
