"""Damaged model files are read, or refused in words that name the file; nothing crashes."""

import json
import os
import pathlib

import gymnasium
import jvrc_description
import pytest
from model_collection import SHARE, needs_models
from subprocesses import run_python

ASSETS = pathlib.Path(gymnasium.__file__).parent / "envs" / "mujoco" / "assets"
SOURCES = [
    ASSETS / "humanoid.xml",
    pathlib.Path(jvrc_description.urdf_path),
    pathlib.Path("scene.json"),
    pytest.param(SHARE / "examples/planar_gripper/planar_gripper.sdf", marks=needs_models),
]
COUNT = 80
ROUNDS = int(os.environ.get("HYX_DAMAGED_ROUNDS", "1"))  # more for a thorough search
SCENE = {
    "gravity": [0, 0, -9.81],
    "materials": [{"name": "ice", "friction": 0.1, "restitution": 0.5, "density": 900}],
    "bodies": [
        {"name": "ground", "motion": "static", "geometries": [{"shape": "plane", "normal": [0, 0, 1]}]},
        {
            "name": "arm",
            "position": [0, 0, 1],
            "rpy": [0, 0, 45],
            "velocity": [1, 0, 0],
            "mass": 2,
            "geometries": [
                {"shape": "box", "halfExtents": [0.5, 0.1, 0.1], "color": [0.8, 0.3, 0.2, 1], "material": "ice"},
                {"shape": "cone", "radius": 0.5, "height": 1, "position": [1, 0, 0], "rotation": [0, 0, 0, 1]},
            ],
        },
        {"name": "ball", "position": [0, 3, 1], "geometries": [{"shape": "sphere", "radius": 0.5, "sensor": True}]},
        {"name": "can", "position": [3, 0, 1], "geometries": [{"shape": "capsule", "radius": 0.5, "height": 2}]},
    ],
    "constraints": [
        {"type": "hinge", "body1": "arm", "body2": "ground", "axis": [0, 0, 1], "speed": 1.5, "range": [-1.5, 1.5]},
        {"type": "prismatic", "body1": "ball", "axis": [0, 0, 1]},
        {"type": "ball", "body1": "can", "body2": "ball", "position": [1, 2, 3]},
        {"type": "lock", "body1": "can", "body2": "arm"},
    ],
}

PROGRAM = """
import random, re, sys
import hyxOSG

source, target, count = sys.argv[1], sys.argv[2], int(sys.argv[3])
text = open(source).read()
# Meshes would only be read again and again.
text = re.sub(r"<geometry>\\s*<mesh[^>]*/>\\s*</geometry>", "<geometry><sphere radius='0.1'/></geometry>", text)
values = ["", "0", "-1", "1e308", "1e-308", "nan", "inf", "99999999999", "a", "0 0 0", "1 2 3 4 5 6 7", "&#0;", "-0"]

JSON = ["null", "-1", "0", "1e308", "1e999", "-0.0", "[]", "{}", '""', '"box"', "true", "[1, 2, 3]", "9" * 20]


def damaged(random):
    kind = random.randrange(6)
    if kind > 1 and text.startswith("{"):
        tokens = list(re.finditer(r'"[^"]*"|-?[0-9][0-9.e+-]*|true|false|[][{},:]', text))
        found, others = random.choice(tokens), [random.choice(tokens).group(), random.choice(JSON)]
        return text[: found.start()] + random.choice(others) + text[found.end() :]
    if kind == 0:
        return text[: random.randrange(len(text))]
    if kind == 1:
        place = random.randrange(len(text))
        return text[:place] + chr(random.randrange(1, 127)) + text[place + 1 :]
    if kind == 2:  # an element twice, or where another one was
        elements = [found.group() for found in re.finditer(r"<[a-z]+ [^<>]*/>|<([a-z]+)>[^<>]*</\\1>", text)]
        return text.replace(random.choice(elements), random.choice(elements) + random.choice(elements), 1)
    contents = list(re.finditer(r">([^<>]*[^<>\\s][^<>]*)<", text))
    if kind > 3 and len(contents) > 100:  # values stand between the tags
        found = random.choice(contents)
        value = random.choice(contents).group(1) if kind == 4 else random.choice(values)
        return text[: found.start(1)] + value + text[found.end(1) :]
    attributes = list(re.finditer(r'[a-z]+="[^"]*"', text))
    found = random.choice(attributes)
    name = found.group().partition("=")[0]
    if kind == 3:
        return text[: found.start()] + text[found.end() :]
    if kind == 4:  # the value of another place
        other = random.choice(attributes).group().partition("=")[2]
        return text[: found.start()] + name + "=" + other + text[found.end() :]
    return text[: found.start()] + f'{name}="{random.choice(values)}"' + text[found.end() :]


app = hyxOSG.ExampleApplication()
app.init(None)
random = random.Random(int(sys.argv[4]))
read = 0
for number in range(count):
    app.initSimulation()
    content = damaged(random)
    open(target, "w").write(content)
    result = app.loadTavLangFile(target, None)
    if result.isSuccess():
        read += 1
        result.joints.position = result.joints.position
        try:
            app.getSimulation().step()
        except RuntimeError as error:  # masses and sizes beyond all measure
            assert "no longer finite" in str(error)
    else:
        errors = result.getErrors()
        assert errors and all(re.match(re.escape(target) + ":\\d+: ", error) for error in errors), errors
print("read", read)
"""


@pytest.mark.parametrize("source", SOURCES, ids=lambda path: path.suffix)
def test_damaged_models_are_read_or_refused(source, tmp_path):
    if source.suffix == ".json":
        source = tmp_path / source
        source.write_text(json.dumps(SCENE, indent=1))
    target = tmp_path / f"damaged{source.suffix}"
    for seed in range(1, ROUNDS + 1):
        done = run_python("-c", PROGRAM, str(source), str(target), str(COUNT), str(seed))
        assert done.returncode == 0 and done.stdout.startswith("read "), (seed, done.stderr[-2000:])
        assert 0 < int(done.stdout.split()[1]) < COUNT
