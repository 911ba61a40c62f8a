// One program draws all channels into two textures of floats.
#include "platform/hyxOSG/capture/truth_target.h"

#include "platform/hyx/bodies/body_identity.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "reference/hyxOSG/capture/exact_forms.h"
#include "reference/hyxOSG/capture/truth_samples.h"
#include "reference/machinery/rays/parallel_chunks.h"

#include <osg/FrameBufferObject>
#include <osg/Program>
#include <osg/RenderInfo>
#include <osg/observer_ptr>

#include <cmath>
#include <map>
#include <string>
#include <vector>

namespace hyxOSG {
namespace {

// The first attachment shows the identities in colours, for who looks at the target's own picture.
constexpr char vertexText[] = R"(#version 120
uniform mat4 MOTION; // from eye coordinates now to those of the last frame
varying vec3 eye;
varying vec3 normal;
varying vec4 before;
void main() {
    vec4 place = gl_ModelViewMatrix * gl_Vertex;
    eye = place.xyz;
    normal = gl_NormalMatrix * gl_Normal;
    before = gl_ProjectionMatrix * (MOTION * place);
    gl_Position = gl_ProjectionMatrix * place;
    gl_ClipVertex = place;
}
)";

constexpr char fragmentText[] = R"(#version 120
uniform float hyxIdentity;
uniform vec2 halfSize; // pixels
varying vec3 eye;
varying vec3 normal;
varying vec4 before;
void main() {
    // Near outlines a smooth normal may point away from the camera, the triangle's own never does.
    vec3 facet = normalize(cross(dFdx(eye), dFdy(eye)));
    if (dot(facet, eye) > 0.0)
        facet = -facet;
    float size = length(normal);
    vec3 outward = size > 0.0 ? normal / size : facet;
    if (dot(outward, facet) < 0.0)
        outward = -outward;
    vec2 came = (before.xy / before.w + 1.0) * halfSize;
    vec2 flow = gl_FragCoord.xy - came;
    vec3 color = fract(hyxIdentity * vec3(0.61803, 0.41421, 0.73205));
    gl_FragData[0] = vec4(hyxIdentity > 0.0 ? color : vec3(0.0), 1.0);
    gl_FragData[1] = vec4(outward.x, -outward.y, -outward.z, -eye.z);
    gl_FragData[2] = vec4(flow.x, -flow.y, hyxIdentity, gl_FragCoord.z);
}
)";

std::string withMotion(std::string text, std::string const& motion) {
    text.replace(text.find("MOTION;"), 6, motion);
    text.replace(text.find("MOTION *"), 6, motion);
    return text;
}

osg::ref_ptr<osg::Texture2D> makeTexture(GLenum format, GLenum internalFormat) {
    osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D;
    texture->setResizeNonPowerOfTwoHint(false);
    texture->setFilter(osg::Texture::MIN_FILTER, osg::Texture::NEAREST);
    texture->setFilter(osg::Texture::MAG_FILTER, osg::Texture::NEAREST);
    texture->setInternalFormat(GLint(internalFormat));
    texture->setSourceFormat(format);
    texture->setSourceType(GL_FLOAT);
    return texture;
}

/// Where a node stood when its target was prepared last.
struct Standing {
    osg::observer_ptr<GeometryNode> node;
    osg::Matrixd world;
};

using Places = std::map<GeometryNode*, Standing>;

class NodeCollector : public osg::NodeVisitor {
public:
    NodeCollector() : osg::NodeVisitor(TRAVERSE_ACTIVE_CHILDREN) {}

    void apply(osg::Transform& transform) override {
        if (auto* const node = dynamic_cast<GeometryNode*>(&transform)) {
            node->updateTransform();
            found.emplace_back(node, osg::computeLocalToWorld(getNodePath()));
        }
        traverse(transform);
    }

    std::vector<std::pair<GeometryNode*, osg::Matrixd>> found;
};

template <class T>
void setUniform(osg::StateSet& state, std::string const& name, T const& value) {
    if (osg::Uniform* const known = state.getUniform(name))
        known->set(value);
    else
        state.addUniform(new osg::Uniform(name.c_str(), value));
}

/// One texture that the target draws into, and its pixels.
class Layer {
public:
    Layer(GLenum format, GLenum internalFormat, std::size_t channels)
        : m_channels(channels), m_texture(makeTexture(format, internalFormat)) {}

