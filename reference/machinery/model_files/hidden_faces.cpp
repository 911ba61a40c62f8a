// Goes through a model for meshes whose back faces are hidden.
#include "reference/machinery/model_files/hidden_faces.h"

#include "reference/machinery/meshes/closed_mesh.h"
#include "reference/machinery/meshes/facing_elements.h"
#include "reference/machinery/meshes/triangle_order.h"

#include <osg/Geode>
#include <osg/NodeVisitor>
#include <osg/Transform>

namespace hyxOSG {
namespace {

class HiddenFaces : public osg::NodeVisitor {
public:
    HiddenFaces() : osg::NodeVisitor(TRAVERSE_ALL_CHILDREN) {}

    void apply(osg::Node& node) override {
        if (shows(node.getStateSet()))
            return;
        traverse(node);
    }

    void apply(osg::Transform& transform) override {
        osg::Matrix matrix;
        transform.computeLocalToWorldMatrix(matrix, this);
        osg::Vec3d const x(matrix(0, 0), matrix(0, 1), matrix(0, 2)), y(matrix(1, 0), matrix(1, 1), matrix(1, 2)),
            z(matrix(2, 0), matrix(2, 1), matrix(2, 2));
        if ((x ^ y) * z > 0) // a mirror turns faces around
            apply(static_cast<osg::Node&>(transform));
    }

    void apply(osg::Drawable& drawable) override {
        osg::Geometry* const mesh = drawable.asGeometry();
        if (!mesh || mesh->getStateSet() || !isClosedOutwards(*mesh))
            return;
        mesh->setStateSet(frontFacesOnly());
        orderTriangles(*mesh); // nothing shows through: in any order it looks the same
        drawFacingPatches(*mesh);
    }

private:
    /// Whether something behind shows through.
    static bool shows(osg::StateSet const* state) {
        return state && (state->getRenderingHint() == osg::StateSet::TRANSPARENT_BIN ||
                         (state->getMode(GL_BLEND) & osg::StateAttribute::ON));
    }
};

} // namespace

void leaveOutHiddenFaces(osg::Node& model) {
    HiddenFaces visitor;
    model.accept(visitor);
}

} // namespace hyxOSG
