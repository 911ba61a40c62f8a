// Fits the view from a light around what must get shadows.
#include "reference/hyxOSG/decoration/light_view.h"

#include <osg/Polytope>
#include <osgShadow/ConvexPolyhedron>

#include <algorithm>
#include <cmath>
#include <limits>

namespace hyxOSG::decorator {
namespace {

// A point light cannot map more than this to each side of its axis.
constexpr double widestSlope = 4.0;

struct Range {
    double low = std::numeric_limits<double>::max();
    double high = std::numeric_limits<double>::lowest();

    void add(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }

    void intersect(Range const& other) {
        low = std::max(low, other.low);
        high = std::min(high, other.high);
    }

    void grow(double margin) {
        low -= margin;
        high += margin;
    }

    bool empty() const { return !(low < high); }

    double size() const { return high - low; }
};

struct Extent {
    Range x, y, depth;
};

// Points behind a point light, or at it, take the whole width.
Extent measure(std::vector<osg::Vec3d> const& points, osg::Matrixd const& view, bool directional, double nearest) {
    Extent extent;
    for (osg::Vec3d const& point : points) {
        osg::Vec3d const seen = point * view;
        double const depth = -seen.z();
        extent.depth.add(depth);
        if (directional) {
            extent.x.add(seen.x());
            extent.y.add(seen.y());
        } else if (depth < nearest) {
            for (double slope : {-widestSlope, widestSlope}) {
                extent.x.add(slope);
                extent.y.add(slope);
            }
        } else {
            extent.x.add(std::clamp(seen.x() / depth, -widestSlope, widestSlope));
            extent.y.add(std::clamp(seen.y() / depth, -widestSlope, widestSlope));
        }
    }
    return extent;
}

// Grows a range to a step of its size and moves it by whole texels only, so that edges do not crawl as the camera
// moves.
void settle(Range& range, unsigned int mapSize) {
    double const step = std::pow(2.0, std::ceil(std::log2(range.size()) * 4.0) / 4.0);
    double const texel = step / mapSize;
    double const middle = std::floor((range.low + range.high) / 2 / texel) * texel;
    range.low = middle - step / 2 - texel;
    range.high = middle + step / 2 + texel;
}

void widen(Range& range, unsigned int mapSize) {
    range.grow(2 * range.size() / mapSize);
}

osg::Vec3d anyNormalTo(osg::Vec3d const& direction) {
    osg::Vec3d const axis = std::abs(direction.z()) < 0.9 ? osg::Vec3d(0, 0, 1) : osg::Vec3d(0, 1, 0);
    osg::Vec3d normal = axis - direction * (axis * direction);
    normal.normalize();
    return normal;
}

osg::Vec3d upFor(LightViewNeeds const& needs, osg::Vec3d const& direction) {
    osg::Vec3d up = needs.cameraDirection - direction * (needs.cameraDirection * direction);
    if (!needs.alignWithCamera || up.normalize() < 1e-3)
        return anyNormalTo(direction);
    return up;
}

} // namespace

osg::Matrixd LightView::textureMatrix() const {
    return view * projection * osg::Matrixd::translate(1, 1, 1) * osg::Matrixd::scale(0.5, 0.5, 0.5);
}

std::optional<LightView> fitLightView(LightViewNeeds const& needs) {
    if (needs.casterCorners.empty() || needs.visible.empty())
        return std::nullopt;
    bool const directional = needs.light.w() == 0.0;
    osg::Vec3d const center = needs.casters.center();
    double const radius = std::max<double>(needs.casters.radius(), 1e-3);
    osg::Vec3d toLight(needs.light.x(), needs.light.y(), needs.light.z());
    if (!directional)
        toLight = toLight / needs.light.w() - center;
    double const distance = toLight.normalize();
    if (distance == 0.0)
        toLight.set(0, 0, 1);
    osg::Vec3d const eye = center + toLight * (directional ? 2 * radius : distance);

    LightView fit;
    fit.view.makeLookAt(eye, eye - toLight, upFor(needs, -toLight));
    double const nearest = 0.01 * radius;
    Extent extent = measure(needs.casterCorners, fit.view, directional, nearest);
    if (extent.depth.high <= nearest)
        return std::nullopt;
    double const margin = 0.01 * radius;
    double const farDepth = extent.depth.high + margin;
    double const nearDepth = directional ? extent.depth.low - margin : std::max(extent.depth.low - margin, nearest);
    // Rays to the rim of the lamp go aside of those to its middle by this, between the first depth and the last: in
    // metres, or in slopes from a point. Either is in proportion to differences of the depths that a map keeps.
    double const depths = directional ? farDepth - nearDepth : distance / nearDepth - distance / farDepth;
    double const aside = needs.lampSpread / 2 * depths;

    Extent seen = measure(needs.visible, fit.view, directional, nearest);
    seen.x.grow(aside);
    seen.y.grow(aside);
    extent.x.intersect(seen.x);
    extent.y.intersect(seen.y);
    if (extent.x.empty() || extent.y.empty())
        return std::nullopt;
    for (Range* range : {&extent.x, &extent.y})
        if (needs.alignWithCamera)
            widen(*range, needs.mapSize);
        else
            settle(*range, needs.mapSize);

    double const texel = std::max(extent.x.size(), extent.y.size()) / needs.mapSize;
    fit.penumbra.set(aside / extent.x.size(), aside / extent.y.size());
    if (directional) {
        fit.texelSize = texel;
        fit.projection.makeOrtho(extent.x.low, extent.x.high, extent.y.low, extent.y.high, nearDepth, farDepth);
    } else {
        fit.texelSize = texel * farDepth;
        fit.projection.makeFrustum(extent.x.low * nearDepth, extent.x.high * nearDepth, extent.y.low * nearDepth,
                                   extent.y.high * nearDepth, nearDepth, farDepth);
    }
    return fit;
}

std::vector<osg::Vec3d> visibleCorners(osg::BoundingBox const& box, osg::Matrixd const& view,
                                       osg::Matrixd const& projection, double nearest, double farthest) {
    if (!box.valid())
        return {};
    osg::Polytope frustum;
    frustum.setToUnitFrustum(false, false);
    frustum.transformProvidingInverse(view * projection);
    osg::Polytope range;
    range.add(osg::Plane(0, 0, -1, -nearest));
    if (farthest < std::numeric_limits<double>::max())
        range.add(osg::Plane(0, 0, 1, farthest));
    range.transformProvidingInverse(view);

    osgShadow::ConvexPolyhedron part;
    part.setToBoundingBox(box);
    part.cut(frustum);
    part.cut(range);
    std::vector<osg::Vec3d> points;
    part.getPoints(points);
    return points;
}

} // namespace hyxOSG::decorator
