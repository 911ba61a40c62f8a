// Nodes of the scene graph and the visitors that walk over them.
#include "modules/osg/scene_graph_rows.h"
#include "platform/osg/attachment.h"

#include <osg/CopyOp>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Group>
#include <osg/LightSource>
#include <osg/MatrixTransform>
#include <osg/NodeVisitor>
#include <osg/PositionAttitudeTransform>
#include <osg/RenderInfo>
#include <osg/Switch>

namespace {

// Places out of range, which the scene graph itself does not check.
osg::Node* child(osg::Group& self, unsigned int place) {
    if (place >= self.getNumChildren())
        throw std::out_of_range("there is no child " + std::to_string(place));
    return self.getChild(place);
}

osg::Group* parent(osg::Node& self, unsigned int place) {
    if (place >= self.getNumParents())
        throw std::out_of_range("there is no parent " + std::to_string(place));
    return self.getParent(place);
}

osg::Drawable* drawable(osg::Geode& self, unsigned int place) {
    osg::Node* const node = child(self, place);
    return node ? node->asDrawable() : nullptr;
}

osg::MatrixTransform* as_matrix_transform(osg::Node& self) {
    return dynamic_cast<osg::MatrixTransform*>(&self);
}

// Whether there is a node that may stand in the group.
bool fits(osg::Group const& self, osg::Node const* node) {
    if (node)
        osg::requireAttachable(self, *node);
    return node;
}

bool set_child(osg::Group& self, unsigned int place, osg::Node* node) {
    child(self, place);
    return fits(self, node) && self.setChild(place, node);
}

// The library would make room for as many choices as the number says.
void show_only(osg::Switch& self, unsigned int place) {
    child(self, place);
    self.setSingleChildOn(place);
}

bool add_child(osg::Group& self, osg::Node* node) {
    return fits(self, node) && self.addChild(node);
}

bool insert_child(osg::Group& self, unsigned int place, osg::Node* node) {
    return fits(self, node) && self.insertChild(place, node);
}

bool remove_child(osg::Group& self, osg::Node* node) {
    return self.removeChild(node);
}

bool replace_child(osg::Group& self, osg::Node* old, osg::Node* node) {
    return fits(self, node) && self.replaceChild(old, node);
}

bool contains(osg::Group const& self, osg::Node const* node) {
    return self.containsNode(node);
}

unsigned int child_index(osg::Group const& self, osg::Node const* node) {
    return self.getChildIndex(node);
}

bool add_drawable(osg::Geode& self, osg::Drawable* drawable) {
    return drawable && self.addDrawable(drawable);
}

bool remove_drawable(osg::Geode& self, osg::Drawable* drawable) {
    return self.removeDrawable(drawable);
}

void set_state(osg::Node& self, osg::StateSet* state) {
    self.setStateSet(state);
}

void set_light(osg::LightSource& self, osg::Light* light) {
    self.setLight(light);
}

osg::BoundingSphere bound(osg::Node const& self) {
    return self.getBound();
}

osg::BoundingBox* make_bounding_box(osg::Vec3f const& lower, osg::Vec3f const& upper) {
    return new osg::BoundingBox(lower, upper);
}

osg::Vec3f lower_corner(osg::BoundingBox const& self) {
    return self._min;
}

osg::Vec3f upper_corner(osg::BoundingBox const& self) {
    return self._max;
}

osg::Vec3f box_center(osg::BoundingBox const& self) {
    return self.center();
}

float box_radius(osg::BoundingBox const& self) {
    return self.radius();
}

void expand(osg::BoundingBox& self, osg::Vec3f const& point) {
    self.expandBy(point);
}

osg::BoundingSphere* bounding_sphere(osg::Vec3f const& center, float radius) {
    return new osg::BoundingSphere(center, radius);
}

osg::Vec3f sphere_center(osg::BoundingSphere const& self) {
    return self.center();
}

float sphere_radius(osg::BoundingSphere const& self) {
    return self.radius();
}

void visit(osg::Node& self, osg::NodeVisitor& visitor) {
    self.accept(visitor);
}

constexpr Declared nodes_rows[] = {
    FUNCTION(Referenced_referenceCount, METHOD(osg::Referenced, referenceCount, () const)),
    SHARED_CLASS_ROWS(osg::Referenced, Referenced),

    FUNCTION(Object_getName, METHOD(osg::Object, getName, () const)),
    FUNCTION(Object_setName, METHOD(osg::Object, setName, (std::string const&))),
    FUNCTION(Object_className, METHOD(osg::Object, className, () const)),
    FUNCTION(Object_libraryName, METHOD(osg::Object, libraryName, () const)),
    SHARED_CLASS_ROWS(osg::Object, Object),

    FUNCTION(new_CopyOp, NEW(osg::CopyOp, (unsigned int), 0u)),
    FUNCTION(delete_CopyOp, DELETE(osg::CopyOp)),
    REGISTER(osg::CopyOp, CopyOp),
    INIT(CopyOp),

    FUNCTION(new_RenderInfo, NEW(osg::RenderInfo, ())),
    FUNCTION(delete_RenderInfo, DELETE(osg::RenderInfo)),
    REGISTER(osg::RenderInfo, RenderInfo),
    INIT(RenderInfo),

    FUNCTION(new_Node, NEW(osg::Node, ())),
    FUNCTION(Node_getNumParents, METHOD(osg::Node, getNumParents, () const)),
    FUNCTION(Node_getParent, CONTAINER(SHARED(ADAPTER(osg::Node, getParent, parent, (unsigned int))))),
    FUNCTION(Node_setNodeMask, METHOD(osg::Node, setNodeMask, (unsigned int))),
    FUNCTION(Node_getNodeMask, METHOD(osg::Node, getNodeMask, () const)),
    FUNCTION(Node_getStateSet, SHARED(METHOD(osg::Node, getStateSet, ()))),
    FUNCTION(Node_getOrCreateStateSet, SHARED(METHOD(osg::Node, getOrCreateStateSet, ()))),
    FUNCTION(Node_setStateSet, ADAPTER(osg::Node, setStateSet, set_state, (osg::StateSet*))),
    FUNCTION(Node_getBound, ADAPTER(osg::Node, getBound, bound, () const)),
    FUNCTION(Node_dirtyBound, METHOD(osg::Node, dirtyBound, ())),
    FUNCTION(Node_accept, ADAPTER(osg::Node, accept, visit, (osg::NodeVisitor&))),
    FUNCTION(Node_asGroup, SHARED(METHOD(osg::Node, asGroup, ()))),
    FUNCTION(Node_asGeode, SHARED(METHOD(osg::Node, asGeode, ()))),
    FUNCTION(Node_asDrawable, SHARED(METHOD(osg::Node, asDrawable, ()))),
    FUNCTION(Node_asGeometry, SHARED(METHOD(osg::Node, asGeometry, ()))),
    FUNCTION(Node_asMatrixTransform, SHARED(ADAPTER(osg::Node, asMatrixTransform, as_matrix_transform, ()))),
    SHARED_CLASS_ROWS(osg::Node, Node),

    FUNCTION(new_Group, NEW(osg::Group, ())),
    FUNCTION(Group_addChild, ADAPTER(osg::Group, addChild, add_child, (osg::Node*))),
    FUNCTION(Group_insertChild, ADAPTER(osg::Group, insertChild, insert_child, (unsigned int, osg::Node*))),
    FUNCTION(Group_setChild, CONTAINER(ADAPTER(osg::Group, setChild, set_child, (unsigned int, osg::Node*)))),
    FUNCTION(Group_removeChild, ADAPTER(osg::Group, removeChild, remove_child, (osg::Node*))),
    FUNCTION(Group_replaceChild, ADAPTER(osg::Group, replaceChild, replace_child, (osg::Node*, osg::Node*))),
    FUNCTION(Group_containsNode, ADAPTER(osg::Group, containsNode, contains, (osg::Node const*) const)),
    FUNCTION(Group_getChildIndex, ADAPTER(osg::Group, getChildIndex, child_index, (osg::Node const*) const)),
    FUNCTION(Group_getNumChildren, METHOD(osg::Group, getNumChildren, () const)),
    FUNCTION(Group_getChild, CONTAINER(SHARED(ADAPTER(osg::Group, getChild, child, (unsigned int))))),
    SHARED_CLASS_ROWS(osg::Group, Group),

    FUNCTION(new_Geode, NEW(osg::Geode, ())),
    FUNCTION(Geode_addDrawable, ADAPTER(osg::Geode, addDrawable, add_drawable, (osg::Drawable*))),
    FUNCTION(Geode_removeDrawable, ADAPTER(osg::Geode, removeDrawable, remove_drawable, (osg::Drawable*))),
    FUNCTION(Geode_getNumDrawables, METHOD(osg::Geode, getNumDrawables, () const)),
    FUNCTION(Geode_getDrawable, CONTAINER(SHARED(ADAPTER(osg::Geode, getDrawable, drawable, (unsigned int))))),
    SHARED_CLASS_ROWS(osg::Geode, Geode),

    FUNCTION(new_Switch, NEW(osg::Switch, ())),
    FUNCTION(Switch_setAllChildrenOn, METHOD(osg::Switch, setAllChildrenOn, ())),
    FUNCTION(Switch_setAllChildrenOff, METHOD(osg::Switch, setAllChildrenOff, ())),
    FUNCTION(Switch_setSingleChildOn, CONTAINER(ADAPTER(osg::Switch, setSingleChildOn, show_only, (unsigned int)))),
    SHARED_CLASS_ROWS(osg::Switch, Switch),

    SHARED_CLASS_ROWS(osg::Transform, Transform),
    FUNCTION(new_MatrixTransform, NEW(osg::MatrixTransform, ()), NEW(osg::MatrixTransform, (osg::Matrixd const&))),
    FUNCTION(MatrixTransform_setMatrix, METHOD(osg::MatrixTransform, setMatrix, (osg::Matrixd const&))),
    FUNCTION(MatrixTransform_getMatrix, METHOD(osg::MatrixTransform, getMatrix, () const)),
    SHARED_CLASS_ROWS(osg::MatrixTransform, MatrixTransform),
    FUNCTION(new_PositionAttitudeTransform, NEW(osg::PositionAttitudeTransform, ())),
    FUNCTION(PositionAttitudeTransform_setPosition,
             METHOD(osg::PositionAttitudeTransform, setPosition, (osg::Vec3d const&))),
    FUNCTION(PositionAttitudeTransform_getPosition, METHOD(osg::PositionAttitudeTransform, getPosition, () const)),
    FUNCTION(PositionAttitudeTransform_setAttitude,
             METHOD(osg::PositionAttitudeTransform, setAttitude, (osg::Quat const&))),
    FUNCTION(PositionAttitudeTransform_setScale, METHOD(osg::PositionAttitudeTransform, setScale, (osg::Vec3d const&))),
    SHARED_CLASS_ROWS(osg::PositionAttitudeTransform, PositionAttitudeTransform),

    FUNCTION(new_Light, NEW(osg::Light, ()), NEW(osg::Light, (unsigned int))),
    FUNCTION(Light_getLightNum, METHOD(osg::Light, getLightNum, () const)),
    FUNCTION(Light_setPosition, METHOD(osg::Light, setPosition, (osg::Vec4f const&))),
    FUNCTION(Light_getPosition, METHOD(osg::Light, getPosition, () const)),
    FUNCTION(Light_setAmbient, METHOD(osg::Light, setAmbient, (osg::Vec4f const&))),
    FUNCTION(Light_setDiffuse, METHOD(osg::Light, setDiffuse, (osg::Vec4f const&))),
    FUNCTION(Light_getDiffuse, METHOD(osg::Light, getDiffuse, () const)),
    FUNCTION(Light_setSpecular, METHOD(osg::Light, setSpecular, (osg::Vec4f const&))),
    SHARED_CLASS_ROWS(osg::Light, Light),
    FUNCTION(new_LightSource, NEW(osg::LightSource, ())),
    FUNCTION(LightSource_getLight, SHARED(METHOD(osg::LightSource, getLight, ()))),
    FUNCTION(LightSource_setLight, ADAPTER(osg::LightSource, setLight, set_light, (osg::Light*))),
    SHARED_CLASS_ROWS(osg::LightSource, LightSource),

    FUNCTION(new_NodeVisitor,
             NEW(osg::NodeVisitor, (osg::NodeVisitor::TraversalMode), osg::NodeVisitor::TRAVERSE_ALL_CHILDREN)),
    FUNCTION(NodeVisitor_setVisitorType, METHOD(osg::NodeVisitor, setVisitorType, (osg::NodeVisitor::VisitorType))),
    FUNCTION(NodeVisitor_getVisitorType, METHOD(osg::NodeVisitor, getVisitorType, () const)),
    SHARED_CLASS_ROWS(osg::NodeVisitor, NodeVisitor),

    FUNCTION(new_BoundingBox, NEW(osg::BoundingBox, ()),
             MAKE(osg::BoundingBox, make_bounding_box, (osg::Vec3f const&, osg::Vec3f const&))),
    FUNCTION(delete_BoundingBox, DELETE(osg::BoundingBox)),
    FUNCTION(BoundingBox_valid, METHOD(osg::BoundingBox, valid, () const)),
    FUNCTION(BoundingBox_lower, ADAPTER(osg::BoundingBox, lower, lower_corner, () const)),
    FUNCTION(BoundingBox_upper, ADAPTER(osg::BoundingBox, upper, upper_corner, () const)),
    FUNCTION(BoundingBox_center, ADAPTER(osg::BoundingBox, center, box_center, () const)),
    FUNCTION(BoundingBox_radius, ADAPTER(osg::BoundingBox, radius, box_radius, () const)),
    FUNCTION(BoundingBox_expandBy, ADAPTER(osg::BoundingBox, expandBy, expand, (osg::Vec3f const&))),
    REGISTER(osg::BoundingBox, BoundingBox),
    INIT(BoundingBox),
    FUNCTION(new_BoundingSphere, NEW(osg::BoundingSphere, ()),
             MAKE(osg::BoundingSphere, bounding_sphere, (osg::Vec3f const&, float))),
    FUNCTION(delete_BoundingSphere, DELETE(osg::BoundingSphere)),
    FUNCTION(BoundingSphere_valid, METHOD(osg::BoundingSphere, valid, () const)),
    FUNCTION(BoundingSphere_center, ADAPTER(osg::BoundingSphere, center, sphere_center, () const)),
    FUNCTION(BoundingSphere_radius, ADAPTER(osg::BoundingSphere, radius, sphere_radius, () const)),
    REGISTER(osg::BoundingSphere, BoundingSphere),
    INIT(BoundingSphere),
};

} // namespace

ROWS(nodes_rows);
