// Model files of lines of text: OBJ with its materials, and OFF. Made for large files, and for damaged ones: every
// index is checked.

#include "reference/machinery/files/only_reader.h"
#include "reference/machinery/model_files/file_look_up.h"
#include "reference/machinery/model_files/obj_materials.h"
#include "reference/machinery/model_files/obj_mesh.h"
#include "reference/machinery/model_files/polygon_cut.h"
#include "reference/machinery/model_files/text_scanner.h"

#include <osg/Geode>
#include <osgDB/FileNameUtils>
#include <osgDB/FileUtils>
#include <osgDB/ReaderWriter>
#include <osgDB/Registry>

#include <fstream>
#include <limits>
#include <map>
#include <optional>
#include <vector>

namespace hyxOSG {
namespace {

std::optional<std::string> contentOf(std::string const& path) {
    std::ifstream stream(path, std::ios::binary | std::ios::ate);
    if (!stream)
        return std::nullopt;
    std::string content(static_cast<std::size_t>(stream.tellg()), '\0');
    stream.seekg(0);
    stream.read(content.data(), static_cast<std::streamsize>(content.size()));
    return content;
}

osg::Vec3 pointAt(TextScanner& line) {
    osg::Vec3 point;
    for (int i = 0; i < 3; ++i)
        point[i] = line.number<float>();
    return point;
}

/// The faces of one file, part by part.
class ObjFile {
public:
    explicit ObjFile(std::string folder) : m_folder(std::move(folder)) {}

    void read(std::string_view content) {
        for (TextScanner lines(content); !lines.atEnd(); lines.nextLine())
            readLine(lines);
        if (m_arrays.colors.size() != m_arrays.positions.size())
            m_arrays.colors.clear();
    }

    osg::ref_ptr<osg::Node> build() {
        if (m_parts.empty())
            throw ModelFault("there are no faces in it");
        osg::ref_ptr<osg::Group> const model = new osg::Group;
        for (ObjPart& part : m_parts) {
            osg::ref_ptr<osg::Geode> const geode = new osg::Geode;
            geode->setName(part.name);
            geode->addDrawable(meshOf(part, m_arrays));
            part = {}; // large files leave little room
            geode->setStateSet(m_states[m_used[model->getNumChildren()]]);
            model->addChild(geode);
        }
        return model;
    }

    void addFace(std::vector<ObjCorner> const& corners) {
        std::vector<ObjCorner>& triangles = part().triangles;
        if (corners.size() < 3)
            return;
        if (corners.size() == 3) {
            triangles.insert(triangles.end(), corners.begin(), corners.end());
            return;
        }
        m_places.clear();
        for (ObjCorner const& corner : corners)
            m_places.push_back(m_arrays.positions[corner.position]);
        for (auto const& triangle : cutPolygon(m_places))
            for (unsigned int const corner : triangle)
                triangles.push_back(corners[corner]);
    }

    ObjArrays& arrays() { return m_arrays; }

private:
    void readLine(TextScanner& line) {
        std::string_view const word = line.word();
        if (word == "v")
            readVertex(line);
        else if (word == "vn")
            m_arrays.normals.push_back(pointAt(line));
        else if (word == "vt")
            readTexcoord(line);
        else if (word == "f")
            readFace(line);
        else if (word == "l")
            readLines(line);
        else if (word == "o" || word == "g")
            m_name = line.restOfLine();
        else if (word == "usemtl")
            m_material = line.restOfLine();
        else if (word == "mtllib")
            readMaterials(std::string(line.restOfLine()));
    }

    void readVertex(TextScanner& line) {
        m_arrays.positions.push_back(pointAt(line));
        float rest[4] = {};
        int count = 0;
        while (count < 4 && !line.lineEnds())
            rest[count++] = line.number<float>();
        if (count >= 3) // a weight may come before the colour
            m_arrays.colors.emplace_back(rest[count - 3], rest[count - 2], rest[count - 1]);
    }

    void readTexcoord(TextScanner& line) {
        float const u = line.number<float>();
        m_arrays.texcoords.emplace_back(u, line.lineEnds() ? 0 : line.number<float>());
    }

    /// Counts from 1, or back from the last one with -1.
    static int indexAt(TextScanner& line, std::size_t count) {
        auto const number = line.number<long>();
        long const index = number < 0 ? static_cast<long>(count) + number : number - 1;
        if (index < 0 || index >= static_cast<long>(count) || index > std::numeric_limits<int>::max())
            throw ModelFault("a face has a corner that is not there");
        return static_cast<int>(index);
    }

