// The node of what has no end, of which only a part is drawn.
#pragma once

#include <osg/ComputeBoundsVisitor>
#include <osg/Geode>

namespace hyxOSG {

/// Its extent says nothing of how large a scene is.
class EndlessGeode : public osg::Geode {};

/// The box around everything but endless nodes.
class ComputeContentBounds : public osg::ComputeBoundsVisitor {
public:
    void apply(osg::Geode& geode) override {
        if (!dynamic_cast<EndlessGeode const*>(&geode))
            traverse(geode);
    }
};

} // namespace hyxOSG
