/// The application's scenes: added, built, changed, restored.
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/visuals/read_file.h"
#include "reference/hyxOSG/application/application_state.h"
#include "reference/hyxOSG/application/removed_geometry.h"
#include "reference/hyxPython/script_file.h"

#include <filesystem>
#include <stdexcept>

namespace hyxOSG {
namespace {

bool hasEnding(std::string const& path, char const* ending) {
    return std::filesystem::path(path).extension().string() == ending;
}

bool isScript(SceneDescription const& description) {
    return !description.scriptFunction.empty() || hasEnding(description.fileName, ".py");
}

std::string functionOf(SceneDescription const& description) {
    return description.scriptFunction.empty() ? "buildScene" : description.scriptFunction;
}

} // namespace

bool ExampleApplication::addScene(std::string const& fileName, std::string const& scriptFunction, int key,
                                  bool unittest, float stopAfter, bool slowUnittest) {
    return addScene(SceneDescription(fileName, scriptFunction, unittest, stopAfter, slowUnittest), key);
}

bool ExampleApplication::addScene(std::string const& fileName, std::string const& scriptFunction, bool unittest,
                                  float stopAfter, bool slowUnittest) {
    return addScene(SceneDescription(fileName, scriptFunction, unittest, stopAfter, slowUnittest));
}

bool ExampleApplication::addScene(BuildScenePtr scene, int key, bool unittest, float stopAfter, bool slowUnittest) {
    return addScene(SceneDescription(scene, unittest, stopAfter, slowUnittest), key);
}

bool ExampleApplication::addScene(BuildScenePtr scene, bool unittest, float stopAfter, bool slowUnittest) {
    return addScene(SceneDescription(scene, unittest, stopAfter, slowUnittest));
}

bool ExampleApplication::addScene(SceneDescription description) {
    return m_state->scenes.add(description);
}

bool ExampleApplication::addScene(SceneDescription description, int key) {
    return m_state->scenes.add(description, key);
}

void ExampleApplication::clearAddedScenes() {
    m_state->scenes.clear();
    m_state->presentIndex.reset();
}

size_t ExampleApplication::getNumScenes() const {
    return m_state->scenes.size();
}

void ExampleApplication::initScene() {
    m_state->sceneBuilt = true;
    if (m_state->scenes.size() > 0)
        createSceneFromIndex(m_state->firstScene);
}

void ExampleApplication::initScene(osg::Group* scene) {
    m_state->sceneBuilt = true;
    setScene(scene);
    if (!m_state->homeSet)
        fitSceneIntoView();
}

bool ExampleApplication::createSceneFromKey(int key) {
    auto const index = m_state->scenes.indexOf(key);
    return index && createSceneFromIndex(int(*index));
}

bool ExampleApplication::createSceneFromIndex(int index, bool keepCamera) {
    if (index < 0 || size_t(index) >= m_state->scenes.size())
        return false;
    SceneDescription const description = m_state->scenes.at(index); // the scene may clear the list
    if (!m_state->buildScene(*this, description, keepCamera))
        return false;
    m_state->presentIndex = index;
    return true;
}

void ExampleApplication::reloadScene() {
    if (!m_state->presentScene)
        return;
    SceneDescription const description = *m_state->presentScene;
    m_state->buildScene(*this, description, true);
}

void ExampleApplication::createNextScene() {
    size_t const count = m_state->scenes.size();
    if (count > 0)
        createSceneFromIndex(m_state->presentIndex ? int((*m_state->presentIndex + 1) % count) : 0);
}

void ExampleApplication::createPreviousScene() {
    size_t const count = m_state->scenes.size();
    if (count > 0)
        createSceneFromIndex(int((m_state->presentIndex.value_or(0) + count - 1) % count));
}

bool ExampleApplication::State::buildScene(ExampleApplication& application, SceneDescription const& description,
                                           bool keepCamera) {
    // A script that cannot be read leaves the application as it was.
    if (isScript(description) && !hyxPython::ScriptFile::load(description.fileName))
        return false;
    application.clearScene();
    application.m_isLoadingScene = true;
    bool ok = false;
    osg::ref_ptr<osg::Group> group;
    try {
        group = runBuilder(application, description, ok);
    } catch (...) {
        application.m_isLoadingScene = false;
        application.clearScene();
        throw;
    }
    application.m_isLoadingScene = false;
    if (!ok) {
        application.clearScene();
        return false;
    }
    sceneBuilt = true;
    presentScene = description;
    application.m_loadedSceneFile = !description.fileName.empty();
    if (description.stopAfter >= 0)
        stopTime = description.stopAfter;
    application.setScene(group);
    if (!keepCamera && !homeSet)
        application.fitSceneIntoView();
    pacer.restart();
    application.m_sceneLoadEvent.trigger();
    return true;
}

osg::ref_ptr<osg::Group> ExampleApplication::State::runBuilder(ExampleApplication& application,
                                                               SceneDescription const& description, bool& ok) {
    if (description.scene) {
        ok = true;
        return description.scene(&ensureSimulation(), &application);
    }
    if (isScript(description)) {
        scriptFile = description.fileName;
        return application.executePythonScript(description.fileName, functionOf(description), ok);
    }
    if (!std::filesystem::is_regular_file(description.fileName))
        throw std::runtime_error("the scene file '" + description.fileName + "' cannot be read");
    osg::ref_ptr<osg::Group> group = new osg::Group;
    ok = readFile(description.fileName, &ensureSimulation(), group);
    if (ok)
        return group;
    osg::ref_ptr<osg::Node> model = readNodeFile(description.fileName, false);
    ok = model.valid();
    if (ok)
        group->addChild(model);
    return group;
}

void ExampleApplication::clearScene() {
    m_state->proxies->clear();
    m_state->graph.clear();
    m_state->graph.decorator()->clearText();
    m_state->scriptGroup = nullptr;
    if (m_state->follow)
        setOrbitCamera(nullptr, 1, 0, 0);
    if (m_state->pickHandler)
        m_state->pickHandler->reset();
    if (m_state->simulation)
        m_state->simulation->cleanup();
    m_loadedSceneFile = false;
}

SceneDescription ExampleApplication::getCallback(int key) const {
    auto const index = m_state->scenes.indexOf(key);
    return index ? m_state->scenes.at(*index) : SceneDescription();
}

SceneDescription ExampleApplication::getCallbackIdx(size_t index) const {
    if (index >= m_state->scenes.size())
        throw std::out_of_range("there are " + std::to_string(m_state->scenes.size()) + " scenes, and no number " +
                                std::to_string(index));
    return m_state->scenes.at(index);
}

osg::Group* ExampleApplication::getScene() {
    return m_state->graph.scene();
}

osg::Group* ExampleApplication::getSceneRoot() {
    return m_state->graph.sceneRoot();
}

osg::Group* ExampleApplication::getSceneHyxOSGRoot() {
    return m_state->graph.libraryRoot();
}

osg::Group* ExampleApplication::getSceneSwitch() {
    return m_state->graph.sceneSwitch();
}

osg::Group* ExampleApplication::getRoot() {
    return m_state->graph.root();
}

void ExampleApplication::setScene(osg::Group* scene) {
    m_state->graph.setScene(scene);
}

SceneDecorator* ExampleApplication::getSceneDecorator() {
    return m_state->graph.decorator();
}

std::string ExampleApplication::getSaveSceneFilename() const {
    return "hyx_saved_scene.state";
}

bool ExampleApplication::restoreFromFile(std::string const& fileName) {
    if (!std::filesystem::is_regular_file(fileName))
        return false;
    m_state->ensureSimulation().restore(fileName);
    m_state->pacer.restart();
    return true;
}

void ExampleApplication::registerRemovedGeometry(GeometryNode* node) {
    RemovedGeometry::add(node);
}

void ExampleApplication::journalRenderLoader(hyxSDK::Assembly* assembly, bool remove) {
    if (remove)
        m_state->proxies->remove(assembly);
    else
        m_state->proxies->create(assembly);
}

} // namespace hyxOSG
