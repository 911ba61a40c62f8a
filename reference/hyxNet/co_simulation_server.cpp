// Answers requests over a ZeroMQ socket.
#include "platform/hyxNet/co_simulation_server.h"

#include "reference/hyxNet/access_token.h"
#include "reference/hyxNet/call_result.h"
#include "reference/hyxNet/listen_address.h"

#include <nlohmann/json.hpp>
#include <zmq.hpp>

#include <stdexcept>
#include <utility>

namespace hyxNet {

using nlohmann::json;

struct CoSimulationServer::Implementation {
    zmq::context_t context;
    zmq::socket_t socket{context, zmq::socket_type::rep};
    std::string address;
    std::string token;
    Handler handler;
    std::string calledFunction;
    std::string callArgument;
    std::string callResult; ///< empty until there is one
    bool holdsCall = false; ///< a call whose answer the next update sends

    std::string answer(std::string const& text);
    std::string answerHeldCall();

    void send(std::string const& text) { socket.send(zmq::buffer(text), zmq::send_flags::none); }
};

CoSimulationServer::CoSimulationServer(int port, std::string const& token, std::string const& address)
    : m_implementation(std::make_unique<Implementation>()) {
    if (port < 0 || port > 65535)
        throw std::invalid_argument("a port must be 0 to 65535");
    m_implementation->token = token;
    m_implementation->socket.set(zmq::sockopt::linger, 0);
    std::string const host = listenAddress(address);
    std::string const endpoint = "tcp://" + host + ":" + (port ? std::to_string(port) : "*");
    try {
        m_implementation->socket.bind(endpoint);
    } catch (zmq::error_t const& error) {
        throw std::runtime_error("the co-simulation server cannot listen on " + endpoint + ": " + error.what());
    }
    m_implementation->address = m_implementation->socket.get(zmq::sockopt::last_endpoint);
}

CoSimulationServer::~CoSimulationServer() = default;

int CoSimulationServer::getPort() const {
    return std::stoi(m_implementation->address.substr(m_implementation->address.rfind(':') + 1));
}

std::string CoSimulationServer::getAddress() const {
    return m_implementation->address;
}

void CoSimulationServer::setHandler(Handler handler) {
    m_implementation->handler = std::move(handler);
}

std::string CoSimulationServer::Implementation::answer(std::string const& text) {
    try {
        json const request = json::parse(text);
        if (!request.is_object())
            throw std::invalid_argument("a request must be a JSON object");
        if (!token.empty() && !sameToken(token, request.value("token", "")))
            throw std::invalid_argument("the token is missing or wrong");
        calledFunction = request.value("do", "") == "call" ? request.value("function", "") : "";
        callArgument = request.contains("argument") ? request["argument"].dump() : "null";
        callResult.clear();
        holdsCall = !handler && !calledFunction.empty();
        if (holdsCall)
            return "";
        if (!handler)
            throw std::runtime_error("nobody answers requests");
        return handler(text);
    } catch (std::exception const& error) {
        return json{{"ok", false}, {"error", error.what()}}.dump(-1, ' ', false, json::error_handler_t::replace);
    }
}

std::string CoSimulationServer::Implementation::answerHeldCall() {
    holdsCall = false;
    std::string const name = std::exchange(calledFunction, "");
    json const answer = callResult.empty()
                            ? json{{"ok", false}, {"error", "nobody answered the call of '" + name + "'"}}
                            : json{{"ok", true}, {"result", hyxNet::callResult(callResult)}};
    return answer.dump(-1, ' ', false, json::error_handler_t::replace);
}

int CoSimulationServer::update(int waitMilliseconds) {
    if (m_implementation->holdsCall)
        m_implementation->send(m_implementation->answerHeldCall());
    int answered = 0;
    for (;; ++answered) {
        zmq::pollitem_t item{m_implementation->socket, 0, ZMQ_POLLIN, 0};
        zmq::message_t request;
        try {
            if (zmq::poll(&item, 1, std::chrono::milliseconds(answered ? 0 : waitMilliseconds)) == 0)
                return answered;
            if (!m_implementation->socket.recv(request, zmq::recv_flags::dontwait))
                return answered;
        } catch (zmq::error_t const& error) {
            if (error.num() == EINTR)
                return answered; // a signal: the caller looks after it
            throw;
        }
        std::string const answer = m_implementation->answer(request.to_string());
        if (m_implementation->holdsCall)
            return answered + 1;
        m_implementation->send(answer);
        m_implementation->calledFunction.clear();
    }
}

std::string CoSimulationServer::getCalledFunction() const {
    return m_implementation->calledFunction;
}

std::string CoSimulationServer::getCallArgument() const {
    return m_implementation->callArgument;
}

void CoSimulationServer::setCallResult(std::string const& result) {
    m_implementation->callResult = result;
}

std::string CoSimulationServer::getCallResult() const {
    return m_implementation->callResult.empty() ? "null" : m_implementation->callResult;
}

} // namespace hyxNet
