// The parts of a text that are set as one: of one direction, script and face.
#pragma once

#include "reference/machinery/text/typeface.h"

#include <string_view>
#include <vector>

namespace hyxOSG {

struct TextRun {
    std::size_t begin = 0, end = 0; ///< letters, in the order in which they are read aloud
    int level = 0;                  ///< of embedding: odd ones run from right to left
    hb_script_t script = HB_SCRIPT_COMMON;
    Face* face = nullptr;
};

/// How deep each letter of a paragraph is embedded, by the rules of Unicode for two directions.
std::vector<int> embeddingLevels(std::u32string_view paragraph);

/// The runs of a line, in the order in which they are read aloud. `levels` are those of its letters.
std::vector<TextRun> runsOf(std::u32string_view line, std::span<int const> levels, Typeface& typeface);

/// Puts runs in the order in which they stand from left to right.
void orderVisually(std::vector<TextRun>& runs);

} // namespace hyxOSG
