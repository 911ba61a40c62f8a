// The entry point of _synthetic.
#include "binding/entry/family_module.h"

PyMODINIT_FUNC PyInit__synthetic() {
    return entry::initialise({"_synthetic", nullptr});
}
