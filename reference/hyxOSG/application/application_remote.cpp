/// The application's remote control and co-simulation.
#include "platform/hyxPython/script_manager.h"
#include "reference/hyxNet/access_token.h"
#include "reference/hyxOSG/application/application_state.h"
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
    if (m_state->remotePort && !m_state->controller) {
        m_state->controller =
            new ExampleApplicationController(this, *m_state->remotePort, m_state->remoteToken, m_hostName);
        announce("Remote control", m_state->controller->getUrl());
    }
    if (m_state->coSimulationPort && !m_state->coSimulation)
        m_state->coSimulation = m_state->serve(*this, "Co-simulation", *m_state->coSimulationPort);
    if (m_state->clickPort && !m_state->click)
        m_state->click = m_state->serve(*this, "Joint control", *m_state->clickPort);
}

hyx::ref_ptr<hyxNet::CoSimulationServer> ExampleApplication::State::serve(ExampleApplication& application,
                                                                          char const* service, int port) const {
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
    return m_state->coSimulation.valid();
}

void ExampleApplication::updateCoSimulationServer() {
    constexpr int waitMilliseconds = 5; // the other process sets the pace: its requests are answered at once
    if (m_state->coSimulation)
        m_state->coSimulation->update(waitMilliseconds);
    if (m_state->click)
        m_state->click->update();
}

void ExampleApplication::updateRemoteDebugger() {
    if (m_state->controller)
        m_state->controller->update();
}

void ExampleApplication::pushFrameToRemoteViewer() {
    if (!m_state->controller || m_state->controller->getNumClients() == 0 || !m_state->window ||
        !m_state->window->open())
        return;
    auto const window = m_state->window;
    m_state->controller->pushFrame(*window->grab(getTimeStamp()));
}

ExampleApplicationController* ExampleApplication::getController() {
    return m_state->controller.get();
}

int ExampleApplication::getControlChannelPort() const {
    return m_state->controller ? m_state->controller->getPort() : 0;
}

void ExampleApplication::pushParametersToControlChannel() {
    if (m_state->controller)
        m_state->controller->pushParameters();
}

void ExampleApplication::setEnableControlChannelTickSignals(bool enable) {
    m_state->tickSignals = enable;
}

} // namespace hyxOSG
