// The entry point of _sample.
#include "binding/entry/family_module.h"

PyMODINIT_FUNC PyInit__sample() {
    return entry::initialise({"_sample", nullptr});
}
