"""A model of a MJCF text: three links that swing, released from the side."""

import hyxOSG

MODEL = """<mujoco><worldbody><body name="first" pos="0 0 2">
<joint name="a" axis="0 1 0"/><geom type="capsule" fromto="0 0 0 0.6 0 0" size="0.06" rgba="0.9 0.4 0.2 1"/>
<body name="second" pos="0.6 0 0"><joint name="b" axis="0 1 0"/>
<geom type="capsule" fromto="0 0 0 0.6 0 0" size="0.05" rgba="0.9 0.7 0.3 1"/>
<body name="third" pos="0.6 0 0"><joint name="c" axis="0 1 0"/>
<geom type="capsule" fromto="0 0 0 0.6 0 0" size="0.04" rgba="0.3 0.6 0.8 1"/></body></body></body>
</worldbody></mujoco>"""
with open("pendulum.xml", "w") as file:
    file.write(MODEL)

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
result = app.loadTavLangFile("pendulum.xml", app.getSceneRoot())
tip = result.getAssembly().body("third")
path = []
while app.getSimulation().getTimeStamp() < 6:
    app.getSimulation().step()
    path.append(tip.getTransform().transformPoint((0.6, 0, 0)))
app.getSceneRoot().addChild(hyxOSG.createPolyline(path, (0.2, 0.35, 0.6, 1), 2))
app.setCameraHome((0, -6, 1.6), (0, 0, 1.4))
app.takeScreenShot("mjcf_pendulum.png")
