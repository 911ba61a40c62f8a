// Rows of model trees.
#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyxtavlang/model_node.h"

namespace {

using hyxtavlang::ModelNode;
using runtime::Reference;

struct ValueMaker {
    PyObject* operator()(bool value) const { return PyBool_FromLong(value); }

    PyObject* operator()(double value) const { return PyFloat_FromDouble(value); }

    PyObject* operator()(std::string const& value) const {
        return PyUnicode_DecodeUTF8(value.data(), static_cast<Py_ssize_t>(value.size()), "surrogateescape");
    }

    PyObject* operator()(std::vector<double> const& values) const {
        Reference tuple = Reference::take(PyTuple_New(static_cast<Py_ssize_t>(values.size())));
        for (std::size_t i = 0; tuple && i < values.size(); ++i) {
            PyObject* const number = PyFloat_FromDouble(values[i]);
            if (!number)
                return nullptr;
            PyTuple_SET_ITEM(tuple.get(), static_cast<Py_ssize_t>(i), number);
        }
        return tuple.release();
    }
};

/// Names and values as a dict.
PyObject* node_properties(ModelNode const& node) {
    Reference properties = Reference::take(PyDict_New());
    if (!properties)
        throw vocabulary::PythonError();
    if (!node.isValid())
        return properties.release();
    for (auto const& [name, value] : node.getObject()->getProperties()) {
        Reference const made = Reference::take(std::visit(ValueMaker{}, value));
        if (!made || PyDict_SetItemString(properties.get(), name.c_str(), made.get()) != 0)
            throw vocabulary::PythonError();
    }
    return properties.release();
}

constexpr Declared model_node_rows[] = {
    FUNCTION(new_ModelNode, NEW(ModelNode, ())),
    FUNCTION(delete_ModelNode, DELETE(ModelNode)),
    FUNCTION(ModelNode_isValid, METHOD(ModelNode, isValid, () const)),
    FUNCTION(ModelNode_getType, METHOD(ModelNode, getType, () const)),
    FUNCTION(ModelNode_getName, METHOD(ModelNode, getName, () const)),
    FUNCTION(ModelNode_getLine, METHOD(ModelNode, getLine, () const)),
    FUNCTION(ModelNode_getNumChildren, METHOD(ModelNode, getNumChildren, () const)),
    FUNCTION(ModelNode_getChild, CONTAINER(METHOD(ModelNode, getChild, (unsigned) const))),
    FUNCTION(ModelNode_getText, METHOD(ModelNode, getText, () const)),
    FUNCTION(ModelNode_getRemarks, METHOD(ModelNode, getRemarks, () const)),
    FUNCTION(ModelNode_getProperties, ADAPTER(ModelNode, getProperties, node_properties, () const)),
    REGISTER(hyxtavlang::ModelNode, ModelNode),
    INIT(ModelNode),
};

} // namespace

ROWS(model_node_rows);
