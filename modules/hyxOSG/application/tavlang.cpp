// Rows of ExampleApplication: robots and models in files.
#include "binding/vocabulary/rows.h"
#include "binding/vocabulary/sequences.h"
#include "platform/hyxOSG/application/example_application.h"

namespace vocabulary {
template <>
inline constexpr Conversion const* sequence_conversion<std::vector<std::string>> =
    &sequence_argument<std::vector<std::string>>;
} // namespace vocabulary

namespace {

constexpr Declared tavlang_rows[] = {
    FUNCTION(ExampleApplication_loadTavLangFile,
             METHOD(hyxOSG::ExampleApplication, loadTavLangFile, (std::string, osg::Group*, hyxtavlang::OptParams),
                    hyxtavlang::OptParams())),
    FUNCTION(ExampleApplication_getTavLangBundlePaths,
             METHOD(hyxOSG::ExampleApplication, getTavLangBundlePaths, (std::vector<std::string>) const,
                    std::vector<std::string>())),
    FUNCTION(ExampleApplication_getTavLangModelName, METHOD(hyxOSG::ExampleApplication, getTavLangModelName, () const)),
    FUNCTION(ExampleApplication_setTavLangModelName,
             METHOD(hyxOSG::ExampleApplication, setTavLangModelName, (std::string))),
    FUNCTION(ExampleApplication_getTavLangDebugRenderFrames,
             METHOD(hyxOSG::ExampleApplication, getTavLangDebugRenderFrames, () const)),
    FUNCTION(ExampleApplication_getTavLangUseClick, METHOD(hyxOSG::ExampleApplication, getTavLangUseClick, () const)),
    FUNCTION(ExampleApplication_getTavLangClickServerAddr,
             METHOD(hyxOSG::ExampleApplication, getTavLangClickServerAddr, () const)),
};

} // namespace

ROWS(tavlang_rows);
