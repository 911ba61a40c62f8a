// Rows of the functions that make figures, grids, axes and text.
#include "platform/hyxOSG/visuals/shapes.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/frame.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/constraint.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxCollide/trimesh.h"
#include "platform/hyxOSG/visuals/grid_axes.h"
#include "platform/hyxOSG/visuals/text_visuals.h"
#include "platform/hyxOSG/visuals/trimesh_conversion.h"

#include <osg/Geode>
#include <osg/MatrixTransform>

namespace {

constexpr Declared shapes_rows[] = {
    FUNCTION(createSphere, FREE(hyxOSG::createSphere, (hyx::Vec3 const&, hyx::Vec4 const&, float))),
    FUNCTION(createCylinder,
             FREE(hyxOSG::createCylinder, (hyx::AffineMatrix4x4 const&, hyx::Vec4 const&, float, float))),
    FUNCTION(createLine, FREE(hyxOSG::createLine, (hyx::Vec3 const&, hyx::Vec3 const&, hyx::Vec4 const&, float))),
    FUNCTION(createPolyline, FREE(hyxOSG::createPolyline, (hyx::Vec3Vector const&, hyx::Vec4 const&, float))),
    FUNCTION(createCubeLines,
             FREE(hyxOSG::createCubeLines, (hyx::Vec3 const&, hyx::Vec3 const&, hyxRender::Color const&, double),
                  hyxRender::Color(1, 1, 1, 1), 1.0)),
    FUNCTION(createText, FREE(hyxOSG::createText, (std::string const&, hyx::Vec3 const&, hyx::Vec4f const&, double),
                              hyx::Vec3(), hyx::Vec4f(1, 1, 1, 1), 0.2)),
    FUNCTION(addText, FREE(hyxOSG::addText,
                           (hyxCollide::Geometry const*, osg::Group*, std::string const&, hyx::Vec3 const&,
                            hyx::Vec4f const&, double),
                           hyx::Vec3(), hyx::Vec4f(1, 1, 1, 1), 0.2)),
    FUNCTION(removeText, FREE(hyxOSG::removeText, (hyxCollide::Geometry const*, osg::Group*, size_t), size_t(0))),
    FUNCTION(createGrid,
             FREE(hyxOSG::createGrid,
                  (unsigned int, unsigned int, osg::Vec3 const&, osg::Vec3 const&, osg::Vec3 const&, bool), false),
             FREE(hyxOSG::createGrid,
                  (unsigned int, unsigned int, hyx::Vec3 const&, hyx::Vec3 const&, hyx::Vec3 const&, osg::Group*))),
    FUNCTION(create3DGrid,
             FREE(hyxOSG::create3DGrid, (unsigned int, unsigned int, unsigned int, osg::Vec3 const&, osg::Vec3 const&,
                                         osg::Vec3 const&, osg::Vec3 const&, float)),
             FREE(hyxOSG::create3DGrid, (unsigned int, unsigned int, unsigned int, hyx::Vec3 const&, hyx::Vec3 const&,
                                         hyx::Vec3 const&, hyx::Vec3 const&, float))),
    FUNCTION(
        createAxes, FREE(hyxOSG::createAxes, (float, float), 1.0f, 1.0f),
        FREE(hyxOSG::createAxes, (hyxCollide::Geometry*, hyx::Frame*, osg::Group*, float, float), 1.0f, 1.0f),
        FREE(hyxOSG::createAxes, (hyxCollide::Geometry*, hyx::AffineMatrix4x4, osg::Group*, float, float), 1.0f, 1.0f),
        FREE(hyxOSG::createAxes, (hyx::RigidBody*, hyx::Frame*, osg::Group*, float, float), 1.0f, 1.0f),
        FREE(hyxOSG::createAxes, (hyx::RigidBody*, hyx::AffineMatrix4x4, osg::Group*, float, float), 1.0f, 1.0f),
        FREE(hyxOSG::createAxes, (hyx::AffineMatrix4x4, osg::Group*, float, float), 1.0f, 1.0f),
        FREE(hyxOSG::createAxes, (hyx::Constraint*, osg::Group*, float, float), 1.0f, 1.0f)),
    FUNCTION(createTrimesh, FREE(hyxOSG::createTrimesh, (osg::Node*))),
};

} // namespace

ROWS(shapes_rows);
