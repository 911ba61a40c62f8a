// Reads files on request in a process that may crash, within limits of memory.
#include "reference/machinery/model_files/guarded_reading.h"
#include "reference/machinery/model_files/reader_process.h"
#include "reference/machinery/model_files/trial_message.h"

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace hyxOSG {
namespace {

void limitThisProcess() {
    rlimit const none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    setrlimit(RLIMIT_FSIZE, &none);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    std::signal(SIGINT, SIG_IGN); // typed at the terminal, for the other process
}

/// Addresses that are taken already, by libraries above all.
std::uintmax_t bytesTaken() {
    std::uintmax_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * std::uintmax_t(sysconf(_SC_PAGESIZE));
}

/// A file may take what its size explains, and some more.
void limitMemory(std::string const& path) {
    constexpr std::uintmax_t always = std::uintmax_t(640) << 20, perByte = 12;
    static std::uintmax_t const taken = bytesTaken();
    std::error_code error;
    auto const size = std::filesystem::file_size(path, error);
    rlimit const bytes{taken + always + (error ? 0 : perByte * size), RLIM_INFINITY};
    setrlimit(RLIMIT_AS, &bytes);
}

std::string answerTo(std::string const& request) {
    std::string const kindAndPath = request.substr(0, request.find('\0'));
    std::string const path = kindAndPath.substr(1);
    limitMemory(path);
    if (TrialKind(request[0]) == TrialKind::PICTURE)
        return readPictureHere(path).fault;
    if (TrialKind(request[0]) == TrialKind::FONT)
        return readFontHere(path).fault;
    osg::ref_ptr<osgDB::Options> const options = new osgDB::Options(request.substr(kindAndPath.size() + 1));
    return readModelHere(path, options).fault;
}

} // namespace
} // namespace hyxOSG

/// Serves until the other end of the socket is closed. Called by its name.
extern "C" void hyxServeTrials() {
    using namespace hyxOSG;
    limitThisProcess();
    std::vector<char> buffer(longestTrialMessage);
    for (;;) {
        ssize_t const size = recv(trialSocket, buffer.data(), buffer.size(), 0);
        if (size < 2)
            return;
        std::string answer = answerTo(std::string(buffer.data(), static_cast<std::size_t>(size)));
        answer.resize(std::min(answer.size(), longestTrialMessage));
        if (answer.empty())
            answer.assign(1, ' ');
        if (send(trialSocket, answer.data(), answer.size(), MSG_NOSIGNAL) < 0)
            return;
    }
}
