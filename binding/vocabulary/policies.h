// Who counts references to the objects that Python constructs and deletes.
//
// A constructor takes one reference for the Python object, a destructor drops it; a class without its own policy is
// simply deleted. Classes without a destructor entry keep the constructor's reference for the life of the process.
#pragma once

#include "platform/hyx/objects/referenced.h"

#include <osg/Group>
#include <osg/Referenced>

#include <type_traits>

namespace hyxOSG {
class GeometryNode;
class Text;
class Transform;
class Texture2D;
class ParticleSystemDrawable;
void GeometryNode_reference(GeometryNode* node);
void GeometryNode_unreference(GeometryNode* node);
void Text_reference(Text* text);
void Text_unreference(Text* text);
void Transform_reference(Transform* transform);
void Transform_unreference(Transform* transform);
} // namespace hyxOSG

namespace osg {
void Group_reference(Group* group);
void Group_unreference(Group* group);
} // namespace osg

namespace vocabulary {

// The rule for a class by what it derives from. Specialise for a class with a rule of its own.
template <class T>
struct ReferencePolicy {
    static void take(T* object) {
        if constexpr (std::is_base_of_v<osg::Group, T>)
            osg::Group_reference(object);
        else if constexpr (std::is_base_of_v<osg::Referenced, T>)
            static_cast<osg::Referenced*>(object)->ref();
        else if constexpr (std::is_base_of_v<hyx::Referenced, T>)
            object->reference();
    }

    static void drop(T* object) {
        if constexpr (std::is_base_of_v<osg::Group, T>)
            osg::Group_unreference(object);
        else if constexpr (std::is_base_of_v<osg::Referenced, T>)
            static_cast<osg::Referenced*>(object)->unref();
        else if constexpr (std::is_base_of_v<hyx::Referenced, T>)
            object->unreference();
        else
            delete object;
    }
};

template <>
struct ReferencePolicy<hyxOSG::GeometryNode> {
    static void take(hyxOSG::GeometryNode* object) { hyxOSG::GeometryNode_reference(object); }

    static void drop(hyxOSG::GeometryNode* object) { hyxOSG::GeometryNode_unreference(object); }
};

template <>
struct ReferencePolicy<hyxOSG::Text> {
    static void take(hyxOSG::Text* object) { hyxOSG::Text_reference(object); }

    static void drop(hyxOSG::Text* object) { hyxOSG::Text_unreference(object); }
};

template <>
struct ReferencePolicy<hyxOSG::Transform> {
    static void take(hyxOSG::Transform* object) { hyxOSG::Transform_reference(object); }

    static void drop(hyxOSG::Transform* object) { hyxOSG::Transform_unreference(object); }
};

// The drawable is handed over uncounted: whoever attaches it to the scene counts.
template <>
struct ReferencePolicy<hyxOSG::ParticleSystemDrawable> {
    static void take(hyxOSG::ParticleSystemDrawable*) {}
};

// Whether dropping the constructor's reference deletes the object.
template <class T>
bool ends_when_dropped([[maybe_unused]] T const* object) {
    if constexpr (std::is_base_of_v<osg::Referenced, T>)
        return object->referenceCount() <= 1;
    else if constexpr (std::is_base_of_v<hyx::Referenced, T>)
        return object->getReferenceCount() <= 1;
    else
        return true;
}

} // namespace vocabulary
