// Keys of scenes, and the scene description's constructors.
#include "reference/hyxOSG/application/scene_list.h"

#include "reference/hyxOSG/application/key_bindings.h"

#include <algorithm>
#include <string_view>

namespace hyxOSG {

SceneDescription::SceneDescription(BuildScenePtr scene, bool unittest, float stopAfter, bool slowUnittest)
    : scene(scene), unittest(unittest), stopAfter(stopAfter), slowUnittest(slowUnittest), valid(scene != nullptr) {}

SceneDescription::SceneDescription(std::string const& fileName, std::string const& scriptFunction, bool unittest,
                                   float stopAfter, bool slowUnittest)
    : unittest(unittest),
      stopAfter(stopAfter),
      slowUnittest(slowUnittest),
      valid(!fileName.empty() && !scriptFunction.empty()),
      scriptFunction(scriptFunction),
      fileName(fileName) {}

SceneDescription::SceneDescription(std::string const& fileName, bool unittest, float stopAfter, bool slowUnittest)
    : unittest(unittest),
      stopAfter(stopAfter),
      slowUnittest(slowUnittest),
      valid(!fileName.empty()),
      fileName(fileName) {}

bool SceneDescription::isValid() const {
    return valid && (scene || !fileName.empty());
}

bool SceneList::add(SceneDescription const& description, int key) {
    if (!description.isValid() || indexOf(key))
        return false;
    m_entries.push_back({key, description});
    return true;
}

bool SceneList::add(SceneDescription const& description) {
    constexpr std::string_view keys = "1234567890abcdefghijklmnopqrstuvwxyz";
    for (char const key : keys)
        if (!indexOf(key) && !findKeyBinding(key)) // what a key does at first, it does with any number of scenes
            return add(description, key);
    return add(description, int(1000 + m_entries.size())); // reached by index only
}

std::optional<size_t> SceneList::indexOf(int key) const {
    auto const entry = std::find_if(m_entries.begin(), m_entries.end(), [key](Entry const& e) { return e.key == key; });
    if (entry == m_entries.end())
        return std::nullopt;
    return entry - m_entries.begin();
}

std::optional<size_t> SceneList::indexOf(std::string const& file, std::string const& function) const {
    for (size_t index = 0; index < m_entries.size(); ++index)
        if (at(index).fileName == file && at(index).scriptFunction == function)
            return index;
    return std::nullopt;
}

} // namespace hyxOSG
