// Draws each sphere as a square whose pixels are computed as a ball's.
#include "reference/machinery/meshes/sphere_impostors.h"

#include "reference/machinery/meshes/mesh_builder.h"
#include "reference/machinery/meshes/shape_meshes.h"
#include "reference/machinery/shading/drawing_values.h"
#include "reference/machinery/shading/light_equation.h"
#include "reference/machinery/shading/node_state.h"
#include "reference/machinery/shading/shadow_lookup.h"

#include <osg/BlendFunc>
#include <osg/CullFace>
#include <osg/Depth>
#include <osg/GLExtensions>
#include <osg/PointSprite>
#include <osg/Program>
#include <osg/State>

#include <algorithm>
#include <cmath>
#include <limits>

namespace hyxOSG {
namespace {

// Generic vertex attributes that do not share a place with the fixed ones.
constexpr unsigned int placeAttribute = 6, colorAttribute = 7, rotationAttribute = 8;
// Pixels. A larger point vanishes visibly when its centre leaves the picture; drivers draw none that are larger still.
constexpr float largestPoint = 32, largestPossiblePoint = 255;
constexpr float largestCoarseMesh = 16;

char const* const vertexSource = R"(#version 120
attribute vec4 place;
attribute vec4 color;
attribute vec4 rotation;
uniform int form; // 0 points, 1 quads, 2 meshes
uniform float viewportHeight;
varying vec4 ball;
varying vec3 across; // from the centre to the form's surface; of a point half its width in x
varying vec4 tint;
varying vec4 turn;

void setDrawingValues();

// A square around the ball's outline as it is seen, upright to the way to its centre.
vec3 squareCorner(vec3 center, float radius) {
    vec3 way = vec3(0.0, 0.0, -1.0);
    if (gl_ProjectionMatrix[2][3] != 0.0) {
        float distance = length(center);
        way = center / distance;
        radius *= distance / sqrt(max(distance * distance - radius * radius, 0.01 * distance * distance));
    }
    vec3 right = normalize(cross(way, abs(way.y) < 0.9 ? vec3(0.0, 1.0, 0.0) : vec3(1.0, 0.0, 0.0)));
    return radius * (gl_Vertex.x * right + gl_Vertex.y * cross(right, way));
}

void main() {
    vec4 sphere = form == 0 ? gl_Vertex : place;
    vec3 center = vec3(gl_ModelViewMatrix * vec4(sphere.xyz, 1.0));
    vec3 surface = center;
    // A point's outline is no circle beside the middle of the picture, and not around its centre.
    float cover = sphere.w * (gl_ProjectionMatrix[2][3] != 0.0 ? 1.0 + 2.0 * sphere.w / abs(center.z) : 1.0);
    if (form == 0) {
        across = vec3(cover, 0.0, 0.0);
    } else {
        across = form == 1 ? squareCorner(center, sphere.w) : sphere.w * (gl_NormalMatrix * gl_Vertex.xyz);
        surface += across;
    }
    ball = vec4(center, sphere.w);
    tint = color;
    turn = rotation;
    setDrawingValues();
    gl_ClipVertex = vec4(surface, 1.0);
    gl_Position = gl_ProjectionMatrix * vec4(surface, 1.0);
    gl_PointSize = cover * gl_ProjectionMatrix[1][1] * viewportHeight / gl_Position.w;
}
)";

char const* const fragmentSource = R"(#version 120
#pragma import_defines(BANDS, SOFT)
uniform int form;
uniform mat4 osg_ViewMatrixInverse;
varying vec4 ball;
varying vec3 across;
varying vec4 tint;
varying vec4 turn;

vec3 mattColor(vec3 place, vec3 normal, vec3 color);

vec3 wayTo(vec3 point) {
    return gl_ProjectionMatrix[2][3] != 0.0 ? normalize(point) : vec3(0.0, 0.0, -1.0);
}

// From the ball's centre to where the ray through a point beside it enters the ball.
vec3 whereTheRayEnters(vec3 beside) {
    vec3 way = wayTo(ball.xyz + beside);
    vec3 nearest = beside - dot(beside, way) * way;
    float rest = ball.w * ball.w - dot(nearest, nearest);
    if (rest < 0.0)
        discard;
    return nearest - sqrt(rest) * way;
}

void main() {
    if (tint.a == 0.0) // hidden by a clip plane
        discard;
    vec3 n = across;
    if (form != 2) {
        if (form == 0)
            n = across.x * vec3(2.0 * gl_PointCoord.x - 1.0, 1.0 - 2.0 * gl_PointCoord.y, 0.0);
        n = whereTheRayEnters(n);
    }
    n = normalize(n);
    vec4 color = tint;
#ifdef BANDS
    vec3 inWorld = mat3(osg_ViewMatrixInverse[0].xyz, osg_ViewMatrixInverse[1].xyz, osg_ViewMatrixInverse[2].xyz) * n;
    vec3 onBall = inWorld + 2.0 * cross(-turn.xyz, cross(-turn.xyz, inWorld) + turn.w * inWorld);
    if (onBall.x * onBall.y * onBall.z < 0.0)
        color.rgb *= 0.55;
#endif
    color.rgb = mattColor(ball.xyz + ball.w * n, n, color.rgb);
#ifdef SOFT
    float facing = max(-dot(n, wayTo(ball.xyz + ball.w * n)), 0.0);
    color.a *= facing * facing;
    gl_FragDepth = gl_FragCoord.z;
#else
    vec4 surface = gl_ProjectionMatrix * vec4(ball.xyz + ball.w * n, 1.0);
    gl_FragDepth = form == 2 ? gl_FragCoord.z : 0.5 + 0.5 * surface.z / surface.w;
#endif
    gl_FragColor = color;
}
)";

