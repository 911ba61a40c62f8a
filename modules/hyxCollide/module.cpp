// The entry point of _hyxCollide.
#include "binding/entry/family_module.h"
#include "modules/hyxCollide/constants.h"

namespace {

bool install(PyObject* dict) {
    runtime::install_constants(dict, modules::shape_constants);
    return true;
}

} // namespace

PyMODINIT_FUNC PyInit__hyxCollide() {
    return entry::initialise({"_hyxCollide", install});
}
