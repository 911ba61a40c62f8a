// The keys of an application's window, and what each does.
#pragma once

#include <span>

namespace hyxOSG {

class ExampleApplication;

struct KeyBinding {
    int key;
    char const* name;
    char const* does;
    void (*act)(ExampleApplication& application);
};

/// The only list of them: keys are followed, and explained, from it.
std::span<KeyBinding const> keyBindings();

/// Null for a key that does nothing.
KeyBinding const* findKeyBinding(int key);

} // namespace hyxOSG
