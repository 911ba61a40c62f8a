// The operations that bench/proxy_calls.py measures, bound with nanobind over the same libraries.
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/values/vec3.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/nodes/texture2d.h"
#include "platform/hyxOSG/nodes/transform.h"
#include "platform/hyxOSG/visuals/textures.h"

#include <nanobind/nanobind.h>
#include <nanobind/stl/string.h>
#include <osg/Group>
#include <osg/Texture2D>

namespace nb = nanobind;

namespace {

// The objects live until the process ends, as the proxies' own do while the benchmark holds them.
template <class T, class... A>
T* make(A... arguments) {
    T* object = new T(arguments...);
    object->ref();
    return object;
}

hyxOSG::Texture2D* make_texture() {
    auto* texture = new hyxOSG::Texture2D(nullptr);
    texture->reference();
    return texture;
}

// The six native functions with every number of arguments that may be left out, shorter forms first.
void bind_set_texture(nb::module_& module) {
    using hyxOSG::TextureMode;
    auto const from_file = [&module]<class Holder>(Holder*) {
        using H = Holder const*;
        using G = osg::Group*;
        using S = std::string const&;
        module.def(
            "setTexture", [](H h, G g, S s) { return hyxOSG::setTexture(h, g, s); }, nb::arg().none(), nb::arg().none(),
            nb::arg());
        module.def(
            "setTexture", [](H h, G g, S s, bool r) { return hyxOSG::setTexture(h, g, s, r); }, nb::arg().none(),
            nb::arg().none(), nb::arg(), nb::arg());
        module.def(
            "setTexture", [](H h, G g, S s, bool r, int m) { return hyxOSG::setTexture(h, g, s, r, TextureMode(m)); },
            nb::arg().none(), nb::arg().none(), nb::arg(), nb::arg(), nb::arg());
    };
    auto const on_node = [&module]<class N, class T>(N*, T) {
        module.def("setTexture", [](N* n, T t) { return hyxOSG::setTexture(n, t); }, nb::arg().none(), nb::arg());
        module.def(
            "setTexture", [](N* n, T t, bool r) { return hyxOSG::setTexture(n, t, r); }, nb::arg().none(), nb::arg(),
            nb::arg());
        module.def(
            "setTexture", [](N* n, T t, bool r, int m) { return hyxOSG::setTexture(n, t, r, TextureMode(m)); },
            nb::arg().none(), nb::arg(), nb::arg(), nb::arg());
        module.def(
            "setTexture",
            [](N* n, T t, bool r, int m, float s) { return hyxOSG::setTexture(n, t, r, TextureMode(m), s); },
            nb::arg().none(), nb::arg(), nb::arg(), nb::arg(), nb::arg());
        module.def(
            "setTexture",
            [](N* n, T t, bool r, int m, float s, float u) {
                return hyxOSG::setTexture(n, t, r, TextureMode(m), s, u);
            },
            nb::arg().none(), nb::arg(), nb::arg(), nb::arg(), nb::arg(), nb::arg());
    };
    on_node(static_cast<osg::Node*>(nullptr), std::string());
    on_node(static_cast<hyxOSG::GeometryNode*>(nullptr), static_cast<hyxOSG::Texture2D*>(nullptr));
    on_node(static_cast<osg::Node*>(nullptr), static_cast<osg::Texture2D*>(nullptr));
    on_node(static_cast<osg::Node*>(nullptr), static_cast<hyxOSG::Texture2D*>(nullptr));
    from_file(static_cast<hyxCollide::Geometry*>(nullptr));
    from_file(static_cast<hyx::RigidBody*>(nullptr));
}

} // namespace

NB_MODULE(nanobind_contender, module) {
    nb::class_<hyx::Vec3>(module, "Vec3").def(nb::init<double, double, double>());
    nb::class_<osg::Node>(module, "Node");
    nb::class_<osg::Group, osg::Node>(module, "Group");
    nb::class_<osg::Texture2D>(module, "OsgTexture2D");
    nb::class_<hyxOSG::Texture2D>(module, "Texture2D");
    nb::class_<hyxOSG::GeometryNode, osg::Group>(module, "GeometryNode")
        .def("getAutoRemove", &hyxOSG::GeometryNode::getAutoRemove)
        .def("setAutoRemove", &hyxOSG::GeometryNode::setAutoRemove);
    nb::class_<hyxOSG::Transform, osg::Group>(module, "Transform")
        .def("setTranslate", &hyxOSG::Transform::setTranslate);
    module.def("make_geometry_node", [] { return make<hyxOSG::GeometryNode>(); }, nb::rv_policy::reference);
    module.def("make_transform", [] { return make<hyxOSG::Transform>(); }, nb::rv_policy::reference);
    module.def("make_group", [] { return make<osg::Group>(); }, nb::rv_policy::reference);
    module.def("make_texture", make_texture, nb::rv_policy::reference);
    bind_set_texture(module);
}
