// Functions as values that can be compared, held and called later.
#pragma once

#include <functional>
#include <memory>

namespace hyx {

/// A copyable holder of a function; all copies are one and the same callback. An empty one does nothing.
template <class... Arguments>
class TypedCallback {
public:
    using Function = std::function<void(Arguments...)>;

    TypedCallback() = default;

    TypedCallback(Function function)
        : m_function(function ? std::make_shared<Function>(std::move(function)) : nullptr) {}

    void operator()(Arguments... arguments) const {
        if (m_function)
            (*m_function)(arguments...);
    }

    /// Whether there is a function to call.
    bool valid() const { return m_function != nullptr; }

    /// Copies of one callback are equal; two made from the same function are not.
    bool operator==(TypedCallback const&) const = default;

private:
    std::shared_ptr<Function> m_function;
};

/// A callback without arguments.
class Callback : public TypedCallback<> {
public:
    using TypedCallback<>::TypedCallback;
    Callback() = default;

    Callback(std::function<void()> function) : TypedCallback<>(std::move(function)) {}
};

} // namespace hyx
