// Video through an encoder process.

#include "platform/hyxOSG/capture/video_ffmpeg_pipe_capture.h"

#include "platform/hyx/objects/notify.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/hyxOSG/capture/encoder_command.h"
#include "reference/hyxOSG/capture/encoder_feeder.h"
#include "reference/hyxOSG/capture/image_pixels.h"
#include "reference/hyxOSG/capture/output_folder.h"
#include "reference/machinery/files/exit_work.h"

#include <filesystem>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace hyxOSG {
namespace {

constexpr hyx::UInt worstRateFactor = 51;
constexpr double lowestRate = 0.001;
constexpr double highestRate = 10000;

void requireRate(double fps) {
    if (!(fps >= lowestRate && fps <= highestRate)) {
        throw std::invalid_argument("the frames a second of a video must be 0.001 to 10000");
    }
}

} // namespace

VideoFFMPEGPipeCapture::CodecStringConversionMap VideoFFMPEGPipeCapture::OutputCodecStrings{
    {OutputCodec_H264, "libx264"}, {OutputCodec_H264RGB, "libx264rgb"}, {OutputCodec_XVID, "libxvid"}};

struct VideoFFMPEGPipeCapture::Implementation {
    std::string filename = "video";
    std::string postFix = ".mp4";
    std::optional<double> videoRate; ///< nothing: that of the images
    hyx::UInt rateFactor = 18;
    bool lossless = false;
    OutputCodec codec = OutputCodec_H264;
    std::optional<hyx::Vec2u> nextSize; ///< asked for while a video was running
    std::string file;                   ///< of the running video
    bool filmHasAlpha = false;          ///< of the running video
    EncoderSettings encoding;           ///< what scripts have chosen beyond the codec
    std::size_t numFrames = 0;          ///< of the last video
    std::unique_ptr<EncoderFeeder> feeder;
};

VideoFFMPEGPipeCapture::VideoFFMPEGPipeCapture(hyx::UInt width, hyx::UInt height, double fps,
                                               hyxSDK::Simulation* simulation)
    : ImageCaptureBase(simulation), m_implementation(std::make_unique<Implementation>()) {
    VideoFFMPEGPipeCapture::setImageResolution(width, height);
    VideoFFMPEGPipeCapture::setFps(fps);
}

VideoFFMPEGPipeCapture::~VideoFFMPEGPipeCapture() {
    try {
        stopProcess();
    } catch (std::exception const&) {
        // Nobody is left to be told.
    }
}

void VideoFFMPEGPipeCapture::init() {
    try {
        stopProcess();
    } catch (std::runtime_error const& failure) {
        hyx::Notify::instance().notify(hyx::Notify::NOTIFY_WARNING,
                                       std::string("the video before is incomplete: ") + failure.what());
    }
    EncoderSettings settings = m_implementation->encoding;
    if (settings.encoderName.empty()) {
        auto const name = OutputCodecStrings.find(m_implementation->codec);
        if (name == OutputCodecStrings.end() || name->second.empty()) {
            throw std::runtime_error("OutputCodecStrings holds no encoder name for codec " +
                                     std::to_string(m_implementation->codec));
        }
        settings.encoderName = name->second;
    }
    settings.lossless = m_implementation->lossless;
    settings.width = getImageResolution().x;
    settings.height = getImageResolution().y;
    settings.imageRate = getFps();
    settings.videoRate = getVideoFPS();
    settings.rateFactor = m_implementation->rateFactor;
    settings.file = m_implementation->filename + m_implementation->postFix;
    std::vector<std::string> const command = encoderCommand(settings);
    prepareOutputFolder(std::filesystem::path(settings.file).parent_path().string());
    m_implementation->file = settings.file;
    m_implementation->filmHasAlpha = settings.alpha;
    m_implementation->feeder = std::make_unique<EncoderFeeder>(command, settings.file);
    hyx::setExitWork(this, [this] { stopProcess(); });
}

void VideoFFMPEGPipeCapture::setFilename(hyx::String const& filename) {
    m_implementation->filename = filename;
}

hyx::String VideoFFMPEGPipeCapture::getFilename() const {
    return m_implementation->filename;
}

void VideoFFMPEGPipeCapture::setVideoPostFix(hyx::String const& postFix) {
    m_implementation->postFix = postFix;
}

hyx::String VideoFFMPEGPipeCapture::getVideoPostFix() const {
    return m_implementation->postFix;
}

void VideoFFMPEGPipeCapture::setVideoFPS(double fps) {
    requireRate(fps);
    m_implementation->videoRate = fps;
}

double VideoFFMPEGPipeCapture::getVideoFPS() const {
    return m_implementation->videoRate.value_or(getFps());
}

void VideoFFMPEGPipeCapture::setVideoCRF(hyx::UInt crf) {
    if (crf > worstRateFactor) {
        throw std::invalid_argument("the constant rate factor must be 0 (best) to 51");
    }
    m_implementation->rateFactor = crf;
}

hyx::UInt VideoFFMPEGPipeCapture::getVideoCRF() const {
    return m_implementation->rateFactor;
}

void VideoFFMPEGPipeCapture::setImageCaptureFPS(double fps) {
    setFps(fps);
}

double VideoFFMPEGPipeCapture::getImageCaptureFPS() const {
    return getFps();
}

void VideoFFMPEGPipeCapture::setEnableLossless(bool enable) {
    m_implementation->lossless = enable;
}

bool VideoFFMPEGPipeCapture::getEnableLossless() const {
    return m_implementation->lossless;
}

