// Finds the round forms of the scene and shoots rays at them.
#include "reference/hyxOSG/capture/exact_forms.h"

#include "platform/hyxCollide/compound.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/exact_ray.h"
#include "reference/machinery/meshes/round_form.h"

#include <algorithm>
#include <cmath>

namespace hyxOSG {
namespace {

using hyxCollide::Shape;

bool isRound(Shape const& shape) {
    auto const type = shape.getType();
    return type == Shape::SPHERE || type == Shape::CYLINDER || type == Shape::CAPSULE || type == Shape::CONE;
}

double radiusOf(Shape const& shape) {
    hyx::Vec3 lower;
    hyx::Vec3 upper;
    shape.getBound(lower, upper);
    return (upper - lower).length() / 2;
}

/// Whether a node still draws the forms that it was made with.
class FormFinder : public osg::NodeVisitor {
public:
    FormFinder() : osg::NodeVisitor(TRAVERSE_ACTIVE_CHILDREN) {}

    void apply(osg::Geode& geode) override { found |= dynamic_cast<RoundForm*>(&geode) != nullptr; }

    bool found = false;
};

bool drawsForms(GeometryNode& node) {
    FormFinder finder;
    for (unsigned int i = 0; i < node.getNumChildren(); ++i)
        node.getChild(i)->accept(finder);
    return finder.found;
}

/// Nothing for a place that also scales.
std::optional<btTransform> rigid(osg::Matrixd const& place) {
    btTransform result;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            result.getBasis()[row][column] = place(column, row);
    result.setOrigin(btVector3(place(3, 0), place(3, 1), place(3, 2)));
    btMatrix3x3 const square = result.getBasis() * result.getBasis().transpose();
    for (int i = 0; i < 3; ++i)
        if (std::abs(square[i][i] - 1) > 1e-6)
            return std::nullopt;
    return result;
}

} // namespace

void ExactForms::add(GeometryNode& node, osg::Matrixd const& toEye, osg::Matrixd const& motion,
                     std::uint32_t identity) {
    hyxCollide::Geometry* const geometry = node.getGeometry();
    auto const place = rigid(toEye);
    if (!geometry || !place || !drawsForms(node)) {
        m_mixed.insert(identity);
        return;
    }
    Shape& shape = *geometry->getShape();
    if (shape.getType() != Shape::COMPOUND) {
        add({&shape, *place, motion}, identity);
        return;
    }
    auto const& whole = static_cast<hyxCollide::Compound const&>(shape);
    for (hyx::UInt i = 0; i < whole.getNumShapes(); ++i)
        add({whole.getShape(i), *place * hyx::toBullet(whole.getLocalTransform(i)), motion}, identity);
}

void ExactForms::add(Form const& form, std::uint32_t identity) {
    if (isRound(*form.shape))
        m_forms[identity].push_back(form);
    else
        m_mixed.insert(identity);
}

std::optional<ExactForms::Surface> ExactForms::meet(std::uint32_t identity, osg::Vec2d const& through,
                                                    double far) const {
    btVector3 const way(through.x(), through.y(), -1);
    std::optional<Surface> nearest;
    for (Form const& form : m_forms.at(identity)) {
        btVector3 const from = form.toEye.invXform(btVector3(0, 0, 0));
        auto const entry = hyxCollide::castExactRay(*form.shape, from, form.toEye.invXform(way * far));
        if (!entry || (nearest && entry->fraction * far >= nearest->depth))
            continue;
        double const depth = entry->fraction * far;
        btVector3 const normal = form.toEye.getBasis() * entry->normal;
        nearest = Surface{depth, normal, -normal.dot(way) / way.length(), radiusOf(*form.shape),
                          osg::Vec3d(through.x(), through.y(), -1) * depth * form.motion};
    }
    return nearest;
}

} // namespace hyxOSG
