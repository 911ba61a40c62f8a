// The entry point of _hyxModel.
#include "binding/entry/family_module.h"

PyMODINIT_FUNC PyInit__hyxModel() {
    return entry::initialise({"_hyxModel", nullptr});
}
