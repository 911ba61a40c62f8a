// What all captures have in common: switching on and off, frame rate, the clock they follow.
#pragma once

#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec2u.h"

#include <osg/Camera>
#include <osg/Image>

#include <exception>
#include <memory>

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

/// Takes images of what a camera draws, at a steady rate.
///
/// The capture works from a camera's final draw callback: install `getDrawCallback()` there (the application does so
/// for its own capture) or give the capture to a `RenderTarget`. Between `startCapture` and `stopCapture` each draw
/// asks the capture's clock how many images are due and hands the drawn picture that many times to `writeImage`, so
/// that a second holds exactly `getFps()` images however fast or slowly frames are drawn. The clock is the simulation's
/// when a simulation is set and synchronisation is enabled, the wall clock otherwise.
class ImageCaptureBase : public hyx::Referenced {
public:
    /// The callback that calls `apply` of its capture; harmless once the capture is gone.
    class DrawCallback : public osg::Camera::DrawCallback {
    public:
        explicit DrawCallback(ImageCaptureBase* capture);
        void operator()(osg::RenderInfo& renderInfo) const override;
        /// Forgets the capture; later calls do nothing.
        void detach();

    private:
        ImageCaptureBase* m_capture;
    };

    /// Sets the number of images a second of the clock. Zero takes one image per drawn frame. Default 30.
    /// Throws `std::invalid_argument` for a negative or non-finite rate.
    virtual void setFps(double fps);
    /// Images a second; zero means one image per drawn frame.
    double getFps() const;

    /// Limits a capture started without its own limit to this number of images; zero or less means no limit (the
    /// default).
    void setMaxImages(int maxImages);

    /// Starts a capture, with image number 0 and time 0 now. A running capture is stopped first.
    /// \param maxImages the capture stops itself after so many images; zero or less means the limit of `setMaxImages`.
    virtual void startCapture(int maxImages = 0);

    /// Stops the capture and finishes what it writes. False when none was running. Throws `std::runtime_error` with the
    /// reason when images could not be written.
    virtual bool stopCapture();
    /// Whether a capture is running.
    bool getCaptureStarted() const;

    /// Sets the simulation whose time stamp is the clock; kept alive. Null means the wall clock.
    void setSimulation(hyxSDK::Simulation* simulation);
    /// The simulation of the clock, or null.
    hyxSDK::Simulation* getSimulation() const;

    /// Sets the size of the images in pixels; a picture drawn in another size is scaled to it. Zero means the size as
    /// drawn. Throws `std::invalid_argument` when one of the two is zero and the other is not, or above 16384.
    virtual void setImageResolution(hyx::UInt width, hyx::UInt height);
    /// The size of the images in pixels; (0, 0) means the size as drawn.
    hyx::Vec2u getImageResolution() const;

    /// The number of images taken since the capture was started.
    int getImageNum() const;

    /// The callback to install as a camera's final draw callback; owned by the capture.
    DrawCallback* getDrawCallback();

    /// Whether the clock is the simulation's (the default) where one is set, instead of the wall clock.
    void setEnableSyncWithSimulation(bool enable);
    /// Whether the clock is the simulation's where one is set.
    bool getEnableSyncWithSimulation() const;

    /// Lets the clock begin anew: the next image is due one period from now. The image number goes on.
    void resetTime();

    /// Takes the images that are due from the frame buffer that is bound for reading. Needs a current graphics context;
    /// does nothing while no capture runs. An image that cannot be written ends the capture; the reason is notified and
    /// thrown by the next call of `stopCapture`.
    virtual void apply(osg::RenderInfo& renderInfo);

    /// Writes one image.
    /// \param image the picture, lower row first; null throws `std::invalid_argument`.
    /// \param index the number of the image in the capture.
    /// Throws `std::filesystem::filesystem_error` when it cannot be written.
    virtual void writeImage(osg::Image* image, hyx::Index index) = 0;

protected:
    explicit ImageCaptureBase(hyxSDK::Simulation* simulation);
    ~ImageCaptureBase() override;

    /// Whether images keep the alpha that was drawn.
    virtual bool keepsAlpha() const { return false; }

private:
    void takeImages(osg::Viewport const& viewport, long count);
    void endAfterFailure(std::exception_ptr failure);

    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
