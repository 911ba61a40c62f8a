// An application's hold on a listener, which the listener is told of.
#pragma once

#include "platform/hyx/objects/ref_ptr.h"
#include "platform/hyxOSG/application/example_application_listener.h"

#include <utility>
#include <vector>

namespace hyxOSG {

/// As long as there is one, a script's listener lives and is called, with or without references in the script.
class ListenerHold {
public:
    explicit ListenerHold(ExampleApplicationListener* listener) : m_listener(listener) {
        m_listener->enterApplication();
    }

    ListenerHold(ListenerHold const& other) : ListenerHold(other.get()) {}

    ListenerHold& operator=(ListenerHold other) noexcept {
        std::swap(m_listener, other.m_listener);
        return *this;
    }

    ~ListenerHold() { m_listener->leaveApplication(); }

    ExampleApplicationListener* get() const { return m_listener.get(); }

    bool operator==(ListenerHold const& other) const { return get() == other.get(); }

private:
    hyx::ref_ptr<ExampleApplicationListener> m_listener;
};

using ListenerHolds = std::vector<ListenerHold>;

} // namespace hyxOSG
