// The entry point of _sample.
#include "module/areas.h"
#include "module/family_module.h"

PyMODINIT_FUNC PyInit__sample() { return module::initialise({"_sample", module::areas, module::area_count, nullptr}); }
