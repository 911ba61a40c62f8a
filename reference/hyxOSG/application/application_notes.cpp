// What the application shows of itself: keys, figures, errors; and what its keys do.
#include "platform/hyx/objects/notify.h"
#include "reference/hyxOSG/application/application_implementation.h"
#include "reference/hyxOSG/application/key_bindings.h"
#include "reference/hyxPython/script_errors.h"

#include <cstdio>
#include <filesystem>
#include <stdexcept>

namespace hyxOSG {
namespace {

std::string nameOf(SceneDescription const& description) {
    if (description.fileName.empty())
        return "a native scene";
    std::string const file = std::filesystem::path(description.fileName).filename();
    return description.scriptFunction.empty() ? file : description.scriptFunction + " of " + file;
}

std::string line(char const* key, std::string const& does) {
    char text[16];
    std::snprintf(text, sizeof text, "%-11s", key);
    return text + does;
}

} // namespace

bool ExampleApplication::followKey(int key) {
    auto const kept = Implementation::keep(*this);
    if (getCallback(key).isValid()) {
        tryScene([this, key] { createSceneFromKey(key); });
        return true;
    }
    KeyBinding const* binding = findKeyBinding(key);
    if (binding)
        binding->act(*this);
    return binding;
}

std::vector<std::string> ExampleApplication::getKeyHelp() const {
    std::vector<std::string> lines;
    SceneList const& scenes = m_implementation->scenes;
    for (KeyBinding const& binding : keyBindings())
        if (!scenes.indexOf(binding.key))
            lines.push_back(line(binding.name, binding.does));
    constexpr int firstPrintable = '!', lastPrintable = '~';
    for (size_t i = 0; i < scenes.size(); ++i)
        if (int const key = scenes.keyAt(i); key >= firstPrintable && key <= lastPrintable)
            lines.push_back(line(std::string(1, char(key)).c_str(), "builds " + nameOf(scenes.at(i))));
    lines.push_back(line("mouse", "left turns, middle moves, the wheel goes nearer"));
    lines.push_back(line("", "a click selects a body, Ctrl and left pull one"));
    return lines;
}

void ExampleApplication::setEnableHelp(bool enable) {
    m_implementation->helpShown = enable;
}

bool ExampleApplication::getEnableHelp() const {
    return m_implementation->helpShown;
}

void ExampleApplication::setEnableStatus(bool enable) {
    m_implementation->statusShown = enable;
}

bool ExampleApplication::getEnableStatus() const {
    return m_implementation->statusShown;
}

Panel& ExampleApplication::getHelpPanel() {
    return m_implementation->notes.panel(ScreenNotes::HELP);
}

Panel& ExampleApplication::getStatusPanel() {
    return m_implementation->notes.panel(ScreenNotes::STATUS);
}

Panel& ExampleApplication::getErrorPanel() {
    return m_implementation->notes.panel(ScreenNotes::ERROR_TEXT);
}

Panel& ExampleApplication::getSelectionPanel() {
    return m_implementation->notes.panel(ScreenNotes::SELECTION);
}

osg::Group* ExampleApplication::getPanelGroup() {
    return m_implementation->notes.node();
}

std::string ExampleApplication::getStatus() const {
    Implementation& self = *m_implementation;
    hyxSDK::Simulation const& simulation = self.ensureSimulation();
    FrameTimes::Means const& means = self.times.means();
    std::string const scene = self.presentScene ? nameOf(*self.presentScene) + "   " : "";
    char const* const state = self.journal->isPlaying() ? "   playback" : self.autoStepping ? "" : "   paused";
    char text[200];
    std::snprintf(text, sizeof text,
                  "%.2f s   %.0f frames/s   %.2f of real time   step %.1f ms   draw %.1f ms   %lu contacts%s",
                  simulation.getTimeStamp(), means.framesPerSecond, means.realTimeFactor, 1000 * means.step,
                  1000 * means.draw, static_cast<unsigned long>(simulation.getStatistics().numContactPoints), state);
    return scene + text;
}

void ExampleApplication::setSelection(hyx::RigidBody* body) {
    if (body && body->getSimulation() != &m_implementation->ensureSimulation())
        throw std::invalid_argument("the body to select is not in the simulation of this application");
    m_implementation->selection.select(body);
    m_implementation->statusMade = {}; // also of another body than before
}

hyx::RigidBody* ExampleApplication::getSelection() {
    return m_implementation->selection.in(m_implementation->ensureSimulation());
}

std::string ExampleApplication::getSelectionText() {
    return m_implementation->selection.describe(m_implementation->ensureSimulation());
}

double ExampleApplication::getRealTimeFactor() const {
    return m_implementation->times.means().realTimeFactor;
}

double ExampleApplication::getFrameRate() const {
    return m_implementation->times.means().framesPerSecond;
}

void ExampleApplication::Implementation::updateNotes(ExampleApplication const& application) {
    std::string help;
    if (helpShown)
        for (std::string const& text : application.getKeyHelp())
            help += (help.empty() ? "" : "\n") + text;
    notes.setText(ScreenNotes::HELP, help);
    notes.setText(ScreenNotes::ERROR_TEXT, sceneError);
    // Text costs more than it tells when it changes with each frame.
    constexpr auto interval = std::chrono::milliseconds(250);
    auto const now = Pacer::Clock::now();
    auto const shows = [this](ScreenNotes::Place place) { return !notes.text(place).empty(); };
    bool const selects = selection.in(*simulation);
    if (statusShown != shows(ScreenNotes::STATUS) || selects != shows(ScreenNotes::SELECTION) ||
        now - statusMade > interval) {
        notes.setText(ScreenNotes::STATUS, statusShown ? application.getStatus() : "");
        notes.setText(ScreenNotes::SELECTION, selection.describe(*simulation));
        statusMade = now;
    }
    auto const* traits = window->window()->getTraits();
    notes.layOut(traits->width, traits->height);
}

void ExampleApplication::Implementation::showPresentState(ExampleApplication const& application) {
    hyxSDK::Simulation& shown = ensureSimulation();
    if (debug.enabled())
        debug.update(shown);
    statusMade = {};
    updateNotes(application);
}

bool ExampleApplication::tryScene(std::function<void()> const& change) {
    std::string reason;
    try {
        change();
        reason = hyxPython::takeScriptError("the scene");
    } catch (std::exception const& error) {
        reason = error.what();
        hyx::Notify::instance().notify(hyx::Notify::NOTIFY_ERROR, reason);
    }
    if (breakRequested())
        return false; // Ctrl-C while the scene was built
    m_implementation->sceneError = reason.empty() ? "" : reason + "\nThe scene stays as it was.";
    return reason.empty();
}

std::string ExampleApplication::getSceneError() const {
    return m_implementation->sceneError;
}

} // namespace hyxOSG
