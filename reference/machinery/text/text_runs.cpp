// Cuts texts by the rules of Unicode.
#include "reference/machinery/text/text_runs.h"

#include <fribidi.h>

#include <algorithm>
#include <new>

namespace hyxOSG {
namespace {

hb_script_t scriptOf(unsigned int letter) {
    return hb_unicode_script(hb_unicode_funcs_get_default(), letter);
}

bool isShared(hb_script_t script) {
    return script == HB_SCRIPT_COMMON || script == HB_SCRIPT_INHERITED || script == HB_SCRIPT_UNKNOWN;
}

/// Marks, joiners and variations belong to the letter before them.
bool belongsToFormer(unsigned int letter) {
    constexpr unsigned int nonJoiner = 0x200c, joiner = 0x200d;
    switch (hb_unicode_general_category(hb_unicode_funcs_get_default(), letter)) {
    case HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK:
        return true;
    default:
        return letter == nonJoiner || letter == joiner;
    }
}

/// Where the letter at `begin` ends with all that belongs to it.
std::size_t endOfCluster(std::u32string_view line, std::size_t begin, std::size_t end) {
    do
        ++begin;
    while (begin < end && belongsToFormer(line[begin]));
    return begin;
}

/// What all scripts share, such as spaces and digits, is set as a part of what stands before it.
std::vector<hb_script_t> scriptsOf(std::u32string_view line) {
    std::vector<hb_script_t> scripts(line.size());
    std::transform(line.begin(), line.end(), scripts.begin(), scriptOf);
    auto const first = std::find_if_not(scripts.begin(), scripts.end(), isShared);
    hb_script_t current = first == scripts.end() ? HB_SCRIPT_COMMON : *first;
    for (hb_script_t& script : scripts)
        script = current = isShared(script) ? current : script;
    return scripts;
}

/// A word is not torn between fonts: its letters join, and stand on each other, within one only.
Face* faceOfScript(std::u32string_view run, Typeface& typeface) {
    std::u32string own;
    std::copy_if(run.begin(), run.end(), std::back_inserter(own),
                 [](unsigned int letter) { return !isShared(scriptOf(letter)); });
    return own.empty() ? nullptr : typeface.find(own);
}

void appendRuns(std::vector<TextRun>& runs, std::u32string_view line, TextRun part, Typeface& typeface) {
    Face* const ofScript = faceOfScript(line.substr(part.begin, part.end - part.begin), typeface);
    std::size_t const firstOfPart = runs.size(), end = part.end;
    for (; part.begin < end; part.begin = part.end) {
        part.end = endOfCluster(line, part.begin, end);
        std::u32string_view const cluster = line.substr(part.begin, part.end - part.begin);
        bool const spreads = !leavesInk(cluster.front()) && runs.size() > firstOfPart;
        bool const shared = isShared(scriptOf(cluster.front()));
        part.face = spreads ? runs.back().face : ofScript && !shared ? ofScript : &typeface.choose(cluster);
        if (runs.size() > firstOfPart && runs.back().face == part.face)
            runs.back().end = part.end;
        else
            runs.push_back(part);
    }
}

} // namespace

std::vector<int> embeddingLevels(std::u32string_view paragraph) {
    constexpr unsigned int firstTurned = 0x590; // letters before the Hebrew ones have no other order
    if (std::none_of(paragraph.begin(), paragraph.end(), [](unsigned int letter) { return letter >= firstTurned; }))
        return std::vector<int>(paragraph.size());
    std::vector<FriBidiChar> const letters(paragraph.begin(), paragraph.end());
    auto const length = static_cast<FriBidiStrIndex>(letters.size());
    std::vector<FriBidiCharType> types(letters.size());
    std::vector<FriBidiBracketType> brackets(letters.size());
    std::vector<FriBidiLevel> levels(letters.size());
    fribidi_get_bidi_types(letters.data(), length, types.data());
    fribidi_get_bracket_types(letters.data(), length, types.data(), brackets.data());
    FriBidiParType direction = FRIBIDI_PAR_ON; // that of the first letter that has one
    if (!fribidi_get_par_embedding_levels_ex(types.data(), brackets.data(), length, &direction, levels.data()))
        throw std::bad_alloc();
    // Spaces at the end stay there in the direction of the paragraph.
    for (std::size_t last = letters.size(); last > 0 && FRIBIDI_IS_EXPLICIT_OR_SEPARATOR_OR_BN_OR_WS(types[last - 1]);)
        levels[--last] = FRIBIDI_DIR_TO_LEVEL(direction);
    return {levels.begin(), levels.end()};
}

std::vector<TextRun> runsOf(std::u32string_view line, std::span<int const> levels, Typeface& typeface) {
    std::vector<hb_script_t> const scripts = scriptsOf(line);
    std::vector<TextRun> runs;
    for (std::size_t begin = 0, end = 0; begin < line.size(); begin = end) {
        while (end < line.size() && levels[end] == levels[begin] && scripts[end] == scripts[begin])
            ++end;
        appendRuns(runs, line, {begin, end, levels[begin], scripts[begin], nullptr}, typeface);
    }
    return runs;
}

void orderVisually(std::vector<TextRun>& runs) {
    int deepest = 0;
    for (TextRun const& run : runs)
        deepest = std::max(deepest, run.level);
    for (; deepest > 0; --deepest)
        for (auto begin = runs.begin(); begin != runs.end();) {
            begin = std::find_if(begin, runs.end(), [=](TextRun const& run) { return run.level >= deepest; });
            auto const end = std::find_if(begin, runs.end(), [=](TextRun const& run) { return run.level < deepest; });
            std::reverse(begin, end);
            begin = end;
        }
}

} // namespace hyxOSG
