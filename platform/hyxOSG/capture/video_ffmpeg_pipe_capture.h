// Films, encoded by a separate program while the simulation runs.
#pragma once

#include "platform/hyx/values/hash_table.h"
#include "platform/hyx/values/string.h"
#include "platform/hyxOSG/capture/image_capture_base.h"

namespace hyxOSG {

/// Pipes the captured images to an ffmpeg process that encodes them to a video file.
///
/// The program "ffmpeg" is looked up in the PATH. One image is piped while the next is drawn. Whatever happens to the
/// encoder (missing, refusing its options, killed, disk full), the calls that notice it throw `std::runtime_error` with
/// the encoder's own words, none of them blocks for good, and the file can be read as far as it goes: all but the last
/// images are in it even if the encoder was killed. Existing files are overwritten. A video that still runs when the
/// script ends is finished then. Colours are those of BT.709, and the file says so.
class VideoFFMPEGPipeCapture : public ImageCaptureBase {
public:
    /// The encoders: H.264 in 4:2:0, H.264 in RGB (no colour conversion, so lossless is exact), and MPEG-4 part 2.
    enum OutputCodec : int { OutputCodec_H264 = 0, OutputCodec_H264RGB = 1, OutputCodec_XVID = 2 };

    /// The encoder's name as ffmpeg knows it, for each `OutputCodec`.
    using CodecStringConversionMap = hyx::HashTable<int, hyx::String>;
    /// The map that `init` reads: "libx264", "libx264rgb" and "libxvid"; change it to use another encoder for a codec,
    /// such as "libx265", "libsvtav1", "libvpx-vp9", "ffv1" or "prores_ks". Each is told its quality in its own way.
    static CodecStringConversionMap OutputCodecStrings;

    /// \param width of the video in pixels, 1 to 16384; where the codec takes even sizes only, a black column is added.
    /// \param height likewise, a black row.
    /// \param fps both the images a second of the clock and those of the video; 0.001 to 10000.
    /// \param simulation the clock of the capture; null means the wall clock.
    /// Throws `std::invalid_argument` for a size or rate out of range.
    VideoFFMPEGPipeCapture(hyx::UInt width, hyx::UInt height, double fps, hyxSDK::Simulation* simulation = nullptr);

    /// Starts the encoder; `startCapture` and the first `writeImage` do it too. Throws `std::runtime_error` with the
    /// reason when it cannot be started or the codec has no name in `OutputCodecStrings`. A running encoder is finished
    /// first; its failure is notified only.
    void init();

    /// Sets the name of the video file without its postfix; used by the next `init`. Default "video".
    void setFilename(hyx::String const& filename);
    /// The name of the video file without its postfix.
    hyx::String getFilename() const;

    /// Sets the postfix of the video file, which chooses the container: ".mp4" (default), ".mkv", ".avi", ".mov"; used
    /// by the next `init`. All but ".mp4" and ".mov" take 1000 frames a second at most.
    void setVideoPostFix(hyx::String const& postFix);
    /// The postfix of the video file.
    hyx::String getVideoPostFix() const;

    /// Sets the frames a second of the video file, which are those of the images until this is called; where they
    /// differ, frames are repeated or left out so that time passes as captured. Throws `std::invalid_argument` outside
    /// 0.001 to 10000.
    void setVideoFPS(double fps);
    /// The frames a second of the video file.
    double getVideoFPS() const;

    /// Sets the constant rate factor: 0 (best) to 51 (smallest) for H.264, default 18. For XVID it is mapped to the
    /// quantiser 1 to 31. Throws `std::invalid_argument` above 51.
    void setVideoCRF(hyx::UInt crf);
    /// The constant rate factor.
    hyx::UInt getVideoCRF() const;

    /// Sets the images a second of the clock, the same value as `setFps`; 0.001 to 10000.
    void setImageCaptureFPS(double fps);
    /// The images a second of the clock.
    double getImageCaptureFPS() const;

    /// Whether nothing may be lost: H264RGB then reproduces every bit, H264 all but the conversion to 4:2:0. For XVID
    /// and other encoders that cannot, `init` throws.
    void setEnableLossless(bool enable);
    /// Whether the video is lossless.
    bool getEnableLossless() const;

    /// Sets the codec, used by the next `init`; default `OutputCodec_H264`. Throws `std::invalid_argument` for a number
    /// that is no codec.
    void setOutputVideoCodec(OutputCodec codec);
    /// The codec.
    OutputCodec getOutputCodec() const;

    /// The encoder by its ffmpeg name in place of the codec's, such as "prores_ks"; "" for the codec's. Used by the
    /// next `init`, as are the following.
    void setEncoder(hyx::String const& name);
    hyx::String getEncoder() const;
    /// The encoder's preset, such as "slow" or "p7"; "" for one that keeps pace with drawing.
    void setPreset(hyx::String const& preset);
    hyx::String getPreset() const;
    /// Bits a second in place of the rate factor; 0 for none. Throws `std::invalid_argument` for a negative number.
    void setBitrate(double bitsPerSecond);
    double getBitrate() const;
    /// The format of the film's pixels as ffmpeg names it, such as "yuv444p"; "" for what most players take.
    void setPixelFormat(hyx::String const& format);
    hyx::String getPixelFormat() const;
    /// Further words for the encoder, one a line: "-tune", "animation".
    void setEncoderOptions(hyx::String const& lines);
    hyx::String getEncoderOptions() const;
    /// Whether the film keeps the alpha of the images: that of a target with `RGBA` that is cleared to (0, 0, 0, 0).
    /// `init` throws where the encoder cannot.
    void setEnableAlpha(bool enable);
    bool getEnableAlpha() const;
    /// The images that were given to the running or the last encoder.
    hyx::UInt getNumFrames() const;

    /// Whether an encoder is running and taking images.
    bool hasActiveVideo() const;

    /// Sends the images that wait, closes the video file and waits for the encoder to end. False when none was running.
    /// Throws `std::runtime_error` with the encoder's words when it failed; the encoder is gone then too.
    bool stopProcess();

    /// See `setImageCaptureFPS`; zero is refused here, for a video needs a rate.
    void setFps(double fps) override;
    /// Sets the size of the video; zero throws `std::invalid_argument`. While one is recorded, it keeps its size, and
    /// the new one holds for the next.
    void setImageResolution(hyx::UInt width, hyx::UInt height) override;
    /// Starts the encoder and the capture.
    void startCapture(int maxImages = 0) override;
    /// Stops the capture and calls `stopProcess`. False when neither was running.
    bool stopCapture() override;

    /// Scales the image to the size of the video where it differs and queues it for the encoder; starts the encoder
    /// where none is running. The index is not needed: frames are encoded in the order in which they arrive.
    void writeImage(osg::Image* image, hyx::Index index) override;

protected:
    ~VideoFFMPEGPipeCapture() override;
    bool keepsAlpha() const override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
