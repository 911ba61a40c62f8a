// Rows of the scene-graph library's shared objects.
#pragma once

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"

#define SHARED_CLASS_ROWS(class_, name_) FUNCTION(delete_##name_, DELETE(class_)), REGISTER(class_, name_), INIT(name_)
