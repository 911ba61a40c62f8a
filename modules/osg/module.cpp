// The entry point of _osg.
#include "binding/entry/family_module.h"
#include "modules/osg/constants.h"

namespace {

bool install(PyObject* dict) {
    runtime::install_constants(dict, modules::scene_graph_constants);
    return true;
}

} // namespace

PyMODINIT_FUNC PyInit__osg() {
    return entry::initialise({"_osg", install});
}
