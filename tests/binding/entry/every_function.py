"""Calls functions of _hyxOSG with generated arguments, in a process of its own: python every_function.py HOW AREA

HOW is `fitting` (arguments of the right types, null where null is allowed) or `wrong` (each argument in turn of a wrong
type, too few, too many). Prints one line per surprise; a crash shows as the process's death.
"""

import csv
import faulthandler
import importlib.util
import os
import pathlib
import re
import sys
import tempfile

faulthandler.enable()

import _hyx_proxy  # noqa: E402
import _hyxOSG  # noqa: E402

FAMILY = ["_hyx", "_hyxCollide", "_hyxSDK", "_hyxModel", "_osg", "_hyxOSG"]
DESCRIBED = {
    name: _hyx_proxy.describe(importlib.import_module(name)) for name in FAMILY if importlib.util.find_spec(name)
}
# Called on their own elsewhere: they block until a key, a viewer or a peer answers, or end what later calls need.
SEPARATE = {"ExampleApplication_run", "ExampleApplication_initRpc", "ExampleApplication_initRecordJournal"}
NUMBERS = {
    "int": 1,
    "unsigned int": 1,
    "long": 1,
    "unsigned long": 1,
    "size_t": 1,
    "std::size_t": 1,
    "hyx::UInt": 1,
    "hyx::Index": 1,
    "ptrdiff_t": 1,
    "float": 0.5,
    "double": 0.5,
    "hyx::Real": 0.5,
    "bool": True,
}
# Alias in the rows: the class that the constructors make.
LEGEND = "std::vector< hyxOSG::LidarOutputRendererLegendPoint >"
ALIASES = {
    f"{LEGEND}::value_type": "hyxOSG::LidarOutputRendererLegendPoint",
    "std::vector< hyxOSG::LidarOutputRendererLegendPoint,"
    "std::allocator< hyxOSG::LidarOutputRendererLegendPoint > >": LEGEND,
    "osg::Vec2": "osg::Vec2f",
    "osg::Vec3": "osg::Vec3f",
    "osg::Vec4": "osg::Vec4f",
    "osg::Matrix": "osg::Matrixd",
    "hyx::TimeStamp": "double",
}


class Unavailable(Exception):
    """No argument of this type can be made here."""


class Maker:
    """Makes arguments by their native types; keeps what it made alive."""

    def __init__(self):
        self.kept = []
        self.making = set()
        self.made = {}
        self.asked = {}  # what belongs to the application's present window
        self.constructors = {}
        for module, functions in DESCRIBED.items():
            for function in functions:
                if function["role"] == "constructor":
                    self.constructors[function["forms"][0]["class"]] = (importlib.import_module(module), function)

    def scene(self):
        """Objects that no constructor gives."""
        import hyxOSG
        import hyxSDK

        app = hyxOSG.ExampleApplication()
        app.init(None)
        simulation = hyxSDK.Simulation()
        app.initSimulation(simulation)
        app.initViewer(160, 120)
        app.initScene()
        self.kept += [app, simulation]
        self.made.update(
            {
                "hyxOSG::ExampleApplication": app,
                "hyxSDK::Simulation": simulation,
                "hyxSDK::Assembly": hyxSDK.Assembly(),
            }
        )
        self.asked.update(
            {
                "osg::Camera": app.getCamera,
                "osgViewer::Viewer": app.getViewer,
                "hyxOSG::SceneDecorator": app.getSceneDecorator,
                "hyxOSG::PickHandler": app.getPickHandler,
                "hyxOSG::ImageCapture": app.getImageCapture,
            }
        )

    def argument(self, native):
        plain = re.sub(r"\s*(const)?\s*[*&]$", "", native).strip()
        plain = ALIASES.get(plain, plain)
        if plain in NUMBERS and not native.endswith(("*", "&")):
            return NUMBERS[plain]
        if plain.endswith(("::size_type", "::difference_type")):
            return 1
        if native == "SWIGPY_SLICEOBJECT *":
            return slice(0, 0)
        if plain in ("std::string", "hyx::String", "hyx::Name", "char"):
            return "x"
        if native == "PyObject *" or "(*)" in native or plain == "hyxOSG::BuildScenePtr":
            return None
        try:
            return self.instance(plain)
        except Unavailable:
            if native.endswith("*"):
                return None
            if native.endswith("&") or "::" in plain and plain not in self.enumerations():
                raise
            return 1

    def enumerations(self):
        return {"hyxOSG::TextureMode"} | {
            p["type"]
            for functions in DESCRIBED.values()
            for f in functions
            for form in f["forms"]
            for p in form["parameters"]
            if not p["type"].endswith(("*", "&"))
            and p["type"].split("::")[-1]
            in (
                "Lights",
                "ShadowMethod",
                "LogoLocation",
                "AxisAlignment",
                "BackdropType",
                "AlignmentType",
                "DrawModeMask",
                "RenderFlag",
                "ParticleRenderingMode",
                "ParticleShaderMode",
                "ColorRangePreset",
                "Mode",
                "OutputCodec",
                "BufferComponent",
                "TextureFormat",
                "ComputeNearFarMode",
                "SolverType",
                "ConstraintForceStatistics",
                "MouseButtonMask",
                "MouseState",
                "ActivationMask",
                "NotifySeverity",
            )
        }

    def instance(self, class_name):
        if class_name in self.asked:
            return self.asked[class_name]()
        if class_name in self.made:
            return self.made[class_name]
        if class_name not in self.constructors or class_name in self.making:
            raise Unavailable(class_name)
        module, function = self.constructors[class_name]
        self.making.add(class_name)
        try:
            for form in sorted(function["forms"], key=lambda f: len(f["parameters"])):
                try:
                    handle = getattr(module, function["name"])(*self.arguments(form, constructing=True))
                except Exception:
                    continue
                handle = getattr(handle, "this", handle)
                handle.disown()
                self.made[class_name] = handle
                return handle
        finally:
            self.making.discard(class_name)
        raise Unavailable(class_name)

    def arguments(self, form, constructing=False):
        own = [] if form["static"] or not form["class"] or constructing else [self.instance(form["class"])]
        return own + [self.argument(parameter["type"]) for parameter in form["parameters"]]