    ObjCorner cornerAt(TextScanner& line) const {
        ObjCorner corner;
        corner.position = indexAt(line, m_arrays.positions.size());
        if (line.skip('/')) {
            if (line.front() == '-' || (line.front() >= '0' && line.front() <= '9'))
                corner.texcoord = indexAt(line, m_arrays.texcoords.size());
            if (line.skip('/'))
                corner.normal = indexAt(line, m_arrays.normals.size());
        }
        return corner;
    }

    void readFace(TextScanner& line) {
        m_face.clear();
        while (!line.lineEnds())
            m_face.push_back(cornerAt(line));
        addFace(m_face);
    }

    void readLines(TextScanner& line) {
        std::vector<ObjCorner>& lines = part().lines;
        for (std::optional<ObjCorner> last; !line.lineEnds();) {
            ObjCorner const corner = cornerAt(line);
            if (last)
                lines.insert(lines.end(), {*last, corner});
            last = corner;
        }
    }

    void readMaterials(std::string const& name) {
        std::string const path = osgDB::concatPaths(m_folder, name);
        if (!mayRead(path))
            return;
        if (auto const content = contentOf(path))
            for (auto const& [material, state] : readObjMaterials(*content, m_folder))
                m_states[material] = state;
    }

    ObjPart& part() {
        if (m_parts.empty() || m_parts.back().name != m_name || m_used.back() != m_material) {
            m_parts.push_back({.name = m_name, .triangles = {}, .lines = {}});
            m_used.push_back(m_material);
        }
        return m_parts.back();
    }

    std::string m_folder, m_name, m_material;
    ObjArrays m_arrays;
    std::vector<ObjPart> m_parts;
    std::vector<std::string> m_used; ///< the material of each part
    std::map<std::string, osg::ref_ptr<osg::StateSet>> m_states;
    std::vector<ObjCorner> m_face;
    std::vector<osg::Vec3> m_places;
};

/// Passes to the next line that says something.
void skipToContent(TextScanner& lines) {
    while (!lines.atEnd() && lines.lineEnds())
        lines.nextLine();
}

/// OFF: the counts, the places, then faces of indices. Kinds with more than places at their vertices are refused.
void readOff(std::string_view content, ObjFile& model) {
    TextScanner lines(content);
    skipToContent(lines);
    if (lines.word() != "OFF")
        throw ModelFault("it does not start with OFF alone");
    skipToContent(lines);
    auto const vertices = lines.number<std::size_t>(), faces = lines.number<std::size_t>();
    if (vertices > content.size() || faces > content.size())
        throw ModelFault("it promises more than it holds");
    lines.nextLine();
    for (std::size_t i = 0; i < vertices; ++i, lines.nextLine()) {
        skipToContent(lines);
        model.arrays().positions.push_back(pointAt(lines));
    }
    std::vector<ObjCorner> corners;
    for (std::size_t i = 0; i < faces; ++i, lines.nextLine()) {
        skipToContent(lines);
        corners.clear();
        for (auto left = lines.number<std::size_t>(); left > 0; --left) {
            auto const index = lines.number<std::size_t>();
            if (index >= vertices)
                throw ModelFault("a face has a corner that is not there");
            corners.push_back({.position = static_cast<int>(index)});
        }
        model.addFace(corners);
    }
}

class TextModelReader : public osgDB::ReaderWriter {
public:
    TextModelReader() {
        supportsExtension("obj", "OBJ files");
        supportsExtension("off", "Object file format");
        keepOnlyReader("obj");
    }

    char const* className() const override { return "Reader of models in lines of text"; }

    ReadResult readNode(std::string const& file, Options const* options) const override {
        if (!acceptsExtension(osgDB::getLowerCaseFileExtension(file)))
            return ReadResult::FILE_NOT_HANDLED;
        std::string const path = osgDB::findDataFile(file, options);
        auto content = path.empty() ? std::nullopt : contentOf(path);
        if (!content)
            return ReadResult::FILE_NOT_FOUND;
        try {
            ObjFile model(osgDB::getFilePath(path));
            if (osgDB::getLowerCaseFileExtension(path) == "off")
                readOff(*content, model);
            else
                model.read(*content);
            content.reset();
            return model.build().get();
        } catch (ModelFault const& fault) {
            return ReadResult(std::string("damaged file: ") + fault.what());
        }
    }
};

osgDB::RegisterReaderWriterProxy<TextModelReader> textModelRegistration;

} // namespace
} // namespace hyxOSG
