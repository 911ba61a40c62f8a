// The tables as Python data, for the proxies, the stubs and the documents.
#pragma once

#include "binding/vocabulary/record.h"

namespace vocabulary {

// A new list of dicts, one a function:
// name, role, convention, class, method, static, forms: [{prototype, class, method, static, const,
// parameters: [{type, default}], result: {type, owned}}]. Parameters leave out self; optional ones have a default text.
PyObject* describe_functions(Function const* const* functions, std::size_t count);

} // namespace vocabulary
