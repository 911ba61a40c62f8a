// Compares a binary STL file's length with the number of triangles that it names.
#include "reference/machinery/model_files/stl_length.h"

#include <osgDB/FileNameUtils>

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace hyxOSG {
namespace {

constexpr size_t titleLength = 80;
constexpr uintmax_t headLength = titleLength + sizeof(uint32_t);
constexpr uintmax_t triangleLength = 50; // twelve floats and two bytes

bool isText(std::string_view head) {
    size_t const start = head.find_first_not_of(" \t\r\n");
    return start != head.npos && head.substr(start, 5) == "solid" && head.find('\0') == head.npos;
}

} // namespace

std::string stlLengthFault(std::string const& path) {
    if (osgDB::getLowerCaseFileExtension(path) != "stl")
        return "";
    std::array<char, headLength> head;
    std::ifstream file(path, std::ios::binary);
    if (!file.read(head.data(), head.size()) || isText({head.data(), head.size()}))
        return "";
    uint32_t count; // little-endian, as this machine
    std::memcpy(&count, head.data() + titleLength, sizeof count);
    std::error_code error;
    uintmax_t const length = std::filesystem::file_size(path, error);
    uintmax_t const present = error ? count : (length - headLength) / triangleLength;
    if (present >= count)
        return "";
    return "holds " + std::to_string(present) + " of its " + std::to_string(count) + " triangles";
}

} // namespace hyxOSG
