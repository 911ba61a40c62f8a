"""PyVista's balls of the same materials under the same skies."""

import sys
from pathlib import Path

import balls
import numpy
import pyvista


def direction_up(side, across, down):
    """Height of the directions through a side of a cube map, in OpenGL's order."""
    one = numpy.ones_like(across)
    return (-down, -down, one, -one, -down, -down)[side]


def environment(above, below, size=64):
    texture = pyvista.Texture()
    texture.CubeMapOn()
    middle = (numpy.arange(size) + 0.5) / size * 2 - 1
    across, down = numpy.meshgrid(middle, middle)
    for side in range(6):
        upper = (direction_up(side, across, down) > 0)[..., None]
        color = numpy.where(upper, numpy.array(above), numpy.array(below)) * 255
        image = pyvista.ImageData(dimensions=(size, size, 1))
        image.point_data["color"] = color.round().astype(numpy.uint8).reshape(-1, 3)
        image.set_active_scalars("color")
        texture.SetInputDataObject(side, image)
    texture.MipmapOn()
    texture.InterpolateOn()
    texture.SetColorModeToDirectScalars()
    return texture


def stage(above, below):
    plotter = pyvista.Plotter(off_screen=True, window_size=(balls.SIZE, balls.SIZE), lighting="none")
    plotter.set_background("black")
    plotter.set_environment_texture(environment(above, below), is_srgb=True)
    # The defaults take minutes without a GPU.
    filtered, irradiance = plotter.renderer.GetEnvMapPrefiltered(), plotter.renderer.GetEnvMapIrradiance()
    filtered.SetPrefilterMaxSamples(128)
    irradiance.SetIrradianceSize(16)
    irradiance.SetIrradianceStep(0.08)
    plotter.renderer.GetEnvMapLookupTable().SetLUTSize(128)
    plotter.renderer.GetEnvMapLookupTable().SetLUTSamples(128)
    plotter.camera_position = [(0, 0, balls.DISTANCE), (0, 0, 0), (0, 1, 0)]
    plotter.camera.view_angle = balls.VIEW_ANGLE
    return plotter


def main():
    folder = Path(sys.argv[1])
    shape = pyvista.Sphere(radius=1, theta_resolution=64, phi_resolution=64)
    for sky, colors in balls.SKIES.items():
        plotter = stage(*colors)
        for name, (color, metal, roughness) in balls.MATERIALS.items():
            actor = plotter.add_mesh(
                shape,
                color=balls.light(color),
                pbr=True,
                metallic=metal,
                roughness=roughness,
                smooth_shading=True,
                reset_camera=False,
            )
            plotter.screenshot(balls.picture(folder, "pyvista", sky, name))
            plotter.remove_actor(actor, render=False)
        plotter.close()


if __name__ == "__main__":
    main()
