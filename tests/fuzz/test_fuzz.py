"""A bounded share of random programs; `tools/fuzz --minutes N` runs more."""

from subprocesses import ROOT, run_python

SECONDS = 30


def fuzz(*arguments):
    return run_python("-m", "fuzz.runner", *arguments, extra_path=str(ROOT / "tests"))


def test_random_programs_end_by_themselves():
    done = fuzz("--minutes", str(SECONDS / 60), "--programs", "2000", "--batch", "10")
    assert done.returncode == 0, done.stdout[-8000:] + done.stderr[-2000:]
    assert int(done.stdout.splitlines()[-1].split()[0]) > 20, done.stdout


def test_wrong_calls_of_everything_end_in_errors_that_name_the_fault(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    done = run_python("-m", "fuzz.wrong_calls", extra_path=str(ROOT / "tests"))
    lines = done.stdout.splitlines()
    assert done.returncode == 0 and lines, done.stdout[-4000:] + done.stderr[-2000:]
    assert [line for line in lines if line.startswith(("UNCLEAR", "CRASH"))] == []
    assert int(lines[-1].split()[1]) > 4800


def test_a_program_that_ends_its_process_is_found_and_shrunk(tmp_path):
    code = """
from fuzz.programs import Program
from fuzz.runner import load, run, shrink
load()
lines = ["v[0] = _hyx.new_Vec3(1.0, 2.0, 3.0)"] * 20
lines[7] = "import os; v[1] = os"
lines[13] = "v[1].abort()"
program = Program(tuple(lines))
outcome = run(program)
print(run(Program(tuple(lines[:7]))).kind, outcome.kind)
print(shrink(program, outcome).lines)
"""
    done = run_python("-c", code, extra_path=str(ROOT / "tests"))
    assert done.stdout.splitlines() == ["exit 0 SIGABRT", "('import os; v[1] = os', 'v[1].abort()')"], done.stderr
