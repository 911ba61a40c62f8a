// The entry point of _hyx.
#include "binding/entry/family_module.h"
#include "modules/hyx/bodies/constants.h"
#include "modules/hyx/joints/constants.h"
#include "modules/hyx/objects/constants.h"

namespace {

bool install(PyObject* dict) {
    runtime::install_constants(dict, modules::notify_constants, modules::rigid_body_constants,
                               modules::joint_constants);
    return true;
}

} // namespace

PyMODINIT_FUNC PyInit__hyx() {
    return entry::initialise({"_hyx", install});
}
