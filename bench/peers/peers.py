"""Frames a second as NumPy arrays, beside what else a user could install: every contender in turn, in rounds.

    tools/bench peers [--rounds 3] [--seconds 2] [--rows shapes,mesh] [--contenders here,panda] [--processor]
        [--output output/peers]

The first run installs the peers into build/peers. Prints the median of the rounds, and saves the last picture of each
contender, and all of a row beside each other, so that one can see that the work is equal. "first" is the time from the
start of a process to its first picture in a file, in seconds. With --processor every figure is of processor time, of
all threads together, which other programs on a busy machine disturb less.
"""

import argparse
import json
import os
import resource
import statistics
import subprocess
import sys
import time
from pathlib import Path

from PIL import Image

HERE = Path(__file__).resolve().parent
BUILD = HERE.parent.parent / "build"
ROWS = ("shapes", "shadows", "boxes", "mesh", "points", "first")
CONTENDERS = {  # the script, and its last argument
    "here": ["here.py"],
    "unsmoothed": ["here.py", "unsmoothed"],
    "panda": ["panda.py"],
    "panda-tiny": ["panda.py", "tiny"],
    "mujoco": ["mujoco_turn.py"],
    "pybullet": ["pybullet_turn.py"],
    "pyvista": ["pyvista_turn.py"],
}


def peers_python():
    """The interpreter of the environment with the peers, which is made when it is not there."""
    python = BUILD / "peers" / "bin" / "python"
    wanted = HERE / "requirements.txt"
    installed = BUILD / "peers" / "installed.txt"
    if not installed.exists() or installed.read_text() != wanted.read_text():
        subprocess.run([sys.executable, "-m", "venv", BUILD / "peers"], check=True)
        uv = Path(sys.executable).with_name("uv")  # in seconds what takes pip minutes
        installer = [uv, "pip", "install", "--python", python] if uv.exists() else [python, "-m", "pip", "install"]
        subprocess.run([*installer, "--quiet", "-r", wanted], check=True)
        installed.write_text(wanted.read_text())
    return str(python)


def spent(processor):
    """Seconds that passed, or that the ended processes of this one have worked."""
    if not processor:
        return time.perf_counter()
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


def turn(contender, row, seconds, picture, processor):
    """Frames a second, or seconds for "first"; None for what the contender does not do."""
    script, *last = CONTENDERS[contender]
    own = script == "here.py"
    python = sys.executable if own else peers_python()
    # Bytecode is kept as in any installed package, even where the shell forbids it: nobody's first picture compiles.
    environment = os.environ | {"HYX_DISPLAY": "offscreen", "PYTHONPYCACHEPREFIX": str(BUILD / "bytecode")}
    environment.pop("PYTHONDONTWRITEBYTECODE", None)
    if not own:
        environment.pop("PYTHONPATH", None)
    once = row == "first"
    start = spent(processor)
    done = subprocess.run(
        [python, HERE / script, row, str(0 if once else seconds), picture, *last],
        capture_output=True,
        text=True,
        env=environment,
    )
    elapsed = spent(processor) - start
    answer = done.stdout.strip().splitlines()[-1:] or ["null"]
    if done.returncode != 0:
        print(f"{contender} {row}: {done.stderr.strip().splitlines()[-1:]}", file=sys.stderr)
        return None
    figures = json.loads(answer[0])
    if figures is None:
        return None
    if once:
        return elapsed
    return 1 / figures["processor"] if processor else figures["rate"]


def side_by_side(pictures, path):
    images = [Image.open(picture) for picture in pictures if picture.exists()]
    if images:
        sheet = Image.new("RGB", (sum(image.width for image in images), max(image.height for image in images)))
        for index, image in enumerate(images):
            sheet.paste(image, (sum(other.width for other in images[:index]), 0))
        sheet.save(path)


def compare(row, contenders, options):
    output = options.output
    figures = {name: [] for name in contenders}
    for _ in range(options.rounds):
        for name in contenders:
            figure = turn(name, row, options.seconds, str(output / f"{row}-{name}.png"), options.processor)
            if figure is not None:
                figures[name].append(figure)
    side_by_side([output / f"{row}-{name}.png" for name in contenders], output / f"{row}.png")
    return {name: statistics.median(values) if values else None for name, values in figures.items()}


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("--seconds", type=float, default=2)
    parser.add_argument("--rows", default=",".join(ROWS))
    parser.add_argument("--contenders", default=",".join(CONTENDERS))
    parser.add_argument("--processor", action="store_true", help="figures of processor time, not of the clock")
    parser.add_argument("--output", type=Path, default=Path("output/peers"))
    options = parser.parse_args()
    options.output.mkdir(parents=True, exist_ok=True)
    contenders = options.contenders.split(",")
    print(f"{'':10}" + "".join(f"{name:>12}" for name in contenders), flush=True)
    for row in options.rows.split(","):
        medians = compare(row, contenders, options)
        cells = ("-" if medians[name] is None else f"{medians[name]:.3g}" for name in contenders)
        print(f"{row:10}" + "".join(f"{cell:>12}" for cell in cells), flush=True)


if __name__ == "__main__":
    main()
