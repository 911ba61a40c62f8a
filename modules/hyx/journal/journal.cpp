// Rows of the recorded sessions.
#include "platform/hyx/journal/journal.h"

#include "binding/vocabulary/rows.h"

namespace {

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
    FUNCTION(Journal_listSessions, STATIC(hyx::Journal, listSessions, (std::string const&))),
    REGISTER(hyx::Journal, Journal),
    INIT(Journal),
};

} // namespace

ROWS(journal_rows);
