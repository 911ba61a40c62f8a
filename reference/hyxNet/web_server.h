// A small server of HTTP and WebSocket on one port.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace hyxNet {

/// Serves one page, and exchanges messages with the pages that are open; both only for who brings the token.
///
/// Everything happens inside `update`, on the caller's thread.
class WebServer {
public:
    /// Follows a message of a page; what it returns, when not empty, is sent back as text.
    using Handler = std::function<std::string(std::string const& message)>;

    /// Listens on `port` (0 for any free one) of `host` (empty for loopback). `page` must outlive the server. Throws
    /// std::runtime_error when the port is in use.
    WebServer(int port, std::string const& host, std::string const& token, char const* page, Handler handler);
    ~WebServer();

    int port() const;
    int numClients() const;

    /// Follows what has arrived and sends what can be sent, without waiting.
    void update();

    /// Whether a page has asked for a picture since the last one that it was sent.
    bool wantsPicture() const;
    /// Marks that a page, the one whose message is being handled, asks for a picture.
    void askForPicture();
    /// Sends a picture (the bytes of an image file) to the pages that asked for one.
    void sendPicture(std::string const& bytes);
    /// Sends a text to all pages. A page that does not keep up misses texts.
    void sendText(std::string const& text);

    struct Implementation;

private:
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxNet
