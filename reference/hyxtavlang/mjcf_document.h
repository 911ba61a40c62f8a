// MJCF files as elements with attributes, their includes and defaults in place.
#pragma once

#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyxtavlang/model_objects.h"

#include <tinyxml2.h>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace hyxtavlang {

using MjcfAttributes = std::map<std::string, std::string>;

/// The shortest turn from Z to a direction; about X to the one against it, as the format has it.
hyx::Quat turnFromZ(hyx::Vec3 const& direction);

/// An element, with the file that it stands in.
struct MjcfElement {
    tinyxml2::XMLElement const* xml = nullptr;
    std::string file;

    std::string name() const { return xml->Name(); }

    std::string text(char const* key) const { return xml->Attribute(key) ? xml->Attribute(key) : ""; }
};

/// A file and those that it includes, each once.
class MjcfDocument {
public:
    /// Throws ModelError, naming file and line.
    explicit MjcfDocument(std::string const& path);

    MjcfElement const& root() const { return m_root; }

    /// The elements in an element; in the place of an include those of the other file.
    std::vector<MjcfElement> children(MjcfElement const& element);

private:
    MjcfElement load(std::string const& path, std::string const& from, int line);

    std::vector<std::unique_ptr<tinyxml2::XMLDocument>> m_documents;
    std::map<tinyxml2::XMLElement const*, MjcfElement> m_included;
    std::set<std::string> m_files;
    MjcfElement m_root;
};

/// How angles and turns are written.
struct MjcfAngles {
    bool degrees = true;
    std::string sequence = "xyz";

    double radians(double angle) const;
};

/// The attributes of an element, with those of its defaults behind them, and what of them nobody asked for.
class MjcfEntry {
public:
    MjcfEntry(MjcfElement const& element, MjcfAttributes defaults);

    [[noreturn]] void fail(std::string const& what) const;

    std::string const& name() const { return m_name; }

    int line() const { return m_element.xml->GetLineNum(); }

    std::string const& file() const { return m_element.file; }

    std::string kind() const { return m_element.name(); }

    bool has(char const* key) const;
    std::string text(char const* key, std::string const& otherwise = "") const;
    double number(char const* key, double otherwise) const;
    bool flag(char const* key, bool otherwise) const;
    /// Empty where there are none; fails unless there are `least` to `most`.
    std::vector<double> numbers(char const* key, std::size_t least, std::size_t most) const;
    std::vector<double> list(char const* key) const;
    hyx::Vec3 vector(char const* key, hyx::Vec3 const& otherwise = hyx::Vec3()) const;
    /// `true` and `false` in words; `auto` and nothing where `otherwise` decides.
    bool limited(char const* key, bool otherwise) const;

    hyx::AffineMatrix4x4 place(MjcfAngles const& angles) const;
    hyx::Quat turn(MjcfAngles const& angles) const;

    /// What stands at the element itself and was not asked for.
    std::vector<std::string> rest() const;

private:
    hyx::Quat turnBy(std::string const& key, MjcfAngles const& angles) const;

    MjcfElement m_element;
    std::string m_name;
    MjcfAttributes m_values;
    MjcfAttributes m_own;
    mutable std::set<std::string> m_asked;
};

} // namespace hyxtavlang
