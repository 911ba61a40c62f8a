"""Makes a built wheel self-contained: python -m wheel.repair BUILT OUTPUT_FOLDER."""

import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from .archive import pack, unpack
from .completion import complete
from .late_functions import DRIVERS, NAME, UNUSED, make_library

ROOT = Path(__file__).resolve().parents[2]
LATE = (*DRIVERS, *UNUSED)


def output(*command: object) -> list[str]:
    return subprocess.run(list(map(str, command)), capture_output=True, text=True, check=True).stdout.splitlines()


def needed(library: Path) -> list[str]:
    return output("patchelf", "--print-needed", library)


def symbols(library: Path, kind: str) -> dict[str, str]:
    """The functions that a library has or lacks, with their versions."""
    names = [line.split()[-1].replace("@@", "@").partition("@") for line in output("nm", "-D", kind, library)]
    return {name: version for name, _, version in names}


def shared_objects(folder: Path) -> list[Path]:
    return [path for path in folder.rglob("*.so*") if path.read_bytes()[:4] == b"\x7fELF"]


def system_library(name: str) -> Path:
    line = next(line for line in output("/sbin/ldconfig", "-p") if line.strip().startswith(f"{name} (libc6,x86-64"))
    return Path(line.split("=>")[1].strip())


def take_late(folder: Path, work: Path) -> None:
    """Lets the libraries take the functions of drivers and displays from the library of late functions."""
    users = {path: [name for name in LATE if name in needed(path)] for path in shared_objects(folder)}
    users = {path: names for path, names in users.items() if names}
    offered = set().union(*(symbols(system_library(name), "--defined-only") for name in LATE))
    # The scene graph asks for functions of newer GL by name, wherever its own libraries can see them.
    wanted = dict.fromkeys((name for name in symbols(system_library("libGL.so.1"), "--defined-only")), "")
    for path in users:
        wanted |= {name: version for name, version in symbols(path, "--undefined-only").items() if name in offered}
    (libraries,) = folder.glob("*.libs")
    shutil.copy(make_library(wanted, work), libraries / NAME)
    for path, names in users.items():
        # Each is renamed, none removed: the loader looks for the library that a function's version was asked of.
        swaps = [word for name in names for word in ("--replace-needed", name, NAME)]
        subprocess.run(["patchelf", *swaps, path], check=True)


def repair(built: Path, folder: Path) -> Path:
    with tempfile.TemporaryDirectory() as name:
        work = Path(name)
        unpack(built, work / "whole")
        complete(work / "whole", ROOT / "THIRD_PARTY.md")
        for path in shared_objects(work / "whole"):
            subprocess.run(["strip", "--strip-unneeded", path], check=True)
        pack(work / "whole", work / built.name)
        command = [sys.executable, "-m", "auditwheel", "repair", "--strip"]
        command += [word for library in UNUSED for word in ("--exclude", library)]
        command += ["-w", work / "repaired", work / built.name]
        subprocess.run(command, check=True)
        (repaired,) = (work / "repaired").glob("*.whl")
        unpack(repaired, work / "last")
        take_late(work / "last", work)
        folder.mkdir(parents=True, exist_ok=True)
        pack(work / "last", folder / repaired.name)
        return folder / repaired.name


def main() -> None:
    wheel = repair(Path(sys.argv[1]), Path(sys.argv[2]))
    print(f"{wheel} ({wheel.stat().st_size / 1e6:.1f} MB)")


if __name__ == "__main__":
    main()
