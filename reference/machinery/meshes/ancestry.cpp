// Walks up through the scene, past each node once: the ways up from a shared node double with every level.
#include "reference/machinery/meshes/ancestry.h"

#include <unordered_set>
#include <vector>

namespace hyxOSG {

bool isAbove(osg::Node const* group, osg::Node const& node) {
    osg::Node const* lowest = &node;
    for (; lowest != group && lowest->getNumParents() == 1; lowest = lowest->getParent(0)) {
    }
    if (lowest == group)
        return true;
    std::unordered_set<osg::Node const*> seen{lowest};
    std::vector<osg::Node const*> waiting{lowest};
    while (!waiting.empty()) {
        osg::Node const* const place = waiting.back();
        waiting.pop_back();
        if (place == group)
            return true;
        for (unsigned int i = 0; i < place->getNumParents(); ++i)
            if (seen.insert(place->getParent(i)).second)
                waiting.push_back(place->getParent(i));
    }
    return false;
}

} // namespace hyxOSG
