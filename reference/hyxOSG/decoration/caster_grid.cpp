// Tells for each cell of a grid how near casters are.
#include "reference/hyxOSG/decoration/caster_grid.h"

#include "reference/machinery/shading/shading_program.h"

#include <osg/Vec2d>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace hyxOSG::decorator {
namespace {

constexpr unsigned int gridSide = 64; // in cells
constexpr double drawnAside = 4;      // texels that a caster may be drawn aside of its bounds: wide lines, rounding
constexpr float usualDepth = 1.5;     // few receivers are deeper

/// The places between two lines.
struct Slab {
    osg::Vec2d normal;
    double low = std::numeric_limits<double>::max();
    double high = std::numeric_limits<double>::lowest();

    double distance(osg::Vec2d const& place) const {
        double const along = normal * place;
        return std::max(along - high, low - along);
    }
};

/// Where a caster lies in the map, as what several slabs share. Lengths are in half widths of the lamp's search at a
/// depth of 1, so that the distance of a place is the depth from which on its search meets the caster.
struct Shade {
    std::array<Slab, 5> slabs; ///< the first ones along x and y, then along the sides of the box
    double depth = 0;          ///< the least one

    double distance(osg::Vec2d const& place) const {
        double farthest = 0;
        for (Slab const& slab : slabs)
            farthest = std::max(farthest, slab.distance(place));
        return farthest;
    }
};

osg::Vec2d across(osg::Vec2d const& way) {
    osg::Vec2d normal(-way.y(), way.x());
    return normal.normalize() > 0 ? normal : osg::Vec2d(1, 0);
}

/// What a point light is beside of lies everywhere.
Shade everywhere() {
    Shade shade;
    for (Slab& slab : shade.slabs)
        std::swap(slab.low, slab.high);
    return shade;
}

/// \param scale from shares of the map
/// \param margin by which the shade is larger, in shares of the map
Shade shadeOf(Caster const& caster, osg::Matrixd const& sceneToMap, osg::Vec2d const& scale, double margin) {
    osg::Matrixd const toMap = caster.toScene * sceneToMap;
    std::array<osg::Vec2d, 8> corners;
    Shade shade;
    shade.depth = CASTER_GRID_DEPTH;
    for (unsigned int i = 0; i < corners.size(); ++i) {
        osg::Vec4d const place = osg::Vec4d(osg::Vec3d(caster.box.corner(i)), 1) * toMap;
        if (place.w() <= 0)
            return everywhere();
        corners[i].set(place.x() / place.w() * scale.x(), place.y() / place.w() * scale.y());
        shade.depth = std::min(shade.depth, place.z() / place.w());
    }
    std::array<osg::Vec2d, 5> const normals{osg::Vec2d(1, 0), osg::Vec2d(0, 1), across(corners[1] - corners[0]),
                                            across(corners[2] - corners[0]), across(corners[4] - corners[0])};
    for (unsigned int i = 0; i < normals.size(); ++i) {
        Slab& slab = shade.slabs[i];
        slab.normal = normals[i];
        for (osg::Vec2d const& corner : corners) {
            slab.low = std::min(slab.low, slab.normal * corner);
            slab.high = std::max(slab.high, slab.normal * corner);
        }
        double const more = margin * (std::abs(slab.normal.x()) * scale.x() + std::abs(slab.normal.y()) * scale.y());
        slab.low -= more;
        slab.high += more;
    }
    return shade;
}

/// The middles of the cells along one axis.
double middle(unsigned int cell, double scale) {
    return (cell + 0.5) / gridSide * scale;
}

/// The cells along one axis which the search of any depth that the grid knows may reach.
struct Cells {
    unsigned int begin, end;
};

Cells reachedCells(Slab const& slab, double scale) {
    auto const cell = [scale](double place) {
        return static_cast<unsigned int>(std::clamp(place / scale, 0.0, 1.0) * gridSide);
    };
    return {cell(slab.low - CASTER_GRID_DEPTH), std::min(cell(slab.high + CASTER_GRID_DEPTH) + 1, gridSide)};
}

/// What is known of a cell.
struct Nearest {
    float distance = CASTER_GRID_DEPTH; ///< of the nearest caster
    float depth = usualDepth;           ///< the least one of those that the search of a usual depth may meet

    void add(float casterDistance, float casterDepth) {
        distance = std::min(distance, casterDistance);
        if (casterDistance < usualDepth)
            depth = std::min(depth, casterDepth);
    }

    // A half shadow is as wide as the lamp looks from the caster, less than what is searched.
    float firstDepth() const { return std::max(distance, std::min(distance + depth, usualDepth)); }
};

} // namespace

CasterGrid::CasterGrid() {
    m_image->allocateImage(gridSide, gridSide, 1, GL_LUMINANCE, GL_UNSIGNED_BYTE);
    m_image->setDataVariance(osg::Object::DYNAMIC);
    m_texture->setInternalFormat(GL_LUMINANCE8);
    m_texture->setResizeNonPowerOfTwoHint(false);
    m_texture->setFilter(osg::Texture2D::MIN_FILTER, osg::Texture2D::NEAREST);
    m_texture->setFilter(osg::Texture2D::MAG_FILTER, osg::Texture2D::NEAREST);
    m_texture->setWrap(osg::Texture2D::WRAP_S, osg::Texture2D::CLAMP_TO_EDGE);
    m_texture->setWrap(osg::Texture2D::WRAP_T, osg::Texture2D::CLAMP_TO_EDGE);
}

void CasterGrid::fill(std::vector<Caster> const& casters, LightView const& fit, unsigned int mapSize) {
    osg::Vec2d const scale(1 / std::max(fit.penumbra.x(), 1e-6), 1 / std::max(fit.penumbra.y(), 1e-6));
    osg::Matrixd const sceneToMap = fit.textureMatrix();
    std::vector<Nearest> cells(gridSide * gridSide);
    for (Caster const& caster : casters) {
        if (!caster.box.valid())
            continue;
        Shade const shade = shadeOf(caster, sceneToMap, scale, drawnAside / mapSize + 0.5 / gridSide);
        Cells const columns = reachedCells(shade.slabs[0], scale.x());
        Cells const rows = reachedCells(shade.slabs[1], scale.y());
        for (unsigned int row = rows.begin; row < rows.end; ++row)
            for (unsigned int column = columns.begin; column < columns.end; ++column)
                cells[row * gridSide + column].add(
                    static_cast<float>(shade.distance({middle(column, scale.x()), middle(row, scale.y())})),
                    static_cast<float>(shade.depth));
    }
    std::transform(cells.begin(), cells.end(), m_image->data(), [](Nearest const& cell) {
        return static_cast<unsigned char>(254.9f / CASTER_GRID_DEPTH * cell.firstDepth());
    });
    m_image->dirty();
}

} // namespace hyxOSG::decorator
