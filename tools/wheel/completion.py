"""Puts into a built wheel what the libraries look for while they run."""

import shutil
import subprocess
from pathlib import Path

# Pictures, fonts and models; what else there is comes from the libraries themselves.
PLUGINS = """png jpeg gif tiff bmp tga rgb pnm dds hdr freetype obj stl 3ds ac dxf lwo lws md2 x osg ive glsl
    serializers_osg serializers_osgtext deprecated_osg""".split()
FONT = Path("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf")


def complete(folder: Path, licences: Path) -> None:
    """Adds plugins, the font and licences to an unpacked wheel."""
    source = plugin_folder()
    plugins = folder / "hyxOSG" / "plugins" / source.name
    plugins.mkdir(parents=True)
    for name in PLUGINS:
        shutil.copy(source / f"osgdb_{name}.so", plugins)
    fonts = folder / "hyxOSG" / "fonts"
    fonts.mkdir()
    shutil.copy(FONT, fonts)
    (information,) = folder.glob("*.dist-info")
    (information / "licenses").mkdir(exist_ok=True)
    shutil.copy(licences, information / "licenses")


def plugin_folder() -> Path:
    command = ["pkg-config", "--variable=libdir", "openscenegraph"]
    libraries = subprocess.run(command, capture_output=True, text=True, check=True).stdout.strip()
    version = subprocess.run(
        ["pkg-config", "--modversion", "openscenegraph"], capture_output=True, text=True, check=True
    )
    return Path(libraries) / f"osgPlugins-{version.stdout.strip()}"
