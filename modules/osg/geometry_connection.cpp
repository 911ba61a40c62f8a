// What createVisualWithGeometryConnection gives: the body's group and the places of the geometries' nodes in it.
#include "modules/osg/scene_graph_rows.h"
#include "platform/hyxOSG/visuals/create_visual.h"

#include <osg/Group>

#include <tuple>
#include <vector>

namespace osg {
using GeometryConnection = std::tuple<osg::Group*, std::vector<std::size_t>>;
} // namespace osg

namespace {

osg::Group* group(osg::GeometryConnection const& self) {
    return std::get<0>(self);
}

PyObject* places(osg::GeometryConnection const& self) {
    return vocabulary::to_list(std::get<1>(self));
}

constexpr Declared geometry_connection_rows[] = {
    FUNCTION(delete_GeometryConnection, DELETE(osg::GeometryConnection)),
    FUNCTION(GeometryConnection_getGroup, SHARED(ADAPTER(osg::GeometryConnection, getGroup, group, () const))),
    FUNCTION(GeometryConnection_getPlaces, ADAPTER(osg::GeometryConnection, getPlaces, places, () const)),
    REGISTER(osg::GeometryConnection, GeometryConnection),
    INIT(GeometryConnection),
};

} // namespace

ROWS(geometry_connection_rows);
