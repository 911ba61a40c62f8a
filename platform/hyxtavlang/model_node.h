// A model tree as scripts visit it.
#pragma once

#include "platform/hyxtavlang/model_objects.h"

namespace hyxtavlang {

/// A place in the tree that a file was read into: an object with its type, name, properties and parts; a value that
/// shares the tree.
class ModelNode {
public:
    /// Holds nothing, as that of a model that was not loaded.
    ModelNode() = default;

    explicit ModelNode(std::shared_ptr<tavlang::Core::Object> object) : m_object(std::move(object)) {}

    /// Whether the node holds an object.
    bool isValid() const { return m_object != nullptr; }

    /// Like `Physics3D.Body`; empty for a node that holds nothing.
    std::string getType() const { return m_object ? m_object->getType() : ""; }

    /// As in the file; empty for what has none there.
    std::string getName() const { return m_object ? m_object->name : ""; }

    /// Where the object begins in its file; 0 where that is not known.
    int getLine() const { return m_object ? m_object->line : 0; }

    /// How many parts the object has.
    unsigned getNumChildren() const;
    /// Throws std::out_of_range for a child that is not there.
    ModelNode getChild(unsigned index) const;

    /// The node and all below it as indented lines of text.
    std::string getText() const;
    /// What the reader did not carry over, here and below, a line of `file:line: text` each.
    std::vector<std::string> getRemarks() const;

    std::shared_ptr<tavlang::Core::Object> const& getObject() const { return m_object; }

private:
    std::shared_ptr<tavlang::Core::Object> m_object;
};

} // namespace hyxtavlang
