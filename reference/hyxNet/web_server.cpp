// Serves through libwebsockets.
#include "reference/hyxNet/web_server.h"

#include "reference/hyxNet/access_token.h"
#include "reference/hyxNet/listen_address.h"

#include <libwebsockets.h>

#include <algorithm>
#include <cstring>
#include <deque>
#include <list>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace hyxNet {
namespace {

constexpr size_t longestMessage = 65536;
constexpr size_t longestQueue = 32;
constexpr size_t mostClients = 16;
constexpr int silenceSeconds = 10; // of a connection that has not become a client

/// Sent with every page: nobody may frame it, guess at its type, keep it, or learn its address, which holds the token.
lws_protocol_vhost_options const frameHeader = {nullptr, nullptr, "x-frame-options:", "DENY"};
lws_protocol_vhost_options const typeHeader = {&frameHeader, nullptr, "x-content-type-options:", "nosniff"};
lws_protocol_vhost_options const referrerHeader = {&typeHeader, nullptr, "referrer-policy:", "no-referrer"};
lws_protocol_vhost_options const cacheHeader = {&referrerHeader, nullptr, "cache-control:", "no-store"};
lws_protocol_vhost_options const headers = {
    &cacheHeader, nullptr, "content-security-policy:",
    "default-src 'self' 'unsafe-inline'; img-src 'self' blob: data:; connect-src 'self' ws: wss:; "
    "frame-ancestors 'none'"};

std::string headerOf(lws* socket, lws_token_indexes token) {
    char value[256] = "";
    return lws_hdr_copy(socket, value, sizeof value, token) > 0 ? value : "";
}

/// Whether a browser asks for the page that it came from, or no browser asks.
bool isSameOrigin(lws* socket) {
    if (lws_hdr_total_length(socket, WSI_TOKEN_ORIGIN) == 0)
        return true;
    std::string const host = headerOf(socket, WSI_TOKEN_HOST);
    std::string const origin = headerOf(socket, WSI_TOKEN_ORIGIN);
    return !host.empty() && (origin == "http://" + host || origin == "https://" + host);
}

struct Message {
    bool binary;
    std::string bytes; ///< behind LWS_PRE bytes of room for the library's frame
};

struct Client {
    lws* socket;
    std::string incoming;
    std::deque<Message> outgoing;
    bool wantsPicture = false;
};

} // namespace

struct WebServer::Implementation {
    lws_context* context = nullptr;
    lws_vhost* host = nullptr;
    int port = 0;
    std::string token;
    std::string_view page;
    Handler handler;
    std::list<Client> clients;
    Client* current = nullptr; ///< whose message is being handled

    ~Implementation() {
        if (context)
            lws_context_destroy(context);
    }

    bool hasToken(lws* socket) const;
    int servePage(lws* socket, char const* path);
    int writePage(lws* socket) const;
    Client* find(lws* socket);
    /// Whether the message was not too long.
    bool receive(lws* socket, char const* bytes, size_t size);
    int send(Client& client);
    /// Whether there was room for the message.
    bool queue(Client& client, bool binary, std::string const& bytes);
    static int callback(lws* socket, lws_callback_reasons reason, void* user, void* data, size_t size);
};

bool WebServer::Implementation::hasToken(lws* socket) const {
    char value[128];
    char const* given = lws_get_urlarg_by_name(socket, "token=", value, sizeof value);
    return given && sameToken(token, given);
}

int WebServer::Implementation::servePage(lws* socket, char const* path) {
    if (std::strcmp(path, "/") != 0)
        return lws_return_http_status(socket, HTTP_STATUS_NOT_FOUND, nullptr) ? -1 : 0;
    if (!hasToken(socket))
        return lws_return_http_status(socket, HTTP_STATUS_FORBIDDEN, "The token is missing or wrong.") ? -1 : 0;
    unsigned char header[LWS_PRE + 2048], *at = header + LWS_PRE, *end = header + sizeof header - 1;
    if (lws_add_http_common_headers(socket, HTTP_STATUS_OK, "text/html; charset=utf-8", page.size(), &at, end) ||
        lws_finalize_write_http_header(socket, header + LWS_PRE, &at, end))
        return 1;
    lws_callback_on_writable(socket);
    return 0;
}

int WebServer::Implementation::writePage(lws* socket) const {
    std::string body(LWS_PRE, '\0');
    body += page;
    auto* start = reinterpret_cast<unsigned char*>(body.data()) + LWS_PRE;
    if (lws_write(socket, start, page.size(), LWS_WRITE_HTTP_FINAL) != int(page.size()))
        return 1;
    return lws_http_transaction_completed(socket) ? -1 : 0;
}

Client* WebServer::Implementation::find(lws* socket) {
    auto const client =
        std::find_if(clients.begin(), clients.end(), [=](Client const& c) { return c.socket == socket; });
    return client == clients.end() ? nullptr : &*client;
}

bool WebServer::Implementation::receive(lws* socket, char const* bytes, size_t size) {
    Client* client = find(socket);
    if (!client || client->incoming.size() + size > longestMessage)
        return false;
    client->incoming.append(bytes, size);
    if (!lws_is_final_fragment(socket) || lws_remaining_packet_payload(socket) > 0)
        return true;
    current = client;
    std::string const answer = handler(std::exchange(client->incoming, ""));
    current = nullptr;
    if (!answer.empty())
        queue(*client, false, answer);
    return true;
}

