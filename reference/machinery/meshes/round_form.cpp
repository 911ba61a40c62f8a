// Chooses the fineness of round shapes when they are culled.
#include "reference/machinery/meshes/round_form.h"

#include <osgUtil/CullVisitor>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace hyxOSG {
namespace {

constexpr std::array<unsigned int, 8> finenesses{8, 10, 12, 16, 24, 32, 48, 64};
constexpr double standardSegments = 24; ///< of detail 1
constexpr double outlineError = 0.2;    ///< pixels

int askedDetails = 0;

/// Whether a node above draws edges alone: those that one sees are to be those of the detail asked for.
bool drawsEdges(osg::NodePath const& path) {
    return std::any_of(path.begin(), path.end(), [](osg::Node const* node) {
        osg::StateSet const* state = node->getStateSet();
        return state && state->getAttribute(osg::StateAttribute::POLYGONMODE);
    });
}

/// The radius in pixels where the shape is nearest to the camera; infinite around and behind it. Rows of the matrix are
/// the axes of the shape, whose radius is along x and z.
double radiusInPixels(osg::BoundingBox const& box, osgUtil::CullVisitor& visitor) {
    osg::Matrixd const& place = *visitor.getModelViewMatrix();
    osg::Matrixd const& projection = *visitor.getProjectionMatrix();
    osg::Viewport const* viewport = visitor.getViewport();
    auto const axis = [&](int row) { return osg::Vec3d(place(row, 0), place(row, 1), place(row, 2)); };
    double const reach = axis(0).length() + axis(1).length() * std::max(1.0f, box.yMax()) + axis(2).length();
    double const distance = projection(2, 3) * (place(3, 2) + reach) + projection(3, 3);
    if (!viewport || !(distance > 0))
        return std::numeric_limits<double>::infinity();
    double const scale =
        std::max(std::abs(projection(0, 0)) * viewport->width(), std::abs(projection(1, 1)) * viewport->height());
    return std::max(axis(0).length(), axis(2).length()) * 0.5 * scale / distance;
}

} // namespace

RoundForm::RoundForm(unsigned int segments, std::function<osg::ref_ptr<osg::Geometry>(unsigned int)> make)
    : m_segments(segments), m_make(std::move(make)) {
    addDrawable(m_make(segments));
}

osg::Geometry* RoundForm::meshFor(double pixels) {
    // A regular polygon stays within radius * (1 - cos(pi / n)) of its circle.
    double const needed = m_segments / standardSegments * osg::PI * std::sqrt(pixels / (2 * outlineError));
    auto const fine = std::find_if(finenesses.begin(), finenesses.end(), [=](unsigned int n) { return n >= needed; });
    unsigned int const segments = fine == finenesses.end() ? std::max(finenesses.back(), m_segments) : *fine;
    osg::Geometry* const asked = getDrawable(0)->asGeometry();
    if (segments == m_segments)
        return asked;
    osg::ref_ptr<osg::Geometry>& mesh = m_others[segments];
    if (!mesh)
        mesh = m_make(segments);
    if (mesh->getStateSet() != asked->getStateSet())
        mesh->setStateSet(asked->getStateSet());
    return mesh;
}

void RoundForm::traverse(osg::NodeVisitor& visitor) {
    osgUtil::CullVisitor* const cull = visitor.asCullVisitor();
    if (!cull || askedDetails > 0 || getNumDrawables() != 1 || drawsEdges(visitor.getNodePath()))
        osg::Geode::traverse(visitor);
    else
        meshFor(radiusInPixels(getDrawable(0)->getBoundingBox(), *cull))->accept(visitor);
}

void RoundForm::resizeGLObjectBuffers(unsigned int contexts) {
    osg::Geode::resizeGLObjectBuffers(contexts);
    for (auto const& [segments, mesh] : m_others)
        mesh->resizeGLObjectBuffers(contexts);
}

void RoundForm::releaseGLObjects(osg::State* state) const {
    osg::Geode::releaseGLObjects(state);
    for (auto const& [segments, mesh] : m_others)
        mesh->releaseGLObjects(state);
}

AskedDetail::AskedDetail() {
    ++askedDetails;
}

AskedDetail::~AskedDetail() {
    --askedDetails;
}

} // namespace hyxOSG
