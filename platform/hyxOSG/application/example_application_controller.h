// The remote control of an application.
#pragma once

#include "platform/hyx/objects/referenced.h"

#include <memory>
#include <string>

namespace osg {
class Image;
} // namespace osg

namespace hyxOSG {

class ExampleApplication;

/// A page in a browser that shows the live picture and the parameters of an application, and steers it.
///
/// Serves HTTP and WebSocket on one port of the loopback address, unless the application names another host. A page
/// must bring the token. Requests are followed when the application serves them, once a frame; no thread is started.
class ExampleApplicationController : public hyx::Referenced {
public:
    /// Listens on `port`, 0 for any free one, of `host`, empty for loopback. An empty `token` has one made. Throws
    /// std::runtime_error when the port is in use. `application` must outlive the controller.
    ExampleApplicationController(hyxOSG::ExampleApplication* application, int port, std::string const& token = "",
                                 std::string const& host = "");

    /// The port listened on.
    int getPort() const;
    /// The word that a page must bring.
    std::string getToken() const;
    /// The address of the page, with the token.
    std::string getUrl() const;
    /// Number of pages connected.
    int getNumClients() const;

    /// Follows the requests that have arrived, without waiting.
    void update();
    /// Sends a picture to the pages that are connected and have shown the last one.
    void pushFrame(osg::Image const& image);
    /// Whether a page waits for a picture.
    bool wantsFrame() const;
    /// Sends the parameters: time, time step, pause, solver, frames per second, scene.
    void pushParameters();
    /// Sends the number and time of a step.
    void pushTick();

protected:
    ~ExampleApplicationController() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
