// Reads of a robot description what its parser does not tell.
#include "reference/hyxtavlang/urdf_document.h"

#include "platform/hyxtavlang/model_looks.h"
#include "reference/hyxtavlang/model_reader.h"

#include <cstring>
#include <memory>
#include <set>

namespace hyxtavlang {
namespace {

namespace model3d = tavlang::Physics3D;
using Element = tinyxml2::XMLElement;

std::string attribute(Element const* element, char const* key) {
    char const* const text = element ? element->Attribute(key) : nullptr;
    return text ? text : "";
}

std::shared_ptr<model3d::Geometry> capsuleOf(std::shared_ptr<model3d::Geometry> const& geometry) {
    auto const& cylinder = dynamic_cast<model3d::Geometries::Cylinder const&>(*geometry);
    auto const capsule = std::make_shared<model3d::Geometries::Capsule>();
    static_cast<model3d::Geometry&>(*capsule) = cylinder;
    capsule->radius = cylinder.radius;
    capsule->height = cylinder.height;
    return capsule;
}

} // namespace

UrdfDocument::UrdfDocument(std::string const& path) : m_path(path) {
    if (m_document.LoadFile(path.c_str()) != tinyxml2::XML_SUCCESS || !m_document.RootElement())
        throw ModelError(path + ":" + std::to_string(std::max(1, m_document.ErrorLineNum())) +
                         ": it is no XML: " + m_document.ErrorName());
    addWorld();
    refuseSeveralRoots();
    for (Element* link = m_document.RootElement()->FirstChildElement("link"); link;
         link = link->NextSiblingElement("link"))
        completeLink(*link);
}

std::string UrdfDocument::text() const {
    tinyxml2::XMLPrinter printer;
    m_document.Print(&printer);
    return printer.CStr();
}

void UrdfDocument::refuseSeveralRoots() const {
    Element const* const robot = m_document.RootElement();
    std::set<std::string> held;
    for (auto const* joint = robot->FirstChildElement("joint"); joint; joint = joint->NextSiblingElement("joint"))
        held.insert(attribute(joint->FirstChildElement("child"), "link"));
    Element const* root = nullptr;
    for (auto const* link = robot->FirstChildElement("link"); link; link = link->NextSiblingElement("link")) {
        if (held.count(attribute(link, "name")))
            continue;
        if (root)
            throw ModelError(m_path + ":" + std::to_string(link->GetLineNum()) + ": no joint holds the link '" +
                             attribute(link, "name") + "', nor the link '" + attribute(root, "name") +
                             "'; expected one root");
        root = link;
    }
}

void UrdfDocument::addWorld() {
    Element& robot = *m_document.RootElement();
    char const* const world = "world";
    bool isParent = false;
    for (auto const* joint = robot.FirstChildElement("joint"); joint; joint = joint->NextSiblingElement("joint"))
        isParent |= attribute(joint->FirstChildElement("parent"), "link") == world;
    for (auto const* link = robot.FirstChildElement("link"); link; link = link->NextSiblingElement("link"))
        isParent &= attribute(link, "name") != world;
    if (isParent)
        robot.InsertNewChildElement("link")->SetAttribute("name", world);
}

void UrdfDocument::completeLink(Element& link) {
    for (char const* kind : {"visual", "collision"}) {
        int number = 0;
        for (Element* part = link.FirstChildElement(kind); part; part = part->NextSiblingElement(kind), ++number) {
            if (Element* const geometry = part->FirstChildElement("geometry"))
                completeShape(*geometry, {attribute(&link, "name"), kind, number});
            Element* const material = part->FirstChildElement("material");
            if (material && !material->Attribute("name"))
                material->SetAttribute("name", ("of line " + std::to_string(material->GetLineNum())).c_str());
        }
    }
}

void UrdfDocument::completeShape(Element& geometry, Place const& place) {
    if (Element* const capsule = geometry.FirstChildElement("capsule")) {
        capsule->SetName("cylinder");
        m_capsules[place] = capsule->GetLineNum();
    }
    Element* const mesh = geometry.FirstChildElement("mesh");
    std::string const scale = attribute(mesh, "scale");
    std::size_t const begin = scale.find_first_not_of(' ');
    if (begin != std::string::npos && scale.find(' ', begin) == std::string::npos)
        mesh->SetAttribute("scale", (scale + " " + scale + " " + scale).c_str());
}

void UrdfDocument::completeBody(model3d::Body& body) const {
    int visuals = 0, collisions = 0;
    for (auto& part : body.children) {
        part->line = body.line;
        if (auto const visual = std::dynamic_pointer_cast<tavlang::Visuals::Visual>(part)) {
            if (m_capsules.count({body.name, "visual", visuals++}))
                visual->geometry = capsuleOf(visual->geometry);
        } else if (auto const geometry = std::dynamic_pointer_cast<model3d::Geometry>(part)) {
            if (m_capsules.count({body.name, "collision", collisions++}))
                part = capsuleOf(geometry);
        }
    }
}

/// An effort that comes from a motor through gears.
void UrdfDocument::addTransmission(Element const& element, model3d::System& tree) const {
    auto const* const actuator = element.FirstChildElement("actuator");
    std::string const joint = attribute(element.FirstChildElement("joint"), "name");
    for (auto const& part : tree.children) {
        auto const driven = std::dynamic_pointer_cast<tavlang::Robotics::Joints::SingleAxisJoint>(part);
        if (!driven || driven->name != joint)
            continue;
        auto const made = std::make_shared<tavlang::Control::ForceActuator>();
        made->name = attribute(&element, "name");
        made->line = element.GetLineNum();
        made->joint = driven;
        if (auto const* gear = actuator ? actuator->FirstChildElement("mechanicalReduction") : nullptr)
            made->gear = gear->DoubleText(1);
        tree.children.push_back(made);
        return;
    }
    remark("a <transmission> of the joint '" + joint + "', which neither turns nor slides here,", element, tree);
}

void UrdfDocument::remark(std::string const& what, Element const& element, model3d::System& tree) const {
    std::string const text = what + " is not carried over";
    for (auto const& known : tree.annotations)
        if (known->text == text)
            return;
    tree.annotations.push_back(std::make_shared<tavlang::Annotation>(text, m_path, element.GetLineNum()));
}

void UrdfDocument::complete(model3d::System& tree) {
    std::map<std::string, int> lines;
    Element const* const robot = m_document.RootElement();
    tree.line = robot->GetLineNum();
    for (auto const* element = robot->FirstChildElement(); element; element = element->NextSiblingElement()) {
        std::string const kind = element->Name();
        if (kind == "link" || kind == "joint")
            lines[kind + attribute(element, "name")] = element->GetLineNum();
    }
    for (auto const& part : tree.children) {
        if (auto const body = std::dynamic_pointer_cast<model3d::Body>(part)) {
            body->line = lines["link" + body->name];
            completeBody(*body);
        } else if (auto const mimic = std::dynamic_pointer_cast<tavlang::Robotics::Mimic>(part)) {
            mimic->line = lines["joint" + mimic->follower->name];
        } else {
            part->line = lines["joint" + part->name];
        }
    }
    for (auto const* element = robot->FirstChildElement(); element; element = element->NextSiblingElement()) {
        std::string const kind = element->Name();
        if (kind == "transmission")
            addTransmission(*element, tree);
        else if (kind != "link" && kind != "joint" && kind != "material")
            remark("<" + kind + ">", *element, tree);
    }
}

} // namespace hyxtavlang