    void attach(osg::Camera& camera, osg::Camera::BufferComponent component, hyx::Vec2u size) {
        m_size = size;
        m_texture->setTextureSize(int(size.x), int(size.y));
        m_texture->dirtyTextureObject();
        camera.attach(component, m_texture);
        m_reading = new osg::FrameBufferObject;
        bool const isDepth = component == osg::Camera::DEPTH_BUFFER;
        m_reading->setAttachment(isDepth ? component : osg::Camera::COLOR_BUFFER,
                                 osg::FrameBufferAttachment(m_texture));
        m_pixels.assign(m_channels * size.x * size.y, isDepth ? 1 : 0);
    }

    void read(osg::State& state) {
        m_reading->apply(state, osg::FrameBufferObject::READ_FRAMEBUFFER);
        glReadBuffer(m_channels == 1 ? GL_NONE : GL_COLOR_ATTACHMENT0_EXT);
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        glPixelStorei(GL_PACK_ROW_LENGTH, 0);
        glReadPixels(0, 0, int(m_size.x), int(m_size.y), m_texture->getSourceFormat(), GL_FLOAT, m_pixels.data());
    }

    /// Rows from the top.
    float const* pixel(std::size_t row, std::size_t column) const {
        return &m_pixels[m_channels * ((m_size.y - 1 - row) * m_size.x + column)];
    }

private:
    std::size_t m_channels;
    hyx::Vec2u m_size;
    osg::ref_ptr<osg::Texture2D> m_texture;
    osg::ref_ptr<osg::FrameBufferObject> m_reading;
    std::vector<float> m_pixels;
};

constexpr std::size_t rowsPerChunk = 16;
constexpr std::size_t placesPerChunk = 4096;

constexpr float depthStep = 1.2e-7f; // of the buffer, where it is coarsest

} // namespace

struct TruthTarget::Implementation {
    explicit Implementation(unsigned int number) : motion("hyxMotion" + std::to_string(number)) {}

    void attach(TruthTarget& target) {
        hyx::Vec2u const now = target.getSize();
        size = now;
        osg::Camera& camera = *target.getCamera();
        // Of several attachments only the numbered ones are drawn into.
        camera.detach(osg::Camera::COLOR_BUFFER);
        camera.detach(osg::Camera::PACKED_DEPTH_STENCIL_BUFFER);
        camera.attach(osg::Camera::COLOR_BUFFER0, target.resultTexture());
        surface.attach(camera, osg::Camera::COLOR_BUFFER1, size);
        body.attach(camera, osg::Camera::COLOR_BUFFER2, size);
        depth.attach(camera, osg::Camera::DEPTH_BUFFER, size);
        camera.dirtyAttachmentMap();
        setUniform(*camera.getOrCreateStateSet(), "halfSize", osg::Vec2(float(size.x) / 2, float(size.y) / 2));
    }

    std::string const motion;
    hyx::Vec2u size;
    Layer surface{GL_RGBA, GL_RGBA32F_ARB, 4};                 ///< normal and depth
    Layer body{GL_RGBA, GL_RGBA32F_ARB, 4};                    ///< flow, identity, value in the depth buffer
    Layer depth{GL_DEPTH_COMPONENT, GL_DEPTH_COMPONENT32F, 1}; ///< also of what other programs draw
    Places places;
    ExactForms forms;
    osg::Matrixd view, projection;
    bool wasPrepared = false;

    TruthSample drawn(std::size_t row, std::size_t column) const;
    TruthSamples drawn() const;
};

TruthTarget::TruthTarget(hyx::UInt width, hyx::UInt height) : RenderTarget(width, height) {
    static unsigned int count = 0;
    m_implementation = std::make_unique<Implementation>(count++);
    osg::Camera& camera = *getCamera();
    camera.setName("TruthTarget");
    camera.setClearColor(osg::Vec4(0, 0, 0, 0));
    setComputeNearFarMode(DO_NOT_COMPUTE_NEAR_FAR);
    osg::StateSet& state = *camera.getOrCreateStateSet();
    osg::ref_ptr<osg::Program> program = new osg::Program;
    program->addShader(new osg::Shader(osg::Shader::VERTEX, withMotion(vertexText, m_implementation->motion)));
    program->addShader(new osg::Shader(osg::Shader::FRAGMENT, fragmentText));
    constexpr auto always = osg::StateAttribute::OVERRIDE | osg::StateAttribute::PROTECTED;
    state.setAttributeAndModes(program, osg::StateAttribute::ON | always);
    state.setMode(GL_BLEND, osg::StateAttribute::OFF | always);
    state.setMode(GL_MULTISAMPLE_ARB, osg::StateAttribute::OFF | always);
    setUniform(state, "hyxIdentity", 0.0f);
    setUniform(state, m_implementation->motion, osg::Matrixf());
    m_implementation->attach(*this);
}

