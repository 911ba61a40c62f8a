// Counting the chunks of a WebP animation.
#include "reference/hyxOSG/capture/webp_film.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace hyxOSG {
namespace {

constexpr std::uint64_t chunkHeader = 8; // four letters and the size of what follows
constexpr std::uint64_t fileHeader = chunkHeader + 4;

std::uint32_t littleEndian(char const* bytes) {
    std::uint32_t value = 0;
    for (int i = 3; i >= 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes[i]);
    return value;
}

/// The end of the last chunk that is whole. Chunks begin at even places.
std::uint64_t endOfWholeChunks(std::istream& film, std::uint64_t size) {
    std::uint64_t end = fileHeader;
    for (std::array<char, chunkHeader> header{}; end + chunkHeader <= size;) {
        film.seekg(std::streamoff(end));
        if (!film.read(header.data(), header.size()))
            break;
        std::uint64_t const length = littleEndian(&header[4]);
        std::uint64_t const next = end + chunkHeader + length + length % 2;
        if (next > size)
            break;
        end = next;
    }
    return end;
}

} // namespace

void closeWebpFilm(std::string const& file) {
    std::error_code missing;
    std::uint64_t const size = std::filesystem::file_size(file, missing);
    std::fstream film(file, std::ios::in | std::ios::out | std::ios::binary);
    std::array<char, fileHeader> header{};
    if (missing || !film.read(header.data(), header.size()) || std::string_view(header.data(), 4) != "RIFF" ||
        std::string_view(&header[8], 4) != "WEBP" || chunkHeader + littleEndian(&header[4]) == size)
        return;
    std::uint64_t const end = endOfWholeChunks(film, size);
    std::uint64_t const content = end - chunkHeader;
    film.clear();
    film.seekp(4);
    for (int i = 0; i < 4; ++i)
        film.put(char(content >> 8 * i & 0xff));
}

} // namespace hyxOSG
