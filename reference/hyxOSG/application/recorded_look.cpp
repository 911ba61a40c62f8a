// Reads and applies looks.
#include "reference/hyxOSG/application/recorded_look.h"

#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxOSG/decoration/scene_decorator.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/visuals/finders.h"
#include "platform/hyxOSG/visuals/materials.h"

#include <nlohmann/json.hpp>
#include <osg/Material>

#include <algorithm>
#include <cmath>

namespace hyxOSG {
namespace {

using nlohmann::json;

json numbersOf(osg::Vec4 const& color) {
    return {color.r(), color.g(), color.b(), color.a()};
}

json numbersOf(hyx::Vec3 const& vector) {
    return {vector.x, vector.y, vector.z};
}

/// Such a list of finite numbers, or none.
std::vector<double> list(json const& value, size_t count) {
    std::vector<double> read;
    if (value.is_array() && value.size() == count)
        for (json const& entry : value)
            if (entry.is_number() && std::isfinite(entry.get<double>()))
                read.push_back(entry.get<double>());
    return read.size() == count ? read : std::vector<double>();
}

/// The material that a script gave a node below `scene`: that of the lowest node above its shape, unless a higher one
/// overrides it; null where it has the look of everything.
osg::Material const* drawnMaterial(osg::Node& shape, osg::Node const& scene) {
    osg::Material const* material = nullptr;
    bool kept = false;
    auto const take = [&](osg::Node& node) {
        osg::StateSet const* state = node.getStateSet();
        auto const* own = state ? state->getAttributePair(osg::StateAttribute::MATERIAL) : nullptr;
        if (!own || kept)
            return;
        material = static_cast<osg::Material const*>(own->first.get());
        kept = own->second & osg::StateAttribute::OVERRIDE;
    };
    osg::NodePathList const paths = shape.getParentalNodePaths();
    if (!paths.empty())
        for (auto node = std::ranges::find(paths.front(), &scene); node != paths.front().end(); ++node)
            take(**node);
    for (osg::Group* group = shape.asGroup(); group && group->getNumChildren() > 0;) {
        take(*group->getChild(0));
        group = group->getChild(0)->asGroup();
    }
    return material;
}

json colorsOf(hyx::RigidBody const& body, osg::Group& root) {
    json colors = json::array();
    for (auto const& geometry : body.getGeometries()) {
        GeometryNode* node = findGeometryNode(geometry.get(), &root);
        osg::Material const* material = node ? drawnMaterial(*node, root) : nullptr;
        colors.push_back(material ? numbersOf(material->getDiffuse(osg::Material::FRONT)) : json());
    }
    return colors;
}

json parse(std::string const& look) {
    json const description = json::parse(look, nullptr, false);
    return description.is_object() ? description : json::object();
}

} // namespace

std::string describeLook(ExampleApplication& application, hyx::RigidBodyPtrVector const& bodies) {
    json look = {{"colors", json::array()}, {"background", json::array()}};
    for (auto const& body : bodies)
        look["colors"].push_back(colorsOf(*body, *application.getSceneSwitch()));
    for (osg::Vec4 const& corner : application.getSceneDecorator()->getBackgroundColors())
        look["background"].push_back(numbersOf(corner));
    if (application.getViewer()) {
        CameraData const view = application.getCameraData();
        look["camera"] = {{"eye", numbersOf(view.eye)},
                          {"center", numbersOf(view.center)},
                          {"up", numbersOf(view.up)},
                          {"fieldOfView", view.fieldOfView}};
    }
    return look.dump(-1, ' ', false, json::error_handler_t::replace);
}

void applyColors(std::string const& look, hyx::RigidBodyPtrVector const& bodies, osg::Group& root) {
    json const description = parse(look);
    json const colors = description.value("colors", json::array());
    for (size_t i = 0; i < bodies.size() && colors.is_array() && i < colors.size(); ++i) {
        auto const& geometries = bodies[i]->getGeometries();
        for (size_t j = 0; j < geometries.size() && colors[i].is_array() && j < colors[i].size(); ++j)
            if (auto const c = list(colors[i][j], 4); !c.empty())
                if (GeometryNode* node = findGeometryNode(geometries[j].get(), &root))
                    setDiffuseColor(node, hyx::Vec4f(float(c[0]), float(c[1]), float(c[2]), float(c[3])));
    }
}

void applyPicture(std::string const& look, ExampleApplication& application, bool withCamera) {
    json const description = parse(look);
    json const corners = description.value("background", json::array());
    std::vector<hyx::Vec4f> colors;
    for (size_t i = 0; corners.is_array() && i < corners.size(); ++i)
        if (auto const c = list(corners[i], 4); !c.empty())
            colors.emplace_back(float(c[0]), float(c[1]), float(c[2]), float(c[3]));
    if (colors.size() == 4)
        application.getSceneDecorator()->setBackgroundColor(colors[0], colors[1], colors[2], colors[3]);
    json const camera = description.value("camera", json::object());
    if (!withCamera || !camera.is_object() || !application.getViewer())
        return;
    auto const eye = list(camera.value("eye", json()), 3), center = list(camera.value("center", json()), 3),
               up = list(camera.value("up", json()), 3);
    if (eye.empty() || center.empty() || up.empty())
        return;
    CameraData view = application.getCameraData();
    view.eye = hyx::Vec3(eye[0], eye[1], eye[2]);
    view.center = hyx::Vec3(center[0], center[1], center[2]);
    view.up = hyx::Vec3(up[0], up[1], up[2]);
    if (camera.contains("fieldOfView") && camera["fieldOfView"].is_number())
        view.fieldOfView = camera["fieldOfView"].get<double>();
    try {
        application.applyCameraData(view);
    } catch (std::invalid_argument const&) {
        // A damaged view leaves the camera where it is.
    }
}

} // namespace hyxOSG
