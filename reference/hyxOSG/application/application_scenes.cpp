// The application's scenes: added, built, changed, restored.
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/visuals/read_file.h"
#include "reference/hyxOSG/application/application_implementation.h"
#include "reference/hyxOSG/application/file_kinds.h"
#include "reference/hyxOSG/application/removed_geometry.h"
#include "reference/hyxOSG/application/scene_backup.h"
#include "reference/hyxPython/script_file.h"
#include "reference/machinery/files/missing_file.h"
#include "reference/machinery/meshes/notices.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace hyxOSG {
namespace {

constexpr char const* usualFunction = "buildScene";

bool hasEnding(std::string const& path, char const* ending) {
    return std::filesystem::path(path).extension().string() == ending;
}

bool isScript(SceneDescription const& description) {
    return !description.scriptFunction.empty() || hasEnding(description.fileName, ".py");
}

std::string functionOf(SceneDescription const& description) {
    return description.scriptFunction.empty() ? usualFunction : description.scriptFunction;
}

// A scene may be added before its file is written, but is not likely to be.
void expectFile(SceneDescription const& description) {
    if (!description.fileName.empty() && !std::filesystem::is_regular_file(description.fileName))
        warn(missingFile("scene file", description.fileName) + (isFolder(description.fileName) ? "" : " yet"));
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
    expectFile(description);
    return m_implementation->scenes.add(description);
}

bool ExampleApplication::addScene(SceneDescription description, int key) {
    expectFile(description);
    return m_implementation->scenes.add(description, key);
}

void ExampleApplication::clearAddedScenes() {
    m_implementation->scenes.clear();
    m_implementation->presentIndex.reset();
}

size_t ExampleApplication::getNumScenes() const {
    return m_implementation->scenes.size();
}

void ExampleApplication::initScene() {
    m_implementation->sceneBuilt = true;
    size_t const count = m_implementation->scenes.size();
    int const first = m_implementation->firstScene;
    if (first < 0 || (first > 0 && size_t(first) >= count))
        throw std::invalid_argument("there is no scene " + std::to_string(first) + ": the scenes are 0 to " +
                                    std::to_string(count ? count - 1 : 0));
    if (count > 0)
        createSceneFromIndex(first);
    if (m_implementation->firstState)
        restoreFromFile(*std::exchange(m_implementation->firstState, std::nullopt));
    if (!m_implementation->journalPlaybackPath.empty() && !m_implementation->journal->isPlaying())
        journalPlayback();
}

void ExampleApplication::initScene(osg::Group* scene) {
    m_implementation->sceneBuilt = true;
    setScene(scene);
    if (!m_implementation->homeSet)
        fitSceneIntoView();
}

bool ExampleApplication::createSceneFromKey(int key) {
    auto const index = m_implementation->scenes.indexOf(key);
    return index && createSceneFromIndex(int(*index));
}

bool ExampleApplication::createSceneFromIndex(int index, bool keepCamera) {
    if (index < 0 || size_t(index) >= m_implementation->scenes.size())
        return false;
    SceneDescription const description = m_implementation->scenes.at(index); // the scene may clear the list
    if (!m_implementation->buildScene(*this, description, keepCamera))
        return false;
    m_implementation->presentIndex = index;
    return true;
}

void ExampleApplication::reloadScene() {
    auto const& wanted = m_implementation->failedScene ? m_implementation->failedScene : m_implementation->presentScene;
    if (!wanted)
        return;
    SceneDescription const description = *wanted;
    m_implementation->buildScene(*this, description, true);
}

void ExampleApplication::createNextScene() {
    size_t const count = m_implementation->scenes.size();
    if (count > 0)
        createSceneFromIndex(m_implementation->presentIndex ? int((*m_implementation->presentIndex + 1) % count) : 0);
}

void ExampleApplication::createPreviousScene() {
    size_t const count = m_implementation->scenes.size();
    if (count > 0)
        createSceneFromIndex(int((m_implementation->presentIndex.value_or(0) + count - 1) % count));
}

bool ExampleApplication::Implementation::buildScene(ExampleApplication& application,
                                                    SceneDescription const& description, bool keepCamera) {
    failedScene = description; // until it is built
    // A script that cannot be read leaves the application as it was.
    if (isScript(description) && !hyxPython::ScriptFile::load(description.fileName))
        return false;
    SceneBackup const former(ensureSimulation(), graph);
    bool const formerFile = application.m_loadedSceneFile;
    std::string const formerScript = scriptFile;
    osg::ref_ptr<osg::Group> const formerGroup = scriptGroup;
    emptyScene(application);
    sceneChanges.undo();
    SceneChanges next = watchSettings(application);
    auto const takeBack = [&] {
        application.m_isLoadingScene = false;
        emptyScene(application);
        next.undo();
        sceneChanges.redo();
        former.restore(*simulation, graph);
        application.m_loadedSceneFile = formerFile;
        scriptFile = formerScript;
        scriptGroup = formerGroup;
        RemovedGeometry::forget();
        pacer.restart();
    };
    application.m_isLoadingScene = true;
    bool ok = false;
    osg::ref_ptr<osg::Group> group;
    try {
        group = runBuilder(application, description, ok);
        if (!ok) {
            takeBack();
            return false;
        }
        application.m_isLoadingScene = false;
        if (description.stopAfter >= 0)
            stopTime = description.stopAfter;
        application.setScene(group);
    } catch (...) {
        takeBack();
        throw;
    }
    failedScene.reset();
    sceneError.clear();
    next.settle();
    sceneChanges = std::move(next);
    sceneBuilt = true;
    presentScene = description;
    recordNextScene();
    application.m_loadedSceneFile = !description.fileName.empty();
    if (!keepCamera && !homeSet)
        application.fitSceneIntoView();
    pacer.restart();
    application.m_sceneLoadEvent.trigger();
    return true;
}

osg::ref_ptr<osg::Group> ExampleApplication::Implementation::runBuilder(ExampleApplication& application,
                                                                        SceneDescription const& description, bool& ok) {
    if (description.scene) {
        ok = true;
        return description.scene(&ensureSimulation(), &application);
    }
    if (isScript(description)) {
        scriptFile = description.fileName;
        return application.executePythonScript(description.fileName, functionOf(description), ok);
    }
    return readSceneFile(description.fileName, ok);
}

osg::ref_ptr<osg::Group> ExampleApplication::Implementation::readSceneFile(std::string const& path, bool& ok) {
    requireFile(path);
    osg::ref_ptr<osg::Group> group = new osg::Group;
    switch (fileKind(path)) {
    case FileKind::SCENE:
        ok = readFile(path, &ensureSimulation(), group);
        break;
    case FileKind::STATE:
        throw std::runtime_error("'" + path +
                                 "' holds the state of a simulation, not a scene: build its scene, and restore it "
                                 "with restoreFromFile");
    default: // also of unknown kinds, which the readers of models may know
        if (osg::ref_ptr<osg::Node> const model = readNodeFile(path, false))
            ok = group->addChild(model);
    }
    if (!ok)
        throw std::runtime_error("the scene file '" + path + "' cannot be read");
    return group;
}

bool ExampleApplication::openFile(std::string const& path) {
    FileKind const kind = fileKind(path);
    if (kind != FileKind::NONE || isFolder(path))
        requireFile(path);
    switch (kind) {
    case FileKind::SCRIPT:
        return addScene(path, usualFunction);
    case FileKind::SCENE:
    case FileKind::MODEL:
        return addScene(SceneDescription(path));
    case FileKind::JOURNAL:
        m_implementation->journalPlaybackPath = path;
        return true;
    case FileKind::STATE:
        m_implementation->firstState = path;
        return true;
    case FileKind::NONE:
        break;
    }
    return false;
}

bool ExampleApplication::showFile(std::string const& path) {
    requireFile(path);
    auto const kept = Implementation::keep(*this);
    return tryScene([&] { m_implementation->showFile(*this, path); });
}

void ExampleApplication::Implementation::showFile(ExampleApplication& application, std::string const& path) {
    char const* const function = fileKind(path) == FileKind::SCRIPT ? usualFunction : "";
    size_t const index = scenes.indexOf(path, function).value_or(scenes.size());
    if (index == scenes.size() && !application.openFile(path)) // which adds one scene at most
        throw std::invalid_argument("'" + path + "' is of no kind that can be opened");
    switch (fileKind(path)) {
    case FileKind::JOURNAL:
        application.journalPlayback(); // which may fail, before the scene is taken away
        application.clearScene();
        presentScene.reset();
        presentIndex.reset();
        application.setAutoStepping(true);
        break;
    case FileKind::STATE:
        application.restoreFromFile(*std::exchange(firstState, std::nullopt));
        break;
    default:
        if (application.createSceneFromIndex(int(index)) && journal->isPlaying())
            journal->close();
    }
}

void ExampleApplication::clearScene() {
    m_implementation->emptyScene(*this);
    std::exchange(m_implementation->sceneChanges, {}).undo();
}

void ExampleApplication::Implementation::emptyScene(ExampleApplication& application) {
    proxies->clear();
    graph.clear();
    graph.decorator()->clearText();
    scriptGroup = nullptr;
    useOrbit();
    if (pickHandler)
        pickHandler->reset();
    if (simulation)
        simulation->cleanup();
    application.m_loadedSceneFile = false;
}

SceneDescription ExampleApplication::getCallback(int key) const {
    auto const index = m_implementation->scenes.indexOf(key);
    return index ? m_implementation->scenes.at(*index) : SceneDescription();
}

SceneDescription ExampleApplication::getCallbackIdx(size_t index) const {
    if (index >= m_implementation->scenes.size())
        throw std::out_of_range("there are " + std::to_string(m_implementation->scenes.size()) +
                                " scenes, and no number " + std::to_string(index));
    return m_implementation->scenes.at(index);
}

osg::Group* ExampleApplication::getScene() {
    return m_implementation->graph.scene();
}

osg::Group* ExampleApplication::getSceneRoot() {
    return m_implementation->graph.sceneRoot();
}

osg::Group* ExampleApplication::getSceneHyxOSGRoot() {
    return m_implementation->graph.libraryRoot();
}

osg::Group* ExampleApplication::getSceneSwitch() {
    return m_implementation->graph.sceneSwitch();
}

osg::Group* ExampleApplication::getRoot() {
    return m_implementation->graph.root();
}

void ExampleApplication::setScene(osg::Group* scene) {
    m_implementation->graph.setScene(scene);
}

SceneDecorator* ExampleApplication::getSceneDecorator() {
    return m_implementation->graph.decorator();
}

std::string ExampleApplication::getSaveSceneFilename() const {
    return "hyx_saved_scene.state";
}

bool ExampleApplication::restoreFromFile(std::string const& fileName) {
    if (!std::filesystem::is_regular_file(fileName)) {
        warn(missingFile("saved state", fileName));
        return false;
    }
    m_implementation->ensureSimulation().restore(fileName);
    m_implementation->pacer.restart();
    return true;
}

void ExampleApplication::registerRemovedGeometry(GeometryNode* node) {
    RemovedGeometry::add(node);
}

void ExampleApplication::journalRenderLoader(hyxSDK::Assembly* assembly, bool remove) {
    if (remove)
        m_implementation->proxies->remove(assembly);
    else
        m_implementation->proxies->create(assembly);
}

} // namespace hyxOSG
