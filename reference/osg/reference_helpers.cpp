// Reference counting of scene-graph groups.
#include "platform/osg/reference_helpers.h"

#include <osg/Group>

namespace osg {

void Group_reference(osg::Group* group) {
    if (group)
        group->ref();
}

void Group_unreference(osg::Group* group) {
    if (group)
        group->unref();
}

} // namespace osg
