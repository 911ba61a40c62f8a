"""A ball that mirrors its surroundings, given as six pictures of a cube map."""

import hyxCollide
import hyxOSG
import numpy
import osg
from PIL import Image

y = numpy.linspace(0, 1, 128)[:, None, None]
haze, blue, earth = ((0.95, 0.9, 0.8), (0.25, 0.45, 0.8), (0.45, 0.35, 0.25))
side = numpy.where(y < 0.5, blue + (numpy.array(haze) - blue) * 2 * y, earth) * numpy.ones((128, 128, 3))
side[44:64, 30:50] = side[50:64, 70:100] = (0.3, 0.3, 0.35)  # houses
faces = {"posx": side, "negx": side, "posy": 0 * side + blue, "negy": 0 * side + earth, "posz": side, "negz": side}
for name, colors in faces.items():
    Image.fromarray((255 * colors).astype(numpy.uint8)).save(f"town_{name}.png")

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
images = osg.ImageVector()
hyxOSG.loadCubeMapImages("town_", ".png", images)
app.getSceneRoot().addChild(hyxOSG.createSkySphere("sky", images, 50, 1))
ball = hyxCollide.Geometry(hyxCollide.Sphere(0.8))
app.getSimulation().add(ball)
app.createVisual(app.getSimulation(), 4)
node = hyxOSG.findGeometryNode(ball, app.getRoot())
hyxOSG.setCubeMapTexture(node, "town_")
hyxOSG.setEnvMapReflectionCoefficient(node, 0.8)
app.setCameraHome((1, -3, 0.4), (0, 0, 0))
app.takeScreenShot("mirror.png")
