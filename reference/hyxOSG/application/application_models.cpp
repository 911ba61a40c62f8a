// Robot models that the application loads.
#include "platform/hyxOSG/visuals/create_visual.h"
#include "platform/hyxOSG/visuals/grid_axes.h"
#include "reference/hyxOSG/application/application_implementation.h"
#include "reference/hyxtavlang/model_builder.h"

#include <cstdlib>
#include <sstream>

namespace hyxOSG {

hyxtavlang::LoadResult ExampleApplication::loadTavLangFile(std::string path, osg::Group* root,
                                                           hyxtavlang::OptParams params) {
    for (std::string const& folder : getTavLangBundlePaths())
        params.addSearchPath(folder);
    hyxtavlang::BuiltModel const model = hyxtavlang::loadModel(path, m_implementation->modelName, params);
    if (!model.result.isSuccess())
        return model.result;
    model.enter(m_implementation->ensureSimulation(), nullptr);
    if (root)
        model.createVisuals(*root, m_implementation->debugFrames);
    return model.result;
}

std::vector<std::string> ExampleApplication::getTavLangBundlePaths(std::vector<std::string> additionalPaths) const {
    std::vector<std::string> paths = m_implementation->bundlePaths;
    if (char const* variable = std::getenv("HYX_BUNDLE_PATH")) {
        std::istringstream folders(variable);
        for (std::string folder; std::getline(folders, folder, ':');)
            if (!folder.empty())
                paths.push_back(folder);
    }
    paths.insert(paths.end(), additionalPaths.begin(), additionalPaths.end());
    return paths;
}

std::string ExampleApplication::getTavLangModelName() const {
    return m_implementation->modelName;
}

void ExampleApplication::setTavLangModelName(std::string name) {
    m_implementation->modelName = name;
}

bool ExampleApplication::getTavLangDebugRenderFrames() const {
    return m_implementation->debugFrames;
}

bool ExampleApplication::getTavLangUseClick() const {
    return m_implementation->click.valid();
}

std::string ExampleApplication::getTavLangClickServerAddr() const {
    return m_implementation->click ? m_implementation->click->getAddress() : "";
}

} // namespace hyxOSG
