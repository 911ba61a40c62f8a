// Holds a texture for objects that know nothing of the scene graph.
#include "platform/hyxOSG/nodes/texture2d.h"

namespace hyxOSG {

Texture2D::Texture2D(osg::Texture2D* texture) : m_texture(texture) {}

Texture2D::~Texture2D() = default;

osg::Texture2D* Texture2D::getTexture() {
    return m_texture;
}

osg::Texture2D const* Texture2D::getTexture() const {
    return m_texture;
}

} // namespace hyxOSG
