// Looks for ffmpeg.
#include "reference/hyxOSG/capture/encoder_program.h"

#include "reference/hyxPython/interpreter.h"
#include "reference/hyxPython/native_work.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace hyxOSG {
namespace {

constexpr char const* program = "ffmpeg";

bool isOnPath() {
    char const* const path = std::getenv("PATH");
    std::istringstream folders(path ? path : "/bin:/usr/bin");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (access((std::filesystem::path(folder) / program).c_str(), X_OK) == 0)
            return true;
    return false;
}

/// "" where that package is not installed.
std::string packagedProgram() {
    using hyxPython::ScriptObject;
    hyxPython::ScriptCall const turn;
    if (!hyxPython::interpreterAnswers())
        return "";
    ScriptObject const package(PyImport_ImportModule("imageio_ffmpeg"));
    ScriptObject const file(package ? PyObject_CallMethod(package.get(), "get_ffmpeg_exe", nullptr) : nullptr);
    char const* const text = file ? PyUnicode_AsUTF8(file.get()) : nullptr;
    std::string const found = text ? text : "";
    PyErr_Clear();
    return found;
}

} // namespace

std::string encoderProgram() {
    if (isOnPath())
        return program;
    std::string const packaged = packagedProgram();
    return packaged.empty() ? program : packaged;
}

} // namespace hyxOSG
