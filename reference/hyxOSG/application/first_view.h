// The view that an application begins with when nobody has chosen one.
#pragma once

#include "reference/hyxOSG/application/scene_graph.h"

#include <osg/BoundingBox>
#include <osg/Callback>
#include <osg/Vec3d>

#include <functional>

namespace hyxOSG {

/// Once there is something to see, and before it is drawn, says what the first picture is to show. Belongs to the root
/// of what is drawn, for only after an update all things are where they will be drawn.
class FirstView : public osg::NodeCallback {
public:
    /// `show` gets what is to be seen. The graph must live until `finish`.
    FirstView(SceneGraph const& graph, std::function<void(osg::BoundingBox const&)> show)
        : m_graph(graph), m_show(std::move(show)) {}

    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override;

    /// Nothing more is asked for: the application ends.
    void finish() { m_show = nullptr; }

private:
    SceneGraph const& m_graph;
    std::function<void(osg::BoundingBox const&)> m_show;
};

/// How far from the middle of `box` an eye in the direction `backward` sees all of it. The slopes are those of the
/// edges of the picture, as tangents.
double distanceToSee(osg::BoundingBox const& box, osg::Vec3d const& backward, double slopeWide, double slopeHigh);

} // namespace hyxOSG
