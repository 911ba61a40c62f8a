// The entry point of _hyxOSG.
#include "containers/container_key.h"
#include "module/areas.h"
#include "module/constants.h"
#include "module/family_module.h"
#include "platform/hyxOSG/video_ffmpeg_pipe_capture.h"
#include "runtime/global_variables.h"
#include "wrappers/capture/codec_strings.h"

namespace module {

namespace {

using runtime::install_constants;

bool install(PyObject *dict)
{
    install_constants(dict, constants);
    PyObject *globals = SWIG_Python_Globals();
    if (!globals) {
        PyErr_SetString(PyExc_TypeError, "Failure to create SWIG globals.");
        return false;
    }
    PyDict_SetItemString(dict, "cvar", globals);
    install_constants(dict, constants_after_cvar);
    containers::container_key();
    install_constants(dict, constants_after_container_key);
    SWIG_Python_addvarlink(globals, "VideoFFMPEGPipeCapture_OutputCodecStrings", wrappers::get_codec_strings,
                           wrappers::set_codec_strings);
    return true;
}

} // namespace

} // namespace module

PyMODINIT_FUNC PyInit__hyxOSG()
{
    return module::initialise({"_hyxOSG", module::areas, module::area_count, module::install});
}
