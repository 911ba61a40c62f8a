"""The tools that make self-contained wheels."""

import subprocess
import sys
import zipfile

from subprocesses import ROOT

sys.path.insert(0, str(ROOT / "tools"))
from wheel import archive, late_functions


def test_late_functions_reach_the_real_ones_and_answer_nothing_for_absent_ones(tmp_path):
    names = {"XDisplayName": "", "XNoSuchThing": "", "curl_no_such_thing": "CURL_OPENSSL_4"}
    library = late_functions.make_library(names, tmp_path)
    program = f"""import ctypes
late = ctypes.CDLL({str(library)!r})
late.XDisplayName.restype = ctypes.c_char_p
for _ in range(2):
    print(late.XDisplayName(b":7"), late.XNoSuchThing(1), late.curl_no_such_thing())"""
    done = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True)
    assert done.stdout == "b':7' 0 0\n" * 2
    assert done.stderr.count("XNoSuchThing: install libx11-6") == 1
    table = subprocess.run(["nm", "-D", "--defined-only", library], capture_output=True, text=True).stdout
    assert "curl_no_such_thing@@CURL_OPENSSL_4" in table


def test_a_packed_wheel_installs(tmp_path):
    folder = tmp_path / "whole"
    (folder / "thing-1.dist-info").mkdir(parents=True)
    (folder / "thing-1.dist-info" / "METADATA").write_text("Metadata-Version: 2.1\nName: thing\nVersion: 1\n")
    (folder / "thing-1.dist-info" / "WHEEL").write_text(
        "Wheel-Version: 1.0\nRoot-Is-Purelib: true\nTag: py3-none-any\n"
    )
    (folder / "thing.py").write_text("x = 1\n")
    (folder / "thing.py").chmod(0o755)
    wheel = tmp_path / "thing-1-py3-none-any.whl"
    archive.pack(folder, wheel)
    command = [sys.executable, "-m", "pip", "install", "-q", "--no-index", "--target", tmp_path / "there", wheel]
    subprocess.run(command, check=True)
    assert (tmp_path / "there" / "thing.py").read_text() == "x = 1\n"
    archive.unpack(wheel, tmp_path / "again")
    assert (tmp_path / "again" / "thing.py").stat().st_mode & 0o111
    assert len(zipfile.ZipFile(wheel).read("thing-1.dist-info/RECORD").splitlines()) == 4
