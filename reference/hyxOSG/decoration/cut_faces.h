// The faces that close bodies where a plane cuts them open.
#pragma once

#include <osg/Geometry>
#include <osg/Plane>
#include <osgUtil/CullVisitor>

#include <map>

namespace hyxOSG {

/// Faces are worked out when a body or the plane has moved, and kept meanwhile. Open meshes have none.
class CutFaces {
public:
    /// Adds the faces of all bodies below `group` to a picture, in the looks of the bodies.
    void cull(osg::Group& group, osg::Plane const& plane, osgUtil::CullVisitor& culling);

private:
    class Collector;

    struct Face {
        osg::observer_ptr<osg::Geometry> body;
        unsigned int revision = 0;
        bool closed = false;
        osg::Plane plane;
        osg::ref_ptr<osg::Geometry> mesh; ///< null where the plane passes by
        unsigned int lastFrame = 0;
    };

    osg::Geometry* faceOf(osg::Geometry& body, osg::NodePath const& path, osg::Plane const& plane, unsigned int frame);

    /// By the way to the body: one mesh stands in many places.
    std::map<osg::NodePath, Face> m_faces;
};

} // namespace hyxOSG
