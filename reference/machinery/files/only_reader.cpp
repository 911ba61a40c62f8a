// Hides plugins behind an alias of their extension.
#include "reference/machinery/files/only_reader.h"

#include <osgDB/Registry>

#include <map>
#include <string_view>

namespace hyxOSG {
namespace {

constexpr std::string_view suffix = "_without_plugin";

/// Not registered any more, so that it does not read.
osg::ref_ptr<osgDB::ReaderWriter> loadPlugin(std::string const& library) {
    osgDB::Registry& registry = *osgDB::Registry::instance();
    std::size_t const before = registry.getReaderWriterList().size();
    registry.loadLibrary(library);
    auto const& list = registry.getReaderWriterList();
    osg::ref_ptr<osgDB::ReaderWriter> const plugin = list.size() > before ? list.back() : nullptr;
    if (plugin)
        registry.removeReaderWriter(plugin);
    return plugin;
}

} // namespace

void keepOnlyReader(std::string const& extension) {
    osgDB::Registry::instance()->addFileExtensionAlias(extension, extension + std::string(suffix));
}

osgDB::ReaderWriter* hiddenWriter(std::string const& extension) {
    static std::map<std::string, osg::ref_ptr<osgDB::ReaderWriter>> known;
    if (auto const found = known.find(extension); found != known.end())
        return found->second;
    std::string library = osgDB::Registry::instance()->createLibraryNameForExtension(extension);
    std::size_t const place = library.find(suffix);
    if (place == std::string::npos)
        return nullptr;
    return known[extension] = loadPlugin(library.erase(place, suffix.size()));
}

} // namespace hyxOSG
