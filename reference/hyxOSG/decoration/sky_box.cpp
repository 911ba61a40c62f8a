// Draws the surroundings behind all else, however far the scene reaches.
#include "platform/hyxOSG/decoration/sky_box.h"

#include "platform/hyxOSG/visuals/cube_map.h"
#include "reference/machinery/shading/shading_marks.h"

#include <osg/Depth>
#include <osg/Geometry>
#include <osg/Program>
#include <osg/Quat>
#include <osg/TextureCubeMap>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <vector>

namespace hyxOSG {
namespace {

constexpr int skyBin = -50; // behind the scene, before the background

// The scene's near and far plane and its shadows must not stretch to the sky.
class NoBounds : public osg::Drawable::ComputeBoundingBoxCallback {
public:
    osg::BoundingBox computeBound(osg::Drawable const&) const override { return osg::BoundingBox(); }
};

osg::ref_ptr<osg::Geometry> createBox(osg::Quat const& turn, float brightness) {
    osg::ref_ptr<osg::Geometry> box = new osg::Geometry;
    auto* vertices = new osg::Vec3Array;
    auto* directions = new osg::Vec3Array;
    for (int corner = 0; corner < 8; ++corner) {
        osg::Vec3 const point(corner & 1 ? 1 : -1, corner & 2 ? 1 : -1, corner & 4 ? 1 : -1);
        vertices->push_back(turn * point);
        // Cube maps have Y upwards and are seen from inside.
        directions->push_back(osg::Vec3(point.x(), point.z(), -point.y()));
    }
    box->setVertexArray(vertices);
    box->setTexCoordArray(0, directions);
    auto* colors = new osg::Vec4Array;
    colors->push_back(osg::Vec4(brightness, brightness, brightness, 1));
    box->setColorArray(colors, osg::Array::BIND_OVERALL);
    static GLubyte const faces[] = {0, 1, 3, 0, 3, 2, 4, 6, 7, 4, 7, 5, 0, 4, 5, 0, 5, 1,
                                    2, 3, 7, 2, 7, 6, 0, 2, 6, 0, 6, 4, 1, 5, 7, 1, 7, 3};
    box->addPrimitiveSet(new osg::DrawElementsUByte(GL_TRIANGLES, std::size(faces), faces));
    box->setUseDisplayList(false);
    box->setUseVertexBufferObjects(true);
    box->setCullingActive(false);
    box->setComputeBoundingBoxCallback(new NoBounds);
    return box;
}

// A program of its own: brightness above 1, and no lights, shadows or textures of the scene.
osg::ref_ptr<osg::Program> createProgram() {
    osg::ref_ptr<osg::Program> program = new osg::Program;
    program->addShader(new osg::Shader(osg::Shader::VERTEX, R"(
#version 120
varying vec3 direction;
varying float brightness;
void main()
{
    direction = gl_MultiTexCoord0.xyz;
    brightness = gl_Color.r;
    // Turned with the camera, but never moved; at a depth that nothing clips.
    vec4 place = gl_ProjectionMatrix * vec4(mat3(gl_ModelViewMatrix) * gl_Vertex.xyz, 1.0);
    gl_Position = vec4(place.xy, 0.0, place.w);
})"));
    program->addShader(new osg::Shader(osg::Shader::FRAGMENT, R"(
#version 120
uniform samplerCube hyx_sky;
varying vec3 direction;
varying float brightness;
void main()
{
    gl_FragColor = vec4(textureCube(hyx_sky, direction).rgb * brightness, 1.0);
})"));
    return program;
}

// All that live, for `find`; they neither own nor are owned here.
std::vector<SkyBox const*>& skies() {
    static std::vector<SkyBox const*> living;
    return living;
}

bool isShownIn(osg::Node const& node, osg::Node const& scene) {
    if (&node == &scene)
        return true;
    auto const& parents = node.getParents();
    return node.getNodeMask() != 0 && std::any_of(parents.begin(), parents.end(), [&scene](osg::Group const* parent) {
               return isShownIn(*parent, scene);
           });
}

// Sums of colours and of their weights.
struct Sum {
    osg::Vec3f colors;
    float weights = 0;

    osg::Vec3f mean() const { return weights > 0 ? colors / weights : osg::Vec3f(); }
};

// The solid angle of a pixel at (u, v), from -1 to 1, goes with (1 + u^2 + v^2)^-1.5. Sides have their upper row first.
SkyBox::Light lightOf(osg::TextureCubeMap const& map, float brightness) {
    constexpr int enoughPixels = 128;
    Sum upper, lower;
    for (unsigned int side = 0; side < 6; ++side) {
        osg::Image const& image = *map.getImage(side);
        int const size = image.s(), step = std::max(1, size / enoughPixels);
        for (int row = 0; row < size; row += step)
            for (int column = 0; column < size; column += step) {
                auto const size2 = static_cast<float>(size);
                float const u = (2.0f * static_cast<float>(column) + 1) / size2 - 1;
                float const v = (2.0f * static_cast<float>(row) + 1) / size2 - 1;
                bool const isUpper =
                    side == osg::TextureCubeMap::POSITIVE_Y || (side != osg::TextureCubeMap::NEGATIVE_Y && v < 0);
                float const weight = std::pow(1 + u * u + v * v, -1.5f);
                osg::Vec4 const color = image.getColor(column, row);
                Sum& sum = isUpper ? upper : lower;
                sum.colors += osg::Vec3f(color.r(), color.g(), color.b()) * weight;
                sum.weights += weight;
            }
    }
    return {upper.mean() * brightness, lower.mean() * brightness};
}

} // namespace

SkyBox const* SkyBox::find(osg::Node const& scene) {
    auto const found =
        std::find_if(skies().rbegin(), skies().rend(), [&scene](SkyBox const* sky) { return isShownIn(*sky, scene); });
    return found != skies().rend() ? *found : nullptr;
}

SkyBox::SkyBox(std::string const& name, std::string const& imagePath, std::string const& imageExtension, double heading,
               float brightness) {
    if (!std::isfinite(heading))
        throw std::invalid_argument("the sky box's heading must be finite");
    if (!(brightness >= 0) || !std::isfinite(brightness))
        throw std::invalid_argument("the sky box's brightness must be finite and not negative");
    osg::ref_ptr<osg::TextureCubeMap> const map = createTextureCubeMap(imagePath, imageExtension);
    if (!map)
        throw std::runtime_error("the sky box's images cannot be read: " + imagePath + "posx" + imageExtension +
                                 " and the five others must be there, square and of one size");
    setName(name);
    setCullingActive(false);
    // No bit of the shadows: the sky neither casts nor receives them.
    setNodeMask(~decorator::shadowMasks);

    addChild(createBox(osg::Quat(heading, osg::Vec3d(0, 0, 1)), brightness));
    osg::StateSet* state = getOrCreateStateSet();
    state->setTextureAttribute(0, map, osg::StateAttribute::OVERRIDE);
    state->setAttributeAndModes(createProgram(), osg::StateAttribute::OVERRIDE | osg::StateAttribute::ON);
    state->addUniform(new osg::Uniform("hyx_sky", 0));
    state->setMode(GL_CULL_FACE, osg::StateAttribute::OFF);
    state->setAttributeAndModes(new osg::Depth(osg::Depth::ALWAYS, 0, 1, false));
    state->setRenderBinDetails(skyBin, "RenderBin");
    m_light = lightOf(*map, brightness);
    skies().push_back(this);
}

SkyBox::~SkyBox() {
    std::erase(skies(), this);
}

} // namespace hyxOSG
