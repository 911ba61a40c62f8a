// Video through an encoder process, and the linked map of encoder names.
#include "platform/hyxOSG/capture/video_ffmpeg_pipe_capture.h"

#include "binding/vocabulary/rows.h"
#include "modules/hyxOSG/capture/codec_strings.h"
#include "platform/hyxSDK/simulation.h"

namespace {

constexpr Declared video_ffmpeg_pipe_capture_rows[] = {
    FUNCTION(new_VideoFFMPEGPipeCapture,
             NEW(hyxOSG::VideoFFMPEGPipeCapture, (hyx::UInt, hyx::UInt, double, hyxSDK::Simulation*), nullptr)),
    FUNCTION(VideoFFMPEGPipeCapture_init, METHOD(hyxOSG::VideoFFMPEGPipeCapture, init, ())),
    FUNCTION(VideoFFMPEGPipeCapture_setFilename,
             METHOD(hyxOSG::VideoFFMPEGPipeCapture, setFilename, (hyx::String const&))),
    FUNCTION(VideoFFMPEGPipeCapture_getFilename, METHOD(hyxOSG::VideoFFMPEGPipeCapture, getFilename, () const)),
    FUNCTION(VideoFFMPEGPipeCapture_setVideoPostFix,
             METHOD(hyxOSG::VideoFFMPEGPipeCapture, setVideoPostFix, (hyx::String const&))),
    FUNCTION(VideoFFMPEGPipeCapture_getVideoPostFix, METHOD(hyxOSG::VideoFFMPEGPipeCapture, getVideoPostFix, () const)),
    FUNCTION(VideoFFMPEGPipeCapture_setVideoFPS, METHOD(hyxOSG::VideoFFMPEGPipeCapture, setVideoFPS, (double))),
    FUNCTION(VideoFFMPEGPipeCapture_getVideoFPS, METHOD(hyxOSG::VideoFFMPEGPipeCapture, getVideoFPS, () const)),
    FUNCTION(VideoFFMPEGPipeCapture_setVideoCRF, METHOD(hyxOSG::VideoFFMPEGPipeCapture, setVideoCRF, (hyx::UInt))),
    FUNCTION(VideoFFMPEGPipeCapture_getVideoCRF, METHOD(hyxOSG::VideoFFMPEGPipeCapture, getVideoCRF, () const)),
    FUNCTION(VideoFFMPEGPipeCapture_setImageCaptureFPS,
             METHOD(hyxOSG::VideoFFMPEGPipeCapture, setImageCaptureFPS, (double))),
    FUNCTION(VideoFFMPEGPipeCapture_getImageCaptureFPS,
             METHOD(hyxOSG::VideoFFMPEGPipeCapture, getImageCaptureFPS, () const)),
    FUNCTION(VideoFFMPEGPipeCapture_setEnableLossless,
             METHOD(hyxOSG::VideoFFMPEGPipeCapture, setEnableLossless, (bool))),
    FUNCTION(VideoFFMPEGPipeCapture_getEnableLossless,
             METHOD(hyxOSG::VideoFFMPEGPipeCapture, getEnableLossless, () const)),
    FUNCTION(VideoFFMPEGPipeCapture_setOutputVideoCodec, METHOD(hyxOSG::VideoFFMPEGPipeCapture, setOutputVideoCodec,
                                                                (hyxOSG::VideoFFMPEGPipeCapture::OutputCodec))),
    FUNCTION(VideoFFMPEGPipeCapture_getOutputCodec, METHOD(hyxOSG::VideoFFMPEGPipeCapture, getOutputCodec, () const)),
    FUNCTION(VideoFFMPEGPipeCapture_hasActiveVideo, METHOD(hyxOSG::VideoFFMPEGPipeCapture, hasActiveVideo, () const)),
    FUNCTION(VideoFFMPEGPipeCapture_stopProcess, METHOD(hyxOSG::VideoFFMPEGPipeCapture, stopProcess, ())),
    REGISTER(hyxOSG::VideoFFMPEGPipeCapture, VideoFFMPEGPipeCapture),
    INIT(VideoFFMPEGPipeCapture),
    STATIC_GET(VideoFFMPEGPipeCapture_OutputCodecStrings_get, modules::get_codec_strings),
    STATIC_SET(VideoFFMPEGPipeCapture_OutputCodecStrings_set, modules::set_codec_strings),
};

} // namespace

ROWS(video_ffmpeg_pipe_capture_rows);
