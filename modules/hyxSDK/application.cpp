// Operations of the application beyond those of its own module, whose list is fixed.
#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/application/example_application.h"

namespace {

constexpr Declared application_rows[] = {
    FUNCTION(ExampleApplication_removeListener,
             METHOD(hyxOSG::ExampleApplication, removeListener, (hyxOSG::ExampleApplicationListener*))),
    FUNCTION(ExampleApplication_setRaiseScriptErrors, METHOD(hyxOSG::ExampleApplication, setRaiseScriptErrors, (bool))),
    FUNCTION(ExampleApplication_getRaiseScriptErrors,
             METHOD(hyxOSG::ExampleApplication, getRaiseScriptErrors, () const)),
    FUNCTION(ExampleApplication_setSpeed, METHOD(hyxOSG::ExampleApplication, setSpeed, (double))),
    FUNCTION(ExampleApplication_getSpeed, METHOD(hyxOSG::ExampleApplication, getSpeed, () const)),
    FUNCTION(ExampleApplication_getRealTimeFactor, METHOD(hyxOSG::ExampleApplication, getRealTimeFactor, () const)),
    FUNCTION(ExampleApplication_getFrameRate, METHOD(hyxOSG::ExampleApplication, getFrameRate, () const)),
    FUNCTION(ExampleApplication_setHistoryLength, METHOD(hyxOSG::ExampleApplication, setHistoryLength, (double))),
    FUNCTION(ExampleApplication_getHistoryLength, METHOD(hyxOSG::ExampleApplication, getHistoryLength, () const)),
    FUNCTION(ExampleApplication_getHistorySpan, METHOD(hyxOSG::ExampleApplication, getHistorySpan, () const)),
    FUNCTION(ExampleApplication_scrub, METHOD(hyxOSG::ExampleApplication, scrub, (int))),
    FUNCTION(ExampleApplication_goToTime, METHOD(hyxOSG::ExampleApplication, goToTime, (double))),
    FUNCTION(ExampleApplication_getSceneError, METHOD(hyxOSG::ExampleApplication, getSceneError, () const)),
    FUNCTION(ExampleApplication_openFile, METHOD(hyxOSG::ExampleApplication, openFile, (std::string const&))),
    FUNCTION(ExampleApplication_showFile, METHOD(hyxOSG::ExampleApplication, showFile, (std::string const&))),
    FUNCTION(ExampleApplication_setSelection, METHOD(hyxOSG::ExampleApplication, setSelection, (hyx::RigidBody*))),
    FUNCTION(ExampleApplication_getSelection, METHOD(hyxOSG::ExampleApplication, getSelection, ())),
    FUNCTION(ExampleApplication_getSelectionText, METHOD(hyxOSG::ExampleApplication, getSelectionText, ())),
    FUNCTION(ExampleApplication_followKey, METHOD(hyxOSG::ExampleApplication, followKey, (int))),
    FUNCTION(ExampleApplication_getKeyHelp, METHOD(hyxOSG::ExampleApplication, getKeyHelp, () const)),
    FUNCTION(ExampleApplication_setEnableHelp, METHOD(hyxOSG::ExampleApplication, setEnableHelp, (bool))),
    FUNCTION(ExampleApplication_getEnableHelp, METHOD(hyxOSG::ExampleApplication, getEnableHelp, () const)),
    FUNCTION(ExampleApplication_setEnableStatus, METHOD(hyxOSG::ExampleApplication, setEnableStatus, (bool))),
    FUNCTION(ExampleApplication_getEnableStatus, METHOD(hyxOSG::ExampleApplication, getEnableStatus, () const)),
    FUNCTION(ExampleApplication_getStatus, METHOD(hyxOSG::ExampleApplication, getStatus, () const)),
    FUNCTION(ExampleApplication_setEnableJournalLoop, METHOD(hyxOSG::ExampleApplication, setEnableJournalLoop, (bool))),
    FUNCTION(ExampleApplication_getEnableJournalLoop,
             METHOD(hyxOSG::ExampleApplication, getEnableJournalLoop, () const)),
};

} // namespace

ROWS(application_rows);
