// How a model looks: visuals, colours, lights and cameras.
#pragma once

#include "platform/hyx/values/vec4f.h"
#include "platform/hyxtavlang/model_shapes.h"

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

class Light : public Core::Object {
public:
    std::string getType() const override { return "Visuals.Light"; }

    Core::Properties getProperties() const override;

    std::shared_ptr<Physics3D::Body> body; ///< null is the world
    hyx::Vec3 position;
    hyx::Vec3 direction{0, 0, -1};
    hyx::Vec4f color{1, 1, 1, 1};
    bool directional = false;
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
