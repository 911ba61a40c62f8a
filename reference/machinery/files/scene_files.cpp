// Pictures and models in files: encoded in memory by the scene-graph library's writers, then written whole.
#include "platform/osg/scene_files.h"

#include "reference/machinery/files/memory_file.h"
#include "reference/machinery/files/only_reader.h"
#include "reference/machinery/files/whole_file.h"

#include <osg/Image>
#include <osg/Node>
#include <osg/NodeVisitor>
#include <osgDB/FileNameUtils>
#include <osgDB/Registry>

#include <list>
#include <sstream>
#include <stdexcept>

namespace osg {
namespace {

using osgDB::ReaderWriter;

constexpr auto picturesTo = ".png, .jpg, .bmp, .tga and .tif can be written";
constexpr auto modelsTo = ".osgt, .obj and .stl can be written";

std::runtime_error refusal(std::string const& path, ReaderWriter::WriteResult const& result, std::string const& known) {
    std::string const reason = result.notHandled()
                                   ? "no writer for the extension \"" + osgDB::getFileExtension(path) + "\"; " + known
                               : result.message().empty() ? "its writer fails; " + known
                                                          : result.message();
    return std::runtime_error("cannot write \"" + path + "\": " + reason);
}

/// Whether the writer of the format takes colours only: that of JPEG refuses transparency, that of BMP shifts greys.
bool needsColors(osg::Image const& image, std::string const& path) {
    std::string const format = osgDB::getLowerCaseFileExtension(path);
    bool const isJpeg = format == "jpg" || format == "jpeg";
    return image.getDataType() == GL_UNSIGNED_BYTE && ((image.getPixelFormat() == GL_RGBA && isJpeg) ||
                                                       (image.getPixelFormat() == GL_LUMINANCE && format == "bmp"));
}

ref_ptr<osg::Image> colorsOf(osg::Image const& image) {
    ref_ptr<osg::Image> const copy = new osg::Image;
    copy->allocateImage(image.s(), image.t(), image.r(), GL_RGB, GL_UNSIGNED_BYTE, 1);
    copy->setOrigin(image.getOrigin());
    unsigned int const step = image.getPixelFormat() == GL_LUMINANCE ? 0 : 1;
    for (unsigned int row = 0; row < unsigned(image.t()); ++row)
        for (unsigned int column = 0; column < unsigned(image.s()); ++column)
            for (unsigned int channel = 0; channel < 3; ++channel)
                copy->data(column, row)[channel] = image.data(column, row)[channel * step];
    return copy;
}

/// For writers that write only to files by name.
template <class Write>
void writeByName(std::string const& path, hyx::Durability durability, std::string const& known, Write const& write) {
    ReaderWriter::WriteResult result;
    hyx::WrittenFiles const files = hyx::captureFiles(path, [&](std::string const& name) {
        result = write(name);
        return result.success();
    });
    if (!files.success || files.content.empty())
        throw refusal(path, result, known);
    std::filesystem::path const folder = std::filesystem::path(path).parent_path();
    std::list<hyx::NewFile> ready;
    auto const prepare = [&](std::filesystem::path const& target, std::string const& content) {
        ready.emplace_back(target).write(content);
    };
    for (auto const& [name, content] : files.besides)
        prepare(folder / name, content);
    prepare(path, files.content);
    for (hyx::NewFile& file : ready)
        file.commit(durability);
}

} // namespace

void writeImage(osg::Image const& image, std::string const& path, bool oneOfMany) {
    if (needsColors(image, path))
        return writeImage(*colorsOf(image), path, oneOfMany);
    hyx::Durability const durability = oneOfMany ? hyx::Durability::UNSYNCED : hyx::Durability::SYNCED;
    // Fast compression: the default level takes twice the time for little.
    ref_ptr<osgDB::Options> const options = new osgDB::Options("PNG_COMPRESSION 1");
    osgDB::Registry& registry = *osgDB::Registry::instance();
    ReaderWriter* const writer = registry.getReaderWriterForExtension(osgDB::getLowerCaseFileExtension(path));
    if (!writer)
        throw refusal(path, ReaderWriter::WriteResult::FILE_NOT_HANDLED, picturesTo);
    std::ostringstream bytes;
    ReaderWriter::WriteResult const result = writer->writeImage(image, bytes, options);
    if (!result.success())
        writeByName(path, durability, picturesTo,
                    [&](std::string const& name) { return registry.writeImage(image, name, options); });
    else if (std::string const content = std::move(bytes).str(); !content.empty())
        hyx::writeWholeFile(path, content, durability);
    else
        throw std::runtime_error("cannot write \"" + path + "\": its writer made nothing of it");
}

void writeNode(osg::Node const& node, std::string const& path) {
    osgDB::Registry& registry = *osgDB::Registry::instance();
    ReaderWriter* const hidden = hyxOSG::hiddenWriter(osgDB::getLowerCaseFileExtension(path));
    writeByName(path, hyx::Durability::SYNCED, modelsTo, [&](std::string const& name) {
        return hidden ? hidden->writeNode(node, name, registry.getOptions())
                      : registry.writeNode(node, name, registry.getOptions());
    });
}

} // namespace osg
