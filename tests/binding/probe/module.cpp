// The entry point of _probe.
#include "binding/entry/family_module.h"

PyMODINIT_FUNC PyInit__probe() {
    return entry::initialise({"_probe", nullptr});
}
