// Errors, remarks, files and numbers of SDF files.
#include "reference/hyxtavlang/sdf_context.h"

#include "reference/hyxtavlang/error_lines.h"
#include "reference/hyxtavlang/resource_paths.h"

#include <algorithm>
#include <filesystem>

namespace hyxtavlang {
SdfContext::SdfContext(std::string const& file, std::vector<std::string> const& folders)
    : path(file), searchPaths(folders), tree(std::make_shared<tavlang::Physics3D::System>()) {}

std::string SdfContext::line(sdf::Error const& error) const {
    std::string const file = whole(error.FilePath().value_or(path));
    int const number = error.LineNumber() ? *error.LineNumber() : lineOfName(error.Message(), file);
    return file + ":" + std::to_string(number) + ": " + error.Message();
}

void SdfContext::check(sdf::Errors const& errors) const {
    std::vector<std::string> lines;
    for (sdf::Error const& error : errors)
        if (error.Code() != sdf::ErrorCode::LINK_INERTIA_INVALID) // judged where the link is read
            lines.push_back(line(error));
    if (!lines.empty())
        throw ModelError(lines);
}

void SdfContext::fail(sdf::ElementPtr const& element, std::string const& what) const {
    throw ModelError(fileOf(element) + ":" + std::to_string(std::max(1, lineOf(element))) + ": " + what);
}

void SdfContext::remark(std::string const& what, sdf::ElementPtr const& element) {
    if (m_remarked.insert(what).second)
        tree->annotations.push_back(
            std::make_shared<tavlang::Annotation>(what + " is not carried over", fileOf(element), lineOf(element)));
}

void SdfContext::remarkRest(sdf::ElementPtr const& element, std::initializer_list<char const*> known) {
    if (!element)
        return;
    for (sdf::ElementPtr part = element->GetFirstElement(); part; part = part->GetNextElement())
        if (part->GetExplicitlySetInFile() && std::find(known.begin(), known.end(), part->GetName()) == known.end())
            remark("<" + part->GetName() + "> of <" + element->GetName() + ">", part);
}

std::string SdfContext::resource(std::string const& uri, std::string const& base,
                                 sdf::ElementPtr const& element) const {
    std::string const file = findResource(uri, whole(base), searchPaths);
    if (file.empty())
        fail(element, "the file '" + uri + "' was not found; expected beside the model or in a search path");
    return file;
}

std::string SdfContext::findModel(std::string const& uri, std::string const& base) const {
    std::string const file = findResource(uri, base, searchPaths);
    return file.empty() ? findResource(uri + "/model.sdf", base, searchPaths) : file;
}

hyx::AffineMatrix4x4 SdfContext::place(sdf::SemanticPose const& pose, std::string const& to) const {
    ignition::math::Pose3d found;
    check(pose.Resolve(found, to));
    auto const& q = found.Rot();
    return {hyx::Quat(q.X(), q.Y(), q.Z(), q.W()), vector(found.Pos())};
}

std::string SdfContext::fileOf(sdf::ElementPtr const& element) const {
    return element ? whole(element->FilePath()) : path;
}

std::string SdfContext::whole(std::string const& file) const {
    std::string const named = files.original(file);
    if (named.empty() || named == path || std::filesystem::path(named).is_absolute())
        return named.empty() ? path : named;
    std::string const found = findModel(named, path);
    return found.empty() ? named : found;
}

int SdfContext::lineOf(sdf::ElementPtr const& element) {
    return element ? element->LineNumber().value_or(0) : 0;
}

hyx::Vec3 SdfContext::vector(ignition::math::Vector3d const& vector) {
    return {vector.X(), vector.Y(), vector.Z()};
}

hyx::Vec4f SdfContext::color(ignition::math::Color const& color) {
    return {color.R(), color.G(), color.B(), color.A()};
}

double SdfContext::number(sdf::ElementPtr element, std::initializer_list<char const*> way, double otherwise) {
    for (char const* name : way) {
        if (!element || !element->HasElement(name))
            return otherwise;
        element = element->GetElement(name);
    }
    return element->Get<double>();
}

} // namespace hyxtavlang
