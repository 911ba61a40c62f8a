// How a model looks: visuals, colours, lights and cameras.
#pragma once

#include "platform/hyx/values/vec4f.h"
#include "platform/hyxtavlang/model_shapes.h"

#include <osg/Math>

#include <array>

namespace tavlang::Visuals {

/// A colour, and where there is one a picture on the surface.
class Material : public Core::Object {
public:
    std::string getType() const override { return "Visuals.Material"; }

    Core::Properties getProperties() const override;

    hyx::Vec4f color{1, 1, 1, 1};
    std::string texture; ///< the whole path of a picture
};

/// A shape that is seen, at a place of its body; the shape is its child.
class Visual : public Core::Object {
public:
    std::string getType() const override { return "Visuals.Visual"; }

    Core::Properties getProperties() const override;

    std::shared_ptr<Physics3D::Geometry> geometry; ///< its transform is the visual's place in the body
    std::shared_ptr<Material> material;            ///< null: as the mesh's file has it
};

/// A light; it shines along its direction, from its place unless that is far away.
class Light : public Core::Object {
public:
    std::string getType() const override { return "Visuals.Light"; }

    Core::Properties getProperties() const override;

    std::shared_ptr<Physics3D::Body> body; ///< null is the world
    hyx::Vec3 position;                    ///< in the body
    hyx::Vec3 direction{0, 0, -1};         ///< in the body
    hyx::Vec4f color{1, 1, 1, 1};
    hyx::Vec4f specular{0, 0, 0, 1}; ///< of highlights
    bool directional = false;
    double spotAngle = osg::PI; ///< radians from the middle of the beam to its edge; pi shines in all directions
    double spotExponent = 0;    ///< how much brighter the middle of a beam is
    bool castsShadows = false;
    /// The brightness at a distance d in metres is divided by a + b d + c d2.
    std::array<double, 3> attenuation{1, 0, 0};
};

/// A view from a place of a body, along its negative Z axis, Y up.
class Camera : public Core::Object {
public:
    std::string getType() const override { return "Visuals.Camera"; }

    Core::Properties getProperties() const override;

    std::shared_ptr<Physics3D::Body> body; ///< null is the world
    hyx::AffineMatrix4x4 transform;
    double verticalAngle = 0; ///< radians
    unsigned width = 0;       ///< pixels; 0 where the file gives none
    unsigned height = 0;
    double near = 0.05; ///< nothing nearer is seen, metres
    double far = 1000;
};

} // namespace tavlang::Visuals
