// Textures as objects that physics can hold.
#pragma once

#include "platform/hyx/objects/referenced.h"

#include <osg/Texture2D>
#include <osg/ref_ptr>

namespace hyxOSG {

/// A handle around a scene-graph texture that the physics library's objects can share. Holds a reference on it.
class Texture2D : public hyx::Referenced {
public:
    /// Wraps `texture`; null is kept and makes setTexture return false.
    explicit Texture2D(osg::Texture2D* texture);

    /// The wrapped texture, null when there is none.
    osg::Texture2D* getTexture();
    osg::Texture2D const* getTexture() const;

protected:
    ~Texture2D() override;

private:
    osg::ref_ptr<osg::Texture2D> m_texture;
};

} // namespace hyxOSG
