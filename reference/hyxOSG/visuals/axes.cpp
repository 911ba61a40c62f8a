// Draws coordinate axes.

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/constraint.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxOSG/visuals/grid_axes.h"
#include "platform/osg/attachment.h"
#include "reference/hyxOSG/visuals/follow_callback.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/meshes/shape_meshes.h"
#include "reference/machinery/shading/material_colors.h"
#include "reference/machinery/shading/node_state.h"

#include <osg/Geode>
#include <osg/Material>

#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

constexpr float shaftRadius = 0.015f, tipRadius = 0.04f, tipLength = 0.16f; // of an axis of 1 m

void checkSizes(float scale, float length) {
    for (float const size : {scale, length})
        if (!(size > 0) || !std::isfinite(size))
            throw std::invalid_argument("the scale and length of axes must be positive numbers");
}

/// A cone mesh between two heights on the y axis.
osg::ref_ptr<osg::Node> part(float topRatio, float radius, float from, float to) {
    osg::ref_ptr<osg::Geode> const geode = new osg::Geode;
    geode->addDrawable(unitConeMesh(12, topRatio));
    osg::ref_ptr<osg::MatrixTransform> const place = new osg::MatrixTransform(
        osg::Matrix::scale(radius, 0.5f * (to - from), radius) * osg::Matrix::translate(0, 0.5f * (from + to), 0));
    place->addChild(geode);
    return place;
}

osg::ref_ptr<osg::Node> arrow(osg::Vec3 const& direction, float scale, float length) {
    float const tipStart = (1 - tipLength) * length;
    osg::ref_ptr<osg::MatrixTransform> const axis =
        new osg::MatrixTransform(osg::Matrix::rotate(osg::Vec3(0, 1, 0), direction));
    axis->addChild(part(1, scale * shaftRadius, 0, tipStart));
    axis->addChild(part(0, scale * tipRadius, tipStart, length));
    osg::Material& material = writableMaterial(*axis);
    osg::Vec4 const color(direction, 1);
    setDiffuse(material, color * 0.6f);
    setAmbient(material, color * 0.2f);
    material.setEmission(osg::Material::FRONT_AND_BACK, color * 0.4f); // readable from the dark side, too
    return axis;
}

void addArrows(osg::MatrixTransform& place, float scale, float length) {
    for (osg::Vec3 const& direction : {osg::Vec3(1, 0, 0), osg::Vec3(0, 1, 0), osg::Vec3(0, 0, 1)})
        place.addChild(arrow(direction, scale, length));
    place.getOrCreateStateSet()->setMode(GL_NORMALIZE, osg::StateAttribute::ON);
}

osg::MatrixTransform* followingAxes(osg::Group& root, float scale, float length, std::function<osg::Matrixd()> place) {
    osg::ref_ptr<osg::MatrixTransform> const axes = following(std::move(place));
    addArrows(*axes, scale, length);
    osg::attach(root, *axes);
    return axes;
}

template <class Object>
osg::MatrixTransform* axesOn(Object* object, hyx::AffineMatrix4x4 const& local, osg::Group* root, float scale,
                             float length) {
    checkSizes(scale, length);
    if (!object || !root)
        return nullptr;
    return followingAxes(*root, scale, length,
                         [kept = hyx::ref_ptr<Object>(object), local] { return toOsg(local * kept->getTransform()); });
}

template <class Object>
osg::MatrixTransform* axesOn(Object* object, hyx::Frame* frame, osg::Group* root, float scale, float length) {
    checkSizes(scale, length);
    if (!object || !root)
        return nullptr;
    if (!frame)
        return axesOn(object, hyx::AffineMatrix4x4(), root, scale, length);
    return followingAxes(*root, scale, length,
                         [kept = hyx::ref_ptr<hyx::Frame>(frame)] { return toOsg(kept->getMatrix()); });
}

} // namespace

osg::MatrixTransform* createAxes(float scale, float length) {
    checkSizes(scale, length);
    osg::ref_ptr<osg::MatrixTransform> axes = new osg::MatrixTransform;
    addArrows(*axes, scale, length);
    return axes.release();
}

osg::MatrixTransform* createAxes(hyxCollide::Geometry* geometry, hyx::Frame* frame, osg::Group* root, float scale,
                                 float length) {
    return axesOn(geometry, frame, root, scale, length);
}

osg::MatrixTransform* createAxes(hyxCollide::Geometry* geometry, hyx::AffineMatrix4x4 localTransform, osg::Group* root,
                                 float scale, float length) {
    return axesOn(geometry, localTransform, root, scale, length);
}

osg::MatrixTransform* createAxes(hyx::RigidBody* body, hyx::Frame* frame, osg::Group* root, float scale, float length) {
    return axesOn(body, frame, root, scale, length);
}

osg::MatrixTransform* createAxes(hyx::RigidBody* body, hyx::AffineMatrix4x4 localTransform, osg::Group* root,
                                 float scale, float length) {
    return axesOn(body, localTransform, root, scale, length);
}

osg::MatrixTransform* createAxes(hyx::AffineMatrix4x4 transform, osg::Group* root, float scale, float length) {
    checkSizes(scale, length);
    if (!root)
        return nullptr;
    osg::MatrixTransform* const axes = createAxes(scale, length);
    axes->setMatrix(toOsg(transform));
    osg::attach(*root, *axes);
    return axes;
}

bool createAxes(hyx::Constraint* constraint, osg::Group* root, float scale, float length) {
    checkSizes(scale, length);
    if (!constraint || !root)
        return false;
    for (hyx::UInt side = 0; side < 2; ++side)
        if (constraint->getAttachmentFrame(side))
            followingAxes(*root, scale, length, [kept = hyx::ref_ptr<hyx::Constraint>(constraint), side] {
                return toOsg(kept->getAttachmentTransform(side));
            });
    return constraint->getAttachmentFrame(0) || constraint->getAttachmentFrame(1);
}

} // namespace hyxOSG
