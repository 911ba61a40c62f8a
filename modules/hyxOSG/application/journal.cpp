// Rows of ExampleApplication: recording and playing journals.
#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/application/example_application.h"

namespace {

constexpr Declared journal_rows[] = {
    FUNCTION(ExampleApplication_getJournal, METHOD(hyxOSG::ExampleApplication, getJournal, ())),
    FUNCTION(ExampleApplication_getJournalConfigurationPath,
             METHOD(hyxOSG::ExampleApplication, getJournalConfigurationPath, () const)),
    FUNCTION(ExampleApplication_getJournalPlaybackPath,
             METHOD(hyxOSG::ExampleApplication, getJournalPlaybackPath, () const)),
    FUNCTION(ExampleApplication_getProfilingJournalPath,
             METHOD(hyxOSG::ExampleApplication, getProfilingJournalPath, () const)),
    FUNCTION(ExampleApplication_setJournalConfigurationPath,
             METHOD(hyxOSG::ExampleApplication, setJournalConfigurationPath, (hyx::String const&))),
    FUNCTION(ExampleApplication_setJournalRecordPath,
             METHOD(hyxOSG::ExampleApplication, setJournalRecordPath, (hyx::String const&))),
    FUNCTION(ExampleApplication_setEnableJournalIncrementalStructure,
             METHOD(hyxOSG::ExampleApplication, setEnableJournalIncrementalStructure, (bool))),
    FUNCTION(ExampleApplication_getEnableJournalIncrementalStructure,
             METHOD(hyxOSG::ExampleApplication, getEnableJournalIncrementalStructure, () const)),
    FUNCTION(ExampleApplication_getJournalFormat, METHOD(hyxOSG::ExampleApplication, getJournalFormat, () const)),
    FUNCTION(ExampleApplication_setJournalFormat, METHOD(hyxOSG::ExampleApplication, setJournalFormat, (hyx::UInt))),
    FUNCTION(ExampleApplication_setEnableJournal32bitMode,
             METHOD(hyxOSG::ExampleApplication, setEnableJournal32bitMode, (bool))),
    FUNCTION(ExampleApplication_setEnableJournalRecord,
             METHOD(hyxOSG::ExampleApplication, setEnableJournalRecord, (bool))),
    FUNCTION(ExampleApplication_setRequestedJournalFrequency,
             METHOD(hyxOSG::ExampleApplication, setRequestedJournalFrequency, (double))),
    FUNCTION(ExampleApplication_storeInitialJournalState,
             METHOD(hyxOSG::ExampleApplication, storeInitialJournalState, ())),
    FUNCTION(ExampleApplication_initRecordJournal, METHOD(hyxOSG::ExampleApplication, initRecordJournal, ())),
    FUNCTION(ExampleApplication_initAppendJournal, METHOD(hyxOSG::ExampleApplication, initAppendJournal, ())),
    FUNCTION(ExampleApplication_journalPlayback, METHOD(hyxOSG::ExampleApplication, journalPlayback, ())),
    FUNCTION(ExampleApplication_listSessionNames,
             METHOD(hyxOSG::ExampleApplication, listSessionNames, (std::string const&))),
    FUNCTION(ExampleApplication_setEnableThreadTimeline,
             METHOD(hyxOSG::ExampleApplication, setEnableThreadTimeline, (bool))),
    FUNCTION(ExampleApplication_setEnableTaskProfile, METHOD(hyxOSG::ExampleApplication, setEnableTaskProfile, (bool))),
    FUNCTION(ExampleApplication_setEnableSimulationDump,
             METHOD(hyxOSG::ExampleApplication, setEnableSimulationDump, (bool))),
    FUNCTION(ExampleApplication_getEnableSimulationDump,
             METHOD(hyxOSG::ExampleApplication, getEnableSimulationDump, () const)),
};

} // namespace

ROWS(journal_rows);
