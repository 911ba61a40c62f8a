// Walks through a model tree.
#include "platform/hyxtavlang/model_node.h"

#include <sstream>
#include <stdexcept>

namespace hyxtavlang {
namespace {

using tavlang::Core::Object;

struct ValuePrinter {
    std::ostream& out;

    void operator()(bool value) const { out << (value ? "true" : "false"); }

    void operator()(double value) const { out << value; }

    void operator()(std::string const& value) const { out << '"' << value << '"'; }

    void operator()(std::vector<double> const& values) const {
        out << '[';
        for (std::size_t i = 0; i < values.size(); ++i)
            out << (i ? ", " : "") << values[i];
        out << ']';
    }
};

void print(Object const& object, std::size_t depth, std::ostream& out) {
    constexpr std::size_t indentation = 4;
    std::string const space(depth * indentation, ' ');
    out << space << object.getType() << (object.name.empty() ? "" : " " + object.name) << '\n';
    for (auto const& [name, value] : object.getProperties()) {
        out << space << "  " << name << ": ";
        std::visit(ValuePrinter{out}, value);
        out << '\n';
    }
    for (auto const& child : object.children)
        print(*child, depth + 1, out);
}

void collectRemarks(Object const& object, std::vector<std::string>& remarks) {
    for (auto const& remark : object.annotations)
        remarks.push_back(remark->file + ":" + std::to_string(remark->line) + ": " + remark->text);
    for (auto const& child : object.children)
        collectRemarks(*child, remarks);
}

} // namespace

unsigned ModelNode::getNumChildren() const {
    return m_object ? static_cast<unsigned>(m_object->children.size()) : 0;
}

ModelNode ModelNode::getChild(unsigned index) const {
    if (index >= getNumChildren())
        throw std::out_of_range("the node has no such child");
    return ModelNode(m_object->children[index]);
}

std::string ModelNode::getText() const {
    std::ostringstream out;
    if (m_object)
        print(*m_object, 0, out);
    return out.str();
}

std::vector<std::string> ModelNode::getRemarks() const {
    std::vector<std::string> remarks;
    if (m_object)
        collectRemarks(*m_object, remarks);
    return remarks;
}

} // namespace hyxtavlang
