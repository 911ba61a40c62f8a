#include "platform/hyxOSG/nodes/rigid_body_system_drawable.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxCollide/sphere.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/meshes/sphere_impostors.h"

#include <algorithm>
#include <vector>

namespace hyxOSG {
namespace {

osg::Vec4 const bodyColor(0.8f, 0.8f, 0.8f, 1);

hyxCollide::Sphere const* sphereOf(hyxCollide::Geometry const& geometry) {
    return dynamic_cast<hyxCollide::Sphere const*>(geometry.getShape());
}

/// Reads the bodies at every update traversal.
struct ReadBodies : osg::DrawableUpdateCallback {
    void update(osg::NodeVisitor*, osg::Drawable* drawable) override {
        static_cast<RigidBodySystemDrawable*>(drawable)->update();
    }
};

} // namespace

struct RigidBodySystemDrawable::Impl {
    std::vector<hyx::ref_ptr<hyx::RigidBody>> bodies;
    SphereImpostors impostors;
};

RigidBodySystemDrawable::RigidBodySystemDrawable() : m_impl(std::make_unique<Impl>()) {
    setSupportsDisplayList(false);
    setUseVertexBufferObjects(true);
    setDataVariance(osg::Object::DYNAMIC);
    setStateSet(m_impl->impostors.state());
    m_impl->impostors.setShaderMode(ParticleSystemDrawable::ROTATION_SPRITES);
    setUpdateCallback(new ReadBodies);
}

RigidBodySystemDrawable::RigidBodySystemDrawable(RigidBodySystemDrawable const& other, osg::CopyOp const&)
    : RigidBodySystemDrawable() {
    setName(other.getName());
    setNodeMask(other.getNodeMask());
    m_impl->bodies = other.m_impl->bodies;
    update();
}

RigidBodySystemDrawable::~RigidBodySystemDrawable() = default;

bool RigidBodySystemDrawable::add(hyx::RigidBody* body) {
    if (!body || std::ranges::find(m_impl->bodies, body, &hyx::ref_ptr<hyx::RigidBody>::get) != m_impl->bodies.end())
        return false;
    auto const& geometries = body->getGeometries();
    bool const onlySpheres =
        std::all_of(geometries.begin(), geometries.end(), [](auto const& geometry) { return sphereOf(*geometry); });
    if (geometries.empty() || !onlySpheres)
        return false;
    m_impl->bodies.emplace_back(body);
    update();
    return true;
}

bool RigidBodySystemDrawable::remove(hyx::RigidBody* body) {
    bool const removed = std::erase_if(m_impl->bodies, [body](auto const& drawn) { return drawn.get() == body; }) > 0;
    if (removed)
        update();
    return removed;
}

std::size_t RigidBodySystemDrawable::getNumBodies() const {
    return m_impl->bodies.size();
}

void RigidBodySystemDrawable::update() {
    m_impl->impostors.begin(m_impl->bodies.size());
    for (auto const& body : m_impl->bodies)
        for (auto const& geometry : body->getGeometries())
            if (auto const* const sphere = sphereOf(*geometry))
                m_impl->impostors.add(toOsg(geometry->getPosition()), static_cast<float>(sphere->getRadius()),
                                      bodyColor, toOsg(geometry->getRotation()));
    m_impl->impostors.end();
    dirtyBound();
}

void RigidBodySystemDrawable::drawImplementation(osg::RenderInfo& renderInfo) const {
    m_impl->impostors.draw(renderInfo, ParticleSystemDrawable::QUAD_SPRITES);
}

osg::BoundingBox RigidBodySystemDrawable::computeBoundingBox() const {
    return m_impl->impostors.bounds();
}

void RigidBodySystemDrawable::releaseGLObjects(osg::State* state) const {
    osg::Drawable::releaseGLObjects(state);
    m_impl->impostors.releaseGLObjects(state);
}

} // namespace hyxOSG
