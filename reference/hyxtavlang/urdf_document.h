// What the parser of robot descriptions does not tell: lines, capsules, transmissions, and what else there is.
#pragma once

#include "platform/hyxtavlang/model_joints.h"
#include "platform/hyxtavlang/model_shapes.h"

#include <tinyxml2.h>

#include <map>
#include <string>
#include <tuple>

namespace hyxtavlang {

/// A robot description as XML.
class UrdfDocument {
public:
    /// Throws ModelError for a file that is no XML, and for several links that no joint holds.
    explicit UrdfDocument(std::string const& path);

    /// For the parser, which knows no capsules (they stand there as cylinders), and refuses what many files have:
    /// materials without a name, scales of one number, and joints of a world that is no link.
    std::string text() const;

    /// Gives the parts of a tree their lines, makes capsules of their cylinders, adds what drives joints, and names
    /// once what is not carried over.
    void complete(tavlang::Physics3D::System& tree);

private:
    /// A link, `visual` or `collision`, and which of these.
    using Place = std::tuple<std::string, std::string, int>;

    void refuseSeveralRoots() const;
    void addWorld();
    void completeLink(tinyxml2::XMLElement& link);
    void completeShape(tinyxml2::XMLElement& geometry, Place const& place);
    void completeBody(tavlang::Physics3D::Body& body) const;
    void addTransmission(tinyxml2::XMLElement const& element, tavlang::Physics3D::System& tree) const;
    void remark(std::string const& what, tinyxml2::XMLElement const& element, tavlang::Physics3D::System& tree) const;

    std::string m_path;
    tinyxml2::XMLDocument m_document;
    std::map<Place, int> m_capsules; ///< with their lines
};

} // namespace hyxtavlang
