// Polygon files (PLY, text and both binary orders). Made for damaged files: every count is checked against what the
// file can hold before anything is allocated.

#include "reference/machinery/files/only_reader.h"
#include "reference/machinery/meshes/crease_normals.h"
#include "reference/machinery/meshes/mesh_builder.h"
#include "reference/machinery/model_files/model_picture.h"
#include "reference/machinery/shading/node_state.h"
#include "reference/machinery/shading/surface_program.h"

#include <osg/Geode>
#include <osgDB/FileNameUtils>
#include <osgDB/FileUtils>
#include <osgDB/ReaderWriter>
#include <osgDB/Registry>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

namespace hyxOSG {
namespace {

struct Fault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

enum class Scalar { INT8, UINT8, INT16, UINT16, INT32, UINT32, FLOAT32, FLOAT64 };

Scalar scalarNamed(std::string const& name) {
    static std::map<std::string, Scalar> const names{
        {"char", Scalar::INT8},      {"int8", Scalar::INT8},       {"uchar", Scalar::UINT8},
        {"uint8", Scalar::UINT8},    {"short", Scalar::INT16},     {"int16", Scalar::INT16},
        {"ushort", Scalar::UINT16},  {"uint16", Scalar::UINT16},   {"int", Scalar::INT32},
        {"int32", Scalar::INT32},    {"uint", Scalar::UINT32},     {"uint32", Scalar::UINT32},
        {"float", Scalar::FLOAT32},  {"float32", Scalar::FLOAT32}, {"double", Scalar::FLOAT64},
        {"float64", Scalar::FLOAT64}};
    auto const place = names.find(name);
    if (place == names.end())
        throw Fault("unknown type \"" + name + "\"");
    return place->second;
}

struct Property {
    std::string name;
    Scalar type = Scalar::FLOAT32;
    std::optional<Scalar> countType; ///< of a list
};

struct Element {
    std::string name;
    std::size_t count = 0;
    std::vector<Property> properties;
};

struct Header {
    enum Encoding { TEXT, LITTLE, BIG } encoding = TEXT;

    std::vector<Element> elements;
    std::string picture; ///< the file of the texture; empty for none
};

/// Reads numbers one after the other, as text or binary.
class Values {
public:
    Values(std::string_view content, Header::Encoding encoding) : m_rest(content), m_encoding(encoding) {}

    double next(Scalar type) {
        if (m_encoding == Header::TEXT)
            return nextWord();
        switch (type) {
        case Scalar::INT8:
            return binary<std::int8_t>();
        case Scalar::UINT8:
            return binary<std::uint8_t>();
        case Scalar::INT16:
            return binary<std::int16_t>();
        case Scalar::UINT16:
            return binary<std::uint16_t>();
        case Scalar::INT32:
            return binary<std::int32_t>();
        case Scalar::UINT32:
            return binary<std::uint32_t>();
        case Scalar::FLOAT32:
            return binary<float>();
        case Scalar::FLOAT64:
            return binary<double>();
        }
        throw Fault("unknown type");
    }

    /// Every value takes a byte at least, so no count beyond this can be true.
    std::size_t remaining() const { return m_rest.size(); }

private:
    template <class T>
    double binary() {
        if (m_rest.size() < sizeof(T))
            throw Fault("the file ends too early");
        char bytes[sizeof(T)];
        std::memcpy(bytes, m_rest.data(), sizeof(T));
        if ((m_encoding == Header::BIG) == (std::endian::native == std::endian::little))
            std::reverse(std::begin(bytes), std::end(bytes));
        m_rest.remove_prefix(sizeof(T));
        T value;
        std::memcpy(&value, bytes, sizeof(T));
        return static_cast<double>(value);
    }

    double nextWord() {
        std::size_t const start = m_rest.find_first_not_of(" \t\r\n");
        if (start == std::string_view::npos)
            throw Fault("the file ends too early");
        m_rest.remove_prefix(start);
        double value = 0;
        auto const [end, error] = std::from_chars(m_rest.data(), m_rest.data() + m_rest.size(), value);
        if (error != std::errc())
            throw Fault("there is text where a number should be");
        m_rest.remove_prefix(static_cast<std::size_t>(end - m_rest.data()));
        return value;
    }

    std::string_view m_rest;
    Header::Encoding m_encoding;
};

std::size_t wholeNumber(double value, std::size_t most) {
    if (!(value >= 0) || value > static_cast<double>(most) || value != std::floor(value))
        throw Fault("a count or index is out of range");
    return static_cast<std::size_t>(value);
}

Header readHeader(std::istream& lines) {
    Header header;
    std::string line;
    if (!std::getline(lines, line) || line.substr(0, 3) != "ply")
        throw Fault("it does not start with \"ply\"");
    while (std::getline(lines, line)) {
        std::istringstream words(line);
        std::string word;
        words >> word;
        if (word == "end_header")
            return header;
        if (word == "format") {
            words >> word;
            header.encoding = word == "ascii"               ? Header::TEXT
                              : word == "binary_big_endian" ? Header::BIG
                                                            : Header::LITTLE;
        } else if (word == "comment") {
            words >> word >> std::ws;
            if (word == "TextureFile")
                std::getline(words, header.picture);
            while (header.picture.ends_with('\r') || header.picture.ends_with(' '))
                header.picture.pop_back();
        } else if (word == "element") {
            Element element;
            words >> element.name >> element.count;
            if (!words)
                throw Fault("an element has no count");
            header.elements.push_back(element);
        } else if (word == "property") {
            if (header.elements.empty())
                throw Fault("a property stands before the first element");
            Property property;
            words >> word;
            if (word == "list") {
                words >> word;
                property.countType = scalarNamed(word);
                words >> word;
            }
            property.type = scalarNamed(word);
            words >> property.name;
            header.elements.back().properties.push_back(property);
        }
    }
    throw Fault("its header has no end");
}

class Surface {
public:
    void readElement(Element const& element, Values& values) {
        if (element.count > values.remaining())
            throw Fault("it promises more than it holds");
        for (std::size_t i = 0; i < element.count; ++i)
            readRecord(element, values);
    }

