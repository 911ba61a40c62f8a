// The entry point of _hyxOSG.
#include "binding/containers/container_key.h"
#include "binding/entry/family_module.h"
#include "binding/runtime/global_variables.h"
#include "modules/hyxOSG/application/constants.h"
#include "modules/hyxOSG/capture/codec_strings.h"
#include "modules/hyxOSG/capture/constants.h"
#include "modules/hyxOSG/decoration/constants.h"
#include "modules/hyxOSG/nodes/constants.h"
#include "modules/hyxOSG/renderers/constants.h"
#include "modules/hyxOSG/visuals/constants.h"

namespace modules {

namespace {

using runtime::install_constants;

constexpr runtime::Constant module_constants[] = {{"SWIG_MODULE_hyxOSG", 1}};

// The order of the steps is part of the interface.
bool install(PyObject* dict) {
    install_constants(dict, module_constants, text_constants, geometry_node_constants, scene_decorator_constants,
                      render_target_constants, scalar_color_map_constants, video_ffmpeg_pipe_capture_constants);
    PyObject* globals = SWIG_Python_Globals();
    if (!globals) {
        PyErr_SetString(PyExc_TypeError, "Failure to create SWIG globals.");
        return false;
    }
    PyDict_SetItemString(dict, "cvar", globals);
    install_constants(dict, particle_system_drawable_constants, texture_unit_constants, force_arrow_renderer_constants,
                      terrain_voxel_renderer_constants);
    containers::container_key();
    install_constants(dict, embedded_gl_window_constants, example_application_constants);
    SWIG_Python_addvarlink(globals, "VideoFFMPEGPipeCapture_OutputCodecStrings", get_codec_strings, set_codec_strings);
    return true;
}

} // namespace

} // namespace modules

PyMODINIT_FUNC PyInit__hyxOSG() {
    return entry::initialise({"_hyxOSG", modules::install});
}
