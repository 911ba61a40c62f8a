"""PyVista's still: its default, or with ambient occlusion, smooth edges and a sky."""

import pyvista
import stage

picture, best, model = stage.asked()
plotter = pyvista.Plotter(off_screen=True, window_size=(stage.WIDTH, stage.HEIGHT))
plotter.camera.position, plotter.camera.focal_point, plotter.camera.up = stage.EYE, stage.TARGET, (0, 0, 1)
plotter.camera.view_angle = stage.FIELD_OF_VIEW


def add(mesh, color, **look):
    plotter.add_mesh(mesh, color=color[:3], opacity=(*color, 1)[3], reset_camera=False, **look)


def box(place, half):
    return pyvista.Cube(center=place, x_length=2 * half, y_length=2 * half, z_length=2 * half)


side = 2 * stage.GROUND_HALF
add(pyvista.Plane(i_size=side, j_size=side), stage.GROUND_COLOR)
for place, half, color in stage.TOWER:
    add(box(place, half), color)
for place, color, shine in (
    (stage.MATTE, stage.MATTE_COLOR, 0),
    (stage.PLASTIC, stage.PLASTIC_COLOR, 0.5),
    (stage.METAL, stage.METAL_COLOR, 0.9),
):
    ball = pyvista.Sphere(stage.RADIUS, place, theta_resolution=48, phi_resolution=48)
    add(ball, color, smooth_shading=True, specular=shine, specular_power=40)
add(box(stage.GLASS, stage.GLASS_HALF), stage.GLASS_COLOR)
add(pyvista.read(model).translate(stage.MODEL_PLACE), stage.MODEL_COLOR, smooth_shading=True)
plotter.add_point_labels([stage.LABEL_PLACE], [stage.LABEL], show_points=False)
if best:
    plotter.enable_anti_aliasing("ssaa")
    plotter.enable_ssao(radius=0.5, kernel_size=64)
    plotter.set_background("lightsteelblue", top="white")
plotter.screenshot(picture)
