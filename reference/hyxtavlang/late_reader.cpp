// Loads the reader of SDF files: its library would cost every start 20 ms.
#include "reference/hyxtavlang/late_reader.h"

#include "reference/machinery/files/late_library.h"

#include <stdexcept>

namespace hyxtavlang {
namespace {

LateReader& sdfReader() {
    try {
        return **static_cast<LateReader* const*>(
            hyx::findLate("libhyx_sdf.so", "hyxReadSdf", "the reader of SDF files"));
    } catch (std::runtime_error const& failure) {
        throw ModelError(failure.what());
    }
}

} // namespace

ModelTree readSdf(std::string const& path, std::vector<std::string> const& searchPaths) {
    static LateReader& read = sdfReader();
    ModelTree tree;
    read(path, searchPaths, tree);
    return tree;
}

} // namespace hyxtavlang
