// Finds rings and measures depths without recursion, and past each node once.
#include "platform/osg/attachment.h"

#include "reference/machinery/meshes/ancestry.h"

#include <osg/Group>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

namespace osg {
namespace {

constexpr unsigned int mostLevels = 1000; // a traversal takes about 1 kB of stack a level, threads have 8 MB or less

struct Upwards {
    static unsigned int count(Node const& node) { return node.getNumParents(); }

    static Node const* next(Node const& node, unsigned int place) { return node.getParent(place); }
};

struct Downwards {
    static unsigned int count(Node const& node) {
        Group const* const group = node.asGroup();
        return group ? group->getNumChildren() : 0;
    }

    static Node const* next(Node const& node, unsigned int place) { return node.asGroup()->getChild(place); }
};

/// How many nodes the longest way from `start` passes, itself counted.
template <class Direction>
unsigned int longestWay(Node const& start) {
    Node const* single = &start;
    unsigned int levels = 1;
    for (; Direction::count(*single) == 1; ++levels)
        single = Direction::next(*single, 0);
    if (Direction::count(*single) == 0)
        return levels;

    struct Visit {
        Node const* node;
        unsigned int next;
        unsigned int below;
    };

    std::unordered_map<Node const*, unsigned int> known;
    std::vector<Visit> way{{single, 0, 0}};
    unsigned int longest = 0;
    while (!way.empty()) {
        Visit& visit = way.back();
        if (visit.next < Direction::count(*visit.node)) {
            Node const* const next = Direction::next(*visit.node, visit.next++);
            if (auto const place = known.find(next); place != known.end())
                visit.below = std::max(visit.below, place->second);
            else
                way.push_back({next, 0, 0});
            continue;
        }
        longest = known[visit.node] = visit.below + 1;
        way.pop_back();
        if (!way.empty())
            way.back().below = std::max(way.back().below, longest);
    }
    return levels - 1 + longest;
}

} // namespace

void requireAttachable(Group const& parent, Node const& child) {
    if (&parent == &child || (Downwards::count(child) > 0 && hyxOSG::isAbove(&child, parent)))
        throw std::invalid_argument("a group cannot stand below itself");
    if (parent.asGeode() && !child.asDrawable())
        throw std::invalid_argument("a Geode holds drawables only: other nodes stand in a Group");
    if (longestWay<Upwards>(parent) + longestWay<Downwards>(child) > mostLevels)
        throw std::invalid_argument("a scene can be at most " + std::to_string(mostLevels) + " groups deep");
}

void attach(Group& parent, Node& child) {
    requireAttachable(parent, child);
    parent.addChild(&child);
}

} // namespace osg
