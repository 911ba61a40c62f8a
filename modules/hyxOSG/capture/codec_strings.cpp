// Takes codecs by name or by number, with the messages that scripts know.
#include "modules/hyxOSG/capture/codec_strings.h"

#include "binding/runtime/errors.h"
#include "binding/vocabulary/results.h"
#include "platform/hyxOSG/capture/video_ffmpeg_pipe_capture.h"

using hyxOSG::VideoFFMPEGPipeCapture;

namespace {

// The message of a null reference; that of a wrong type starts after its first words.
constexpr char null_message[] =
    "invalid null reference in variable 'hyxOSG::VideoFFMPEGPipeCapture::OutputCodecStrings' of type "
    "'hyxOSG::VideoFFMPEGPipeCapture::CodecStringConversionMap'";
constexpr char const* type_message = null_message + sizeof "invalid null reference " - 1;

} // namespace

namespace modules {

PyObject* get_codec_strings() {
    return vocabulary::from_pointer(&VideoFFMPEGPipeCapture::OutputCodecStrings, PointerResult::borrowed_proxied);
}

int set_codec_strings(PyObject* value) {
    using Map = VideoFFMPEGPipeCapture::CodecStringConversionMap;
    void* pointer = nullptr;
    int const status = SWIG_Python_ConvertPtrAndOwn(value, &pointer, vocabulary::descriptor<Map>());
    if (status != SWIG_OK) {
        runtime::raise_argument_error(status, type_message);
        return 1;
    }
    if (!pointer) {
        PyErr_SetString(PyExc_TypeError, null_message);
        return 1;
    }
    auto const* map = static_cast<Map const*>(pointer);
    if (map != &VideoFFMPEGPipeCapture::OutputCodecStrings)
        VideoFFMPEGPipeCapture::OutputCodecStrings = *map;
    return 0;
}

} // namespace modules
