// When an image is due, and grabbing it from the frame buffer.

#include "platform/hyxOSG/capture/image_capture_base.h"

#include "platform/hyx/objects/notify.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyxOSG/capture/capture_clock.h"
#include "reference/hyxOSG/capture/image_pixels.h"
#include "reference/machinery/context/picture_size.h"
#include "reference/machinery/context/resolved_frame.h"

#include <osg/RenderInfo>

#include <chrono>
#include <cmath>
#include <exception>
#include <stdexcept>

namespace hyxOSG {
namespace {

constexpr long mostImagesOfFrame = 1000; // images of one drawn frame

double wallClock() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

} // namespace

struct ImageCaptureBase::Implementation {
    double now() const { return simulated() ? simulation->getTimeStamp() : wallClock(); }

    bool simulated() const { return simulation && synchronised; }

    int limit() const { return captureLimit > 0 ? captureLimit : maxImages; }

    hyx::ref_ptr<hyxSDK::Simulation> simulation;
    bool synchronised = true;
    CaptureClock clock;
    int maxImages = 0;
    int captureLimit = 0;
    int imageNumber = 0;
    bool started = false;
    hyx::Vec2u resolution;
    std::exception_ptr failure;
    osg::ref_ptr<osg::Image> image = new osg::Image;
    osg::ref_ptr<osg::Image> picture = new osg::Image;
    osg::ref_ptr<DrawCallback> callback;
};

ImageCaptureBase::DrawCallback::DrawCallback(ImageCaptureBase* capture) : m_capture(capture) {}

void ImageCaptureBase::DrawCallback::operator()(osg::RenderInfo& renderInfo) const {
    if (m_capture) {
        m_capture->apply(renderInfo);
    }
}

void ImageCaptureBase::DrawCallback::detach() {
    m_capture = nullptr;
}

ImageCaptureBase::ImageCaptureBase(hyxSDK::Simulation* simulation)
    : m_implementation(std::make_unique<Implementation>()) {
    m_implementation->simulation = simulation;
    m_implementation->callback = new DrawCallback(this);
}

ImageCaptureBase::~ImageCaptureBase() {
    m_implementation->callback->detach();
}

void ImageCaptureBase::setFps(double fps) {
    constexpr double mostFps = 10000;
    if (!(fps >= 0 && fps <= mostFps)) {
        throw std::invalid_argument("images a second must be zero (each drawn frame) or more, up to 10000");
    }
    m_implementation->clock.setRate(fps);
}

double ImageCaptureBase::getFps() const {
    return m_implementation->clock.rate();
}

void ImageCaptureBase::setMaxImages(int maxImages) {
    m_implementation->maxImages = maxImages;
}

void ImageCaptureBase::startCapture(int maxImages) {
    if (m_implementation->started) {
        stopCapture();
    }
    m_implementation->failure = nullptr;
    m_implementation->captureLimit = maxImages;
    m_implementation->imageNumber = 0;
    m_implementation->started = true;
    resetTime();
}

bool ImageCaptureBase::stopCapture() {
    bool const wasStarted = m_implementation->started;
    m_implementation->started = false;
    if (m_implementation->failure) {
        std::rethrow_exception(std::exchange(m_implementation->failure, nullptr));
    }
    return wasStarted;
}

bool ImageCaptureBase::getCaptureStarted() const {
    return m_implementation->started;
}

void ImageCaptureBase::setSimulation(hyxSDK::Simulation* simulation) {
    m_implementation->simulation = simulation;
    resetTime();
}

hyxSDK::Simulation* ImageCaptureBase::getSimulation() const {
    return m_implementation->simulation;
}

void ImageCaptureBase::setImageResolution(hyx::UInt width, hyx::UInt height) {
    if ((width != 0 || height != 0) && !isPictureSize(width, height)) {
        throw std::invalid_argument("the image resolution must be 1 to 16384 each way, or 0, 0 for the size as drawn");
    }
    m_implementation->resolution = hyx::Vec2u(width, height);
}

hyx::Vec2u ImageCaptureBase::getImageResolution() const {
    return m_implementation->resolution;
}

int ImageCaptureBase::getImageNum() const {
    return m_implementation->imageNumber;
}

ImageCaptureBase::DrawCallback* ImageCaptureBase::getDrawCallback() {
    return m_implementation->callback;
}

void ImageCaptureBase::setEnableSyncWithSimulation(bool enable) {
    m_implementation->synchronised = enable;
    resetTime();
}

bool ImageCaptureBase::getEnableSyncWithSimulation() const {
    return m_implementation->synchronised;
}

void ImageCaptureBase::resetTime() {
    m_implementation->clock.begin(m_implementation->now());
}

void ImageCaptureBase::apply(osg::RenderInfo& renderInfo) {
    if (!m_implementation->started) {
        return;
    }
    if (!renderInfo.getState()) {
        throw std::invalid_argument("nothing is being drawn: the render information has no state");
    }
    // When the wall clock jumps, the program was held up.
    double const longestGap = m_implementation->simulated() ? double(mostImagesOfFrame) / getFps() : 1;
    double const passed = m_implementation->clock.passed(m_implementation->now());
    if (m_implementation->simulated() && passed > longestGap) {
        hyx::Notify::instance().notify(hyx::Notify::NOTIFY_WARNING,
                                       "the simulation went on by " + std::to_string(passed) +
                                           " s in one drawn frame, for which " + std::to_string(mostImagesOfFrame) +
                                           " images are written at most: the capture goes on from here");
    }
    long const due = m_implementation->clock.takeDue(m_implementation->now(), longestGap);
    if (due <= 0) {
        return;
    }
    try {
        osg::Camera const* camera = renderInfo.getCurrentCamera();
        osg::Viewport const* viewport = camera ? camera->getViewport() : renderInfo.getState()->getCurrentViewport();
        if (!viewport) {
            throw std::runtime_error("the drawing camera has no viewport to take the image from");
        }
        ResolvedFrame const frame(*renderInfo.getState(), int(viewport->x() + viewport->width()),
                                  int(viewport->y() + viewport->height()));
        takeImages(*viewport, due);
    } catch (std::exception const& failure) {
        hyx::Notify::instance().notify(hyx::Notify::NOTIFY_ERROR, std::string("capture stopped: ") + failure.what());
        endAfterFailure(std::current_exception());
    }
}

/// Reads the picture once and writes it as often as it is due, up to the limit.
void ImageCaptureBase::takeImages(osg::Viewport const& viewport, long count) {
    // Four bytes a pixel are read in half the time of three.
    m_implementation->image->readPixels(int(viewport.x()), int(viewport.y()), int(viewport.width()),
                                        int(viewport.height()), GL_RGBA, GL_UNSIGNED_BYTE, 1);
    hyx::Vec2u const size = m_implementation->resolution;
    bool const asDrawn = size.x == 0;
    unsigned const width = asDrawn ? unsigned(m_implementation->image->s()) : unsigned(size.x);
    unsigned const height = asDrawn ? unsigned(m_implementation->image->t()) : unsigned(size.y);
    // What lies in a window's alpha does not belong to the picture.
    copyImage(m_implementation->image, width, height, keepsAlpha(), *m_implementation->picture);
    for (; count > 0 && m_implementation->started; --count) {
        writeImage(m_implementation->picture, hyx::Index(m_implementation->imageNumber));
        ++m_implementation->imageNumber;
        if (m_implementation->limit() > 0 && m_implementation->imageNumber >= m_implementation->limit()) {
            stopCapture();
        }
    }
}

/// Leaves nothing running and keeps the reason for the caller of `stopCapture`.
void ImageCaptureBase::endAfterFailure(std::exception_ptr failure) {
    try {
        stopCapture();
    } catch (std::exception const&) {
        // The first failure tells why; the encoder's end says the same again.
    }
    m_implementation->failure = failure;
}

} // namespace hyxOSG
