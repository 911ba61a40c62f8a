// Reads behind a trial, below the file's own folder, and checks what comes back.
#include "reference/machinery/model_files/guarded_reading.h"

#include "reference/machinery/files/missing_file.h"
#include "reference/machinery/meshes/mesh_check.h"
#include "reference/machinery/model_files/file_look_up.h"
#include "reference/machinery/model_files/hidden_faces.h"
#include "reference/machinery/model_files/reader_process.h"
#include "reference/machinery/model_files/stl_length.h"

#include <osgDB/FileNameUtils>
#include <osgDB/ReadFile>

#include <new>
#include <set>

namespace hyxOSG {
namespace {

/// Kinds whose readers took every damaged file that tests/hyxOSG/visuals/mutations.py made of them, within the limits
/// of time and memory: of ply, obj and off the seeds 0 to 2999. Journals, which are checked where they are read, took
/// 15,000: the seeds 0 to 4999 of three forms.
bool hasProvenItself(std::string const& path) {
    static std::set<std::string> const proven{"obj", "off", "ply"};
    return proven.contains(osgDB::getLowerCaseFileExtension(path));
}

/// Why no reader took the file.
std::string refusal(std::string const& path) {
    std::string const ending = osgDB::getLowerCaseFileExtension(path);
    if (ending.empty())
        return "no ending of its name says of what kind it is";
    if (!osgDB::Registry::instance()->getReaderWriterForExtension(ending))
        return "there is no reader for the ending \"." + ending + "\"";
    return "it is damaged, or not of the kind that its name says: export or copy it again";
}

std::string faultOf(std::string const& path, osgDB::ReaderWriter::ReadResult const& result) {
    if (result.notHandled())
        return refusal(path);
    return result.message().empty() ? "it is damaged" : result.message();
}

bool isWhole(osg::Image const& image) {
    return image.data() && image.s() > 0 && image.t() > 0 && image.r() > 0;
}

template <class Thing, class Read>
Reading<Thing> guarded(std::string const& path, Read const& read) {
    ReadingBelow const below(path);
    try {
        return read();
    } catch (std::bad_alloc const&) {
        return {nullptr, "it takes too much memory"};
    } catch (std::exception const& error) {
        return {nullptr, std::string("it is damaged: ") + error.what()};
    }
}

/// Reads here what has survived its trial.
template <class Thing, class Read>
Reading<Thing> readTried(TrialKind kind, std::string const& path, std::string const& options, Read const& read) {
    if (isEmptyFile(path))
        return {nullptr, "it is empty: export or copy it again"};
    if (!hasProvenItself(path))
        if (std::string const fault = tryReading(kind, path, options); !fault.empty())
            return {nullptr, fault};
    return read();
}

} // namespace

Reading<osg::Node> readModelHere(std::string const& path, osgDB::Options const* options) {
    return guarded<osg::Node>(path, [&]() -> Reading<osg::Node> {
        if (std::string const fault = stlLengthFault(path); !fault.empty())
            return {nullptr, "it is damaged: it " + fault};
        auto result = osgDB::Registry::instance()->readNode(path, options);
        osg::ref_ptr<osg::Node> const model = result.getNode();
        if (!model)
            return {nullptr, faultOf(path, result)};
        if (std::string const fault = sceneFault(*model); !fault.empty())
            return {nullptr, "it is damaged: it " + fault};
        leaveOutHiddenFaces(*model);
        return {model, ""};
    });
}

Reading<osg::Image> readPictureHere(std::string const& path) {
    return guarded<osg::Image>(path, [&]() -> Reading<osg::Image> {
        auto result = osgDB::Registry::instance()->readImage(path, nullptr);
        osg::ref_ptr<osg::Image> const image = result.getImage();
        if (!image)
            return {nullptr, faultOf(path, result)};
        return isWhole(*image) ? Reading<osg::Image>{image, ""} : Reading<osg::Image>{nullptr, "it is damaged"};
    });
}

Reading<Face> readFontHere(std::string const& path) {
    return guarded<Face>(path, [&]() -> Reading<Face> {
        osg::ref_ptr<Face> const font = Face::open(path);
        return font ? Reading<Face>{font, ""} : Reading<Face>{nullptr, "it is no font with outlines"};
    });
}

Reading<osg::Node> readModel(std::string const& path, osgDB::Options const* options) {
    return readTried<osg::Node>(TrialKind::MODEL, path, options ? options->getOptionString() : "",
                                [&] { return readModelHere(path, options); });
}

Reading<osg::Image> readPicture(std::string const& path) {
    return readTried<osg::Image>(TrialKind::PICTURE, path, "", [&] { return readPictureHere(path); });
}

Reading<Face> readFont(std::string const& path) {
    return readTried<Face>(TrialKind::FONT, path, "", [&] { return readFontHere(path); });
}

} // namespace hyxOSG
