// Estimates from depths how much of the sky each place sees.
#include "reference/hyxOSG/decoration/contact_shade.h"

#include "reference/machinery/shading/depth_copy.h"

#include <osg/BlendFunc>
#include <osg/ColorMask>
#include <osg/ContextData>
#include <osg/Depth>
#include <osg/RenderInfo>

namespace hyxOSG::decorator {
namespace {

constexpr unsigned int depthsUnit = 11; // no texture of a scene or of its shadows
constexpr int shadeBin = 5;             // before what one sees through

// Software rasterizers fetch uniforms for each pixel anew, at the price of much arithmetic.
char const* const wholeView = R"(#version 120
uniform vec2 hyx_size;
uniform vec4 hyx_lens; // of the projection: x, y of the scale and x, y of the shift
uniform vec3 hyx_range; // makes distances of depths; the last is 1 for a perspective view, else 0
uniform float hyx_reach; // pixels
varying vec2 size;
varying vec4 lens;
varying vec3 range;
varying float reach;
void main() {
    size = hyx_size;
    lens = hyx_lens;
    range = hyx_range;
    reach = hyx_reach;
    gl_Position = gl_Vertex;
}
)";

// The scalable estimate of McGuire, Mara and Luebke, "Scalable Ambient Obscurance" (2012): places around that stand out
// of the plane of a surface hide the more the nearer they are. The four pixels of a block look in different directions
// and share what they find.
char const* const hiddenPart = R"(#version 120
uniform sampler2D hyx_depths;
varying vec2 size;
varying vec4 lens;
varying vec3 range;
varying float reach;
const int steps = 10;

vec3 placeAt(vec2 pixel) {
    float depth = 2.0 * texture2D(hyx_depths, pixel / size).r - 1.0;
    float away = range.z > 0.5 ? range.y / (depth + range.x) : (depth - range.x) / range.y;
    vec2 onScreen = 2.0 * pixel / size - 1.0;
    float wide = range.z > 0.5 ? away : 1.0;
    return vec3((onScreen + lens.zw) / lens.xy * wide, -away);
}

vec3 shorter(vec3 a, vec3 b) { return dot(a, a) < dot(b, b) ? a : b; }

void main() {
    vec2 here = gl_FragCoord.xy;
    if (texture2D(hyx_depths, here / size).r >= 1.0) {
        gl_FragColor = vec4(1.0);
        return;
    }
    vec3 place = placeAt(here);
    vec3 right = shorter(placeAt(here + vec2(1.0, 0.0)) - place, place - placeAt(here - vec2(1.0, 0.0)));
    vec3 up = shorter(placeAt(here + vec2(0.0, 1.0)) - place, place - placeAt(here - vec2(0.0, 1.0)));
    vec3 normal = normalize(cross(right, up));
    float pixel = 2.0 * (range.z > 0.5 ? -place.z : 1.0) / (lens.y * size.y); // metres
    float radius = reach * pixel;
    vec2 block = mod(floor(here), 2.0);
    float turn = 1.5707963 * 0.25 * (2.0 * block.x + block.y);
    float hidden = 0.0;
    for (int i = 0; i < steps; ++i) {
        float part = (float(i) + 0.5) / float(steps);
        float angle = turn + part * 6.2831853 * 3.0;
        vec3 way = placeAt(floor(here + reach * part * vec2(cos(angle), sin(angle))) + 0.5) - place;
        float square = dot(way, way);
        float near = max(1.0 - square / (radius * radius), 0.0);
        hidden += near * near * near * max(dot(way, normal) - 0.5 * pixel, 0.0) * radius / (square + 0.01 * radius * radius);
    }
    float open = max(1.0 - 1.4 * hidden / float(steps), 0.7);
    open -= dFdx(open) * (block.x - 0.5);
    open -= dFdy(open) * (block.y - 0.5);
    gl_FragColor = vec4(vec3(open), 1.0);
}
)";

