// What throws shadows in a scene.
#pragma once

#include <osg/BoundingBox>
#include <osg/ComputeBoundsVisitor>
#include <osg/Geometry>
#include <osg/Matrixd>

#include <cstdint>
#include <optional>
#include <vector>

namespace hyxOSG::decorator {

/// A mesh that throws shadows.
struct Caster {
    osg::BoundingBox box; ///< in its own coordinates
    osg::Matrixd toScene;
};

/// Gathers the meshes below nodes that throw shadows, their bounds, and what a map of them depends on.
class Casters : public osg::ComputeBoundsVisitor {
public:
    Casters();

    using osg::ComputeBoundsVisitor::apply;
    void apply(osg::Node& node) override;
    void apply(osg::Transform& transform) override;
    void apply(osg::Drawable& drawable) override;

    std::vector<Caster> const& all() const { return m_all; }

    /// The corners of the bounds of each caster, in the scene.
    std::vector<osg::Vec3d> corners() const;

    /// A number that is another one when places, meshes or the state that shapes them are; none where these may change
    /// without a sign, as where programs place vertices and callbacks choose what is drawn.
    std::optional<std::uint64_t> stamp() const;

private:
    void note(std::uint64_t value);
    void note(osg::Node const& node);
    void note(osg::StateSet const& state);
    void note(osg::Geometry const& geometry);

    std::vector<Caster> m_all;
    std::uint64_t m_stamp = 0;
    bool m_steady = true;
};

} // namespace hyxOSG::decorator
