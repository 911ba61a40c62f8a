// The entry point of _hyxSDK.
#include "binding/entry/family_module.h"
#include "modules/hyxSDK/constants.h"

namespace {

bool install(PyObject* dict) {
    runtime::install_constants(dict, modules::simulation_constants, modules::gui_event_listener_constants);
    return true;
}

} // namespace

PyMODINIT_FUNC PyInit__hyxSDK() {
    return entry::initialise({"_hyxSDK", install});
}
