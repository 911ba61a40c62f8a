// What a scene has changed of its application, to be undone by the next.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <vector>

namespace hyxOSG {

/// Settings as they were before a scene was built. Those that the building changed are the scene's: they can be put
/// back and, where the next scene fails, done again. What the user or the program changes later is not the scene's and
/// stays.
class SceneChanges {
public:
    /// Remembers a setting. `get` gives a value that can be copied and compared.
    template <class Get, class Set>
    void watch(Get get, Set set) {
        using Value = std::decay_t<decltype(get())>;

        struct Values {
            Value before;
            std::optional<Value> built, last;
        };

        auto const values = std::make_shared<Values>(Values{get(), {}, {}});
        m_settings.push_back({[=] {
                                  values->built = get();
                                  return !(*values->built == values->before);
                              },
                              [=] {
                                  values->last = get();
                                  if (values->built && !(*values->built == *values->last))
                                      values->last.reset();
                                  else
                                      set(values->before);
                              },
                              [=] {
                                  if (values->last)
                                      set(*values->last);
                              }});
    }

    /// Remembers what is in a collection, which `get` gives as a vector: of this each item for itself is the scene's.
    template <class Get, class Add, class Remove>
    void watchItems(Get get, Add add, Remove remove) {
        using Items = decltype(get());

        struct Values {
            Items before, added, removed;
            bool settled = false;
        };

        auto const values = std::make_shared<Values>(Values{get(), {}, {}});
        auto const settle = [=] {
            Items const built = get();
            values->added = without(built, values->before);
            values->removed = without(values->before, built);
            values->settled = true;
            return !values->added.empty() || !values->removed.empty();
        };
        m_settings.push_back({settle,
                              [=] {
                                  if (!values->settled)
                                      settle();
                                  Items const last = get();
                                  values->added = without(values->added, without(values->added, last));
                                  values->removed = without(values->removed, last);
                                  std::for_each(values->added.begin(), values->added.end(), remove);
                                  std::for_each(values->removed.begin(), values->removed.end(), add);
                              },
                              [=] {
                                  std::for_each(values->removed.begin(), values->removed.end(), remove);
                                  std::for_each(values->added.begin(), values->added.end(), add);
                              }});
    }

    /// Keeps those that have changed.
    void settle() {
        std::erase_if(m_settings, [](Setting const& setting) { return !setting.settle(); });
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
        std::function<bool()> settle; ///< whether it has changed
        std::function<void()> undo;
        std::function<void()> redo;
    };

    template <class Items>
    static Items without(Items items, Items const& others) {
        std::erase_if(items,
                      [&](auto const& item) { return std::find(others.begin(), others.end(), item) != others.end(); });
        return items;
    }

    std::vector<Setting> m_settings;
};

} // namespace hyxOSG
