// Series of numbered picture files.
#pragma once

#include "platform/hyxOSG/capture/image_capture_base.h"

#include <string>

namespace hyxOSG {

/// Writes the captured images as numbered files: directory/prefix, the number in five digits, postfix.
///
/// The postfix chooses the format: ".png", ".jpg", ".bmp", ".tga", ".rgb", ".ppm" and what else the scene-graph library
/// writes. A missing directory is created when the capture starts.
class ImageCapture : public ImageCaptureBase {
public:
    /// \param simulation the clock of the capture; null means the wall clock.
    explicit ImageCapture(hyxSDK::Simulation* simulation = nullptr);

    /// What the file names begin with. Default "image".
    std::string getPrefix() const;
    /// What the file names end with, the extension included. Default ".png".
    std::string getPostfix() const;
    /// The folder of the files. Default "", the working directory.
    std::string getDirectoryPath() const;
    /// Sets what the file names begin with.
    void setPrefix(std::string const& prefix);
    /// Sets what the file names end with; its extension chooses the format.
    void setPostfix(std::string const& postfix);
    /// Sets the folder of the files; "" means the working directory.
    void setDirectoryPath(std::string const& directoryPath);

    /// Creates the directory where it is missing and starts the capture. Throws
    /// `std::filesystem::filesystem_error` when that fails.
    void startCapture(int maxImages = 0) override;

    /// Writes the image to the file of this number. Throws `std::invalid_argument` for a null or empty image and
    /// `std::filesystem::filesystem_error` when it cannot be written; a file that was there before stays.
    void writeImage(osg::Image* image, hyx::Index index) override;

protected:
    ~ImageCapture() override;

private:
    std::string m_prefix;
    std::string m_postfix;
    std::string m_directoryPath;
};

} // namespace hyxOSG
