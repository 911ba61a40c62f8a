// Checks the files of an SDF model and copies those of newer versions.
#include "reference/hyxtavlang/sdf_files.h"

#include "reference/hyxtavlang/model_reader.h"

#include <sdf/SDFImpl.hh>
#include <tinyxml2.h>

#include <fstream>
#include <iterator>
#include <regex>

namespace hyxtavlang {
namespace {

using Element = tinyxml2::XMLElement;

constexpr int newest = 12; // of the versions 1.N that add to those before them

/// N of a version 1.N; negative for others.
int versionNumber(std::string const& version) {
    std::smatch parts;
    return std::regex_match(version, parts, std::regex("1\\.([0-9]{1,2})")) ? std::stoi(parts[1]) : -1;
}

void visitIncludes(Element const& element, std::function<void(Element const& include)> const& visit) {
    for (auto const* part = element.FirstChildElement(); part; part = part->NextSiblingElement()) {
        visitIncludes(*part, visit);
        if (std::string(part->Name()) == "include")
            visit(*part);
    }
}

/// The lines stay where they are. The root element has a version.
std::string withVersion(std::string text, std::string const& version) {
    std::size_t const key = text.find("version", text.find("<sdf"));
    std::size_t const begin = text.find_first_of("\"'", key) + 1;
    return text.replace(begin, text.find_first_of("\"'", begin) - begin, version);
}

} // namespace

SdfFiles::~SdfFiles() {
    std::error_code ignored;
    if (!m_folder.empty())
        std::filesystem::remove_all(m_folder, ignored);
}

void SdfFiles::check(std::string const& path, Find const& find, Tell const& tell) {
    tinyxml2::XMLDocument document;
    if (document.LoadFile(path.c_str()) != tinyxml2::XML_SUCCESS)
        throw ModelError(path + ":" + std::to_string(document.ErrorLineNum()) +
                         ": it is no XML: " + document.ErrorName());
    std::filesystem::path const known = std::filesystem::canonical(path);
    m_open.insert(known);
    Element const* const root = document.RootElement();
    std::string const kind = root ? root->Name() : "";
    std::string const place = path + ":" + std::to_string(root ? root->GetLineNum() : 1) + ": ";
    if (kind != "sdf" && !(kind == "robot" && m_open.size() > 1))
        throw ModelError(place + "expected <sdf> as the first element" + (root ? ", not <" + kind + ">" : ""));
    char const* const given = root->Attribute("version");
    std::string const version = given ? given : "";
    int const number = versionNumber(version);
    if (kind == "sdf" && (number < 0 || number > newest))
        throw ModelError(place + "expected a version of <sdf> from 1.0 to 1." + std::to_string(newest) + ", not \"" +
                         version + "\"");
    if (kind == "sdf" && number > versionNumber(sdf::SDF::Version())) {
        addCopy(path);
        tell(path, root->GetLineNum(), version);
    }
    visitIncludes(*root, [&](Element const& include) {
        auto const* const uri = include.FirstChildElement("uri");
        std::string const file = uri && uri->GetText() ? find(uri->GetText()) : "";
        if (file.empty() || m_done.count(std::filesystem::canonical(file)))
            return;
        if (m_open.count(std::filesystem::canonical(file)))
            throw ModelError(path + ":" + std::to_string(include.GetLineNum()) + ": the file '" + file +
                             "' is included within itself");
        check(file, find, tell);
    });
    m_open.erase(known);
    m_done.insert(known);
}

void SdfFiles::addCopy(std::string const& path) {
    if (m_folder.empty()) {
        std::string folder = (std::filesystem::temp_directory_path() / "hyx-sdf-XXXXXX").string();
        if (!mkdtemp(folder.data()))
            throw ModelError(path + ":1: no folder for a copy can be made beside other temporary files");
        m_folder = folder;
    }
    std::ifstream stream(path, std::ios::binary);
    std::string const text{std::istreambuf_iterator<char>(stream), {}};
    std::string const copy = (m_folder / (std::to_string(m_copies.size()) + ".sdf")).string();
    std::ofstream(copy, std::ios::binary) << withVersion(text, sdf::SDF::Version());
    m_copies[path] = copy;
    m_originals[copy] = path;
}

std::string SdfFiles::copy(std::string const& path) const {
    auto const found = m_copies.find(path);
    return found == m_copies.end() ? path : found->second;
}

std::string SdfFiles::original(std::string const& path) const {
    auto const found = m_originals.find(path);
    return found == m_originals.end() ? path : found->second;
}

} // namespace hyxtavlang
