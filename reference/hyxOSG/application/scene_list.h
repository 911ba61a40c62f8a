// The scenes that an application can build.
#pragma once

#include "platform/hyxOSG/application/scene_description.h"

#include <optional>
#include <vector>

namespace hyxOSG {

/// Scenes in the order added, each reached by a key.
class SceneList {
public:
    /// Adds a scene; false when it is not valid or the key is taken.
    bool add(SceneDescription const& description, int key);
    /// Adds a scene under the next free key; false when it is not valid or no key is free.
    bool add(SceneDescription const& description);

    void clear() { m_entries.clear(); }

    int keyAt(size_t index) const { return m_entries.at(index).key; }

    size_t size() const { return m_entries.size(); }

    SceneDescription const& at(size_t index) const { return m_entries.at(index).description; }

    std::optional<size_t> indexOf(int key) const;

    /// Of the first scene that this file describes or, as a script, builds by this function.
    std::optional<size_t> indexOf(std::string const& file, std::string const& function) const;

private:
    struct Entry {
        int key;
        SceneDescription description;
    };

    std::vector<Entry> m_entries;
};

} // namespace hyxOSG