void VideoFFMPEGPipeCapture::setOutputVideoCodec(OutputCodec codec) {
    if (codec < OutputCodec_H264 || codec > OutputCodec_XVID) {
        throw std::invalid_argument("there is no codec " + std::to_string(int(codec)) +
                                    ": use one of the OutputCodec_ constants");
    }
    m_implementation->codec = codec;
}

VideoFFMPEGPipeCapture::OutputCodec VideoFFMPEGPipeCapture::getOutputCodec() const {
    return m_implementation->codec;
}

void VideoFFMPEGPipeCapture::setEncoder(hyx::String const& name) {
    m_implementation->encoding.encoderName = name;
}

hyx::String VideoFFMPEGPipeCapture::getEncoder() const {
    return m_implementation->encoding.encoderName;
}

void VideoFFMPEGPipeCapture::setPreset(hyx::String const& preset) {
    m_implementation->encoding.preset = preset;
}

hyx::String VideoFFMPEGPipeCapture::getPreset() const {
    return m_implementation->encoding.preset;
}

void VideoFFMPEGPipeCapture::setBitrate(double bitsPerSecond) {
    m_implementation->encoding.bitrate = hyx::requireNonNegative(bitsPerSecond, "the bits a second of a video");
}

double VideoFFMPEGPipeCapture::getBitrate() const {
    return m_implementation->encoding.bitrate;
}

void VideoFFMPEGPipeCapture::setPixelFormat(hyx::String const& format) {
    m_implementation->encoding.pixels = format;
}

hyx::String VideoFFMPEGPipeCapture::getPixelFormat() const {
    return m_implementation->encoding.pixels;
}

void VideoFFMPEGPipeCapture::setEncoderOptions(hyx::String const& lines) {
    m_implementation->encoding.options.clear();
    std::istringstream words(lines);
    for (std::string word; std::getline(words, word);)
        m_implementation->encoding.options.push_back(word);
}

hyx::String VideoFFMPEGPipeCapture::getEncoderOptions() const {
    std::string lines;
    for (std::string const& word : m_implementation->encoding.options)
        lines += (lines.empty() ? "" : "\n") + word;
    return lines;
}

void VideoFFMPEGPipeCapture::setEnableAlpha(bool enable) {
    m_implementation->encoding.alpha = enable;
}

bool VideoFFMPEGPipeCapture::getEnableAlpha() const {
    return m_implementation->encoding.alpha;
}

bool VideoFFMPEGPipeCapture::keepsAlpha() const {
    return m_implementation->feeder ? m_implementation->filmHasAlpha : m_implementation->encoding.alpha;
}

hyx::UInt VideoFFMPEGPipeCapture::getNumFrames() const {
    return m_implementation->feeder ? m_implementation->feeder->numFrames() : m_implementation->numFrames;
}

bool VideoFFMPEGPipeCapture::hasActiveVideo() const {
    return m_implementation->feeder && m_implementation->feeder->isActive();
}

bool VideoFFMPEGPipeCapture::stopProcess() {
    if (!m_implementation->feeder) {
        return false;
    }
    // Whether it ends well or not, this encoder is done with.
    std::unique_ptr<EncoderFeeder> const feeder = std::move(m_implementation->feeder);
    hyx::setExitWork(this, {});
    if (auto const size = std::exchange(m_implementation->nextSize, std::nullopt)) {
        ImageCaptureBase::setImageResolution(size->x, size->y);
    }
    m_implementation->numFrames = feeder->numFrames();
    feeder->finish();
    if (feeder->numFrames() == 0) {
        hyx::Notify::instance().notify(hyx::Notify::NOTIFY_WARNING,
                                       "the video \"" + m_implementation->file + "\" has no images");
    }
    return true;
}

void VideoFFMPEGPipeCapture::setFps(double fps) {
    requireRate(fps);
    ImageCaptureBase::setFps(fps);
}

void VideoFFMPEGPipeCapture::setImageResolution(hyx::UInt width, hyx::UInt height) {
    if (width == 0 || height == 0) {
        throw std::invalid_argument("the size of a video must be 1 to 16384 pixels each way");
    }
    if (!m_implementation->feeder) {
        ImageCaptureBase::setImageResolution(width, height);
        return;
    }
    hyx::Vec2u const running = getImageResolution();
    ImageCaptureBase::setImageResolution(width, height); // refuses what cannot be
    ImageCaptureBase::setImageResolution(running.x, running.y);
    m_implementation->nextSize = hyx::Vec2u(width, height);
}

void VideoFFMPEGPipeCapture::startCapture(int maxImages) {
    if (getCaptureStarted()) {
        stopCapture();
    }
    if (!hasActiveVideo()) {
        init();
    }
    ImageCaptureBase::startCapture(maxImages);
}

bool VideoFFMPEGPipeCapture::stopCapture() {
    bool encoded = false;
    std::exception_ptr failure;
    try {
        encoded = stopProcess();
    } catch (...) {
        failure = std::current_exception();
    }
    bool const captured = ImageCaptureBase::stopCapture();
    if (failure) {
        std::rethrow_exception(failure);
    }
    return captured || encoded;
}

void VideoFFMPEGPipeCapture::writeImage(osg::Image* image, hyx::Index) {
    requirePixels(image);
    if (!m_implementation->feeder) {
        init();
    }
    EncoderFeeder::Frame frame = m_implementation->feeder->takeFrame();
    hyx::Vec2u const size = getImageResolution();
    copyPixels(image, unsigned(size.x), unsigned(size.y), m_implementation->filmHasAlpha, frame);
    m_implementation->feeder->add(std::move(frame));
}

} // namespace hyxOSG
