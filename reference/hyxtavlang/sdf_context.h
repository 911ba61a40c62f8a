// What the readers of an SDF file share.
#pragma once

#include "platform/hyx/values/vec4f.h"
#include "platform/hyxtavlang/model_joints.h"
#include "reference/hyxtavlang/late_reader.h"
#include "reference/hyxtavlang/model_reader.h"
#include "reference/hyxtavlang/sdf_files.h"

#include <sdf/sdf.hh>

#include <initializer_list>
#include <map>
#include <set>

namespace hyxtavlang {

/// A joint that follows another one, by name.
struct SdfMimic {
    std::shared_ptr<tavlang::Robotics::Mimic> made;
    std::string leader;
    sdf::ElementPtr element;
};

/// An SDF file that is being read: its tree so far, and what has been found.
class SdfContext {
public:
    using BodyPtr = std::shared_ptr<tavlang::Physics3D::Body>;

    SdfContext(std::string const& path, std::vector<std::string> const& searchPaths);

    /// Throws ModelError when there are errors.
    void check(sdf::Errors const& errors) const;
    [[noreturn]] void fail(sdf::ElementPtr const& element, std::string const& what) const;
    /// Names once what is not carried over.
    void remark(std::string const& what, sdf::ElementPtr const& element);
    /// Does so for the parts of an element that have none of these names.
    void remarkRest(sdf::ElementPtr const& element, std::initializer_list<char const*> known);

    /// A file that an element of the file `base` (where empty the file that is read) refers to.
    std::string resource(std::string const& uri, std::string const& base, sdf::ElementPtr const& element) const;
    /// The same for a model, which may be a folder; empty where there is none.
    std::string findModel(std::string const& uri, std::string const& base) const;

    hyx::AffineMatrix4x4 place(sdf::SemanticPose const& pose, std::string const& to = "") const;

    std::string fileOf(sdf::ElementPtr const& element) const;
    static int lineOf(sdf::ElementPtr const& element);
    static hyx::Vec3 vector(ignition::math::Vector3d const& vector);
    static hyx::Vec4f color(ignition::math::Color const& color);
    /// The number at the end of a way of elements.
    static double number(sdf::ElementPtr element, std::initializer_list<char const*> way, double otherwise);

    std::string path;
    std::vector<std::string> const& searchPaths;
    ModelTree tree;
    std::map<std::string, BodyPtr> bodies;
    std::set<tavlang::Physics3D::Body const*> held; ///< by a joint
    SdfFiles files;
    std::vector<SdfMimic> mimics; ///< of joints that may come later

private:
    std::string line(sdf::Error const& error) const;
    /// The path of a file as the library names it: that of an included one as it stands in the include.
    std::string whole(std::string const& file) const;

    std::set<std::string> m_remarked;
};

void readSdfCollision(SdfContext& context, sdf::Collision const& collision, tavlang::Physics3D::Body& body);
void readSdfVisual(SdfContext& context, sdf::Visual const& visual, tavlang::Physics3D::Body& body);
/// A null body is the world. `prefix` stands before the name.
void readSdfLight(SdfContext& context, sdf::Light const& light, SdfContext::BodyPtr const& body,
                  std::string const& prefix);
void readSdfSensor(SdfContext& context, sdf::Sensor const& sensor, SdfContext::BodyPtr const& body,
                   std::string const& prefix);
void readSdfJoint(SdfContext& context, sdf::Joint const& joint, std::string const& prefix);
/// Gives the joints that follow others their leaders.
void connectSdfMimics(SdfContext& context);

} // namespace hyxtavlang
