// Prints as JSON what the library of the SDF format itself reads from a model file, to compare with.
#include <nlohmann/json.hpp>
#include <sdf/sdf.hh>

#include <iostream>

namespace {

using Json = nlohmann::json;

void require(sdf::Errors const& errors) {
    for (sdf::Error const& error : errors)
        throw std::runtime_error(error.Message());
}

Json numbers(ignition::math::Vector3d const& vector) {
    return {vector.X(), vector.Y(), vector.Z()};
}

Json matrix(ignition::math::Pose3d const& pose) {
    ignition::math::Matrix4d const given(pose);
    Json rows;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            rows.push_back(given(i, j));
    return rows;
}

Json shape_of(sdf::Geometry const* geometry) {
    if (!geometry)
        return nullptr;
    if (auto const* box = geometry->BoxShape())
        return {{"Box", numbers(box->Size())}};
    if (auto const* sphere = geometry->SphereShape())
        return {{"Sphere", {sphere->Radius()}}};
    if (auto const* cylinder = geometry->CylinderShape())
        return {{"Cylinder", {cylinder->Radius(), cylinder->Length()}}};
    if (auto const* mesh = geometry->MeshShape())
        return {{"Mesh", numbers(mesh->Scale())}};
    return nullptr;
}

Json link_of(sdf::Link const& link) {
    ignition::math::Pose3d pose;
    require(link.SemanticPose().Resolve(pose, "__model__"));
    ignition::math::Matrix3d const tensor = link.Inertial().Moi(); // along the axes of the link
    Json rows, shapes = Json::array();
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            rows.push_back(tensor(i, j));
    for (std::uint64_t i = 0; i < link.CollisionCount(); ++i) {
        sdf::Collision const& collision = *link.CollisionByIndex(i);
        ignition::math::Pose3d place;
        require(collision.SemanticPose().Resolve(place));
        shapes.push_back({{"name", collision.Name()}, {"shape", shape_of(collision.Geom())}, {"pose", matrix(place)}});
    }
    return {{"name", link.Name()},
            {"pose", matrix(pose)},
            {"mass", link.Inertial().MassMatrix().Mass()},
            {"center", numbers(link.Inertial().Pose().Pos())},
            {"inertia", rows},
            {"shapes", shapes}};
}

Json joint_of(sdf::Joint const& joint) {
    std::string child, parent;
    require(joint.ResolveChildLink(child));
    require(joint.ResolveParentLink(parent));
    ignition::math::Pose3d pose;
    require(joint.SemanticPose().Resolve(pose, child));
    Json made{{"name", joint.Name()}, {"parent", parent}, {"child", child}, {"anchor", numbers(pose.Pos())}};
    if (sdf::JointAxis const* const axis = joint.Axis(0)) {
        ignition::math::Vector3d direction;
        require(axis->ResolveXyz(direction, child));
        made["axis"] = numbers(direction);
        made["numbers"] = {axis->Lower(),       axis->Upper(),   axis->Effort(),
                           axis->MaxVelocity(), axis->Damping(), axis->Friction()};
    }
    return made;
}

} // namespace

int main(int count, char** words) {
    sdf::Root root;
    require(root.Load(count > 1 ? words[1] : ""));
    sdf::Model const& model = *root.Model();
    Json made{{"name", model.Name()}, {"pose", matrix(model.RawPose())}};
    for (std::uint64_t i = 0; i < model.LinkCount(); ++i)
        made["links"].push_back(link_of(*model.LinkByIndex(i)));
    for (std::uint64_t i = 0; i < model.JointCount(); ++i)
        made["joints"].push_back(joint_of(*model.JointByIndex(i)));
    std::cout << made.dump();
}
