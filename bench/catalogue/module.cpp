// The entry point of _synthetic.
#include "module/areas.h"
#include "module/family_module.h"

PyMODINIT_FUNC PyInit__synthetic() { return module::initialise({"_synthetic", module::areas, module::area_count, nullptr}); }
