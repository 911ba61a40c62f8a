// Makes balls, cylinders and lines.
#include "platform/hyxOSG/visuals/shapes.h"

#include "platform/hyxCollide/cylinder.h"
#include "platform/hyxCollide/sphere.h"
#include "platform/hyxOSG/visuals/materials.h"
#include "reference/hyxOSG/visuals/shape_nodes.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/meshes/line_meshes.h"
#include "reference/machinery/meshes/shape_meshes.h"

#include <osg/Geode>
#include <osg/MatrixTransform>

#include <cmath>
#include <initializer_list>
#include <stdexcept>

namespace hyxOSG {
namespace {

void checkSize(double value, char const* name) {
    if (!(value > 0) || !std::isfinite(value))
        throw std::invalid_argument(std::string("the ") + name + " must be a positive number");
}

osg::ref_ptr<osg::Geode> geodeWith(osg::Drawable* drawable) {
    osg::ref_ptr<osg::Geode> const geode = new osg::Geode;
    geode->addDrawable(drawable);
    return geode;
}

} // namespace

osg::Geode* createSphere(hyx::Vec3 const& center, hyx::Vec4 const& color, float radius) {
    checkSize(radius, "radius");
    osg::ref_ptr<osg::Geometry> const mesh = unitSphereMesh(segmentsForDetail(1.5f));
    for (osg::Vec3& position : static_cast<osg::Vec3Array&>(*mesh->getVertexArray()))
        position = position * radius + osg::Vec3(toOsg(center));
    osg::ref_ptr<osg::Geode> sphere = geodeWith(mesh);
    setDiffuseColor(sphere, hyx::Vec4f(color));
    return sphere.release();
}

osg::MatrixTransform* createCylinder(hyx::AffineMatrix4x4 const& transform, hyx::Vec4 const& color, float radius,
                                     float height) {
    checkSize(radius, "radius");
    checkSize(height, "height");
    hyx::ref_ptr<hyxCollide::Cylinder> const shape = new hyxCollide::Cylinder(radius, height);
    osg::ref_ptr<osg::MatrixTransform> cylinder = new osg::MatrixTransform(toOsg(transform));
    cylinder->addChild(createShapeNode(*shape, 1.5f));
    setDiffuseColor(cylinder, hyx::Vec4f(color));
    return cylinder.release();
}

osg::Geode* createLine(hyx::Vec3 const& start, hyx::Vec3 const& end, hyx::Vec4 const& color, float width) {
    osg::ref_ptr<osg::Vec3Array> const points = new osg::Vec3Array;
    points->push_back(toOsg(start));
    points->push_back(toOsg(end));
    return geodeWith(lineMesh(points, GL_LINES, toOsg(requireColor(hyx::Vec4f(color))), width)).release();
}

osg::Geode* createPolyline(hyx::Vec3Vector const& points, hyx::Vec4 const& color, float width) {
    osg::ref_ptr<osg::Vec3Array> const corners = new osg::Vec3Array;
    for (hyx::Vec3 const& point : points)
        corners->push_back(toOsg(point));
    return geodeWith(lineMesh(corners, GL_LINE_STRIP, toOsg(requireColor(hyx::Vec4f(color))), width)).release();
}

osg::Geode* createCubeLines(hyx::Vec3 const& minCorner, hyx::Vec3 const& maxCorner, hyxRender::Color const& color,
                            double width) {
    osg::Vec3d const ends[2] = {toOsg(minCorner), toOsg(maxCorner)};
    auto const corner = [&ends](int bits) {
        return osg::Vec3(ends[bits & 1].x(), ends[bits >> 1 & 1].y(), ends[bits >> 2 & 1].z());
    };
    osg::ref_ptr<osg::Vec3Array> const points = new osg::Vec3Array;
    for (int from = 0; from < 8; ++from)
        for (int const axis : {1, 2, 4})
            if (!(from & axis)) {
                points->push_back(corner(from));
                points->push_back(corner(from | axis));
            }
    return geodeWith(lineMesh(points, GL_LINES, {color.r, color.g, color.b, color.a}, static_cast<float>(width)))
        .release();
}

} // namespace hyxOSG
