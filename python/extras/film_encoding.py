"""Which encoder makes a film of which kind."""

from __future__ import annotations

import functools

# By codec: hardware encoders first, then those of every ffmpeg.
_HARDWARE = {
    "h264": ("h264_nvenc", "h264_qsv", "h264_amf", "h264_videotoolbox"),
    "h265": ("hevc_nvenc", "hevc_qsv", "hevc_amf", "hevc_videotoolbox"),
    "av1": ("av1_nvenc", "av1_qsv", "av1_amf"),
}
_SOFTWARE = {
    "h264": ("libx264", "libopenh264"),
    "h264rgb": ("libx264rgb",),
    "h265": ("libx265",),
    "av1": ("libsvtav1", "libaom-av1"),
    "vp9": ("libvpx-vp9",),
    "mpeg4": ("libxvid", "mpeg4"),
    "prores": ("prores_ks", "prores"),
    "ffv1": ("ffv1",),
    "gif": ("gif",),
    "webp": ("libwebp", "libwebp_anim"),  # the latter joins images that look alike
    "png": ("png",),
}
# What a container takes where nobody has said.
USUAL = {".webm": "vp9", ".gif": "gif", ".webp": "webp"}
USUAL_WITH_ALPHA = {".webm": "vp9", ".mov": "prores", ".mkv": "ffv1", ".webp": "webp"}


def chosen_encoder(codec: str, hardware: bool) -> str:
    """The first encoder for a codec that works on this machine; a name that is no codec's is taken as it is."""
    if codec not in _SOFTWARE:
        return codec
    wanted = (_HARDWARE.get(codec, ()) if hardware else ()) + _SOFTWARE[codec]
    return next((name for name in wanted if works(name)), _SOFTWARE[codec][0])


def program() -> str:
    """The ffmpeg of the PATH, else that of the package imageio-ffmpeg."""
    import shutil

    if found := shutil.which("ffmpeg"):
        return found
    try:
        import imageio_ffmpeg  # type: ignore[import-not-found]

        return str(imageio_ffmpeg.get_ffmpeg_exe())
    except (ImportError, RuntimeError):
        return "ffmpeg"


@functools.lru_cache(maxsize=None)
def works(encoder: str) -> bool:
    """Whether ffmpeg has the encoder, and it encodes: a hardware encoder is known also where its device is missing."""
    import subprocess

    command = [program(), "-v", "error", "-nostdin", "-f", "lavfi", "-i", "color=size=320x240:rate=10:duration=0.2"]
    try:
        done = subprocess.run(
            [*command, "-c:v", encoder, "-f", "null", "-"], stdin=subprocess.DEVNULL, capture_output=True, timeout=20
        )
    except (OSError, subprocess.TimeoutExpired):
        return False
    return done.returncode == 0
