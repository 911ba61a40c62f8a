// The application's remote control and co-simulation.
#include "platform/hyxPython/script_manager.h"
#include "reference/hyxNet/access_token.h"
#include "reference/hyxOSG/application/application_implementation.h"
#include "reference/hyxOSG/application/co_simulation_answers.h"

#include <cstdio>

namespace hyxOSG {
namespace {

/// Ports and tokens may be made up here, so whoever started the program must be told.
void announce(char const* service, std::string const& address) {
    std::printf("%s: %s\n", service, address.c_str());
    std::fflush(stdout);
}

} // namespace

void ExampleApplication::initRpc() {
    if (m_implementation->remotePort && !m_implementation->controller) {
        m_implementation->controller = new ExampleApplicationController(this, *m_implementation->remotePort,
                                                                        m_implementation->remoteToken, m_hostName);
        announce("Remote control", m_implementation->controller->getUrl());
    }
    if (m_implementation->coSimulationPort && !m_implementation->coSimulation)
        m_implementation->coSimulation =
            m_implementation->serve(*this, "Co-simulation", *m_implementation->coSimulationPort);
    if (m_implementation->clickPort && !m_implementation->click)
        m_implementation->click = m_implementation->serve(*this, "Joint control", *m_implementation->clickPort);
}

hyx::ref_ptr<hyxNet::CoSimulationServer> ExampleApplication::Implementation::serve(ExampleApplication& application,
                                                                                   char const* service,
                                                                                   int port) const {
    std::string const token = remoteToken.empty() ? hyxNet::makeAccessToken() : remoteToken;
    hyx::ref_ptr<hyxNet::CoSimulationServer> const made =
        new hyxNet::CoSimulationServer(port, token, application.m_hostName);
    announce(service, made->getAddress() + " token " + token);
    made->setHandler([&application, server = made.get()](std::string const& request) {
        return answerCoSimulation(application, *server, request);
    });
    return made;
}

bool ExampleApplication::useCoSimulation() const {
    return m_implementation->coSimulation.valid();
}

void ExampleApplication::updateCoSimulationServer() {
    // The other process sets the pace: its requests are answered until the frame's time is used.
    auto now = Pacer::Clock::now();
    auto const end = m_implementation->pacer.workEnd(now);
    for (; m_implementation->coSimulation && now < end && !done(); now = Pacer::Clock::now()) {
        auto const left = std::chrono::duration_cast<std::chrono::milliseconds>(end - now);
        m_implementation->coSimulation->update(int(left.count()));
    }
    if (m_implementation->click)
        m_implementation->click->update();
}

void ExampleApplication::updateRemoteDebugger() {
    if (m_implementation->controller)
        m_implementation->controller->update();
}

void ExampleApplication::pushFrameToRemoteViewer() {
    if (!m_implementation->controller || m_implementation->controller->getNumClients() == 0 ||
        !m_implementation->window || !m_implementation->window->open())
        return;
    auto const window = m_implementation->window;
    m_implementation->controller->pushFrame(*window->grab(getTimeStamp()));
}

ExampleApplicationController* ExampleApplication::getController() {
    return m_implementation->controller.get();
}

int ExampleApplication::getControlChannelPort() const {
    return m_implementation->controller ? m_implementation->controller->getPort() : 0;
}

void ExampleApplication::pushParametersToControlChannel() {
    if (m_implementation->controller)
        m_implementation->controller->pushParameters();
}

void ExampleApplication::setEnableControlChannelTickSignals(bool enable) {
    m_implementation->tickSignals = enable;
}

} // namespace hyxOSG
