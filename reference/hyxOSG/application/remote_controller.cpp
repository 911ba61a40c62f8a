// What the remote page asks of an application, and is told.
#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxOSG/application/example_application_controller.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyxNet/access_token.h"
#include "reference/hyxNet/listen_address.h"
#include "reference/hyxNet/request_check.h"
#include "reference/hyxNet/web_server.h"
#include "reference/hyxOSG/application/inspector.h"
#include "reference/hyxOSG/application/remote_page.h"

#include <nlohmann/json.hpp>
#include <osgDB/Registry>
#include <osgGA/CameraManipulator>
#include <osgViewer/GraphicsWindow>

#include <algorithm>
#include <chrono>
#include <sstream>
#include <stdexcept>

namespace hyxOSG {

using nlohmann::json;

namespace {

int keyOf(json const& message) {
    json const& key = message.at("key");
    if (!key.is_number_integer())
        throw std::invalid_argument("'key' must be a whole number");
    return key.get<int>();
}

} // namespace

struct ExampleApplicationController::Implementation {
    ExampleApplication* application;
    Inspector inspector{nullptr};
    std::string token;
    std::string host;
    std::unique_ptr<hyxNet::WebServer> server;
    unsigned long ticks = 0;
    std::chrono::steady_clock::time_point parametersSent{};

