// Rows of the recorded sessions.
#include "platform/hyx/journal/journal.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"

namespace {

// A dictionary: the position of each joint by its name.
PyObject* joint_positions(hyx::Journal const& self) {
    runtime::Reference const result = runtime::Reference::take(PyDict_New());
    for (auto const& [name, position] : self.getJointPositions()) {
        runtime::Reference const value = runtime::Reference::take(PyFloat_FromDouble(position));
        if (!result.get() || !value.get() || PyDict_SetItemString(result.get(), name.c_str(), value.get()) < 0)
            throw vocabulary::PythonError();
    }
    return Py_NewRef(result.get());
}

constexpr Declared journal_rows[] = {
    FUNCTION(new_Journal, NEW(hyx::Journal, ())),
    FUNCTION(delete_Journal, DELETE(hyx::Journal)),
    FUNCTION(Journal_play, METHOD(hyx::Journal, play, (std::string const&, std::string const&), std::string())),
    FUNCTION(Journal_close, METHOD(hyx::Journal, close, ())),
    FUNCTION(Journal_isRecording, METHOD(hyx::Journal, isRecording, () const)),
    FUNCTION(Journal_isPlaying, METHOD(hyx::Journal, isPlaying, () const)),
    FUNCTION(Journal_getPath, METHOD(hyx::Journal, getPath, () const)),
    FUNCTION(Journal_getSessionName, METHOD(hyx::Journal, getSessionName, () const)),
    FUNCTION(Journal_getNumStates, METHOD(hyx::Journal, getNumStates, () const)),
    FUNCTION(Journal_store, METHOD(hyx::Journal, store, (hyxSDK::Simulation*, bool), false)),
    FUNCTION(Journal_playNext, METHOD(hyx::Journal, playNext, (hyxSDK::Simulation*))),
    FUNCTION(Journal_playAt, METHOD(hyx::Journal, playAt, (hyxSDK::Simulation*, double))),
    FUNCTION(Journal_playRelative, METHOD(hyx::Journal, playRelative, (hyxSDK::Simulation*, int))),
    FUNCTION(Journal_getStartTime, METHOD(hyx::Journal, getStartTime, () const)),
    FUNCTION(Journal_getEndTime, METHOD(hyx::Journal, getEndTime, () const)),
    FUNCTION(Journal_getDescription, METHOD(hyx::Journal, getDescription, () const)),
    FUNCTION(Journal_getConditions, METHOD(hyx::Journal, getConditions, () const)),
    FUNCTION(Journal_getJointPositions, ADAPTER(hyx::Journal, getJointPositions, joint_positions, () const)),
    FUNCTION(Journal_listSessions, STATIC(hyx::Journal, listSessions, (std::string const&))),
    REGISTER(hyx::Journal, Journal),
    INIT(Journal),
};

} // namespace

ROWS(journal_rows);
