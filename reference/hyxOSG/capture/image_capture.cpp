// Numbered image files.

#include "platform/hyxOSG/capture/image_capture.h"

#include "reference/hyxOSG/capture/image_file.h"
#include "reference/hyxOSG/capture/image_pixels.h"
#include "reference/hyxOSG/capture/output_folder.h"

#include <cstdio>
#include <filesystem>

namespace hyxOSG {

ImageCapture::ImageCapture(hyxSDK::Simulation* simulation)
    : ImageCaptureBase(simulation), m_prefix("image"), m_postfix(".png") {}

ImageCapture::~ImageCapture() = default;

std::string ImageCapture::getPrefix() const {
    return m_prefix;
}

std::string ImageCapture::getPostfix() const {
    return m_postfix;
}

std::string ImageCapture::getDirectoryPath() const {
    return m_directoryPath;
}

void ImageCapture::setPrefix(std::string const& prefix) {
    m_prefix = prefix;
}

void ImageCapture::setPostfix(std::string const& postfix) {
    m_postfix = postfix;
}

void ImageCapture::setDirectoryPath(std::string const& directoryPath) {
    m_directoryPath = directoryPath;
}

void ImageCapture::startCapture(int maxImages) {
    prepareOutputFolder(m_directoryPath);
    ImageCaptureBase::startCapture(maxImages);
}

void ImageCapture::writeImage(osg::Image* image, hyx::Index index) {
    requirePixels(image);
    char number[24];
    std::snprintf(number, sizeof number, "%05lu", index);
    std::filesystem::path const file = std::filesystem::path(m_directoryPath) / (m_prefix + number + m_postfix);
    writeImageFile(*image, file.string(), true);
}

} // namespace hyxOSG
