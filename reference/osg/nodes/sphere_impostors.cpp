#include "reference/osg/nodes/sphere_impostors.h"

#include "reference/osg/visual/mesh_builder.h"
#include "reference/osg/visual/shape_meshes.h"

#include <osg/BlendFunc>
#include <osg/CullFace>
#include <osg/Depth>
#include <osg/GLExtensions>
#include <osg/PointSprite>
#include <osg/Program>
#include <osg/State>

#include <algorithm>
#include <cmath>

namespace hyxOSG {
namespace {

// Generic vertex attributes that do not share a place with the fixed ones.
constexpr unsigned int placeAttribute = 6, colorAttribute = 7, rotationAttribute = 8;
constexpr float largestPoint = 32; // pixels; a larger point vanishes visibly when its centre leaves the picture

char const * const vertexSource = R"(#version 120
attribute vec4 place;
attribute vec4 color;
attribute vec4 rotation;
uniform int form; // 0 points, 1 quads, 2 meshes
uniform float viewportHeight;
varying vec4 ball;
varying vec3 across;
varying vec4 tint;
varying vec4 turn;

void main() {
    vec4 sphere = form == 0 ? gl_Vertex : place;
    vec3 center = vec3(gl_ModelViewMatrix * vec4(sphere.xyz, 1.0));
    vec3 surface = center;
    across = vec3(0.0);
    if (form == 1) {
        across = gl_Vertex.xyz;
        surface += sphere.w * across;
    } else if (form == 2) {
        across = gl_NormalMatrix * gl_Vertex.xyz;
        surface += sphere.w * across;
    }
    ball = vec4(center, sphere.w);
    tint = color;
    turn = rotation;
    gl_ClipVertex = vec4(surface, 1.0);
    gl_Position = gl_ProjectionMatrix * vec4(surface, 1.0);
    gl_PointSize = sphere.w * gl_ProjectionMatrix[1][1] * viewportHeight / gl_Position.w;
}
)";

char const * const fragmentSource = R"(#version 120
#pragma import_defines(BANDS, SOFT)
uniform int form;
uniform mat4 osg_ViewMatrixInverse;
uniform bool hyx_lightOff0, hyx_lightOff1, hyx_lightOff2;
varying vec4 ball;
varying vec3 across;
varying vec4 tint;
varying vec4 turn;

vec3 light(gl_LightSourceParameters source, vec3 n) {
    vec3 way = normalize(source.position.xyz - ball.xyz * source.position.w);
    return source.ambient.rgb + max(dot(n, way), 0.0) * source.diffuse.rgb;
}

void main() {
    if (tint.a == 0.0) // hidden by a clip plane
        discard;
    vec3 n = across;
    if (form != 2) {
        if (form == 0)
            n = vec3(2.0 * gl_PointCoord.x - 1.0, 1.0 - 2.0 * gl_PointCoord.y, 0.0);
        float rest = 1.0 - dot(n.xy, n.xy);
        if (rest < 0.0)
            discard;
        n.z = sqrt(rest);
    }
    n = normalize(n);
    vec4 color = tint;
#ifdef BANDS
    vec3 inWorld = mat3(osg_ViewMatrixInverse[0].xyz, osg_ViewMatrixInverse[1].xyz, osg_ViewMatrixInverse[2].xyz) * n;
    vec3 onBall = inWorld + 2.0 * cross(-turn.xyz, cross(-turn.xyz, inWorld) + turn.w * inWorld);
    if (onBall.x * onBall.y * onBall.z < 0.0)
        color.rgb *= 0.55;
#endif
    vec3 shade = gl_LightModel.ambient.rgb;
    if (!hyx_lightOff0)
        shade += light(gl_LightSource[0], n);
    if (!hyx_lightOff1)
        shade += light(gl_LightSource[1], n);
    if (!hyx_lightOff2)
        shade += light(gl_LightSource[2], n);
    color.rgb *= shade;
#ifdef SOFT
    color.a *= n.z * n.z;
    gl_FragDepth = gl_FragCoord.z;
#else
    vec4 surface = gl_ProjectionMatrix * vec4(ball.xyz + ball.w * n, 1.0);
    gl_FragDepth = form == 2 ? gl_FragCoord.z : 0.5 + 0.5 * surface.z / surface.w;
#endif
    gl_FragColor = color;
}
)";

osg::Program & impostorProgram() {
    static osg::ref_ptr<osg::Program> const program = [] {
        osg::ref_ptr<osg::Program> const made = new osg::Program;
        made->setName("sphere impostors");
        made->addShader(new osg::Shader(osg::Shader::VERTEX, vertexSource));
        made->addShader(new osg::Shader(osg::Shader::FRAGMENT, fragmentSource));
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
    for (osg::Vec3 const & corner :
         {osg::Vec3(-1, -1, 0), osg::Vec3(1, -1, 0), osg::Vec3(-1, 1, 0), osg::Vec3(1, 1, 0)})
        corners->push_back(corner);
    quad->setVertexArray(corners);
    quad->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLE_STRIP, 0, 4));
    return quad;
}

