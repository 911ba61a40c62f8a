// The groups that an application draws.
#pragma once

#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyxOSG/decoration/scene_decorator.h"

#include <osg/ComputeBoundsVisitor>
#include <osg/Group>
#include <osg/MatrixTransform>
#include <osg/Switch>

#include <utility>
#include <vector>

namespace hyxOSG {

/// What of an application's frame is drawn.
enum class Pass {
    EVERYTHING,
    TARGETS, ///< render targets alone, while nobody sees the view
    VIEW,    ///< the view alone, for the targets of this frame are drawn
};

/// The root of all that is drawn; its children that are cameras are the render targets.
class DrawnRoot : public osg::Group {
public:
    void traverse(osg::NodeVisitor& visitor) override;

    Pass pass = Pass::EVERYTHING; ///< of the culls to come
};

/// root
///   decorator            background, lights, shadows, text
///     switch             shows or hides the scene
///       transform        between world and picture
///         scene root     a script's own nodes; holds the group that the present scene built
///         library root   visuals that the library makes
///         markers        grid and axes
///   debug transform      lines of the debug rendering, unlit
class SceneGraph {
public:
    SceneGraph(int width, int height);

    DrawnRoot* root() const { return m_root; }

    SceneDecorator* decorator() const { return m_decorator; }

    osg::Switch* sceneSwitch() const { return m_switch; }

    osg::Group* sceneRoot() const { return m_sceneRoot; }

    osg::Group* libraryRoot() const { return m_libraryRoot; }

    osg::Group* markers() const { return m_markers; }

    osg::Group* debugRoot() const { return m_debugTransform; }

    /// The group that the present scene built; null for none.
    osg::Group* scene() const { return m_scene; }

    void setScene(osg::Group* scene);

    using Nodes = std::vector<osg::ref_ptr<osg::Node>>;

    /// What a scene put here.
    struct Content {
        osg::ref_ptr<osg::Group> scene;
        Nodes sceneNodes;
        Nodes libraryNodes;
    };

    Content content() const;
    void setContent(Content const& content);

    static Nodes childrenOf(osg::Group const& group);
    static void setChildren(osg::Group& group, Nodes const& nodes);

    /// Takes away all that scenes put here; decoration and markers stay.
    void clear();

    void setTransform(hyx::AffineMatrix4x4 const& transform);
    hyx::AffineMatrix4x4 transform() const;
    /// Debug rendering is drawn through the transform and the inverse of `matrix`.
    void setDebugInverse(hyx::AffineMatrix4x4 const& matrix);

    /// The two transforms: that of the scene, and what debug rendering is drawn through before it.
    std::pair<osg::Matrixd, osg::Matrixd> frames() const { return {m_transform->getMatrix(), m_debugInverse}; }

    void setFrames(std::pair<osg::Matrixd, osg::Matrixd> const& frames);

    /// The sphere around what scenes and the library draw; planes count only when there is nothing else, and with
    /// nothing at all it is invalid.
    osg::BoundingSphere sceneBound() const;

    /// Takes `visitor` through what scenes and the library draw, as it stands in the picture.
    osg::BoundingSphere boundBy(osg::ComputeBoundsVisitor& visitor) const;

private:
    void updateDebugTransform();

    osg::ref_ptr<DrawnRoot> m_root;
    osg::ref_ptr<SceneDecorator> m_decorator;
    osg::ref_ptr<osg::Switch> m_switch;
    osg::ref_ptr<osg::MatrixTransform> m_transform;
    osg::ref_ptr<osg::Group> m_sceneRoot;
    osg::ref_ptr<osg::Group> m_libraryRoot;
    osg::ref_ptr<osg::Group> m_markers;
    osg::ref_ptr<osg::MatrixTransform> m_debugTransform;
    osg::ref_ptr<osg::Group> m_scene;
    osg::Matrixd m_debugInverse;
};

} // namespace hyxOSG
