// The enumerators of the capture classes.
#pragma once

#include "binding/runtime/integer_constants.h"
#include "platform/hyxOSG/capture/embedded_gl_window.h"
#include "platform/hyxOSG/capture/render_target.h"
#include "platform/hyxOSG/capture/video_ffmpeg_pipe_capture.h"

namespace modules {

inline constexpr runtime::Constant render_target_constants[] = {
    {"RenderTarget_COLOR_BUFFER", hyxOSG::RenderTarget::COLOR_BUFFER},
    {"RenderTarget_DEPTH_BUFFER", hyxOSG::RenderTarget::DEPTH_BUFFER},
    {"RenderTarget_RGBA", hyxOSG::RenderTarget::RGBA},
    {"RenderTarget_RGB", hyxOSG::RenderTarget::RGB},
    {"RenderTarget_DEPTH_COMPONENT", hyxOSG::RenderTarget::DEPTH_COMPONENT},
    {"RenderTarget_DO_NOT_COMPUTE_NEAR_FAR", hyxOSG::RenderTarget::DO_NOT_COMPUTE_NEAR_FAR},
    {"RenderTarget_COMPUTE_NEAR_FAR_USING_BOUNDING_VOLUMES",
     hyxOSG::RenderTarget::COMPUTE_NEAR_FAR_USING_BOUNDING_VOLUMES},
    {"RenderTarget_COMPUTE_NEAR_FAR_USING_PRIMITIVES", hyxOSG::RenderTarget::COMPUTE_NEAR_FAR_USING_PRIMITIVES},
    {"RenderTarget_COMPUTE_NEAR_USING_PRIMITIVES", hyxOSG::RenderTarget::COMPUTE_NEAR_USING_PRIMITIVES},
};

inline constexpr runtime::Constant video_ffmpeg_pipe_capture_constants[] = {
    {"VideoFFMPEGPipeCapture_OutputCodec_H264", hyxOSG::VideoFFMPEGPipeCapture::OutputCodec_H264},
    {"VideoFFMPEGPipeCapture_OutputCodec_H264RGB", hyxOSG::VideoFFMPEGPipeCapture::OutputCodec_H264RGB},
    {"VideoFFMPEGPipeCapture_OutputCodec_XVID", hyxOSG::VideoFFMPEGPipeCapture::OutputCodec_XVID},
};

inline constexpr runtime::Constant embedded_gl_window_constants[] = {
    {"EmbeddedGLWindow_MAIN_SCENE_MASK", hyxOSG::EmbeddedGLWindow::MAIN_SCENE_MASK},
    {"EmbeddedGLWindow_DEBUG_RENDER_MASK", hyxOSG::EmbeddedGLWindow::DEBUG_RENDER_MASK},
    {"EmbeddedGLWindow_OSG_RENDER_MASK", hyxOSG::EmbeddedGLWindow::OSG_RENDER_MASK},
    {"EmbeddedGLWindow_HUD_MASK", hyxOSG::EmbeddedGLWindow::HUD_MASK},
    {"EmbeddedGLWindow_DECORATOR_MASK", hyxOSG::EmbeddedGLWindow::DECORATOR_MASK},
};

} // namespace modules
