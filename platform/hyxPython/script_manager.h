// Errors of scripts that no script can catch.
#pragma once

#include "platform/hyx/objects/object.h"
#include "platform/hyx/values/vector.h"

#include <map>
#include <string>

namespace hyxPython {

/// Collects the errors that scripts raise where no script can catch them. One for the whole process.
class ScriptManager : public hyx::Object {
public:
    /// One error of a script.
    struct Error {
        /// The native function that called the script.
        hyx::String where;
        /// The exception's type and text, such as "ValueError: no such body".
        hyx::String message;
        /// The whole report as the interpreter prints it.
        hyx::String traceback;
    };

    /// The process's manager, made at the first call; null while no interpreter runs. The first two texts are folders
    /// put in front of the module search path when not empty, the third is a script that is run once, in the main
    /// module; `reset` forgets recorded errors first.
    static ScriptManager* instance(hyx::String const& scriptPath, hyx::String const& modulePath,
                                   hyx::String const& startScript, bool reset);

    /// Takes over the pending error of the interpreter: records it, prints it to the interpreter's standard error,
    /// clears it. One that comes again and again from the same place is printed once, and then its count at 10, 100,
    /// 1000 times. Without one it does nothing.
    void registerError(hyx::String const& where);

    /// Those on record: the last thousand, without those that were cleared.
    bool hasErrors() const { return !m_errors.empty(); }

    /// What went wrong in scripts since the errors were last cleared.
    /// What went wrong in scripts since the errors were last cleared.
    hyx::Vector<Error> const& getErrors() const { return m_errors; }

    /// How many errors of scripts there were since they were last cleared.
    hyx::UInt getNumErrors() const { return m_errors.size(); }

    /// How many there ever were, also those that were forgotten.
    hyx::UInt getNumRegistered() const { return m_registered; }

    /// Throws std::out_of_range for an error that is not there.
    Error getError(hyx::UInt index) const { return m_errors.at(index); }

    /// Forgets the errors of scripts.
    void clearErrors() {
        m_errors.clear();
        m_printed.clear();
    }

private:
    ScriptManager() = default;
    ~ScriptManager() override = default;

    hyx::Vector<Error> m_errors;
    hyx::UInt m_registered = 0;
    std::map<std::string, hyx::UInt> m_printed; ///< how often, by the whole report
};

} // namespace hyxPython
