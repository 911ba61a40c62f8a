"""What was read from a model, as a tree: types, names and the lines of the file."""

import hyxOSG

with open("gate.sdf", "w") as file:
    file.write("""<sdf version="1.9"><model name="gate">
<link name="post"><pose>0 0 1 0 0 0</pose><visual name="v"><geometry><box><size>0.2 0.2 2</size></box></geometry>
<material><diffuse>0.4 0.4 0.45 1</diffuse></material></visual>
<collision name="c"><geometry><box><size>0.2 0.2 2</size></box></geometry></collision></link>
<link name="wing"><pose>0.8 0 1 0 0 0</pose><visual name="v"><geometry><box><size>1.4 0.06 1.6</size></box></geometry>
<material><diffuse>0.8 0.5 0.25 1</diffuse></material></visual>
<collision name="c"><geometry><box><size>1.4 0.06 1.6</size></box></geometry></collision></link>
<joint name="fixed" type="fixed"><parent>world</parent><child>post</child></joint>
<joint name="swing" type="revolute"><pose>-0.7 0 0 0 0 0</pose><parent>post</parent><child>wing</child>
<axis><xyz>0 0 1</xyz></axis></joint></model></sdf>""")

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
result = app.loadTavLangFile("gate.sdf", app.getSceneRoot())
for node in result.model.walk():
    print(f"line {node.getLine():2} {node.type:30} {node.name}")
result.joints.position = [-0.8]  # radians
app.setCameraHome((0.6, -4.5, 2.2), (0.5, 0, 1))
app.takeScreenShot("model_tree.png")
