// A coarse grid over a shadow map, by which shaders leave out looking for casters where there are none.
#pragma once

#include "reference/hyxOSG/decoration/casters.h"
#include "reference/hyxOSG/decoration/light_view.h"

#include <osg/Image>
#include <osg/Texture2D>

#include <vector>

namespace hyxOSG::decorator {

/// For each cell the depth in the map from which on a receiver's search for casters, which widens with its depth, may
/// meet the bounds of one.
class CasterGrid {
public:
    CasterGrid();

    /// \param mapSize width of the map in texels
    void fill(std::vector<Caster> const& casters, LightView const& fit, unsigned int mapSize);

    osg::Texture2D* texture() const { return m_texture; }

private:
    osg::ref_ptr<osg::Image> m_image = new osg::Image;
    osg::ref_ptr<osg::Texture2D> m_texture = new osg::Texture2D(m_image);
};

} // namespace hyxOSG::decorator
