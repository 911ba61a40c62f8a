// Loose soil as meshes, one for each grain.
#pragma once

#include "platform/hyx/particles/particle_system.h"

#include <osg/Group>
#include <osg/MatrixTransform>
#include <osg/Texture2D>

#include <string>

namespace hyxOSG {

class SoilMeshes {
public:
    SoilMeshes();

    osg::Node* node() { return m_group.get(); }

    /// Takes the mesh and texture of these files; an empty model takes a rough stone. Throws std::runtime_error when a
    /// file cannot be read.
    void load(std::string const& model, std::string const& texture);
    /// Draws the grains at their places, which are shifted by -`origin`.
    void update(hyx::ParticleSystem const& grains, hyx::Vec3 const& origin);
    /// Draws nothing.
    void clear();

private:
    osg::ref_ptr<osg::Group> m_group = new osg::Group;
    osg::ref_ptr<osg::Node> m_mesh;
    osg::Matrixd m_toUnit; ///< takes the mesh into a ball of radius 1 about the origin
};

} // namespace hyxOSG
