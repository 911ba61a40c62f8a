// Gathers what throws shadows.
#include "reference/hyxOSG/decoration/casters.h"

#include "platform/hyxOSG/application/example_application.h"

namespace hyxOSG::decorator {

Casters::Casters() {
    setTraversalMask(ExampleApplication::CASTS_SHADOWS_MASK);
}

void Casters::apply(osg::Drawable& drawable) {
    m_all.push_back({drawable.getBoundingBox(), getMatrixStack().empty() ? osg::Matrixd() : getMatrixStack().back()});
    osg::ComputeBoundsVisitor::apply(drawable);
}

} // namespace hyxOSG::decorator
