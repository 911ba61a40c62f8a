// Parts of an OBJ file as meshes.
#pragma once

#include <osg/Geometry>

#include <string>
#include <vector>

namespace hyxOSG {

/// What all faces of a file refer to.
struct ObjArrays {
    std::vector<osg::Vec3> positions, normals;
    std::vector<osg::Vec2> texcoords;
    std::vector<osg::Vec3> colors; ///< of the positions; empty unless all have one
};

/// Indices into the arrays; negative for none.
struct ObjCorner {
    int position = -1, texcoord = -1, normal = -1;

    bool operator==(ObjCorner const&) const = default;
};

/// Faces that follow each other with one name and one material.
struct ObjPart {
    std::string name;
    std::vector<ObjCorner> triangles; ///< three corners each
    std::vector<ObjCorner> lines;     ///< two each
};

/// Corners that are equal become one vertex. Where a corner has no normal, smooth ones are made, with creases.
osg::ref_ptr<osg::Geometry> meshOf(ObjPart const& part, ObjArrays const& arrays);

} // namespace hyxOSG
