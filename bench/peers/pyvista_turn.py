"""PyVista's turn, off-screen: meshes and points."""

import numpy
import pyvista
import scenes


def stage():
    plotter = pyvista.Plotter(off_screen=True, window_size=(scenes.WIDTH, scenes.HEIGHT))
    plotter.camera.position, plotter.camera.focal_point = scenes.EYE, (0, 0, 0)
    plotter.camera.up, plotter.camera.view_angle = (0, 0, 1), scenes.FIELD_OF_VIEW
    return plotter


def picture(plotter):
    plotter.render()
    return plotter.screenshot(return_img=True)


def surface(mesh):
    points, normals, triangles = mesh
    made = pyvista.PolyData.from_regular_faces(points, triangles.astype(numpy.int64))
    made.point_data.active_normals = normals
    return made


def shapes():
    plotter, meshes = stage(), [surface(mesh) for mesh in scenes.shape_meshes()]
    colors = scenes.colors(scenes.SHAPES)
    shown = [plotter.add_mesh(meshes[i % 4], color=color, reset_camera=False) for i, color in enumerate(colors)]

    def draw(frame):
        for one, place in zip(shown, scenes.shape_places(frame)):
            one.position = place
        return picture(plotter)

    return draw


def mesh():
    plotter = stage()
    shown = plotter.add_mesh(surface(scenes.knobbly_ring()), color=(0.8, 0.5, 0.2), reset_camera=False)

    def draw(frame):
        shown.orientation = (0, 0, numpy.degrees(0.04 * frame))
        return picture(plotter)

    return draw


def points():
    plotter, cloud = stage(), pyvista.PolyData(scenes.CLOUDS[0].copy())
    cloud["colors"] = scenes.CLOUD_COLORS[0].copy()
    plotter.add_points(cloud, scalars="colors", rgba=True, point_size=1, lighting=False, reset_camera=False)

    def draw(frame):
        cloud.points[:] = scenes.CLOUDS[frame % 8]
        cloud["colors"][:] = scenes.CLOUD_COLORS[frame % 2]
        cloud.Modified()
        return picture(plotter)

    return draw


if __name__ == "__main__":
    scenes.compete({"shapes": shapes, "mesh": mesh, "points": points, "first": shapes})
