// Welds the corners of faces into vertices.
#include "reference/machinery/model_files/obj_mesh.h"

#include "reference/machinery/meshes/crease_normals.h"
#include "reference/machinery/meshes/mesh_builder.h"

#include <algorithm>

namespace hyxOSG {
namespace {

/// Numbers corners in the order of their first use. A table with open addresses: the standard ones take a piece of
/// memory for each corner.
class CornerTable {
public:
    unsigned int numberOf(ObjCorner const& corner) {
        if (2 * (m_corners.size() + 1) > m_slots.size())
            grow();
        unsigned int& slot = slotOf(corner);
        if (slot == none) {
            slot = static_cast<unsigned int>(m_corners.size());
            m_corners.push_back(corner);
        }
        return slot;
    }

    std::vector<ObjCorner> const& corners() const { return m_corners; }

private:
    static constexpr unsigned int none = ~0u;

    unsigned int& slotOf(ObjCorner const& corner) {
        std::size_t place = (static_cast<std::size_t>(corner.position) * 0x9E3779B97F4A7C15u) ^
                            (static_cast<std::size_t>(corner.texcoord) * 0xC2B2AE3D27D4EB4Fu) ^
                            (static_cast<std::size_t>(corner.normal) * 0x165667B19E3779F9u);
        place ^= place >> 29;
        for (;; ++place) {
            unsigned int& slot = m_slots[place & (m_slots.size() - 1)];
            if (slot == none || m_corners[slot] == corner)
                return slot;
        }
    }

    void grow() {
        m_slots.assign(std::max<std::size_t>(64, 2 * m_slots.size()), none);
        for (unsigned int i = 0; i < m_corners.size(); ++i)
            slotOf(m_corners[i]) = i;
    }

    std::vector<ObjCorner> m_corners;
    std::vector<unsigned int> m_slots; ///< a power of two
};

osg::ref_ptr<osg::PrimitiveSet> elementsOf(std::vector<ObjCorner> const& corners, GLenum mode, CornerTable& table) {
    osg::ref_ptr<osg::DrawElementsUInt> const elements = new osg::DrawElementsUInt(mode);
    elements->reserve(corners.size());
    for (ObjCorner const& corner : corners)
        elements->push_back(table.numberOf(corner));
    return elements;
}

void addVertices(osg::Geometry& mesh, std::vector<ObjCorner> const& corners, ObjArrays const& arrays, bool normals) {
    osg::ref_ptr<osg::Vec3Array> const places = new osg::Vec3Array, directions = new osg::Vec3Array;
    osg::ref_ptr<osg::Vec2Array> const texcoords = new osg::Vec2Array;
    osg::ref_ptr<osg::Vec4Array> const colors = new osg::Vec4Array;
    bool const textured = std::any_of(corners.begin(), corners.end(), [](auto const& c) { return c.texcoord >= 0; });
    places->reserve(corners.size());
    for (ObjCorner const& corner : corners) {
        places->push_back(arrays.positions[corner.position]);
        if (normals)
            directions->push_back(arrays.normals[corner.normal]);
        if (textured)
            texcoords->push_back(corner.texcoord < 0 ? osg::Vec2() : arrays.texcoords[corner.texcoord]);
        if (!arrays.colors.empty())
            colors->push_back(osg::Vec4(arrays.colors[corner.position], 1));
    }
    mesh.setVertexArray(places);
    if (normals)
        mesh.setNormalArray(directions, osg::Array::BIND_PER_VERTEX);
    if (textured)
        mesh.setTexCoordArray(0, texcoords, osg::Array::BIND_PER_VERTEX);
    if (!colors->empty())
        mesh.setColorArray(colors, osg::Array::BIND_PER_VERTEX);
}

} // namespace

osg::ref_ptr<osg::Geometry> meshOf(ObjPart const& part, ObjArrays const& arrays) {
    osg::ref_ptr<osg::Geometry> const mesh = new osg::Geometry;
    mesh->setName(part.name);
    bool const normals = std::all_of(part.triangles.begin(), part.triangles.end(),
                                     [](auto const& corner) { return corner.normal >= 0; }) &&
                         part.lines.empty() && !part.triangles.empty();
    {
        CornerTable table;
        if (!part.triangles.empty())
            mesh->addPrimitiveSet(elementsOf(part.triangles, GL_TRIANGLES, table));
        if (!part.lines.empty())
            mesh->addPrimitiveSet(elementsOf(part.lines, GL_LINES, table));
        addVertices(*mesh, table.corners(), arrays, normals);
    }
    if (!normals && !part.triangles.empty())
        setCreaseNormals(*mesh);
    useVertexBuffers(*mesh);
    return mesh;
}

} // namespace hyxOSG
