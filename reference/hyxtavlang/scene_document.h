// Scenes in JSON as entries that know where they stand in their file.
#pragma once

#include "platform/hyx/values/affine_matrix4x4.h"
#include "reference/hyxtavlang/model_reader.h"

#include <nlohmann/json.hpp>

#include <array>
#include <functional>
#include <map>
#include <set>

namespace hyxtavlang {

/// A file in JSON with the lines of its values. Throws ModelError.
struct SceneDocument {
    explicit SceneDocument(std::string const& file);

    /// Where the value that a JSON pointer means begins, or what it is in.
    int lineOf(std::string pointer) const;

    std::string path;
    nlohmann::json root;
    std::map<std::string, int> lines;
};

/// An object of the file.
class SceneEntry {
public:
    /// Throws ModelError when it is none.
    SceneEntry(SceneDocument const& document, nlohmann::json const& json, std::string pointer);

    [[noreturn]] void fail(std::string const& what) const;

    int line() const { return m_document.lineOf(m_pointer); }

    std::string const& path() const { return m_document.path; }

    bool has(std::string const& key) const;
    std::string text(std::string const& key) const;
    std::string text(std::string const& key, std::string const& otherwise) const;
    bool flag(std::string const& key, bool otherwise) const;
    double number(std::string const& key) const;
    /// Fails unless it is above 0.
    double positive(std::string const& key, double otherwise) const;
    template <std::size_t count>
    std::array<double, count> numbers(std::string const& key) const;
    hyx::Vec3 vector(std::string const& key) const;
    hyx::Vec3 vector(std::string const& key, hyx::Vec3 const& otherwise) const;
    /// Its `position`, and `rotation` or `rpy`.
    hyx::AffineMatrix4x4 place() const;
    /// The objects of a list; none where there is no list.
    std::vector<SceneEntry> list(std::string const& key) const;

    /// The keys that nobody asked for, with their lines.
    std::map<std::string, int> rest() const;

private:
    nlohmann::json const& value(std::string const& key, std::string const& expected,
                                std::function<bool(nlohmann::json const&)> const& fits) const;

    SceneDocument const& m_document;
    nlohmann::json const& m_json;
    std::string m_pointer;
    mutable std::set<std::string> m_asked;
};

template <std::size_t count>
std::array<double, count> SceneEntry::numbers(std::string const& key) const {
    return value(key, std::to_string(count) + " numbers",
                 [](nlohmann::json const& list) {
                     return list.is_array() && list.size() == count &&
                            std::all_of(list.begin(), list.end(), [](auto const& part) { return part.is_number(); });
                 })
        .template get<std::array<double, count>>();
}

} // namespace hyxtavlang
