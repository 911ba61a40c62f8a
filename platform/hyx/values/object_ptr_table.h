// The table of objects by name under the name that the library's oldest interfaces have for it.
#pragma once

#include "platform/hyx/values/hash_table.h"

using hyx::HashTable;
