// How objects cross between native code and the scripts that it runs.
#pragma once

struct _object; // the interpreter's object

namespace hyxPython {

/// Made by the binding, which alone knows how objects look in scripts.
struct ScriptConversions {
    /// A new reference to the script's view of `object`, which keeps its owner; `type` is the class with its namespace.
    /// Null with an error pending when the type is unknown.
    _object* (*toScript)(void* object, char const* type);

    /// The native object behind `value`, seen as a `type`; null for None. `ok` tells whether it is one.
    void* (*fromScript)(_object* value, char const* type, bool& ok);
};

/// Installs the conversions; they must live to the end of the process.
void setScriptConversions(ScriptConversions const* conversions);

/// The conversions; null when no binding was loaded.
ScriptConversions const* getScriptConversions();

} // namespace hyxPython
