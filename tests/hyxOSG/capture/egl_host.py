"""A host application's OpenGL context without a window, made with ctypes: what the embedded window draws into."""

import ctypes

import numpy

EGL = ctypes.CDLL("libEGL.so.1")
GL = ctypes.CDLL("libGL.so.1")
for function in ("eglGetPlatformDisplay", "eglCreatePbufferSurface", "eglCreateContext", "eglGetProcAddress"):
    getattr(EGL, function).restype = ctypes.c_void_p

SURFACELESS = 0x31DD
OPENGL_API = 0x30A2
OPENGL_ES_API = 0x30A0
CONFIG = (0x3033, 1, 0x3040, 8 | 4, 0x3024, 8, 0x3023, 8, 0x3022, 8, 0x3021, 8, 0x3025, 24, 0x3026, 8, 0x3038)
RGB, RGBA, UNSIGNED_BYTE, PACK_ALIGNMENT = 0x1907, 0x1908, 0x1401, 0x0D05
BLEND, CULL_FACE, DEPTH_TEST, SCISSOR_TEST = 0x0BE2, 0x0B44, 0x0B71, 0x0C11


def attributes(*values):
    return (ctypes.c_int * len(values))(*values)


class Host:
    """A context with a buffer of its own; several may live beside each other."""

    def __init__(self, width=320, height=240, api=OPENGL_API, version=()):
        self.size = width, height
        self.display = ctypes.c_void_p(EGL.eglGetPlatformDisplay(SURFACELESS, None, None))
        assert EGL.eglInitialize(self.display, None, None)
        config, count = ctypes.c_void_p(), ctypes.c_int()
        assert EGL.eglChooseConfig(self.display, attributes(*CONFIG), ctypes.byref(config), 1, ctypes.byref(count))
        EGL.eglBindAPI(api)
        size = attributes(0x3057, width, 0x3056, height, 0x3038)
        self.surface = ctypes.c_void_p(EGL.eglCreatePbufferSurface(self.display, config, size))
        self.context = ctypes.c_void_p(EGL.eglCreateContext(self.display, config, None, attributes(*version, 0x3038)))
        assert self.surface and self.context
        self.make_current()

    def make_current(self):
        assert EGL.eglMakeCurrent(self.display, self.surface, self.surface, self.context)

    def release(self):
        assert EGL.eglMakeCurrent(self.display, None, None, None)

    def close(self):
        """Ends the context and its buffer, which cost 10 MB and more."""
        self.release()
        EGL.eglDestroyContext(self.display, self.context)
        EGL.eglDestroySurface(self.display, self.surface)

    def read(self, width, height, channels, pixel_format):
        read = numpy.empty((height, width, channels), numpy.uint8)
        GL.glPixelStorei(PACK_ALIGNMENT, 1)
        GL.glReadPixels(0, 0, width, height, pixel_format, UNSIGNED_BYTE, read.ctypes.data_as(ctypes.c_void_p))
        return read

    def pixels(self, width=None, height=None):
        """What is drawn, rows from the lowest, RGB."""
        return self.read(width or self.size[0], height or self.size[1], 3, RGB)

    def alpha(self):
        return self.read(*self.size, 4, RGBA)[..., 3]

    def fill(self, red, green, blue):
        GL.glClearColor(ctypes.c_float(red), ctypes.c_float(green), ctypes.c_float(blue), ctypes.c_float(1))
        GL.glClear(0x4000)

    def error(self):
        return GL.glGetError()
