// What the parts of the MJCF reader share: the settings of a file, its defaults and its assets.
#pragma once

#include "platform/hyxtavlang/model_joints.h"
#include "platform/hyxtavlang/model_looks.h"
#include "reference/hyxtavlang/mjcf_document.h"
#include "reference/hyxtavlang/model_reader.h"

#include <functional>

namespace hyxtavlang {

/// Attributes that stand for those that elements leave out: by class, then by kind of element.
class MjcfDefaults {
public:
    MjcfDefaults() { m_classes["main"]; }

    void read(MjcfDocument& document, MjcfElement const& element, std::string const& parent);
    /// Of an element of a class; all kinds of actuators share theirs. Throws ModelError for an unknown class.
    MjcfAttributes const& of(std::string const& className, MjcfElement const& element) const;

private:
    std::map<std::string, std::map<std::string, MjcfAttributes>> m_classes;
};

/// The file's `compiler` element, as far as it counts here.
struct MjcfCompiler {
    MjcfAngles angles;
    bool autolimits = true;
    std::string inertiaFromShapes = "auto";
    double totalMass = -1; ///< negative: as it comes
    double leastMass = 0;
    double leastInertia = 0;
    bool balancesInertia = false;
    std::vector<double> inertiaGroups{0, 5};
    std::string meshFolder;
    std::string textureFolder;
};

/// An actuator before its joint is known.
struct MjcfActuator {
    std::shared_ptr<tavlang::Control::Actuator> made;
    std::string joint;
};

struct MjcfContext {
    MjcfContext(std::string const& path, std::vector<std::string> const& paths) : document(path), searchPaths(paths) {}

    /// The element with the defaults of its class, or of that of the body around it.
    MjcfEntry entry(MjcfElement const& element, std::string const& childClass = "") const;
    /// Says once that something of this kind is not carried over.
    void remark(std::string const& what, std::string const& file, int line);
    void remarkRest(MjcfEntry const& entry);
    /// The whole path of a file that the model names. Fails where there is none.
    std::string find(MjcfEntry const& entry, std::string const& folder, std::string const& file) const;

    MjcfDocument document;
    std::vector<std::string> const& searchPaths;
    MjcfCompiler compiler;
    MjcfDefaults defaults;
    ModelTree tree = std::make_shared<tavlang::Physics3D::System>();
    std::map<std::string, MjcfEntry> meshes;
    std::map<std::string, std::shared_ptr<tavlang::Physics3D::Geometries::HeightField>> heightFields;
    std::map<std::string, std::shared_ptr<tavlang::Visuals::Material>> materials;
    std::map<std::string, std::string> textures; ///< files
    std::vector<MjcfActuator> actuators;
    std::map<std::string, std::shared_ptr<tavlang::Physics3D::Body>> bodies;
    std::map<std::string, std::shared_ptr<tavlang::Robotics::Joints::SingleAxisJoint>> joints;
    std::map<std::string, std::shared_ptr<tavlang::Physics3D::Geometry>> geoms;
    std::map<std::string, std::shared_ptr<tavlang::Physics3D::Site>> sites;

private:
    std::set<std::string> m_remarked;
};

/// Reads meshes, height fields, textures and materials.
void readMjcfAssets(MjcfContext& context, MjcfElement const& section);
/// Reads what drives joints, for the joints that come later.
void readMjcfActuators(MjcfContext& context, MjcfElement const& section);
/// Reads the bodies with their joints and shapes, and what the shapes weigh.
void readMjcfBodies(MjcfContext& context, std::vector<MjcfElement> const& worlds);
/// Reads equalities, exclusions and keyframes, and gives the actuators their joints.
void readMjcfRelations(MjcfContext& context, MjcfElement const& section);
void connectMjcfActuators(MjcfContext& context);

/// A shape with what it weighs.
struct MjcfShape {
    std::shared_ptr<tavlang::Physics3D::Geometry> geometry;
    int group = 0;
    /// With its mass, centre and tensor in the body around it; computed when it is needed.
    std::function<tavlang::Physics3D::Body()> weigh;
};

/// The shape of a `geom` element whose body, or frame in it, has `local` in the body. Null for kinds that are not
/// carried over.
MjcfShape readMjcfShape(MjcfContext& context, MjcfEntry const& entry, hyx::AffineMatrix4x4 const& local);

/// Where something stands that is given by its ends: in the middle, along the way from the second to the first.
hyx::AffineMatrix4x4 placeBetweenEnds(MjcfEntry const& entry, double& halfLength);

/// Its colour; null for the file's own look of a mesh.
std::shared_ptr<tavlang::Visuals::Material> readMjcfLook(MjcfContext const& context, MjcfEntry const& entry);

} // namespace hyxtavlang