    std::string follow(std::string const& message);
    void followCommand(json const& message);
    void change(std::function<void()> const& scene);
    void restore();
    void input(json const& message);
};

ExampleApplicationController::ExampleApplicationController(ExampleApplication* application, int port,
                                                           std::string const& token, std::string const& host)
    : m_implementation(std::make_unique<Implementation>()) {
    if (!application)
        throw std::invalid_argument("the remote control needs an application, not None");
    m_implementation->application = application;
    m_implementation->inspector = Inspector(application);
    m_implementation->token = token.empty() ? hyxNet::makeAccessToken() : token;
    m_implementation->host = hyxNet::listenAddress(host);
    Implementation* state = m_implementation.get();
    m_implementation->server =
        std::make_unique<hyxNet::WebServer>(port, m_implementation->host, m_implementation->token, remotePage,
                                            [state](std::string const& message) { return state->follow(message); });
}

ExampleApplicationController::~ExampleApplicationController() = default;

int ExampleApplicationController::getPort() const {
    return m_implementation->server->port();
}

std::string ExampleApplicationController::getToken() const {
    return m_implementation->token;
}

int ExampleApplicationController::getNumClients() const {
    return m_implementation->server->numClients();
}

std::string ExampleApplicationController::getUrl() const {
    bool const sixthVersion = m_implementation->host.find(':') != std::string::npos;
    return "http://" + (sixthVersion ? "[" + m_implementation->host + "]" : m_implementation->host) + ":" +
           std::to_string(getPort()) + "/?token=" + m_implementation->token;
}

void ExampleApplicationController::update() {
    m_implementation->server->update();
    constexpr auto interval = std::chrono::milliseconds(250);
    auto const now = std::chrono::steady_clock::now();
    if (getNumClients() == 0 || now - m_implementation->parametersSent < interval)
        return;
    m_implementation->parametersSent = now;
    pushParameters();
}

bool ExampleApplicationController::wantsFrame() const {
    return m_implementation->server->wantsPicture();
}

void ExampleApplicationController::pushFrame(osg::Image const& image) {
    if (!wantsFrame())
        return;
    osgDB::ReaderWriter* writer = osgDB::Registry::instance()->getReaderWriterForExtension("jpg");
    std::ostringstream bytes;
    osg::ref_ptr<osgDB::Options> const options = new osgDB::Options("JPEG_QUALITY 85");
    if (!writer || !writer->writeImage(image, bytes, options).success())
        throw std::runtime_error("the scene-graph library cannot write JPEG pictures");
    m_implementation->server->sendPicture(bytes.str());
}

void ExampleApplicationController::pushParameters() {
    ExampleApplication const& application = *m_implementation->application;
    json const parameters = {
        {"time", application.getTimeStamp()},
        {"time step", application.getTimeStep()},
        {"paused", !application.getAutoStepping()},
        {"solver", application.getSolverName(application.getSolverType())},
        {"target frames per second", application.getTargetFPS()},
        {"bodies", m_implementation->application->getSimulation()->getRigidBodies().size()},
        {"scenes", application.getNumScenes()},
        {"real-time factor", application.getRealTimeFactor()},
        {"frames per second", application.getFrameRate()},
        {"contacts", m_implementation->application->getSimulation()->getStatistics().numContactPoints},
        {"speed", application.getSpeed()},
        {"span", {application.getHistorySpan().x, application.getHistorySpan().y}},
        {"keys", application.getKeyHelp()}};
    json message = {{"parameters", parameters}, {"details", m_implementation->inspector.details()}};
    if (json tree = m_implementation->inspector.tree(); !tree.is_null())
        message["tree"] = std::move(tree);
    m_implementation->server->sendText(message.dump(-1, ' ', false, json::error_handler_t::replace));
}

void ExampleApplicationController::pushTick() {
    json const tick = {{"number", ++m_implementation->ticks}, {"time", m_implementation->application->getTimeStamp()}};
    m_implementation->server->sendText(json{{"tick", tick}}.dump());
}

std::string ExampleApplicationController::Implementation::follow(std::string const& text) {
    try {
        hyxNet::checkRequest(text, "");
        json const message = json::parse(text);
        std::string const what = message.value("do", "");
        if (what == "ready")
            server->askForPicture();
        else if (what == "list")
            inspector.forgetTree();
        else
            followCommand(message);
        return "";
    } catch (std::exception const& error) {
        return json{{"error", error.what()}}.dump(-1, ' ', false, json::error_handler_t::replace);
    }
}

void ExampleApplicationController::Implementation::followCommand(json const& message) {
    std::string const what = message.value("do", "");
    if (what == "pause")
        application->setAutoStepping(!application->getAutoStepping());
    else if (what == "step")
        application->stepSimulation();
    else if (what == "reload")
        change([this] { application->reloadScene(); });
    else if (what == "previous")
        change([this] { application->createPreviousScene(); });
    else if (what == "next")
        change([this] { application->createNextScene(); });
    else if (what == "save")
        application->getSimulation()->save(application->getSaveSceneFilename());
    else if (what == "restore")
        restore();
    else if (what == "home" && application->getCameraManipulator())
        application->getCameraManipulator()->home(0);
    else if (what == "speed")
        application->setSpeed(message.at("value").get<double>());
    else if (what == "seek") {
        application->setAutoStepping(false);
        application->goToTime(message.at("value").get<double>());
    } else if (what == "scrub")
        application->scrub(message.at("value").get<int>());
    else if (what == "debug")
        application->setEnableDebugRenderer(!application->getEnableDebugRenderer());
    else if (what == "timeStep")
        application->setTimeStep(message.at("value").get<double>());
    else if (!inspector.follow(message))
        input(message);
}

void ExampleApplicationController::Implementation::change(std::function<void()> const& scene) {
    if (!application->tryScene(scene))
        throw std::runtime_error(application->getSceneError());
}

void ExampleApplicationController::Implementation::restore() {
    std::string const file = application->getSaveSceneFilename();
    if (!application->restoreFromFile(file))
        throw std::runtime_error("no state was saved: there is no " + file);
}

/// Input goes the way of the window's own: through its event queue, in pixels from the upper left corner.
void ExampleApplicationController::Implementation::input(json const& message) {
    osg::Camera* camera = application->getCamera();
    auto* window = camera ? dynamic_cast<osgViewer::GraphicsWindow*>(camera->getGraphicsContext()) : nullptr;
    if (!window)
        return;
    osgGA::EventQueue* queue = window->getEventQueue();
    std::string const what = message.value("do", "");
    constexpr double farthest = 32767; // pixels; beyond it the camera's arithmetic fails
    auto const pixels = [&](char const* name) {
        return float(std::clamp(message.value(name, 0.0), -farthest, farthest));
    };
    float const x = pixels("x"), y = pixels("y");
    unsigned int const button = message.value("button", 1u);
    if (what == "press")
        queue->mouseButtonPress(x, y, button);
    else if (what == "release")
        queue->mouseButtonRelease(x, y, button);
    else if (what == "move")
        queue->mouseMotion(x, y);
    else if (what == "wheel")
        queue->mouseScroll(message.value("up", true) ? osgGA::GUIEventAdapter::SCROLL_UP
                                                     : osgGA::GUIEventAdapter::SCROLL_DOWN);
    else if (what == "key" && message.value("down", true))
        queue->keyPress(keyOf(message));
    else if (what == "key")
        queue->keyRelease(keyOf(message));
    else
        throw std::invalid_argument("the remote control does not know '" + what + "'");
}

} // namespace hyxOSG
