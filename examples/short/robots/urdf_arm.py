"""An arm of a URDF text, its joints driven to their targets."""

import hyxOSG
import hyxtavlang

LINK = (
    '<link name="{0}"><visual><origin xyz="0 0 {1}"/><geometry><box size="0.1 0.1 {2}"/></geometry>'
    '<material name="{0}"><color rgba="{3} 1"/></material></visual><collision><origin xyz="0 0 {1}"/>'
    '<geometry><box size="0.1 0.1 {2}"/></geometry></collision></link>'
)
JOINT = (
    '<joint name="{0}" type="revolute"><parent link="{1}"/><child link="{2}"/><origin xyz="0 0 {3}"/>'
    '<axis xyz="0 1 0"/><limit lower="-2" upper="2" effort="2000" velocity="3"/></joint>'
)
parts = [
    LINK.format("base", 0.1, 0.2, "0.3 0.3 0.35"), LINK.format("upper", 0.4, 0.8, "0.9 0.5 0.2"),
    LINK.format("lower", 0.3, 0.6, "0.9 0.7 0.3"), LINK.format("hand", 0.1, 0.2, "0.4 0.6 0.8"),
    JOINT.format("shoulder", "base", "upper", 0.2), JOINT.format("elbow", "upper", "lower", 0.8),
    JOINT.format("wrist", "lower", "hand", 0.6),
]  # fmt: skip
with open("arm.urdf", "w") as file:
    file.write(f'<robot name="arm">{"".join(parts)}</robot>')

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
params = hyxtavlang.OptParams()
params.setFixedBase(True)
result = app.loadTavLangFile("arm.urdf", app.getSceneRoot(), params)
result.joints.target = [0.5, 1.2, 0.6]  # radians
app.getSimulation().stepTo(1)
print(dict(zip(result.joints.names, result.joints.position)))
app.setCameraHome((1.2, -3, 1.2), (0.5, 0, 0.6))
app.takeScreenShot("urdf_arm.png")
