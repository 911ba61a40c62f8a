// The base of all collision shapes.
#pragma once

#include "platform/hyx/objects/object.h"
#include "platform/hyx/values/range_real.h"
#include "platform/hyx/values/vec3.h"

#include <memory>

namespace hyxCollide {

/// A solid or surface in its own coordinates. One shape may serve several geometries; changing it changes all of them.
class Shape : public hyx::Object {
public:
    enum Type { BOX = 1, SPHERE, CYLINDER, CAPSULE, CONE, PLANE, TRIMESH, HEIGHT_FIELD, COMPOUND };

    /// Which kind of shape it is.
    virtual Type getType() const = 0;
    /// Cubic metres; 0 for planes, height fields and open meshes.
    virtual hyx::Real getVolume() const = 0;
    /// The corners of the box around the shape, along its own axes. Planes reach to 1e6 m.
    virtual void getBound(hyx::Vec3& lower, hyx::Vec3& upper) const = 0;

    /// Counts up with every change, so that a copy of the shape's data can tell that it is out of date.
    hyx::UInt getRevision() const { return m_revision; }

    struct Implementation;

    Implementation& implementation() const { return *m_implementation; }

protected:
    Shape();
    ~Shape() override;
    /// Tells every geometry and compound that uses this shape that it changed; `rebuild` is false when what was built
    /// from it may stay.
    void changed(bool rebuild = true);

private:
    hyx::UInt m_revision = 0;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxCollide
