// What a scene has changed of its application, to be undone by the next.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace hyxOSG {

/// Settings as they were before a scene was built. Those that the building changed are the scene's: they can be put
/// back and, where the next scene fails, done again. What is changed later, by the user or the program, is not the
/// scene's and stays.
class SceneChanges {
public:
    /// Remembers a setting. `get` gives a value that can be copied and compared.
    template <class Get, class Set>
    void watch(Get get, Set set) {
        auto const before = get();
        auto const after = std::make_shared<std::decay_t<decltype(before)>>(before);
        m_settings.push_back({[=] { return !(get() == before); },
                              [=] {
                                  *after = get();
                                  set(before);
                              },
                              [=] { set(*after); }});
    }

    /// Keeps those that have changed.
    void settle() {
        std::erase_if(m_settings, [](Setting const& setting) { return !setting.changed(); });
    }

    void undo() const {
        for (auto setting = m_settings.rbegin(); setting != m_settings.rend(); ++setting)
            setting->undo();
    }

    /// After `undo`: gives the settings the values that they had before it.
    void redo() const {
        for (Setting const& setting : m_settings)
            setting.redo();
    }

private:
    struct Setting {
        std::function<bool()> changed;
        std::function<void()> undo;
        std::function<void()> redo;
    };

    std::vector<Setting> m_settings;
};

} // namespace hyxOSG
