// Checks six pictures, and makes a sky or reflections of them.
#include "platform/hyxOSG/visuals/cube_map.h"

#include "reference/hyxOSG/visuals/image_files.h"
#include "reference/machinery/meshes/notices.h"
#include "reference/machinery/meshes/shape_meshes.h"
#include "reference/machinery/shading/node_state.h"
#include "reference/machinery/shading/surface_program.h"

#include <osg/Geode>
#include <osg/Program>
#include <osg/TexEnv>
#include <osg/TextureCubeMap>

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

constexpr std::array<char const*, 6> sideNames{"posx", "negx", "posy", "negy", "posz", "negz"};

/// What keeps `images` from being a cube map; empty when nothing does.
std::string faultOf(ImageList const& images) {
    if (images.size() != sideNames.size())
        return "a cube map needs 6 images, not " + std::to_string(images.size());
    for (std::size_t side = 0; side < images.size(); ++side) {
        osg::Image const* const image = images[side];
        if (!image || !image->data())
            return std::string("the cube map's image ") + sideNames[side] + " is empty";
        if (image->s() != image->t() || image->s() != images[0]->s())
            return "the cube map's images must be square and of one size";
    }
    return {};
}

osg::ref_ptr<osg::TextureCubeMap> cubeMapOf(ImageList const& images) {
    std::string const fault = faultOf(images);
    if (!fault.empty()) {
        warn(fault);
        return nullptr;
    }
    osg::ref_ptr<osg::TextureCubeMap> const texture = new osg::TextureCubeMap;
    for (unsigned int side = 0; side < images.size(); ++side) {
        // Cube map sides are stored from the top row on, image files from the bottom row.
        osg::ref_ptr<osg::Image> const flipped = new osg::Image(*images[side], osg::CopyOp::DEEP_COPY_ALL);
        flipped->flipVertical();
        texture->setImage(side, flipped);
    }
    for (auto const direction : {osg::Texture::WRAP_S, osg::Texture::WRAP_T, osg::Texture::WRAP_R})
        texture->setWrap(direction, osg::Texture::CLAMP_TO_EDGE);
    texture->setFilter(osg::Texture::MIN_FILTER, osg::Texture::LINEAR_MIPMAP_LINEAR);
    texture->setFilter(osg::Texture::MAG_FILTER, osg::Texture::LINEAR);
    texture->setResizeNonPowerOfTwoHint(false);
    return texture;
}

/// The directions to look up in the cube map, whose y axis is the world's z axis.
osg::ref_ptr<osg::Vec3Array> directions(osg::Vec3Array const& positions) {
    osg::ref_ptr<osg::Vec3Array> const result = new osg::Vec3Array;
    for (osg::Vec3 const& position : positions)
        result->push_back({position.x(), position.z(), -position.y()});
    return result;
}

} // namespace

bool loadCubeMapImages(std::string const& prefix, std::string const& extension, ImageList& images) {
    images.clear();
    std::string const ending = extension.empty() || extension.front() == '.' ? extension : "." + extension;
    ImageList read;
    for (char const* const side : sideNames) {
        osg::ref_ptr<osg::Image> const image = readImage(prefix + side + ending);
        if (!image)
            return false;
        read.push_back(image);
    }
    std::string const fault = faultOf(read);
    if (fault.empty())
        images = read;
    else
        warn("\"" + prefix + "\": " + fault);
    return fault.empty();
}

osg::TextureCubeMap* createTextureCubeMap(ImageList& images) {
    return cubeMapOf(images).release();
}

osg::TextureCubeMap* createTextureCubeMap(std::string const& prefix, std::string const& extension) {
    ImageList images;
    return loadCubeMapImages(prefix, extension, images) ? createTextureCubeMap(images) : nullptr;
}

osg::Geode* createSkySphere(std::string const& name, ImageList& images, float radius, float detailRatio) {
    if (!(radius > 0) || !std::isfinite(radius))
        throw std::invalid_argument("the radius of a sky sphere must be a positive number of metres");
    osg::ref_ptr<osg::Geometry> const mesh = unitSphereMesh(segmentsForDetail(2 * detailRatio));
    osg::ref_ptr<osg::TextureCubeMap> const texture = cubeMapOf(images);
    if (!texture)
        return nullptr;
    auto& positions = static_cast<osg::Vec3Array&>(*mesh->getVertexArray());
    mesh->setTexCoordArray(0, directions(positions), osg::Array::BIND_PER_VERTEX);
    for (osg::Vec3& position : positions)
        position *= radius;

    osg::ref_ptr<osg::Geode> sky = new osg::Geode;
    sky->setName(name);
    sky->addDrawable(mesh);
    osg::StateSet& state = writableStateSet(*sky);
    state.setTextureAttributeAndModes(0, texture, setByScript);
    state.setTextureAttributeAndModes(0, new osg::TexEnv(osg::TexEnv::REPLACE), setByScript);
    state.setAttributeAndModes(new osg::Program, setByScript); // an empty program: fixed function
    state.setMode(GL_LIGHTING, setByScript & ~osg::StateAttribute::ON);
    state.setMode(GL_CULL_FACE, setByScript & ~osg::StateAttribute::ON);
    return sky.release();
}

bool setCubeMapTexture(osg::Node* node, std::string const& prefix, std::string const& extension) {
    ImageList images;
    if (!node || !loadCubeMapImages(prefix, extension, images))
        return false;
    writableStateSet(*node).setTextureAttribute(cubeMapUnit, cubeMapOf(images), setByScript);
    useSurfaceProgram(*node);
    declareCubeMap(*node);
    setReflection(*node, 0.5f, true);
    return true;
}

void setEnvMapReflectionCoefficient(osg::Node* node, float coefficient) {
    if (std::isnan(coefficient))
        throw std::invalid_argument("the reflection coefficient must be a number from 0 to 1");
    if (node)
        setReflection(*node, std::clamp(coefficient, 0.0f, 1.0f), false);
}

} // namespace hyxOSG
