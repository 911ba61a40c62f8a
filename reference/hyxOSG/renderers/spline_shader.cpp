// The program that bends tube pieces along cubic curves, and the data it reads.
#include "platform/hyxOSG/renderers/spline_shader.h"

#include "reference/hyx/values/number_checks.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/shading/drawing_values.h"
#include "reference/machinery/shading/light_equation.h"
#include "reference/machinery/shading/node_state.h"
#include "reference/machinery/shading/shadow_lookup.h"

#include <algorithm>

namespace hyxOSG {

namespace {

constexpr unsigned int radiusAttribute = 6;
constexpr unsigned int valueAttribute = 7;

char const* const vertexSource = R"(#version 150 compatibility
in float stationRadius;
in float stationShift;
out vec3 position;
out vec4 rotation;
out float radius;
out float shift;
void main() {
    position = gl_Vertex.xyz;
    rotation = gl_Color;
    radius = stationRadius;
    shift = stationShift;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
)";

char const* const geometrySource = R"(#version 150 compatibility
layout(lines) in;
layout(triangle_strip, max_vertices = 34) out;
uniform int circleResolution;
uniform vec3 circleNormal;
in vec3 position[];
in vec4 rotation[];
in float radius[];
in float shift[];
out vec3 eyePosition;
out vec3 eyeNormal;
out float redShift;

vec3 turn(vec4 q, vec3 v) {
    return v + 2.0 * cross(q.xyz, cross(q.xyz, v) + q.w * v);
}

void emitCorner(int end, vec3 direction) {
    vec3 normal = turn(rotation[end], direction);
    vec4 eye = gl_ModelViewMatrix * vec4(position[end] + radius[end] * normal, 1.0);
    eyePosition = eye.xyz;
    eyeNormal = gl_NormalMatrix * normal;
    redShift = shift[end];
    gl_ClipVertex = eye;
    gl_Position = gl_ProjectionMatrix * eye;
    EmitVertex();
}

void main() {
    int sides = clamp(circleResolution, 4, 16);
    vec3 first = normalize(vec3(circleNormal.xy, 0.0));
    vec3 second = vec3(-first.y, first.x, 0.0);
    for (int i = 0; i <= sides; ++i) {
        float angle = radians(360.0) * float(i) / float(sides);
        vec3 direction = cos(angle) * first + sin(angle) * second;
        emitCorner(1, direction);
        emitCorner(0, direction);
    }
    EndPrimitive();
}
)";

char const* const fragmentSource = R"(#version 150 compatibility
uniform vec4 cylinderColor;
uniform bool useRedShiftScale;
in vec3 eyePosition;
in vec3 eyeNormal;
in float redShift;

vec3 mattColor(vec3 place, vec3 normal, vec3 color);

void main() {
    float share = useRedShiftScale ? clamp(redShift, 0.0, 1.0) : 0.0;
    vec3 color = mix(cylinderColor.rgb, vec3(1.0, 0.0, 0.0), share);
    vec3 normal = normalize(gl_FrontFacing ? eyeNormal : -eyeNormal);
    color = mattColor(eyePosition, normal, color);
    gl_FragColor = vec4(color, cylinderColor.a);
}
)";

osg::Vec4 toVec4(hyx::Quat const& rotation) {
    return osg::Vec4(toOsg(rotation).asVec4());
}

} // namespace

SplineShader::SplineShader(std::size_t capacity)
    : m_geometry(new osg::Geometry),
      m_lines(new osg::DrawArrays(GL_LINES, 0, 0)),
      m_vertices(new osg::Vec3Array),
      m_rotations(new osg::Vec4Array),
      m_radii(new osg::FloatArray),
      m_values(new osg::FloatArray),
      m_program(new osg::Program),
      m_circleResolution(new osg::Uniform("circleResolution", 12)),
      m_cylinderColor(new osg::Uniform("cylinderColor", osg::Vec4(0.7f, 0.7f, 0.7f, 1))),
      m_circleNormal(new osg::Uniform("circleNormal", osg::Vec3(1, 0, 0))),
      m_useRedShift(new osg::Uniform("useRedShiftScale", true)) {
    for (osg::Array* array : std::initializer_list<osg::Array*>{m_vertices, m_rotations, m_radii, m_values})
        array->reserveArray(static_cast<unsigned int>(2 * std::min<std::size_t>(capacity, 1u << 24)));
    m_geometry->setName("spline");
    m_geometry->setUseDisplayList(false);
    m_geometry->setUseVertexBufferObjects(true);
    m_geometry->setDataVariance(osg::Object::DYNAMIC);
    m_geometry->setVertexArray(m_vertices);
    m_geometry->setColorArray(m_rotations, osg::Array::BIND_PER_VERTEX);
    m_geometry->setVertexAttribArray(radiusAttribute, m_radii, osg::Array::BIND_PER_VERTEX);
    m_geometry->setVertexAttribArray(valueAttribute, m_values, osg::Array::BIND_PER_VERTEX);
    m_geometry->addPrimitiveSet(m_lines);
    addDrawable(m_geometry);
    createState();
}