osg::Program& impostorProgram() {
    static osg::ref_ptr<osg::Program> const program = [] {
        osg::ref_ptr<osg::Program> const made = new osg::Program;
        made->setName("sphere impostors");
        made->addShader(new osg::Shader(osg::Shader::VERTEX, vertexSource));
        made->addShader(new osg::Shader(osg::Shader::FRAGMENT, fragmentSource));
        made->addShader(decorator::drawingValuesShader());
        made->addShader(decorator::lightEquationShader());
        made->addShader(decorator::shadowLookupShader());
        made->addBindAttribLocation("place", placeAttribute);
        made->addBindAttribLocation("color", colorAttribute);
        made->addBindAttribLocation("rotation", rotationAttribute);
        return made;
    }();
    return *program;
}

osg::ref_ptr<osg::Geometry> quadForm() {
    osg::ref_ptr<osg::Geometry> const quad = new osg::Geometry;
    osg::ref_ptr<osg::Vec3Array> const corners = new osg::Vec3Array;
    for (osg::Vec3 const& corner : {osg::Vec3(-1, -1, 0), osg::Vec3(1, -1, 0), osg::Vec3(-1, 1, 0), osg::Vec3(1, 1, 0)})
        corners->push_back(corner);
    quad->setVertexArray(corners);
    quad->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLE_STRIP, 0, 4));
    return quad;
}

osg::ref_ptr<osg::Geometry> ballForm(unsigned int segments) {
    osg::ref_ptr<osg::Geometry> const ball = unitSphereMesh(segments);
    ball->setNormalArray(nullptr);
    ball->setTexCoordArray(0, nullptr);
    return ball;
}

void setUniform(osg::State& state, char const* name, auto value) {
    auto const* const program = state.getLastAppliedProgramObject();
    GLint const place = program->getUniformLocation(osg::Uniform::getNameID(name));
    if constexpr (std::is_integral_v<decltype(value)>)
        state.get<osg::GLExtensions>()->glUniform1i(place, value);
    else
        state.get<osg::GLExtensions>()->glUniform1f(place, value);
}

} // namespace

SphereImpostors::SphereImpostors() {
    m_colors->setNormalize(true);
    m_state->setAttributeAndModes(&impostorProgram(), keptOn);
    m_state->setMode(GL_VERTEX_PROGRAM_POINT_SIZE, keptOn);
    m_state->setTextureAttributeAndModes(0, new osg::PointSprite, keptOn);
    m_state->setMode(GL_CULL_FACE, keptOff);

    m_points = new osg::Geometry;
    m_points->setVertexArray(m_places);
    m_points->setVertexAttribArray(colorAttribute, m_colors, osg::Array::BIND_PER_VERTEX);
    m_points->setVertexAttribArray(rotationAttribute, m_rotations, osg::Array::BIND_PER_VERTEX);
    m_points->addPrimitiveSet(new osg::DrawArrays(GL_POINTS, 0, 0));
    drawWithoutSamples(*m_points->getOrCreateStateSet());
    useVertexBuffers(*m_points);
    m_quads = instanced(quadForm());
    m_meshes = instanced(ballForm(12));
    m_coarseMeshes = instanced(ballForm(6));
}

osg::ref_ptr<osg::Geometry> SphereImpostors::instanced(osg::Geometry* form) const {
    form->setVertexAttribArray(placeAttribute, m_places, osg::Array::BIND_PER_VERTEX);
    form->setVertexAttribArray(colorAttribute, m_colors, osg::Array::BIND_PER_VERTEX);
    form->setVertexAttribArray(rotationAttribute, m_rotations, osg::Array::BIND_PER_VERTEX);
    useVertexBuffers(*form);
    return form;
}

