// Functions of scripts that bring nodes up to date before they are drawn.
#include "binding/vocabulary/script_function.h"
#include "modules/osg/scene_graph_rows.h"

#include <osg/Callback>
#include <osg/Node>

namespace {

class UpdateFunction : public osg::NodeCallback {
public:
    explicit UpdateFunction(runtime::KeptReference function) : function_(std::move(function)) {}

    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override {
        osg::ref_ptr<UpdateFunction> const kept(this); // the function may give the node another one
        if (function_.alive() && !PyErr_Occurred())
            vocabulary::call_function(function_, nullptr, "osg::Node::setUpdateFunction");
        traverse(node, visitor);
    }

private:
    runtime::KeptReference function_;
};

UpdateFunction* update_function(osg::Node& node) {
    for (osg::Callback* each = node.getUpdateCallback(); each; each = each->getNestedCallback())
        if (auto* const found = dynamic_cast<UpdateFunction*>(each))
            return found;
    return nullptr;
}

// Leaves alone what else updates the node.
void set_update_function(osg::Node& self, PyObject* function) {
    osg::ref_ptr<UpdateFunction> next;
    if (function != Py_None)
        next = new UpdateFunction(
            vocabulary::keep_function(function, "an update function is called without arguments before each picture"));
    if (osg::ref_ptr<UpdateFunction> const former = update_function(self))
        self.removeUpdateCallback(former);
    if (next)
        self.addUpdateCallback(next);
}

constexpr Declared update_functions_rows[] = {
    FUNCTION(Node_setUpdateFunction, ADAPTER(osg::Node, setUpdateFunction, set_update_function, (PyObject*))),
};

} // namespace

ROWS(update_functions_rows);
