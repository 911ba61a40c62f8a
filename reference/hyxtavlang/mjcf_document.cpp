// Reads files and includes, and the numbers in attributes.
#include "reference/hyxtavlang/mjcf_document.h"

#include "reference/hyxtavlang/model_reader.h"
#include "reference/machinery/files/missing_file.h"

#include <osg/Math>

#include <charconv>
#include <cmath>
#include <filesystem>

namespace hyxtavlang {
namespace {

namespace fs = std::filesystem;

std::string placeOf(std::string const& file, int line) {
    return file + ":" + std::to_string(line) + ": ";
}

bool isBlank(char letter) {
    return std::isspace(static_cast<unsigned char>(letter)) != 0;
}

MjcfAttributes attributesOf(tinyxml2::XMLElement const& xml) {
    MjcfAttributes attributes;
    for (auto const* attribute = xml.FirstAttribute(); attribute; attribute = attribute->Next())
        attributes[attribute->Name()] = attribute->Value();
    return attributes;
}

} // namespace

hyx::Quat turnFromZ(hyx::Vec3 const& direction) {
    constexpr double tiny = 1e-10;
    if (direction.z < 0 && std::hypot(direction.x, direction.y) < tiny * direction.length())
        return {1, 0, 0, 0};
    return {hyx::Vec3(0, 0, 1), direction};
}

MjcfDocument::MjcfDocument(std::string const& path) : m_root(load(path, "", 0)) {
    if (m_root.name() != "mujoco")
        throw ModelError(placeOf(path, m_root.xml->GetLineNum()) + "expected <mujoco>, not <" + m_root.name() + ">");
}

MjcfElement MjcfDocument::load(std::string const& path, std::string const& from, int line) {
    std::string const where = from.empty() ? "" : placeOf(from, line);
    if (!fs::is_regular_file(path))
        throw ModelError(where + "the file '" + path + (hyxOSG::isFolder(path) ? "' is a folder" : "' cannot be read"));
    if (!m_files.insert(fs::weakly_canonical(path).string()).second)
        throw ModelError(where + "the file '" + path + "' is included twice");
    auto document = std::make_unique<tinyxml2::XMLDocument>();
    if (document->LoadFile(path.c_str()) != tinyxml2::XML_SUCCESS)
        throw ModelError(placeOf(path, document->ErrorLineNum()) + "it is no XML: " + document->ErrorName());
    if (!document->RootElement())
        throw ModelError(placeOf(path, 1) + "there is no element");
    m_documents.push_back(std::move(document));
    return {m_documents.back()->RootElement(), path};
}

std::vector<MjcfElement> MjcfDocument::children(MjcfElement const& element) {
    std::vector<MjcfElement> found;
    for (auto const* xml = element.xml->FirstChildElement(); xml; xml = xml->NextSiblingElement()) {
        MjcfElement const child{xml, element.file};
        if (child.name() != "include") {
            found.push_back(child);
            continue;
        }
        auto known = m_included.find(xml);
        if (known == m_included.end()) {
            fs::path const path = fs::path(m_root.file).parent_path() / child.text("file");
            known = m_included.emplace(xml, load(path.string(), element.file, xml->GetLineNum())).first;
        }
        for (MjcfElement const& included : children(MjcfElement(known->second)))
            found.push_back(included);
    }
    return found;
}

double MjcfAngles::radians(double angle) const {
    return degrees ? angle * osg::PI / 180 : angle;
}

MjcfEntry::MjcfEntry(MjcfElement const& element, MjcfAttributes defaults)
    : m_element(element),
      m_name(element.text("name")),
      m_values(std::move(defaults)),
      m_own(attributesOf(*element.xml)) {
    m_asked = {"name", "class", "childclass"};
    for (auto const& [key, value] : m_own)
        m_values[key] = value;
}

void MjcfEntry::fail(std::string const& what) const {
    std::string const named = m_name.empty() ? "" : " name=\"" + m_name + "\"";
    throw ModelError(placeOf(file(), line()) + "<" + kind() + named + "> " + what);
}

bool MjcfEntry::has(char const* key) const {
    m_asked.insert(key);
    return m_values.count(key) > 0;
}

std::string MjcfEntry::text(char const* key, std::string const& otherwise) const {
    return has(key) ? m_values.at(key) : otherwise;
}

std::vector<double> MjcfEntry::list(char const* key) const {
    std::vector<double> found;
    if (!has(key))
        return found;
    std::string const& text = m_values.at(key);
    char const* place = text.data();
    char const* const end = place + text.size();
    while (true) {
        while (place != end && isBlank(*place))
            ++place;
        if (place == end)
            return found;
        if (*place == '+')
            ++place;
        double number = 0;
        auto const [next, error] = std::from_chars(place, end, number);
        if (error != std::errc() || !std::isfinite(number) || (next != end && !isBlank(*next)))
            fail(std::string("expected numbers in \"") + key + "\", not \"" + text + "\"");
        found.push_back(number);
        place = next;
    }
}

std::vector<double> MjcfEntry::numbers(char const* key, std::size_t least, std::size_t most) const {
    std::vector<double> const found = list(key);
    if (has(key) && (found.size() < least || found.size() > most))
        fail("expected " + std::to_string(least) + (least == most ? "" : " to " + std::to_string(most)) +
             " numbers in \"" + key + "\", not " + std::to_string(found.size()));
    return found;
}

double MjcfEntry::number(char const* key, double otherwise) const {
    return has(key) ? numbers(key, 1, 1).front() : otherwise;
}

hyx::Vec3 MjcfEntry::vector(char const* key, hyx::Vec3 const& otherwise) const {
    if (!has(key))
        return otherwise;
    std::vector<double> const found = numbers(key, 3, 3);
    return {found[0], found[1], found[2]};
}

bool MjcfEntry::limited(char const* key, bool otherwise) const {
    std::string const word = text(key, "auto");
    if (word != "true" && word != "false" && word != "auto")
        fail(std::string("expected true, false or auto in \"") + key + "\", not \"" + word + "\"");
    return word == "auto" ? otherwise : word == "true";
}

bool MjcfEntry::flag(char const* key, bool otherwise) const {
    return limited(key, otherwise);
}

hyx::AffineMatrix4x4 MjcfEntry::place(MjcfAngles const& angles) const {
    return hyx::AffineMatrix4x4(turn(angles), vector("pos"));
}

/// A turn at the element itself counts before one of another kind in its defaults.
hyx::Quat MjcfEntry::turn(MjcfAngles const& angles) const {
    static char const* const kinds[] = {"quat", "axisangle", "xyaxes", "zaxis", "euler"};
    for (char const* kind : kinds)
        if (m_own.count(kind))
            return turnBy(kind, angles);
    for (char const* kind : kinds)
        if (m_values.count(kind))
            return turnBy(kind, angles);
    return {};
}

namespace {

hyx::Quat aboutAxis(char letter, double angle) {
    hyx::Vec3 axis;
    axis[static_cast<std::size_t>(std::tolower(letter) - 'x')] = 1;
    return hyx::Quat(angle, axis);
}

hyx::Quat ofAxes(hyx::Vec3 x, hyx::Vec3 y) {
    x.normalize();
    y = (y - x * x.dot(y)).normal();
    hyx::Vec3 const z = x.cross(y);
    hyx::AffineMatrix4x4 matrix;
    hyx::Vec3 const rows[] = {x, y, z};
    for (unsigned i = 0; i < 3; ++i)
        for (unsigned j = 0; j < 3; ++j)
            matrix(i, j) = rows[i][j];
    return matrix.getRotate();
}

bool isSomething(hyx::Vec3 const& vector) {
    return vector.length2() > 0;
}

} // namespace

hyx::Quat MjcfEntry::turnBy(std::string const& key, MjcfAngles const& angles) const {
    if (key == "quat") {
        std::vector<double> const q = numbers("quat", 4, 4);
        double const length = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
        if (!(length > 0))
            fail("expected a quaternion in \"quat\", not zeros");
        return {q[1] / length, q[2] / length, q[3] / length, q[0] / length};
    }
    if (key == "axisangle") {
        std::vector<double> const a = numbers("axisangle", 4, 4);
        return {angles.radians(a[3]), hyx::Vec3(a[0], a[1], a[2])};
    }
    if (key == "xyaxes") {
        std::vector<double> const a = numbers("xyaxes", 6, 6);
        hyx::Vec3 const x(a[0], a[1], a[2]), y(a[3], a[4], a[5]);
        if (!isSomething(x) || !isSomething(x.cross(y)))
            fail("expected two directions in \"xyaxes\"");
        return ofAxes(x, y);
    }
    if (key == "zaxis") {
        hyx::Vec3 const z = vector("zaxis");
        if (!isSomething(z))
            fail("expected a direction in \"zaxis\", not zeros");
        return turnFromZ(z);
    }
    std::vector<double> const turns = numbers("euler", 3, 3);
    hyx::Quat turn;
    for (std::size_t i = 0; i < 3; ++i) {
        char const letter = angles.sequence[i];
        hyx::Quat const next = aboutAxis(letter, angles.radians(turns[i]));
        turn = std::islower(static_cast<unsigned char>(letter)) ? next * turn : turn * next; // moving or standing axes
    }
    return turn;
}

std::vector<std::string> MjcfEntry::rest() const {
    std::vector<std::string> found;
    for (auto const& [key, value] : m_own)
        if (!m_asked.count(key))
            found.push_back(key);
    return found;
}

} // namespace hyxtavlang
