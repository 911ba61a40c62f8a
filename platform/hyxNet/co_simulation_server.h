// Lets another process step a simulation.
#pragma once

#include "platform/hyx/objects/referenced.h"

#include <functional>
#include <memory>
#include <string>

namespace hyxNet {

/// Answers the requests of another process, one at a time, on the thread that calls `update`.
///
/// A request is one text of JSON, `{"token": ..., "do": NAME, ...}`, over a ZeroMQ REQ socket; the answer is one text
/// of JSON with `ok` and, when that is false, `error`. What the names do is given by a handler; a request with another
/// token is refused. Listens on the loopback address unless told otherwise.
class CoSimulationServer : public hyx::Referenced {
public:
    /// Answers a request (a text of JSON) with a text of JSON; an exception becomes the answer's `error`.
    using Handler = std::function<std::string(std::string const& request)>;

    /// Listens on `port` (0 for any free one) of `address` (empty for loopback). Requests must carry `token`, unless it
    /// is empty. Throws std::runtime_error when the port is in use.
    explicit CoSimulationServer(int port = 0, std::string const& token = "", std::string const& address = "");

    /// The port listened on.
    int getPort() const;
    /// The address listened on: `tcp://HOST:PORT`.
    std::string getAddress() const;

    /// Sets who answers the requests that the server does not know itself.
    void setHandler(Handler handler);

    /// Answers the requests that have arrived; waits at most `waitMilliseconds` for the first. Returns how many.
    /// Without a handler it stops at a call: `getCalledFunction` names it, and the next update sends what
    /// `setCallResult` was given.
    int update(int waitMilliseconds = 0);

    /// Name of the script's function that the request being answered calls; empty for none.
    std::string getCalledFunction() const;
    /// Argument of that call, a text of JSON.
    std::string getCallArgument() const;
    /// Result of that call, a text of JSON; `null` until it is set.
    std::string getCallResult() const;
    /// Sets the result of that call, a text of JSON.
    void setCallResult(std::string const& result);

protected:
    ~CoSimulationServer() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxNet
