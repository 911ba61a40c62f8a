// Rows of the functions that put pictures on visuals.
#include "platform/hyxOSG/visuals/textures.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/nodes/texture2d.h"
#include "platform/hyxOSG/visuals/cube_map.h"

#include <osg/Geode>
#include <osg/TextureCubeMap>

namespace {

constexpr Declared textures_rows[] = {
    FUNCTION(createTexture, FREE(hyxOSG::createTexture, (std::string const&))),
    FUNCTION(loadCubeMapImages, FREE(hyxOSG::loadCubeMapImages,
                                     (std::string const&, std::string const&, hyx::Vector<osg::ref_ptr<osg::Image>>&))),
    FUNCTION(createTextureCubeMap, FREE(hyxOSG::createTextureCubeMap, (hyx::Vector<osg::ref_ptr<osg::Image>>&)),
             FREE(hyxOSG::createTextureCubeMap, (std::string const&, std::string const&))),
    FUNCTION(createSkySphere, FREE(hyxOSG::createSkySphere,
                                   (std::string const&, hyx::Vector<osg::ref_ptr<osg::Image>>&, float, float), 1.0f)),
    FUNCTION(setCubeMapTexture, FREE(hyxOSG::setCubeMapTexture, (osg::Node*, std::string const&, std::string const&),
                                     std::string(".png"))),
    FUNCTION(setEnvMapReflectionCoefficient, FREE(hyxOSG::setEnvMapReflectionCoefficient, (osg::Node*, float))),
    FUNCTION(
        setTexture,
        FREE(hyxOSG::setTexture,
             (hyxCollide::Geometry const*, osg::Group*, std::string const&, bool, hyxOSG::TextureMode), false,
             hyxOSG::DIFFUSE_TEXTURE),
        FREE(hyxOSG::setTexture, (hyx::RigidBody const*, osg::Group*, std::string const&, bool, hyxOSG::TextureMode),
             false, hyxOSG::DIFFUSE_TEXTURE),
        FREE(hyxOSG::setTexture, (osg::Node*, std::string const&, bool, hyxOSG::TextureMode, float, float), false,
             hyxOSG::DIFFUSE_TEXTURE, 1.0f, 1.0f),
        FREE(hyxOSG::setTexture, (osg::Node*, osg::Texture2D*, bool, hyxOSG::TextureMode, float, float), false,
             hyxOSG::DIFFUSE_TEXTURE, 1.0f, 1.0f),
        FREE(hyxOSG::setTexture, (osg::Node*, hyxOSG::Texture2D*, bool, hyxOSG::TextureMode, float, float), false,
             hyxOSG::DIFFUSE_TEXTURE, 1.0f, 1.0f),
        FREE(hyxOSG::setTexture, (hyxOSG::GeometryNode*, hyxOSG::Texture2D*, bool, hyxOSG::TextureMode, float, float),
             false, hyxOSG::DIFFUSE_TEXTURE, 1.0f, 1.0f)),
};

} // namespace

ROWS(textures_rows);
