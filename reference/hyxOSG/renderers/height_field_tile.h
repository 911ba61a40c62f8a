// A square piece of a height field, drawn from one vertex buffer.
#pragma once

#include "platform/hyxCollide/height_field.h"
#include "reference/hyxOSG/renderers/surface_mesh.h"

namespace hyxOSG {

class HeightFieldTile {
public:
    // The knots of one tile: `first` to `last`, both included, so that neighbours share their border.
    struct Span {
        hyx::UInt firstX, lastX;
        hyx::UInt firstY, lastY;
    };

    HeightFieldTile(hyxCollide::HeightField const& field, Span span);

    osg::Geometry* node() const { return m_surface.node(); }

    // Whether the tile looks different with the field's heights than with `drawn`, which has as many. The knots around
    // the tile count too: normals on its border depend on them.
    bool differs(hyxCollide::HeightField const& field, hyx::RealVector const& drawn) const;
    void rewrite(hyxCollide::HeightField const& field);

private:
    void makeTriangles();

    Span m_span;
    SurfaceMesh m_surface{"height field tile"};
};

} // namespace hyxOSG
