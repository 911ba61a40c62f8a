// Answers requests over a ZeroMQ socket.
#include "platform/hyxNet/co_simulation_server.h"

#include "reference/hyxNet/call_result.h"
#include "reference/hyxNet/listen_address.h"
#include "reference/hyxNet/request_check.h"
#include "reference/hyxPython/interpreter.h"
#include "reference/hyxPython/native_work.h"

#include <nlohmann/json.hpp>
#include <zmq.hpp>

#include <algorithm>
#include <chrono>
#include <optional>
#include <stdexcept>
#include <utility>

namespace hyxNet {

using nlohmann::json;

namespace {

using Clock = std::chrono::steady_clock;

/// Requests that wait longer are answered at the next update, so that a flood of them leaves time for the frames.
constexpr std::chrono::milliseconds longestWork{3};
constexpr std::size_t mostErrorBytes = 1000;
constexpr int mostWaitingRequests = 64; // of each client
constexpr int handshakeMilliseconds = 1000;
constexpr int mostPendingConnections = 64;

} // namespace

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

    std::optional<std::string> receive();
    /// Whether a request came within a time; negative waits for ever. Ends early for a signal.
    bool await(int milliseconds);

    void send(std::string const& text) {
        try {
            socket.send(zmq::buffer(text), zmq::send_flags::dontwait);
        } catch (zmq::error_t const&) {
            // The client is gone, and with it who would read the answer.
        }
    }
};

CoSimulationServer::CoSimulationServer(int port, std::string const& token, std::string const& address)
    : m_implementation(std::make_unique<Implementation>()) {
    if (port < 0 || port > 65535)
        throw std::invalid_argument("a port must be 0 to 65535");
    m_implementation->token = token;
    m_implementation->socket.set(zmq::sockopt::linger, 0);
    m_implementation->socket.set(zmq::sockopt::maxmsgsize, std::int64_t(mostRequestBytes));
    m_implementation->socket.set(zmq::sockopt::rcvhwm, mostWaitingRequests);
    m_implementation->socket.set(zmq::sockopt::handshake_ivl, handshakeMilliseconds);
    m_implementation->socket.set(zmq::sockopt::backlog, mostPendingConnections);
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
        checkRequest(text, token);
        json const request = json::parse(text);
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
        // Errors repeat what they refuse, which may be long.
        std::string const words = std::string(error.what()).substr(0, mostErrorBytes);
        return json{{"ok", false}, {"error", words}}.dump(-1, ' ', false, json::error_handler_t::replace);
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

/// The next request, "" for one of several parts; none while nothing waits. All parts are taken, since the socket
/// answers only then.
std::optional<std::string> CoSimulationServer::Implementation::receive() {
    zmq::message_t part;
    if (!socket.recv(part, zmq::recv_flags::dontwait))
        return std::nullopt;
    bool const single = !part.more();
    std::string text = single ? part.to_string() : "";
    while (part.more())
        if (!socket.recv(part, zmq::recv_flags::dontwait))
            break;
    return text;
}

bool CoSimulationServer::Implementation::await(int milliseconds) {
    auto const end = Clock::now() + std::chrono::milliseconds(milliseconds);
    for (;;) {
        auto const left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        auto const wait = milliseconds < 0 ? hyxPython::longestSleep : std::clamp(left, {}, hyxPython::longestSleep);
        zmq::pollitem_t item{socket, 0, ZMQ_POLLIN, 0};
        try {
            if (zmq::poll(&item, 1, std::chrono::milliseconds(0)) > 0)
                return true;
            if (milliseconds == 0)
                return false;
            hyxPython::IdleWait const others;
            if (zmq::poll(&item, 1, wait) > 0)
                return true;
        } catch (zmq::error_t const& error) {
            if (error.num() != EINTR)
                throw;
        }
        if (hyxPython::interpreterInterrupts() || (milliseconds >= 0 && Clock::now() >= end))
            return false;
    }
}

int CoSimulationServer::update(int waitMilliseconds) {
    if (m_implementation->holdsCall)
        m_implementation->send(m_implementation->answerHeldCall());
    if (!m_implementation->await(waitMilliseconds))
        return 0;
    auto const end = Clock::now() + longestWork;
    int answered = 0;
    do {
        std::optional<std::string> const request = m_implementation->receive();
        if (!request)
            return answered;
        std::string const answer = m_implementation->answer(*request);
        ++answered;
        if (m_implementation->holdsCall)
            return answered;
        m_implementation->send(answer);
        m_implementation->calledFunction.clear();
    } while (Clock::now() < end && !hyxPython::interpreterInterrupts());
    return answered;
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
