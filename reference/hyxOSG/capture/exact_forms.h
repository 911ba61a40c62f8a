// Round shapes that cameras see exactly, though they are drawn in facets.
#pragma once

#include "platform/hyxCollide/shape.h"

#include <LinearMath/btTransform.h>
#include <osg/Matrixd>
#include <osg/Vec2d>
#include <osg/Vec3d>

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace hyxOSG {

class GeometryNode;

/// The balls, cylinders, capsules and cones before a camera, as rays meet them. What scripts put in place of a
/// geometry's own visual is not among them.
class ExactForms {
public:
    struct Surface {
        double depth = 0;          ///< metres along the view
        btVector3 normal{0, 0, 0}; ///< in eye coordinates: y up, the view along -z
        double cosine = 0;         ///< between normal and ray
        double radius = 0;         ///< of a ball around the form, metres
        osg::Vec3d before;         ///< where the point was at the last frame, in the eye coordinates of then
    };

    void clear() {
        m_forms.clear();
        m_mixed.clear();
    }

    /// What `node` draws of the geometry of a body; `toEye` leads from the node to eye coordinates, `motion` from
    /// there to those of the last frame.
    void add(GeometryNode& node, osg::Matrixd const& toEye, osg::Matrixd const& motion, std::uint32_t identity);

    bool has(std::uint32_t identity) const { return identity != 0 && m_forms.contains(identity); }

    /// Whether nothing else is drawn of the body.
    bool isWhole(std::uint32_t identity) const { return !m_mixed.contains(identity); }

    bool empty() const { return m_forms.empty(); }

    /// What a ray through (x, y, -1) meets first of a body's forms before `far`.
    std::optional<Surface> meet(std::uint32_t identity, osg::Vec2d const& through, double far) const;

private:
    struct Form {
        hyx::ref_ptr<hyxCollide::Shape> shape;
        btTransform toEye;
        osg::Matrixd motion;
    };

    void add(Form const& form, std::uint32_t identity);

    std::unordered_map<std::uint32_t, std::vector<Form>> m_forms;
    std::unordered_set<std::uint32_t> m_mixed;
};

} // namespace hyxOSG