def call(function, arguments):
    try:
        getattr(_hyxOSG, function["name"])(*arguments)
    except Exception as error:  # noqa: BLE001 - what comes is judged by the caller
        return error
    return None


def takes_instance(function, form):
    """Constructors of director classes take the Python object first, which their forms do not list."""
    return form["class"].split("::")[-1] in (
        "GuiEventListener",
        "ExampleApplicationListener",
        "LidarOutputRendererColorFunctionCallback",
    )


def takes_nothing(form):
    return (form["static"] or not form["class"]) and all(p["default"] is not None for p in form["parameters"])


def fitting(functions, maker):
    for function in functions:
        for form in function["forms"]:
            try:
                arguments = maker.arguments(form)
            except Unavailable as missing:
                print(f"UNAVAILABLE {function['name']}: {missing}")
                continue
            if function["role"] == "destructor":
                continue
            if function["role"] == "constructor" and takes_instance(function, form):
                arguments.insert(0, None)
            error = call(function, arguments)
            if isinstance(error, SystemError) or (isinstance(error, TypeError) and "invalid null" not in str(error)):
                print(f"SURPRISE {function['name']}{tuple(arguments)}: {type(error).__name__}: {error}")
            # Pointers may be null: every one in turn.
            for i, parameter in enumerate(form["parameters"]):
                if parameter["type"].endswith("*"):
                    nulled = list(arguments)
                    nulled[i + len(arguments) - len(form["parameters"])] = None
                    if isinstance(call(function, nulled), SystemError):
                        print(f"SURPRISE {function['name']}: SystemError for null argument {i + 1}")


def wrong(functions, maker):
    class Foreign:
        pass

    for function in functions:
        name = function["name"]
        if (
            function["role"] in ("swigregister", "swiginit", "static-set", "static-get")
            or "___" in name
            and "Iterator" in name
        ):
            continue
        accepts_any = {f"{p['type']}" for form in function["forms"] for p in form["parameters"]} & {"PyObject *"}
        for arguments in ((), (Foreign(),), (Foreign(),) * 2, (Foreign(),) * 20, (None,) * 3):
            error = call(function, arguments)
            if accepts_any or function["role"] == "constructor" and takes_instance(function, function["forms"][0]):
                continue
            if function["role"] == "destructor" or arguments and arguments[0] is None:
                continue
            if error is None and not arguments and any(takes_nothing(form) for form in function["forms"]):
                continue
            if not isinstance(error, TypeError):
                print(f"SURPRISE {name}{arguments[:3]}: {error!r}")
        for form in function["forms"]:
            try:
                fit = maker.arguments(form)
            except Unavailable:
                continue
            if function["role"] == "constructor" and takes_instance(function, form):
                continue  # any object may be the Python side
            for i in range(len(fit)):
                bad = list(fit)
                bad[i] = Foreign()
                error = call(function, bad)
                if not isinstance(error, (TypeError, OverflowError)):
                    print(f"SURPRISE {name}: argument {i + 1} may be anything: {error!r}")
                elif function[
                    "convention"
                ] != "dispatch" and f"in method '{name}', argument {i + 1} of type '" not in str(error):
                    print(f"SURPRISE {name}: {error}")


def main():
    how, area = sys.argv[1:]
    with open(pathlib.Path(__file__).with_name("functions.tsv")) as file:
        names = {row["name"] for row in csv.DictReader(file, delimiter="\t") if row["area"] == area}
    functions = [f for f in DESCRIBED["_hyxOSG"] if f["name"] in names and f["name"] not in SEPARATE]
    maker = Maker()
    maker.scene()
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        {"fitting": fitting, "wrong": wrong}[how](functions, maker)
        os.chdir("/")
    print("END")
    sys.stdout.flush()
    os._exit(0)


if __name__ == "__main__":
    main()