bool WebServer::Implementation::queue(Client& client, bool binary, std::string const& bytes) {
    if (client.outgoing.size() >= longestQueue)
        return false;
    client.outgoing.push_back({binary, std::string(LWS_PRE, '\0') + bytes});
    lws_callback_on_writable(client.socket);
    return true;
}

int WebServer::Implementation::send(Client& client) {
    if (client.outgoing.empty())
        return 0;
    Message& message = client.outgoing.front();
    size_t const size = message.bytes.size() - LWS_PRE;
    auto* start = reinterpret_cast<unsigned char*>(message.bytes.data()) + LWS_PRE;
    if (lws_write(client.socket, start, size, message.binary ? LWS_WRITE_BINARY : LWS_WRITE_TEXT) < int(size))
        return -1;
    client.outgoing.pop_front();
    if (!client.outgoing.empty())
        lws_callback_on_writable(client.socket);
    return 0;
}

int WebServer::Implementation::callback(lws* socket, lws_callback_reasons reason, void* user, void* data, size_t size) {
    lws_context* context = socket ? lws_get_context(socket) : nullptr;
    auto* state = context ? static_cast<Implementation*>(lws_context_user(context)) : nullptr;
    if (!state)
        return lws_callback_http_dummy(socket, reason, user, data, size);
    switch (reason) {
    case LWS_CALLBACK_HTTP:
        return state->servePage(socket, static_cast<char const*>(data));
    case LWS_CALLBACK_HTTP_WRITEABLE:
        return state->writePage(socket);
    case LWS_CALLBACK_FILTER_PROTOCOL_CONNECTION:
        return state->clients.size() < mostClients && isSameOrigin(socket) && state->hasToken(socket) ? 0 : -1;
    case LWS_CALLBACK_ESTABLISHED:
        state->clients.push_back({socket, {}, {}, false});
        return 0;
    case LWS_CALLBACK_CLOSED:
        state->clients.remove_if([=](Client const& client) { return client.socket == socket; });
        return 0;
    case LWS_CALLBACK_RECEIVE:
        return state->receive(socket, static_cast<char const*>(data), size) ? 0 : -1;
    case LWS_CALLBACK_SERVER_WRITEABLE: {
        Client* client = state->find(socket);
        return client ? state->send(*client) : 0;
    }
    default:
        return lws_callback_http_dummy(socket, reason, user, data, size);
    }
}

WebServer::WebServer(int port, std::string const& host, std::string const& token, char const* page, Handler handler)
    : m_implementation(std::make_unique<Implementation>()) {
    if (port < 0 || port > 65535)
        throw std::invalid_argument("a port must be 0 to 65535");
    m_implementation->token = token;
    m_implementation->page = page;
    m_implementation->handler = std::move(handler);
    lws_set_log_level(0, nullptr);
    static lws_protocols const protocols[] = {{"hyx", Implementation::callback, 0, longestMessage, 0, nullptr, 0},
                                              {nullptr, nullptr, 0, 0, 0, nullptr, 0}};
    std::string const address = listenAddress(host);
    lws_context_creation_info info{};
    info.options = LWS_SERVER_OPTION_EXPLICIT_VHOSTS | LWS_SERVER_OPTION_FAIL_UPON_UNABLE_TO_BIND;
    // With both families at hand the library listens on all addresses when it is given one of the fourth version.
    bool const sixthVersion = address.find(':') != std::string::npos;
    info.options |= sixthVersion ? LWS_SERVER_OPTION_IPV6_V6ONLY_MODIFY | LWS_SERVER_OPTION_IPV6_V6ONLY_VALUE
                                 : LWS_SERVER_OPTION_DISABLE_IPV6;
    info.headers = &headers;
    info.timeout_secs = silenceSeconds;
    info.user = m_implementation.get();
    info.protocols = protocols;
    info.port = port;
    info.iface = address.c_str();
    m_implementation->context = lws_create_context(&info);
    m_implementation->host = m_implementation->context ? lws_create_vhost(m_implementation->context, &info) : nullptr;
    if (m_implementation->host)
        m_implementation->port = port ? port : lws_get_vhost_listen_port(m_implementation->host);
    if (!m_implementation->host || m_implementation->port <= 0)
        throw std::runtime_error("the remote control cannot listen on port " + std::to_string(port) + " of " + address +
                                 ": it is in use, not allowed, or no address of this machine, such as 127.0.0.1");
}

WebServer::~WebServer() = default;

int WebServer::port() const {
    return m_implementation->port;
}

int WebServer::numClients() const {
    return int(m_implementation->clients.size());
}

void WebServer::update() {
    lws_service(m_implementation->context, -1);
}

bool WebServer::wantsPicture() const {
    return std::any_of(m_implementation->clients.begin(), m_implementation->clients.end(),
                       [](Client const& c) { return c.wantsPicture; });
}

void WebServer::askForPicture() {
    if (m_implementation->current)
        m_implementation->current->wantsPicture = true;
}

void WebServer::sendPicture(std::string const& bytes) {
    for (Client& client : m_implementation->clients) {
        // A page asks again only when it has shown the last one, so one that had no room is still owed.
        if (client.wantsPicture)
            client.wantsPicture = !m_implementation->queue(client, true, bytes);
    }
}

void WebServer::sendText(std::string const& text) {
    for (Client& client : m_implementation->clients)
        m_implementation->queue(client, false, text);
}

} // namespace hyxNet
