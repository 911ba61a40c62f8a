"""Whatever takes the name of a file says so when there is none: an OSError, or a warning beside None or False."""

import ast
import os
import sys
import traceback
import warnings

import hyx
import hyxCollide
import hyxOSG
import hyxtavlang
import pytest
from subprocesses import BUILD, ROOT

sys.path[:0] = [str(ROOT), str(ROOT / "python")]

from generator.interface import PACKAGES

# What only remembers a name, and says what is wrong when it reads or writes.
REMEMBERED = {
    "ExampleApplication.setJournalConfigurationPath",
    "ExampleApplication.setJournalRecordPath",
    "ImageCapture.setDirectoryPath",
    "ImageCapture.setPrefix",
    "OptParams.addSearchPath",
    "OptParams.setNamePrefix",
    "SceneDescription.__init__",
    "ScriptManager.instance",
    "VideoFFMPEGPipeCapture.setFilename",
}
NAMES = ("file", "path", "prefix", "folder", "directory")


def file_operations():
    """Every callable with an argument that is called like a file: its class, its name, its arguments."""
    for package in PACKAGES:
        body = ast.parse((BUILD / "python" / package / "__init__.pyi").read_text()).body
        owners = [(node.name, node.body) for node in body if isinstance(node, ast.ClassDef)] + [("", body)]
        for owner, statements in owners:
            for node in statements:
                if isinstance(node, ast.FunctionDef):
                    arguments = [a for a in node.args.posonlyargs + node.args.args if a.arg != "self"]
                    texts = [a for a in arguments if a.annotation and ast.unparse(a.annotation) == "str"]
                    files = [a for a in texts if any(word in a.arg.lower() for word in NAMES)]
                    if files:
                        required = arguments[: len(arguments) - len(node.args.defaults)]
                        yield package, owner, node.name, [a for a in arguments if a in required or a in files]


OPERATIONS = list(file_operations())


@pytest.fixture(scope="module")
def made():
    """An object for every class that the operations ask for, by the stubs' name of the class."""
    os.environ["HYX_DISPLAY"] = "offscreen"
    app = hyxOSG.ExampleApplication()
    app.initViewer(64, 48)
    simulation = app.getSimulation()
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(1, 1, 1)))
    simulation.add(body)
    target = hyxOSG.RenderToImage(16, 16)
    things = {
        "hyxOSG.ExampleApplication": app,
        "hyxOSG.SceneDecorator": app.getSceneDecorator(),
        "hyxOSG.RenderToImage": target,
        "hyxSDK.Simulation": simulation,
        "hyx.RigidBody": body,
        "hyxCollide.Geometry": body.getGeometries()[0],
        "osg.Group": app.getSceneRoot(),
        "osg.Node": hyxOSG.createVisual(body, app.getSceneRoot()),
        "hyx.Journal": hyx.Journal(),
        "hyxtavlang.OptParams": hyxtavlang.OptParams(),
    }
    yield things
    app.close()


def value(argument, made, folder):
    kind = ast.unparse(argument.annotation).split(" | ")[0]
    if kind == "str":
        named = any(word in argument.arg.lower() for word in NAMES)
        return str(folder / "missing" / ("name.py" if argument.arg == "path" else "name.png")) if named else ".png"
    simple = {"float": 1.0, "int": ord("1"), "bool": False}
    if kind in simple:
        return simple[kind]
    if kind in made:
        return made[kind]
    package, _, name = kind.partition(".")
    return getattr(sys.modules[package], name)()


@pytest.mark.parametrize(
    "package, owner, name, arguments",
    [
        pytest.param(*operation, id=f"{operation[1] or operation[0]}.{operation[2]}({len(operation[3])})")
        for operation in OPERATIONS
        if f"{operation[1]}.{operation[2]}" not in REMEMBERED
    ],
)
def test_a_missing_file_is_told(package, owner, name, arguments, made, tmp_path):
    given = {a.arg: value(a, made, tmp_path) for a in arguments}
    if name == "__init__":
        call = getattr(sys.modules[package], owner)
    elif owner:
        kind = getattr(sys.modules[package], owner)
        call = getattr(made.get(f"{package}.{owner}") or kind(), name)
    else:
        call = getattr(sys.modules[package], name)
    with warnings.catch_warnings(record=True) as told:
        warnings.simplefilter("always")
        try:
            result = call(**given)
        except OSError:
            return
        except RuntimeError as error:
            assert told or "missing" in str(error)
            return
    assert told or "missing" in str(getattr(result, "getErrors", str)()), f"gave {result!r} without a word"


def test_what_only_remembers_a_name_is_still_there():
    known = {f"{owner}.{name}" for _, owner, name, _ in OPERATIONS}
    assert REMEMBERED <= known and len(OPERATIONS) > 30


def test_a_journal_that_cannot_be_written_is_told(made, tmp_path):
    app = made["hyxOSG.ExampleApplication"]
    app.setJournalRecordPath(str(tmp_path / "missing" / "run.h5"))
    with pytest.raises(OSError):
        app.setEnableJournalRecord(True)


def test_wrong_names_are_answered_with_the_right_ones():
    body = hyx.RigidBody()
    with pytest.raises(AttributeError) as failure:
        body.positon = 1
    told = "".join(traceback.format_exception_only(failure.value))
    assert failure.value.name == "positon" and failure.value.obj is body and "RigidBody" in told
    with pytest.raises(TypeError, match="'centre'\n  It takes center, color, radius"):
        hyxOSG.createSphere(centre=(0, 0, 0), color=(1, 1, 1, 1), radius=1)
