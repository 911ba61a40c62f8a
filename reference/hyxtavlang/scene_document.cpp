// Reads JSON, noting on which line each value begins.
#include "reference/hyxtavlang/scene_document.h"

#include <osg/Math>

#include <algorithm>
#include <fstream>
#include <istream>
#include <iterator>
#include <streambuf>

namespace hyxtavlang {
namespace {

using Json = nlohmann::json;

/// Gives a text to whoever parses it, and counts the lines that were taken.
class CountingBuffer : public std::streambuf {
public:
    explicit CountingBuffer(std::string const& text) : m_place(text.data()), m_end(text.data() + text.size()) {}

    int line() const { return m_line; }

protected:
    int_type underflow() override { return m_place == m_end ? traits_type::eof() : traits_type::to_int_type(*m_place); }

    int_type uflow() override {
        int_type const taken = underflow();
        m_line += taken == '\n';
        m_place += m_place != m_end;
        return taken;
    }

private:
    char const* m_place;
    char const* m_end;
    int m_line = 1;
};

/// Follows the parser through objects and lists, and keeps on which line each of them and each key stands.
class LineKeeper {
public:
    LineKeeper(CountingBuffer const& buffer, std::map<std::string, int>& lines) : m_buffer(buffer), m_lines(lines) {}

    void operator()(Json::parse_event_t event, Json const& parsed) {
        switch (event) {
        case Json::parse_event_t::key:
            m_around.back().key = parsed.get<std::string>();
            m_lines[present()] = m_buffer.line();
            break;
        case Json::parse_event_t::object_start:
        case Json::parse_event_t::array_start: {
            std::string const pointer = present();
            m_lines.emplace(pointer, m_buffer.line());
            pass();
            m_around.push_back({pointer, event == Json::parse_event_t::array_start, 0, ""});
            break;
        }
        case Json::parse_event_t::object_end:
        case Json::parse_event_t::array_end:
            m_around.pop_back();
            break;
        case Json::parse_event_t::value:
            pass();
        }
    }

private:
    struct Around {
        std::string pointer;
        bool isList;
        std::size_t next;
        std::string key;
    };

    std::string present() const {
        if (m_around.empty())
            return "";
        Around const& around = m_around.back();
        return around.pointer + "/" + (around.isList ? std::to_string(around.next) : around.key);
    }

    void pass() {
        if (!m_around.empty())
            ++m_around.back().next;
    }

    CountingBuffer const& m_buffer;
    std::map<std::string, int>& m_lines;
    std::vector<Around> m_around;
};

} // namespace

SceneDocument::SceneDocument(std::string const& file) : path(file) {
    std::ifstream stream(file, std::ios::binary);
    std::string const text{std::istreambuf_iterator<char>(stream), {}};
    CountingBuffer buffer(text);
    std::istream counted(&buffer);
    LineKeeper keeper(buffer, lines);
    try {
        root = Json::parse(counted, [&](int, Json::parse_event_t event, Json& parsed) {
            keeper(event, parsed);
            return true;
        });
    } catch (Json::exception const& error) {
        std::string const what = error.what(); // begins with the kind of the error in brackets
        throw ModelError(path + ":" + std::to_string(buffer.line()) +
                         ": it is no JSON: " + what.substr(std::min(what.find("] ") + 2, what.size())));
    }
}

int SceneDocument::lineOf(std::string pointer) const {
    auto found = lines.find(pointer);
    while (found == lines.end() && !pointer.empty()) {
        pointer.resize(pointer.rfind('/'));
        found = lines.find(pointer);
    }
    return found == lines.end() ? 1 : found->second;
}

SceneEntry::SceneEntry(SceneDocument const& document, Json const& json, std::string pointer)
    : m_document(document), m_json(json), m_pointer(std::move(pointer)) {
    if (!json.is_object())
        fail("expected an object in braces");
}

void SceneEntry::fail(std::string const& what) const {
    std::string const part = m_pointer.empty() ? "the scene" : m_pointer.substr(1);
    throw ModelError(path() + ":" + std::to_string(line()) + ": " + part + ": " + what);
}

bool SceneEntry::has(std::string const& key) const {
    m_asked.insert(key);
    return m_json.contains(key);
}

Json const& SceneEntry::value(std::string const& key, std::string const& expected,
                              std::function<bool(Json const&)> const& fits) const {
    if (!has(key))
        fail("needs a \"" + key + "\", expected " + expected);
    Json const& found = m_json.at(key);
    if (fits(found))
        return found;
    constexpr std::size_t longest = 40;
    std::string text = found.dump(-1, ' ', false, Json::error_handler_t::replace);
    if (text.size() > longest)
        text = text.substr(0, longest) + "...";
    SceneEntry place(m_document, m_json, m_pointer);
    place.m_pointer += "/" + key;
    place.fail("expected " + expected + ", not " + text);
}

std::string SceneEntry::text(std::string const& key) const {
    return value(key, "a text", [](Json const& found) { return found.is_string(); }).get<std::string>();
}

std::string SceneEntry::text(std::string const& key, std::string const& otherwise) const {
    return has(key) ? text(key) : otherwise;
}

bool SceneEntry::flag(std::string const& key, bool otherwise) const {
    return has(key) ? value(key, "true or false", [](Json const& found) { return found.is_boolean(); }).get<bool>()
                    : otherwise;
}

double SceneEntry::number(std::string const& key) const {
    return value(key, "a number", [](Json const& found) { return found.is_number(); }).get<double>();
}

double SceneEntry::positive(std::string const& key, double otherwise) const {
    if (!has(key))
        return otherwise;
    return value(key, "a number above 0", [](Json const& found) { return found.is_number() && found > 0; })
        .get<double>();
}

hyx::Vec3 SceneEntry::vector(std::string const& key) const {
    auto const [x, y, z] = numbers<3>(key);
    return {x, y, z};
}

hyx::Vec3 SceneEntry::vector(std::string const& key, hyx::Vec3 const& otherwise) const {
    return has(key) ? vector(key) : otherwise;
}

hyx::AffineMatrix4x4 SceneEntry::place() const {
    hyx::Quat rotation;
    if (has("rpy"))
        rotation = hyx::Quat::fromEulerAngles(vector("rpy") * (osg::PI / 180));
    if (has("rotation")) {
        auto const [x, y, z, w] = numbers<4>("rotation");
        if (!(x * x + y * y + z * z + w * w > 0))
            fail("expected a quaternion in \"rotation\", not zeros");
        rotation = hyx::Quat(x, y, z, w);
    }
    return {rotation, vector("position", hyx::Vec3())};
}

std::vector<SceneEntry> SceneEntry::list(std::string const& key) const {
    std::vector<SceneEntry> entries;
    if (!has(key))
        return entries;
    Json const& values = value(key, "a list", [](Json const& found) { return found.is_array(); });
    for (std::size_t i = 0; i < values.size(); ++i)
        entries.emplace_back(m_document, values[i], m_pointer + "/" + key + "/" + std::to_string(i));
    return entries;
}

std::map<std::string, int> SceneEntry::rest() const {
    std::map<std::string, int> left;
    for (auto const& [key, value] : m_json.items())
        if (!m_asked.count(key))
            left[key] = m_document.lineOf(m_pointer + "/" + key);
    return left;
}

} // namespace hyxtavlang
