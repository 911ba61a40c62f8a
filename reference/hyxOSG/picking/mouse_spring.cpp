// Pulls the held body towards the pointer, and draws the spring.
#include "reference/hyxOSG/picking/mouse_spring.h"

#include "platform/hyx/bodies/frame.h"
#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/machinery/meshes/conversions.h"

#include <osg/Depth>
#include <osg/Geometry>
#include <osg/LineWidth>
#include <osg/MatrixTransform>
#include <osg/ShapeDrawable>

namespace hyxOSG::input {
namespace {

constexpr double frequency = 12;            // rad/s of the spring with the body on it
constexpr double largestAcceleration = 300; // m/s2 that the spring gives at most

} // namespace

MouseSpring::~MouseSpring() {
    release();
}

bool MouseSpring::attach(hyx::RigidBody* body, hyx::Vec3 const& worldPoint) {
    release();
    if (!body || !body->getSimulation() || !body->isEnabled() || body->getMotionControl() != hyx::RigidBody::DYNAMICS)
        return false;
    m_body = body;
    m_target = worldPoint;
    m_joint = new hyx::BallJoint(worldPoint, body);
    m_joint->setCompliance(1 / (body->getMass() * frequency * frequency));
    m_joint->setDamping(2 / frequency);
    double const force = body->getMass() * largestAcceleration;
    for (hyx::UInt row = 0; row < 3; ++row)
        m_joint->setForceRange(-force, force, row);
    body->getSimulation()->add(m_joint);
    return true;
}

void MouseSpring::release() {
    if (m_joint && m_joint->getSimulation())
        m_joint->getSimulation()->remove(m_joint);
    m_joint = nullptr;
    m_body = nullptr;
}

bool MouseSpring::holds() const {
    return m_joint && m_body->getSimulation() && m_joint->getSimulation();
}

void MouseSpring::setTarget(hyx::Vec3 const& worldPoint) {
    m_target = worldPoint;
    if (!holds())
        return;
    m_joint->getAttachmentFrame(1)->setLocalTranslate(worldPoint);
    m_body->setVelocity(m_body->getVelocity()); // a sleeping body would not feel the spring
}

hyx::Vec3 MouseSpring::heldPoint() const {
    return m_joint ? m_joint->getAttachmentTransform(0).getTranslate() : m_target;
}

SpringPicture::SpringPicture(float radius) : m_group(new osg::Group) {
    m_group->setName("PickHandler mouse spring");
    auto* line = new osg::Geometry;
    line->setVertexArray(new osg::Vec3Array(2));
    auto* color = new osg::Vec4Array;
    color->push_back(osg::Vec4(1, 0.55f, 0.1f, 1));
    line->setColorArray(color, osg::Array::BIND_OVERALL);
    line->addPrimitiveSet(new osg::DrawArrays(GL_LINES, 0, 2));
    line->setUseDisplayList(false);
    line->setUseVertexBufferObjects(true);
    line->setDataVariance(osg::Object::DYNAMIC);
    m_group->addChild(line);
    osg::ref_ptr<osg::ShapeDrawable> const ball = new osg::ShapeDrawable(new osg::Sphere(osg::Vec3(), radius));
    ball->setColor(color->front());
    for (int end = 0; end < 2; ++end) {
        auto* place = new osg::MatrixTransform;
        place->addChild(ball);
        m_group->addChild(place);
    }
    osg::StateSet* state = m_group->getOrCreateStateSet();
    state->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    state->setAttributeAndModes(new osg::LineWidth(2));
    state->setAttributeAndModes(new osg::Depth(osg::Depth::ALWAYS));
    state->setRenderBinDetails(20, "RenderBin");
    hide();
}

void SpringPicture::show(hyx::Vec3 const& held, hyx::Vec3 const& target) {
    auto& line = static_cast<osg::Geometry&>(*m_group->getChild(0));
    auto& ends = static_cast<osg::Vec3Array&>(*line.getVertexArray());
    osg::Vec3d const places[] = {toOsg(held), toOsg(target)};
    for (unsigned int end = 0; end < 2; ++end) {
        ends[end] = places[end];
        static_cast<osg::MatrixTransform&>(*m_group->getChild(1 + end)).setMatrix(osg::Matrix::translate(places[end]));
    }
    ends.dirty();
    line.dirtyBound();
    m_group->setNodeMask(ExampleApplication::MAIN_SCENE_MASK); // without part in the shadows
}

void SpringPicture::hide() {
    m_group->setNodeMask(0);
}

} // namespace hyxOSG::input
