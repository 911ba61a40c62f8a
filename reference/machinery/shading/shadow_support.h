// What a graphics driver can do for shadows, and what stands in for the rest.
#pragma once

#include "platform/hyxOSG/decoration/scene_decorator.h"

#include <osg/Drawable>

#include <atomic>

namespace hyxOSG::decorator {

struct ShadowSupport {
    bool maps = true;    ///< programs, and depth textures to draw into
    bool volumes = true; ///< a stencil buffer, and shadow volumes that end beyond the far plane

    bool operator==(ShadowSupport const&) const = default;
};

/// Whether a software rasterizer draws in the current context; false while there is none.
bool processorDraws();

/// The method itself, or the nearest one that is possible.
SceneDecorator::ShadowMethod nearestMethod(SceneDecorator::ShadowMethod method, ShadowSupport const& support);

/// Finds out, whenever its drawable is drawn in a window, what the window's context can do. Until then everything.
class ShadowSupportProbe : public osg::Drawable::DrawCallback {
public:
    void drawImplementation(osg::RenderInfo& renderInfo, osg::Drawable const* drawable) const override;

    ShadowSupport support() const { return m_support; }

private:
    mutable std::atomic<ShadowSupport> m_support{};
};

} // namespace hyxOSG::decorator