void SphereImpostors::setShaderMode(ShaderMode mode) {
    m_state->removeDefine("BANDS");
    m_state->removeDefine("SOFT");
    m_state->removeAttribute(osg::StateAttribute::DEPTH);
    m_state->removeAttribute(osg::StateAttribute::BLENDFUNC);
    m_state->setRenderBinToInherit();
    if (mode == ParticleSystemDrawable::ROTATION_SPRITES)
        m_state->setDefine("BANDS");
    if (mode == ParticleSystemDrawable::ALPHA_SPRITES) {
        m_state->setDefine("SOFT");
        m_state->setAttributeAndModes(new osg::BlendFunc);
        m_state->setAttributeAndModes(new osg::Depth(osg::Depth::LESS, 0, 1, false));
        m_state->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
    }
}

void SphereImpostors::begin(std::size_t expected) {
    m_places->clear();
    m_colors->clear();
    m_rotations->clear();
    m_places->reserve(expected);
    m_colors->reserve(expected);
    m_rotations->reserve(expected);
    m_bounds.init();
    m_largest = 0;
}

void SphereImpostors::add(osg::Vec3 const& center, float radius, osg::Vec4 const& color, osg::Quat const& rotation) {
    auto const byte = [](float value) {
        return static_cast<unsigned char>(std::clamp(value, 0.0f, 1.0f) * 255 + 0.5f);
    };
    m_places->push_back({center, radius});
    m_colors->push_back({byte(color.r()), byte(color.g()), byte(color.b()), byte(color.a())});
    m_rotations->push_back(rotation.asVec4());
    m_bounds.expandBy(center);
    m_largest = std::max(m_largest, radius);
}

void SphereImpostors::end() {
    if (m_bounds.valid()) {
        osg::Vec3 const rim(m_largest, m_largest, m_largest);
        m_bounds.set(m_bounds._min - rim, m_bounds._max + rim);
    }
    for (osg::Array* const array : {static_cast<osg::Array*>(m_places), static_cast<osg::Array*>(m_colors),
                                    static_cast<osg::Array*>(m_rotations)})
        array->dirty();
    static_cast<osg::DrawArrays*>(m_points->getPrimitiveSet(0))->setCount(static_cast<GLsizei>(size()));
    for (osg::Geometry* const form : {m_quads.get(), m_meshes.get(), m_coarseMeshes.get()})
        form->getPrimitiveSet(0)->setNumInstances(static_cast<int>(size()));
}

float SphereImpostors::largestInPixels(osg::State const& state, float viewportHeight) const {
    osg::BoundingSphere const around(m_bounds);
    auto const nearest = -(osg::Vec3f(around.center()) * state.getModelViewMatrix()).z() - around.radius();
    bool const perspective = state.getProjectionMatrix()(2, 3) != 0;
    if (perspective && nearest <= 0)
        return std::numeric_limits<float>::infinity();
    return m_largest * static_cast<float>(state.getProjectionMatrix()(1, 1)) * viewportHeight /
           (perspective ? nearest : 1);
}

void SphereImpostors::draw(osg::RenderInfo& renderInfo, RenderingMode mode) const {
    osg::State* const state = renderInfo.getState();
    osg::Viewport const* const viewport = state ? state->getCurrentViewport() : nullptr;
    if (!viewport || !state->getLastAppliedProgramObject() || size() == 0)
        return;
    auto const height = static_cast<float>(viewport->height());
    float const size = largestInPixels(*state, height);
    bool const meshes = mode == ParticleSystemDrawable::TRIANGLES;
    bool const points =
        !meshes && size < (mode == ParticleSystemDrawable::SPRITES ? largestPossiblePoint : largestPoint);
    setUniform(*state, "viewportHeight", height);
    setUniform(*state, "form", meshes ? 2 : points ? 0 : 1);
    if (points) {
        m_points->drawImplementation(renderInfo);
        return;
    }
    auto* const extensions = state->get<osg::GLExtensions>();
    auto const advancePerInstance = [extensions](GLuint instances) {
        for (GLuint const attribute : {placeAttribute, colorAttribute, rotationAttribute})
            extensions->glVertexAttribDivisor(attribute, instances);
    };
    advancePerInstance(1);
    (!meshes ? m_quads : size < largestCoarseMesh ? m_coarseMeshes : m_meshes)->drawImplementation(renderInfo);
    advancePerInstance(0);
}

void SphereImpostors::releaseGLObjects(osg::State* state) const {
    for (osg::Geometry const* const form : {m_points.get(), m_quads.get(), m_meshes.get(), m_coarseMeshes.get()})
        form->releaseGLObjects(state);
}

} // namespace hyxOSG