void setUniform(osg::State & state, char const * name, auto value) {
    auto const * const program = state.getLastAppliedProgramObject();
    GLint const place = program->getUniformLocation(osg::Uniform::getNameID(name));
    if constexpr (std::is_integral_v<decltype(value)>)
        state.get<osg::GLExtensions>()->glUniform1i(place, value);
    else
        state.get<osg::GLExtensions>()->glUniform1f(place, value);
}

}

SphereImpostors::SphereImpostors() {
    m_colors->setNormalize(true);
    osg::StateAttribute::GLModeValue const kept = osg::StateAttribute::ON | osg::StateAttribute::PROTECTED;
    m_state->setAttributeAndModes(&impostorProgram(), kept);
    m_state->setMode(GL_VERTEX_PROGRAM_POINT_SIZE, kept);
    m_state->setTextureAttributeAndModes(0, new osg::PointSprite, kept);
    m_state->setMode(GL_CULL_FACE, osg::StateAttribute::OFF | osg::StateAttribute::PROTECTED);

    m_points = new osg::Geometry;
    m_points->setVertexArray(m_places);
    m_points->setVertexAttribArray(colorAttribute, m_colors, osg::Array::BIND_PER_VERTEX);
    m_points->setVertexAttribArray(rotationAttribute, m_rotations, osg::Array::BIND_PER_VERTEX);
    m_points->addPrimitiveSet(new osg::DrawArrays(GL_POINTS, 0, 0));
    useVertexBuffers(*m_points);
    m_quads = instanced(quadForm());
    osg::ref_ptr<osg::Geometry> const ball = unitSphereMesh(12);
    ball->setNormalArray(nullptr);
    ball->setTexCoordArray(0, nullptr);
    m_meshes = instanced(ball);
}

osg::ref_ptr<osg::Geometry> SphereImpostors::instanced(osg::Geometry * form) const {
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

void SphereImpostors::add(osg::Vec3 const & center, float radius, osg::Vec4 const & color, osg::Quat const & rotation) {
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
    for (osg::Array * const array : {static_cast<osg::Array *>(m_places), static_cast<osg::Array *>(m_colors),
                                     static_cast<osg::Array *>(m_rotations)})
        array->dirty();
    static_cast<osg::DrawArrays *>(m_points->getPrimitiveSet(0))->setCount(static_cast<GLsizei>(size()));
    for (osg::Geometry * const form : {m_quads.get(), m_meshes.get()})
        form->getPrimitiveSet(0)->setNumInstances(static_cast<int>(size()));
}

SphereImpostors::RenderingMode SphereImpostors::cheapest(osg::State const & state, float viewportHeight,
                                                         RenderingMode mode) const {
    osg::BoundingSphere const around(m_bounds);
    double const nearest = -(osg::Vec3d(around.center()) * state.getModelViewMatrix()).z() - around.radius();
    bool const perspective = state.getProjectionMatrix()(2, 3) != 0;
    double const size = m_largest * state.getProjectionMatrix()(1, 1) * viewportHeight / (perspective ? nearest : 1);
    bool const small = (!perspective || nearest > 0) && size < largestPoint;
    return mode == ParticleSystemDrawable::QUAD_SPRITES && small ? ParticleSystemDrawable::SPRITES : mode;
}

void SphereImpostors::draw(osg::RenderInfo & renderInfo, RenderingMode mode) const {
    osg::State * const state = renderInfo.getState();
    osg::Viewport const * const viewport = state ? state->getCurrentViewport() : nullptr;
    if (!viewport || !state->getLastAppliedProgramObject() || size() == 0)
        return;
    auto const height = static_cast<float>(viewport->height());
    RenderingMode const form = cheapest(*state, height, mode);
    setUniform(*state, "viewportHeight", height);
    setUniform(*state, "form", static_cast<int>(form));
    if (form == ParticleSystemDrawable::SPRITES) {
        m_points->drawImplementation(renderInfo);
        return;
    }
    auto * const extensions = state->get<osg::GLExtensions>();
    auto const advancePerInstance = [extensions](GLuint instances) {
        for (GLuint const attribute : {placeAttribute, colorAttribute, rotationAttribute})
            extensions->glVertexAttribDivisor(attribute, instances);
    };
    advancePerInstance(1);
    (form == ParticleSystemDrawable::TRIANGLES ? m_meshes : m_quads)->drawImplementation(renderInfo);
    advancePerInstance(0);
}

void SphereImpostors::releaseGLObjects(osg::State * state) const {
    for (osg::Geometry const * const form : {m_points.get(), m_quads.get(), m_meshes.get()})
        form->releaseGLObjects(state);
}

}
