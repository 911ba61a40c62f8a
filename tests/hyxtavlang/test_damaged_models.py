"""Damaged model files are read, or refused in words that name the file; nothing crashes."""

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
    pytest.param(SHARE / "examples/planar_gripper/planar_gripper.sdf", marks=needs_models),
]
COUNT = 80

PROGRAM = """
import random, re, sys
import hyxOSG

source, target, count = sys.argv[1], sys.argv[2], int(sys.argv[3])
text = open(source).read()
# Meshes would only be read again and again.
text = re.sub(r"<geometry>\\s*<mesh[^>]*/>\\s*</geometry>", "<geometry><sphere radius='0.1'/></geometry>", text)
values = ["", "0", "-1", "1e308", "1e-308", "nan", "inf", "99999999999", "a", "0 0 0", "1 2 3 4 5 6 7", "&#0;", "-0"]


def damaged(random):
    kind = random.randrange(6)
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
random = random.Random(1)
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
    target = tmp_path / f"damaged{source.suffix}"
    done = run_python("-c", PROGRAM, str(source), str(target), str(COUNT))
    assert done.returncode == 0 and done.stdout.startswith("read "), done.stderr[-2000:]
    assert 0 < int(done.stdout.split()[1]) < COUNT
