// Reads options against what was declared, and complains readably.
#include "platform/hyxIO/argument_parser.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iostream>
#include <map>
#include <numeric>
#include <stdexcept>

namespace hyxIO {

namespace {

enum class Value { none, text, positiveNumber, wholeNumber, port, size };

struct KnownOption {
    char const* name;
    char const* description;
    Value value;
    char const* group = nullptr; ///< of this option and those that follow
};

constexpr KnownOption knownOptions[] = {
    {"--window-size", "Size of the window in pixels, such as 1280x720", Value::size, "Window"},
    {"--window-position", "Place of the window's upper left corner in pixels, such as 10x10", Value::size},
    {"--samples", "Samples a pixel that smooth the edges, 0 for none", Value::wholeNumber},
    {"--full-screen", "Cover the whole screen", Value::none},
    {"--status", "Show a line of figures on the picture: frames, pace, cost, contacts", Value::none},
    {"--offscreen", "Draw without a window", Value::none},
    {"--no-graphics", "Simulate without drawing", Value::none},
    {"--time-step", "Length of a simulation step in seconds", Value::positiveNumber, "Time"},
    {"--stop-after", "End when this many seconds were simulated", Value::positiveNumber},
    {"--target-fps", "Draw at most this many frames a second", Value::positiveNumber},
    {"--real-time", "Keep the simulation to the clock on the wall", Value::none},
    {"--speed", "Simulated seconds in a second of real time: 0.1 is slow motion", Value::positiveNumber},
    {"--start-paused", "Wait for the user before the first step", Value::none},
    {"--solver", "Solver of the simulation: multi or iterative", Value::text},
    {"--scene", "Number of the scene to start with", Value::wholeNumber, "Scenes"},
    {"--test-scenes", "Run every scene that takes part in tests for its time, and end with 1 when one failed",
     Value::none},
    {"--slow-scenes", "Let slow scenes take part in tests", Value::none},
    {"--capture", "Write every frame as an image, the names starting with this text", Value::text,
     "Pictures and films"},
    {"--capture-rate", "Images for each simulated second", Value::positiveNumber},
    {"--capture-video", "Write a video to this file", Value::text},
    {"--journal-record", "Record the simulation into this file", Value::text, "Journals"},
    {"--journal-append", "Keep the sessions that the recorded file has already", Value::none},
    {"--journal-play", "Play a recorded file back", Value::text},
    {"--journal-loop", "Begin the played file again at its end", Value::none},
    {"--journal-session", "Name of the session to record or play", Value::text},
    {"--journal-frequency", "States recorded for each simulated second", Value::positiveNumber},
    {"--rpc-port", "Serve remote control on this port of the local machine", Value::port, "Other processes"},
    {"--rpc-token", "Word that remote callers must know", Value::text},
    {"--co-simulation-port", "Let another process step the simulation, through this port of the local machine",
     Value::port},
    {"--click-port", "Let another process drive the joints, through this port of the local machine", Value::port},
    {"--script", "Script whose function buildScene builds the first scene", Value::text, "Scripts and models"},
    {"--model", "Name of the model to load from a file of several", Value::text},
    {"--bundle-path", "Folders to look for models in, with colons between them", Value::text},
    {"--debug-frames", "Show the frames of the links of loaded models", Value::none},
    {"--profile", "Write a trace of the run to this file", Value::text},
};

bool readNumber(std::string const& text, double& number) {
    auto const result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

bool readInteger(std::string const& text, long& number) {
    auto const result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

bool readSize(std::string const& text, long& width, long& height) {
    std::size_t const gap = text.find_first_of("x,");
    return gap != std::string::npos && readInteger(text.substr(0, gap), width) &&
           readInteger(text.substr(gap + 1), height);
}

/// What is wrong with the text as such a value; empty when nothing is.
std::string fault(std::string const& text, Value value) {
    double number = 0;
    long width = 0;
    long height = 0;
    if (value == Value::positiveNumber && !readNumber(text, number))
        return "'" + text + "' is not a number";
    if (value == Value::positiveNumber && !(number > 0))
        return "'" + text + "' is not above zero";
    if (value == Value::positiveNumber && std::isinf(number))
        return "'" + text + "' is not finite";
    if ((value == Value::wholeNumber || value == Value::port) && !readInteger(text, width))
        return "'" + text + "' is not a whole number";
    if (value == Value::port && (width < 0 || width > 65535))
        return "'" + text + "' is not a port from 0 to 65535";
    if (value == Value::size && !readSize(text, width, height))
        return "'" + text + "' is not a size such as 640x480";
    return {};
}

/// How many letters must be put in, left out or changed to make one word of the other.
std::size_t editDistance(std::string const& one, std::string const& other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < other.size(); ++j) {
            std::size_t const change = diagonal + (one[i] != other[j]);
            diagonal = row[j + 1];
            row[j + 1] = std::min({change, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

/// For the arguments that look like options and are none: what was probably meant.
std::string nearestOptions(CLI::App const& commandLine, hyx::Vector<hyx::String> const& arguments) {
    std::string told;
    for (std::string const& argument : arguments) {
        std::string const word = argument.substr(0, argument.find('='));
        if (word.rfind("--", 0) != 0 || word.size() < 4 || commandLine.get_option_no_throw(word))
            continue;
        std::string nearest;
        std::size_t least = 1 + word.size() / 3; // farther words are other words
        for (CLI::Option const* option : commandLine.get_options())
            for (std::string const& name : option->get_lnames())
                if (std::size_t const distance = editDistance(word, "--" + name); distance < least) {
                    least = distance;
                    nearest = name;
                }
        if (!nearest.empty())
            told += "; did you mean --" + nearest + "?";
    }
    return told;
}

} // namespace

struct ArgumentParser::Implementation {
    struct Entry {
        CLI::Option* option;
        std::string text;
    };

    Implementation() {
        commandLine.add_option("arguments", texts, "Files to open")->type_name("TEXT");
        commandLine.footer(
            "Files to open stand for themselves: scripts with a function buildScene (.py), scenes (.json), robots "
            "(.urdf, .sdf, .xml), models (.gltf, .obj, .stl, ...), journals (.h5) and saved states (.state).\n"
            "F1 in the window shows its keys.");
        for (KnownOption const& option : knownOptions) {
            group = option.group ? option.group : group;
            declare(option.name, option.description, option.value, "");
        }
        group = "Of this program";
    }

    void declare(std::string const& name, std::string const& description, Value value, std::string const& preset) {
        if (entries.contains(name))
            throw std::invalid_argument("the option " + name + " is declared already");
        Entry& entry = entries[name];
        entry.text = preset;
        try {
            if (value == Value::none)
                entry.option = commandLine.add_flag(name, description);
            else
                entry.option =
                    commandLine.add_option(name, entry.text, description)->check([value](std::string const& text) {
                        return fault(text, value);
                    });
            entry.option->group(group);
        } catch (CLI::Error const& error) {
            entries.erase(name);
            throw std::invalid_argument(name + " is no name for an option: " + error.what());
        }
    }

    /// As the library takes them: from the back. It would give "--name=" the next argument for its value, so that an
    /// empty value becomes an argument of its own.
    std::vector<std::string> reversed(hyx::Vector<hyx::String> const& given) const {
        std::vector<std::string> words;
        bool optionsEnded = false;
        for (std::string const& word : given) {
            optionsEnded = optionsEnded || word == "--";
            std::string const name = word.ends_with('=') ? word.substr(0, word.size() - 1) : "";
            auto const found = entries.find(name);
            if (!optionsEnded && found != entries.end() && found->second.option->get_expected_min() > 0)
                words.insert(words.end(), {name, ""});
            else
                words.push_back(word);
        }
        std::ranges::reverse(words);
        return words;
    }

    Entry const& entry(hyx::String const& name) const {
        auto const found = entries.find(name);
        if (found == entries.end())
            throw std::invalid_argument("there is no option " + name);
        return found->second;
    }

    CLI::App commandLine{"Simulates and draws a scene", "application"};
    std::map<std::string, Entry> entries;
    std::string group; ///< of the options declared next
    std::vector<std::string> texts;
    hyx::Vector<hyx::String> positional;
    hyx::Vector<hyx::String> arguments;
    bool helpRequested = false;
};

ArgumentParser::ArgumentParser() : m_implementation(std::make_unique<Implementation>()) {}

ArgumentParser::ArgumentParser(hyx::Vector<hyx::String> const& arguments) : ArgumentParser() {
    parse(arguments);
}

ArgumentParser::~ArgumentParser() = default;

void ArgumentParser::addOption(hyx::String const& name, hyx::String const& description, hyx::String const& preset) {
    m_implementation->declare(name, description, Value::text, preset);
}

void ArgumentParser::addFlag(hyx::String const& name, hyx::String const& description) {
    m_implementation->declare(name, description, Value::none, "");
}

void ArgumentParser::parse(hyx::Vector<hyx::String> const& arguments) {
    Implementation& self = *m_implementation;
    self.arguments = arguments;
    try {
        self.commandLine.parse(self.reversed(arguments));
    } catch (CLI::CallForHelp const&) {
        self.helpRequested = true;
        std::cout << getHelp() << std::flush;
    } catch (CLI::ExtrasError const& error) {
        throw std::invalid_argument(error.what() + nearestOptions(self.commandLine, arguments));
    } catch (CLI::ParseError const& error) {
        throw std::invalid_argument(error.what());
    }
    self.positional.assign(self.texts.begin(), self.texts.end());
}

bool ArgumentParser::isHelpRequested() const {
    return m_implementation->helpRequested;
}

hyx::String ArgumentParser::getHelp() const {
    return m_implementation->commandLine.help();
}

bool ArgumentParser::has(hyx::String const& name) const {
    return m_implementation->entry(name).option->count() > 0;
}

hyx::String ArgumentParser::getString(hyx::String const& name) const {
    return m_implementation->entry(name).text;
}

hyx::Real ArgumentParser::getReal(hyx::String const& name) const {
    double number = 0;
    if (!readNumber(getString(name), number))
        throw std::invalid_argument("the option " + name + " has no number for its value");
    return number;
}

long ArgumentParser::getInteger(hyx::String const& name) const {
    long number = 0;
    if (!readInteger(getString(name), number))
        throw std::invalid_argument("the option " + name + " has no whole number for its value");
    return number;
}

void ArgumentParser::getSize(hyx::String const& name, long& width, long& height) const {
    if (!readSize(getString(name), width, height))
        throw std::invalid_argument("the option " + name + " has no size such as 640x480 for its value");
}

hyx::Vector<hyx::String> const& ArgumentParser::getPositional() const {
    return m_implementation->positional;
}

hyx::Vector<hyx::String> const& ArgumentParser::getArguments() const {
    return m_implementation->arguments;
}

} // namespace hyxIO
