// The entry point of _probe.
#include "module/areas.h"
#include "module/family_module.h"

PyMODINIT_FUNC PyInit__probe() { return module::initialise({"_probe", module::areas, module::area_count, nullptr}); }