void SplineShader::createState() {
    m_program->setName("spline");
    m_program->addShader(new osg::Shader(osg::Shader::VERTEX, vertexSource));
    m_program->addShader(new osg::Shader(osg::Shader::GEOMETRY, geometrySource));
    m_program->addShader(new osg::Shader(osg::Shader::FRAGMENT, fragmentSource));
    m_program->addShader(decorator::lightEquationShader());
    m_program->addShader(decorator::shadowLookupShader());
    m_program->addBindAttribLocation("stationRadius", radiusAttribute);
    m_program->addBindAttribLocation("stationShift", valueAttribute);
    osg::StateSet* const state = getOrCreateStateSet();
    // What draws the scene may bring its own program, which cannot make tubes of lines.
    state->setAttributeAndModes(m_program, keptOn);
    decorator::declareDrawingValues(*state, false); // the tubes' corners are not the vertex shader's
    for (osg::Uniform* uniform :
         {m_circleResolution.get(), m_cylinderColor.get(), m_circleNormal.get(), m_useRedShift.get()})
        state->addUniform(uniform);
}

void SplineShader::add(hyx::Vec3 const& begin, hyx::Vec3 const& end, double radius, hyx::Vec2 const& values) {
    hyx::requirePositive(radius, "the radius of a spline element");
    hyx::requireFinite(begin, "the begin of a spline element");
    hyx::requireFinite(end, "the end of a spline element");
    osg::Vec4 const rotation = toVec4(hyx::Quat(hyx::Vec3(0, 0, 1), end - begin));
    auto const r = static_cast<float>(radius);
    addElement({toOsg(begin), rotation, r, static_cast<float>(values.x)},
               {toOsg(end), rotation, r, static_cast<float>(values.y)});
}

void SplineShader::add(hyx::Vec3 const& position, hyx::Quat const& rotation, double radius, double length,
                       double value) {
    hyx::requirePositive(radius, "the radius of a spline element");
    hyx::requireFinite(length, "the length of a spline element");
    hyx::requireFinite(position, "the place of a spline element");
    hyx::Vec3 const end = position + rotation * hyx::Vec3(0, 0, length);
    auto const r = static_cast<float>(radius), shift = static_cast<float>(value);
    addElement({toOsg(position), toVec4(rotation), r, shift}, {toOsg(end), toVec4(rotation), r, shift});
}

void SplineShader::add2(hyx::Vec3 const& position, hyx::Quat const& rotation, double radius, double length,
                        double value) {
    hyx::requirePositive(radius, "the radius of a spline station");
    hyx::requireFinite(position, "the place of a spline station");
    Station const station{toOsg(position), toVec4(rotation), static_cast<float>(radius), static_cast<float>(value)};
    if (m_joins && length != 0)
        addElement(m_last, station);
    m_last = station;
    m_joins = true;
}

void SplineShader::addElement(Station const& from, Station const& to) {
    write(2 * m_added, from);
    write(2 * m_added + 1, to);
    ++m_added;
}

void SplineShader::write(std::size_t place, Station const& station) {
    if (place >= m_vertices->size())
        for (osg::Array* array : std::initializer_list<osg::Array*>{m_vertices, m_rotations, m_radii, m_values})
            array->resizeArray(static_cast<unsigned int>(place + 1));
    (*m_vertices)[place] = station.position;
    (*m_rotations)[place] = station.rotation;
    (*m_radii)[place] = station.radius;
    (*m_values)[place] = station.value;
}

void SplineShader::update() {
    for (osg::Array* array : std::initializer_list<osg::Array*>{m_vertices, m_rotations, m_radii, m_values})
        array->dirty();
    setNumActiveElements(m_added);
    osg::BoundingBox bounds;
    for (std::size_t i = 0; i < 2 * m_added; ++i) {
        osg::Vec3 const reach((*m_radii)[i], (*m_radii)[i], (*m_radii)[i]);
        bounds.expandBy((*m_vertices)[i] - reach);
        bounds.expandBy((*m_vertices)[i] + reach);
    }
    m_geometry->setInitialBound(bounds);
    m_geometry->dirtyBound();
}

void SplineShader::resetCounters() {
    m_added = 0;
    m_joins = false;
}

void SplineShader::setNumActiveElements(std::size_t count) {
    m_lines->setCount(static_cast<int>(2 * std::min(count, m_added)));
    m_lines->dirty();
}

void SplineShader::setUseRedShiftScale(bool use) {
    m_useRedShift->set(use);
}

osg::Program* SplineShader::getProgram() {
    return m_program;
}

osg::Uniform* SplineShader::getCircleResolutionUniform() {
    return m_circleResolution;
}

osg::Uniform* SplineShader::getCylinderColorUniform() {
    return m_cylinderColor;
}

osg::Uniform* SplineShader::getCircleNormalUniform() {
    return m_circleNormal;
}

osg::Vec3Array* SplineShader::getVertexArray() {
    return m_vertices;
}

osg::Vec4Array* SplineShader::getQuatsInColorArray() {
    return m_rotations;
}

osg::FloatArray* SplineShader::getRadiusArray() {
    return m_radii;
}

} // namespace hyxOSG
