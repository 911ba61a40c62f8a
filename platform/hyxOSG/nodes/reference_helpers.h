// Reference counting of nodes, as functions.
#pragma once

namespace hyxOSG {
class GeometryNode;
class Transform;

/// Takes one reference on `node`; nothing for null.
void GeometryNode_reference(hyxOSG::GeometryNode* node);

/// Releases one reference on `node`, which destroys it when it was the last; nothing for null.
void GeometryNode_unreference(hyxOSG::GeometryNode* node);

/// Takes one reference on `transform`; nothing for null.
void Transform_reference(hyxOSG::Transform* transform);

/// Releases one reference on `transform`, which destroys it when it was the last; nothing for null.
void Transform_unreference(hyxOSG::Transform* transform);

} // namespace hyxOSG
