// Shows many bodies as they are at each frame.
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

struct RigidBodySystemDrawable::Implementation {
    std::vector<hyx::ref_ptr<hyx::RigidBody>> bodies;
    SphereImpostors impostors;
};

RigidBodySystemDrawable::RigidBodySystemDrawable() : m_implementation(std::make_unique<Implementation>()) {
    setSupportsDisplayList(false);
    setUseVertexBufferObjects(true);
    setDataVariance(osg::Object::DYNAMIC);
    setStateSet(m_implementation->impostors.state());
    m_implementation->impostors.setShaderMode(ParticleSystemDrawable::ROTATION_SPRITES);
    setUpdateCallback(new ReadBodies);
}

RigidBodySystemDrawable::RigidBodySystemDrawable(RigidBodySystemDrawable const& other, osg::CopyOp const&)
    : RigidBodySystemDrawable() {
    setName(other.getName());
    setNodeMask(other.getNodeMask());
    m_implementation->bodies = other.m_implementation->bodies;
    update();
}

RigidBodySystemDrawable::~RigidBodySystemDrawable() = default;

bool RigidBodySystemDrawable::add(hyx::RigidBody* body) {
    if (!body || std::ranges::find(m_implementation->bodies, body, &hyx::ref_ptr<hyx::RigidBody>::get) !=
                     m_implementation->bodies.end())
        return false;
    auto const& geometries = body->getGeometries();
    bool const onlySpheres =
        std::all_of(geometries.begin(), geometries.end(), [](auto const& geometry) { return sphereOf(*geometry); });
    if (geometries.empty() || !onlySpheres)
        return false;
    m_implementation->bodies.emplace_back(body);
    update();
    return true;
}

bool RigidBodySystemDrawable::remove(hyx::RigidBody* body) {
    bool const removed =
        std::erase_if(m_implementation->bodies, [body](auto const& drawn) { return drawn.get() == body; }) > 0;
    if (removed)
        update();
    return removed;
}

std::size_t RigidBodySystemDrawable::getNumBodies() const {
    return m_implementation->bodies.size();
}

void RigidBodySystemDrawable::update() {
    m_implementation->impostors.begin(m_implementation->bodies.size());
    for (auto const& body : m_implementation->bodies)
        for (auto const& geometry : body->getGeometries())
            if (auto const* const sphere = sphereOf(*geometry))
                m_implementation->impostors.add(toOsg(geometry->getPosition()), static_cast<float>(sphere->getRadius()),
                                                bodyColor, toOsg(geometry->getRotation()));
    m_implementation->impostors.end();
    dirtyBound();
}

void RigidBodySystemDrawable::drawImplementation(osg::RenderInfo& renderInfo) const {
    m_implementation->impostors.draw(renderInfo, ParticleSystemDrawable::QUAD_SPRITES);
}

osg::BoundingBox RigidBodySystemDrawable::computeBoundingBox() const {
    return m_implementation->impostors.bounds();
}

void RigidBodySystemDrawable::releaseGLObjects(osg::State* state) const {
    osg::Drawable::releaseGLObjects(state);
    m_implementation->impostors.releaseGLObjects(state);
}

} // namespace hyxOSG
