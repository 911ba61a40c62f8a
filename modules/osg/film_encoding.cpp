// How films are encoded, beyond what the visualization library's own module says.
#include "modules/osg/scene_graph_rows.h"
#include "platform/hyxOSG/capture/video_ffmpeg_pipe_capture.h"
#include "platform/hyxSDK/simulation.h"

namespace {

constexpr Declared film_encoding_rows[] = {
    FUNCTION(VideoFFMPEGPipeCapture_setEncoder,
             METHOD(hyxOSG::VideoFFMPEGPipeCapture, setEncoder, (hyx::String const&))),
    FUNCTION(VideoFFMPEGPipeCapture_getEncoder, METHOD(hyxOSG::VideoFFMPEGPipeCapture, getEncoder, () const)),
    FUNCTION(VideoFFMPEGPipeCapture_setPreset, METHOD(hyxOSG::VideoFFMPEGPipeCapture, setPreset, (hyx::String const&))),
    FUNCTION(VideoFFMPEGPipeCapture_getPreset, METHOD(hyxOSG::VideoFFMPEGPipeCapture, getPreset, () const)),
    FUNCTION(VideoFFMPEGPipeCapture_setBitrate, METHOD(hyxOSG::VideoFFMPEGPipeCapture, setBitrate, (double))),
    FUNCTION(VideoFFMPEGPipeCapture_getBitrate, METHOD(hyxOSG::VideoFFMPEGPipeCapture, getBitrate, () const)),
    FUNCTION(VideoFFMPEGPipeCapture_setPixelFormat,
             METHOD(hyxOSG::VideoFFMPEGPipeCapture, setPixelFormat, (hyx::String const&))),
    FUNCTION(VideoFFMPEGPipeCapture_getPixelFormat, METHOD(hyxOSG::VideoFFMPEGPipeCapture, getPixelFormat, () const)),
    FUNCTION(VideoFFMPEGPipeCapture_setEncoderOptions,
             METHOD(hyxOSG::VideoFFMPEGPipeCapture, setEncoderOptions, (hyx::String const&))),
    FUNCTION(VideoFFMPEGPipeCapture_getEncoderOptions,
             METHOD(hyxOSG::VideoFFMPEGPipeCapture, getEncoderOptions, () const)),
    FUNCTION(VideoFFMPEGPipeCapture_setEnableAlpha, METHOD(hyxOSG::VideoFFMPEGPipeCapture, setEnableAlpha, (bool))),
    FUNCTION(VideoFFMPEGPipeCapture_getEnableAlpha, METHOD(hyxOSG::VideoFFMPEGPipeCapture, getEnableAlpha, () const)),
    FUNCTION(VideoFFMPEGPipeCapture_getNumFrames, METHOD(hyxOSG::VideoFFMPEGPipeCapture, getNumFrames, () const)),
};

} // namespace

ROWS(film_encoding_rows);