/// What is kept for a graphics context.
struct Copies : public osg::Referenced {
    explicit Copies(unsigned int context)
        : gl(*osg::GLExtensions::Get(context, true)), depths(gl), able(DepthCopy::isPossible(gl)) {}

    osg::GLExtensions const& gl;
    DepthCopy depths;
    bool able;
};

void setUniforms(osg::Program::PerContextProgram const& program, osg::GLExtensions const& gl,
                 osg::Matrixd const& projection, osg::Vec2 const& size) {
    auto const at = [&](char const* name) { return program.getUniformLocation(osg::Uniform::getNameID(name)); };
    bool const perspective = projection(2, 3) != 0;
    gl.glUniform1i(at("hyx_depths"), depthsUnit);
    gl.glUniform2f(at("hyx_size"), size.x(), size.y());
    auto const shift = perspective ? 2 : 3;
    auto const sign = perspective ? 1.0 : -1.0;
    gl.glUniform4f(at("hyx_lens"), float(projection(0, 0)), float(projection(1, 1)), float(sign * projection(shift, 0)),
                   float(sign * projection(shift, 1)));
    if (perspective)
        gl.glUniform3f(at("hyx_range"), float(projection(2, 2)), float(projection(3, 2)), 1);
    else
        gl.glUniform3f(at("hyx_range"), float(projection(3, 2)), float(-projection(2, 2)), 0);
    gl.glUniform1f(at("hyx_reach"), size.y() / 18);
}

} // namespace

ContactShade::ContactShade() : m_program(new osg::Program) {
    setCullingActive(false);
    setUseDisplayList(false);
    setSupportsDisplayList(false);
    m_program->addShader(new osg::Shader(osg::Shader::VERTEX, wholeView));
    m_program->addShader(new osg::Shader(osg::Shader::FRAGMENT, hiddenPart));
    osg::StateSet& state = *getOrCreateStateSet();
    state.setAttributeAndModes(m_program);
    state.setAttributeAndModes(new osg::BlendFunc(GL_ZERO, GL_SRC_COLOR));
    state.setAttributeAndModes(new osg::Depth(osg::Depth::GREATER, 0, 1, false));
    state.setAttribute(new osg::ColorMask(true, true, true, false));
    state.setMode(GL_CULL_FACE, osg::StateAttribute::OFF);
    state.setRenderBinDetails(shadeBin, "RenderBin");
}

void ContactShade::drawImplementation(osg::RenderInfo& info) const {
    osg::State& state = *info.getState();
    auto const* const program = state.getLastAppliedProgramObject();
    DrawnFrame const frame = drawnFrame();
    auto& copies = *osg::get<Copies>(state.getContextID());
    osg::Viewport const* const viewport = state.getCurrentViewport();
    bool const mine = program && program->getProgram() == m_program && program->isLinked();
    if (!mine || !frame.hasColors || !copies.able || !viewport || !state.getLastAppliedMode(GL_BLEND))
        return;
    osg::Vec2 const size(float(viewport->x() + viewport->width()), float(viewport->y() + viewport->height()));
    while (glGetError() != GL_NO_ERROR) {
    }
    copies.able = copies.depths.resize(0, GLsizei(size.x()), GLsizei(size.y()));
    copies.depths.copyFrom(frame.id);
    copies.able = copies.able && glGetError() == GL_NO_ERROR; // depths of another kind cannot be copied
    if (!copies.able)
        return;
    copies.depths.bindTexture(state, depthsUnit);
    setUniforms(*program, copies.gl, state.getProjectionMatrix(), size);
    state.setActiveTextureUnit(depthsUnit);
    glBegin(GL_TRIANGLE_STRIP);
    for (float const y : {-1.0f, 1.0f})
        for (float const x : {-1.0f, 1.0f})
            glVertex3f(x, y, 1); // lies behind all but the background, which is left out so
    glEnd();
    copies.depths.unbindTexture(state, depthsUnit);
}

} // namespace hyxOSG::decorator
