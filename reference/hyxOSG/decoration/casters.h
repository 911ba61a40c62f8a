// What throws shadows in a scene.
#pragma once

#include <osg/BoundingBox>
#include <osg/ComputeBoundsVisitor>
#include <osg/Matrixd>

#include <vector>

namespace hyxOSG::decorator {

/// A mesh that throws shadows.
struct Caster {
    osg::BoundingBox box; ///< in its own coordinates
    osg::Matrixd toScene;
};

/// Gathers the meshes below a node that throw shadows, and their bounds.
class Casters : public osg::ComputeBoundsVisitor {
public:
    Casters();

    void apply(osg::Drawable& drawable) override;

    std::vector<Caster> const& all() const { return m_all; }

private:
    std::vector<Caster> m_all;
};

} // namespace hyxOSG::decorator