    osg::ref_ptr<osg::Node> build() {
        osg::ref_ptr<osg::Geometry> const mesh = new osg::Geometry;
        mesh->setVertexArray(m_positions);
        if (m_colors->size() == m_positions->size())
            mesh->setColorArray(m_colors, osg::Array::BIND_PER_VERTEX);
        if (m_texcoords->size() == m_positions->size())
            mesh->setTexCoordArray(0, m_texcoords, osg::Array::BIND_PER_VERTEX);
        if (m_triangles->empty()) {
            mesh->addPrimitiveSet(new osg::DrawArrays(GL_POINTS, 0, static_cast<GLsizei>(m_positions->size())));
            drawWithoutSamples(*mesh->getOrCreateStateSet());
        } else {
            addTriangles(*mesh);
        }
        useVertexBuffers(*mesh);
        osg::ref_ptr<osg::Geode> const geode = new osg::Geode;
        geode->addDrawable(mesh);
        return geode;
    }

private:
    void readRecord(Element const& element, Values& values) {
        std::map<std::string, double> record;
        for (Property const& property : element.properties) {
            if (!property.countType) {
                record[property.name] = values.next(property.type);
                continue;
            }
            std::size_t const count = wholeNumber(values.next(*property.countType), values.remaining());
            std::vector<std::size_t> corners(count);
            bool const isFace = element.name == "face" && property.name.starts_with("vertex_ind");
            if (isFace && m_positions->empty())
                throw Fault("its faces come before its vertices");
            for (std::size_t& corner : corners) {
                double const value = values.next(property.type);
                corner = isFace ? wholeNumber(value, m_positions->size() - 1) : 0;
            }
            if (isFace)
                addFace(corners);
        }
        if (element.name == "vertex")
            addVertex(record);
    }

    void addVertex(std::map<std::string, double> const& record) {
        auto const value = [&record](char const* name) {
            auto const place = record.find(name);
            return place == record.end() ? 0.0f : static_cast<float>(place->second);
        };
        m_positions->push_back({value("x"), value("y"), value("z")});
        if (record.contains("nx"))
            m_normals->push_back({value("nx"), value("ny"), value("nz")});
        for (auto const& [u, v] : {std::pair("s", "t"), {"u", "v"}, {"texture_u", "texture_v"}})
            if (record.contains(u) && record.contains(v)) {
                m_texcoords->push_back({value(u), value(v)});
                break;
            }
        if (record.contains("red"))
            m_colors->push_back(osg::Vec4(value("red"), value("green"), value("blue"), 255) / 255);
    }

    void addFace(std::vector<std::size_t> const& corners) {
        for (std::size_t i = 2; i < corners.size(); ++i)
            for (std::size_t const corner : {corners[0], corners[i - 1], corners[i]})
                m_triangles->push_back(static_cast<GLuint>(corner));
    }

    void addTriangles(osg::Geometry& mesh) {
        mesh.addPrimitiveSet(m_triangles);
        if (m_normals->size() == m_positions->size())
            mesh.setNormalArray(m_normals, osg::Array::BIND_PER_VERTEX);
        else
            setCreaseNormals(mesh);
    }

    osg::ref_ptr<osg::Vec3Array> m_positions = new osg::Vec3Array, m_normals = new osg::Vec3Array;
    osg::ref_ptr<osg::Vec2Array> m_texcoords = new osg::Vec2Array;
    osg::ref_ptr<osg::Vec4Array> m_colors = new osg::Vec4Array;
    osg::ref_ptr<osg::DrawElementsUInt> m_triangles = new osg::DrawElementsUInt(GL_TRIANGLES);
};

osg::ref_ptr<osg::Node> readPly(std::string const& content, std::string const& folder) {
    std::istringstream lines(content);
    Header const header = readHeader(lines);
    auto const start = static_cast<std::size_t>(lines.tellg());
    Values values(std::string_view(content).substr(std::min(start, content.size())), header.encoding);
    Surface surface;
    for (Element const& element : header.elements)
        surface.readElement(element, values);
    osg::ref_ptr<osg::Node> const model = surface.build();
    if (osg::ref_ptr<osg::Texture2D> const picture = modelPicture(header.picture, folder))
        model->getOrCreateStateSet()->setTextureAttributeAndModes(DIFFUSE_TEXTURE, picture);
    return model;
}

class PlyReader : public osgDB::ReaderWriter {
public:
    PlyReader() {
        supportsExtension("ply", "Polygon file format");
        keepOnlyReader("ply");
    }

    char const* className() const override { return "Polygon file reader"; }

    ReadResult readNode(std::string const& file, Options const* options) const override {
        if (!acceptsExtension(osgDB::getLowerCaseFileExtension(file)))
            return ReadResult::FILE_NOT_HANDLED;
        std::string const path = osgDB::findDataFile(file, options);
        std::ifstream stream(path, std::ios::binary);
        if (!stream)
            return ReadResult::FILE_NOT_FOUND;
        std::string const content{std::istreambuf_iterator<char>(stream), {}};
        try {
            return readPly(content, osgDB::getFilePath(path)).get();
        } catch (Fault const& fault) {
            return ReadResult(std::string("damaged polygon file: ") + fault.what());
        }
    }
};

osgDB::RegisterReaderWriterProxy<PlyReader> plyRegistration;

} // namespace
} // namespace hyxOSG
