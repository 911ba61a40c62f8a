// Gathers what throws shadows, and tells whether it is as before.
#include "reference/hyxOSG/decoration/casters.h"

#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "reference/machinery/meshes/round_form.h"
#include "reference/machinery/shading/surface_program.h"

#include <osg/CullFace>
#include <osg/Geode>
#include <osg/MatrixTransform>
#include <osg/PositionAttitudeTransform>
#include <osg/Switch>

#include <bit>
#include <typeinfo>

namespace hyxOSG::decorator {
namespace {

/// Whether nodes of its class draw what is below them always the same way.
bool isPlain(osg::Node const& node) {
    std::type_info const& type = typeid(node);
    return type == typeid(osg::Group) || type == typeid(osg::Geode) || type == typeid(osg::MatrixTransform) ||
           type == typeid(osg::PositionAttitudeTransform) || type == typeid(GeometryNode) ||
           type == typeid(RoundForm) || type == typeid(osg::Switch) || type == typeid(osg::Geometry);
}

/// Whether an attribute leaves the depths that are drawn as they are, whatever its values.
bool colorsOnly(osg::StateAttribute const& attribute) {
    switch (attribute.getType()) {
    case osg::StateAttribute::MATERIAL:
    case osg::StateAttribute::LIGHT:
    case osg::StateAttribute::LIGHTMODEL:
    case osg::StateAttribute::SHADEMODEL:
    case osg::StateAttribute::BLENDFUNC:
    case osg::StateAttribute::BLENDCOLOR:
        return true;
    case osg::StateAttribute::PROGRAM:
        return &attribute == &surfaceProgram();
    default:
        return false;
    }
}

/// Which values of an attribute shape what is drawn; none where only its class could tell.
std::optional<std::uint64_t> shapingValues(osg::StateAttribute const& attribute) {
    if (auto const* const face = dynamic_cast<osg::CullFace const*>(&attribute))
        return face->getMode();
    return colorsOnly(attribute) ? std::optional<std::uint64_t>(0) : std::nullopt;
}

std::uint64_t number(void const* pointer) {
    return reinterpret_cast<std::uintptr_t>(pointer);
}

} // namespace

Casters::Casters() {
    setTraversalMask(ExampleApplication::CASTS_SHADOWS_MASK);
}

void Casters::apply(osg::Node& node) {
    note(node);
    traverse(node);
}

void Casters::apply(osg::Transform& transform) {
    note(transform);
    osg::ComputeBoundsVisitor::apply(transform);
}

void Casters::apply(osg::Drawable& drawable) {
    m_all.push_back({drawable.getBoundingBox(), getMatrixStack().empty() ? osg::Matrixd() : getMatrixStack().back()});
    osg::ComputeBoundsVisitor::apply(drawable);
    note(drawable);
    for (unsigned int i = 0; i < 16; ++i)
        note(std::bit_cast<std::uint64_t>(m_all.back().toScene.ptr()[i]));
    if (osg::Geometry const* const geometry = drawable.asGeometry())
        note(*geometry);
    m_steady = m_steady && !drawable.getDrawCallback();
}

std::vector<osg::Vec3d> Casters::corners() const {
    std::vector<osg::Vec3d> places;
    places.reserve(8 * m_all.size());
    for (Caster const& caster : m_all)
        for (unsigned int i = 0; caster.box.valid() && i < 8; ++i)
            places.push_back(osg::Vec3d(caster.box.corner(i)) * caster.toScene);
    return places;
}

std::optional<std::uint64_t> Casters::stamp() const {
    return m_steady ? std::optional(m_stamp) : std::nullopt;
}

void Casters::note(std::uint64_t value) {
    m_stamp = std::rotl((m_stamp ^ value) * 0x9E3779B97F4A7C15u, 29);
}

void Casters::note(osg::Node const& node) {
    m_steady = m_steady && isPlain(node) && !node.getCullCallback();
    if (osg::StateSet const* const state = node.getStateSet())
        note(*state);
    if (osg::Switch const* const choice = node.asSwitch())
        for (bool const shown : choice->getValueList())
            note(shown);
}

void Casters::note(osg::StateSet const& state) {
    for (auto const& [type, entry] : state.getAttributeList()) {
        std::optional<std::uint64_t> const values = shapingValues(*entry.first);
        m_steady = m_steady && values;
        note(number(entry.first));
        note(entry.second);
        note(values.value_or(0));
    }
    for (auto const& [mode, value] : state.getModeList())
        note(std::uint64_t(mode) << 32 | value);
}

void Casters::note(osg::Geometry const& geometry) {
    m_steady = m_steady && geometry.getUseVertexBufferObjects(); // which are written again when counts tell so
    note(number(&geometry));
    if (osg::Array const* const vertices = geometry.getVertexArray()) {
        note(number(vertices));
        note(vertices->getModifiedCount());
    }
    for (auto const& primitives : geometry.getPrimitiveSetList()) {
        note(number(primitives));
        note(primitives->getModifiedCount());
    }
}

} // namespace hyxOSG::decorator
