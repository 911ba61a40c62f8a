// Occasions that any number of callbacks can be hung on.
#pragma once

#include "platform/hyx/objects/callback.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace hyx {

/// A list of callbacks that are called, in the order in which they were added, each time the event happens.
template <class... Arguments>
class TypedEvent {
public:
    using CallbackType = TypedCallback<Arguments...>;

    /// Adding a callback twice, or an empty one, changes nothing.
    void add(CallbackType const& callback) {
        if (callback.valid() && !contains(callback))
            m_callbacks.push_back(callback);
    }

    /// False when the callback was not there.
    bool remove(CallbackType const& callback) { return std::erase(m_callbacks, callback) > 0; }

    bool contains(CallbackType const& callback) const {
        return std::find(m_callbacks.begin(), m_callbacks.end(), callback) != m_callbacks.end();
    }

    void clear() { m_callbacks.clear(); }

    std::size_t size() const { return m_callbacks.size(); }

    /// Makes the event happen. Callbacks may add and remove callbacks: what is removed meanwhile is not called, what is
    /// added is called from the next time on.
    void trigger(Arguments... arguments) const {
        if (m_callbacks.empty())
            return;
        auto const called = m_callbacks;
        for (CallbackType const& callback : called)
            if (contains(callback))
                callback(arguments...);
    }

private:
    std::vector<CallbackType> m_callbacks;
};

/// An event without arguments.
class Event : public TypedEvent<> {};

} // namespace hyx