TruthTarget::~TruthTarget() = default;

void TruthTarget::prepare() {
    Implementation& own = *m_implementation;
    hyx::sweepIdentities();
    if (hyx::Vec2u const now = getSize(); now.x != own.size.x || now.y != own.size.y)
        own.attach(*this);
    osg::Camera& camera = *getCamera();
    osg::Matrixd const view = camera.getViewMatrix();
    osg::Matrixd const before = own.wasPrepared ? own.view : view;
    osg::Matrixd const fromEye = osg::Matrixd::inverse(view);
    own.forms.clear();
    NodeCollector nodes;
    for (unsigned int i = 0; i < camera.getNumChildren(); ++i)
        camera.getChild(i)->accept(nodes);
    Places places;
    for (auto const& [node, world] : nodes.found) {
        auto const known = own.places.find(node);
        bool const stood = known != own.places.end() && known->second.node.get() == node;
        osg::Matrixd const& former = stood ? known->second.world : world;
        hyxCollide::Geometry* const geometry = node->getGeometry();
        hyx::RigidBody* const body = geometry ? geometry->getRigidBody() : nullptr;
        osg::StateSet& state = *node->getOrCreateStateSet();
        std::uint32_t const identity = body ? hyx::bodyIdentity(*body) : 0;
        setUniform(state, "hyxIdentity", float(identity));
        osg::Matrixd const motion = fromEye * osg::Matrixd::inverse(world) * former * before;
        setUniform(state, own.motion, osg::Matrixf(motion));
        if (body)
            own.forms.add(*node, world * view, motion, identity);
        places.emplace(node, Standing{node, world});
    }
    setUniform(*camera.getOrCreateStateSet(), own.motion, osg::Matrixf(fromEye * before));
    own.places = std::move(places);
    own.view = view;
    own.projection = camera.getProjectionMatrix();
    own.wasPrepared = true;
}

void TruthTarget::finishFrame(osg::RenderInfo& renderInfo) {
    Implementation& own = *m_implementation;
    if (hyx::Vec2u const now = getSize(); now.x != own.size.x || now.y != own.size.y)
        return; // not prepared for this size
    osg::State& state = *renderInfo.getState();
    for (Layer* const layer : {&own.surface, &own.body, &own.depth})
        layer->read(state);
    RenderTarget::finishFrame(renderInfo);
}

TruthSample TruthTarget::Implementation::drawn(std::size_t row, std::size_t column) const {
    float const deep = *depth.pixel(row, column);
    if (!(deep < 1))
        return {};
    float const* const facet = surface.pixel(row, column);
    float const* const own = body.pixel(row, column);
    // Another program has drawn where the depth is not the own one, and what is in the other layers means nothing.
    if (std::abs(own[3] - deep) > depthStep)
        return {float(distanceOfDepth(deep, projection))};
    return {facet[3], {facet[0], facet[1], facet[2]}, {own[0], own[1]}, std::uint32_t(own[2] + 0.5f)};
}

TruthSamples TruthTarget::Implementation::drawn() const {
    TruthSamples samples(size, projection, forms);
    hyx::forChunks(size.y, rowsPerChunk, [&](std::size_t first, std::size_t end) {
        for (std::size_t row = first; row < end; ++row)
            for (std::size_t column = 0; column < size.x; ++column)
                samples.at(row, column) = drawn(row, column);
    });
    return samples;
}

void TruthTarget::read(Channels const& channels) const {
    Implementation const& own = *m_implementation;
    auto const write = [&](auto const& sample) {
        hyx::forChunks(own.size.y, rowsPerChunk, [&](std::size_t first, std::size_t end) {
            for (std::size_t row = first; row < end; ++row)
                for (std::size_t column = 0; column < own.size.x; ++column)
                    sample(row, column).write(channels, row * own.size.x + column);
        });
    };
    if (own.forms.empty()) // no pixel needs those around it
        return write([&](std::size_t row, std::size_t column) { return own.drawn(row, column); });
    TruthSamples const samples = own.drawn();
    write([&](std::size_t row, std::size_t column) { return samples.exact({double(row), double(column)}); });
}

void TruthTarget::read(Channels const& channels, Place const* places, std::size_t count) const {
    TruthSamples const samples = m_implementation->drawn();
    hyx::forChunks(count, placesPerChunk, [&](std::size_t first, std::size_t end) {
        for (std::size_t i = first; i < end; ++i)
            samples.exact(places[i]).write(channels, i);
    });
}

} // namespace hyxOSG
