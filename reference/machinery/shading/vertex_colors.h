// State for meshes that carry their colours in their vertices.
#pragma once

#include <osg/Geometry>

namespace hyxOSG {

/// Adds a colour for each vertex; light falls on these colours as on a material's.
void useVertexColors(osg::Geometry& geometry, osg::Vec4Array* colors);
void useVertexColors(osg::Geometry& geometry, osg::Vec4ubArray* colors);

/// Blends `geometry` with what lies behind while one of its colours lets it through.
void followOpacity(osg::Geometry& geometry, osg::Vec4Array const& colors);
void followOpacity(osg::Geometry& geometry, osg::Vec4ubArray const& colors);

/// Colours are shown as they are: no light falls on the geometry.
void useNoLight(osg::Geometry& geometry);

} // namespace hyxOSG
