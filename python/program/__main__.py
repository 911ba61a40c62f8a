"""`python -m hyxOSG FILE...`: opens scenes, robots, models, journals and states, and follows their changes."""

from __future__ import annotations

import ast
import os
import runpy
import signal
import sys
import time
from pathlib import Path

import hyxIO
import hyxOSG

from ._doctor import doctor
from ._journal_page import write_page

LOOK_AT_FILES = 0.5  # seconds between looks at the files for changes


class Watcher(hyxOSG.ExampleApplicationListener):
    """Builds the scene anew when one of the files has changed, also of those that came by dropping them."""

    def __init__(self, files: list[str]) -> None:
        super().__init__()
        self.files = files
        self.seen = self.look(files)
        self.next = time.monotonic() + LOOK_AT_FILES

    @staticmethod
    def look(files: list[str]) -> dict[str, int]:
        """What stands for the files' contents."""
        return {file: os.stat(file).st_mtime_ns if os.path.exists(file) else 0 for file in files}

    def preFrame(self, app: hyxOSG.ExampleApplication | None) -> None:
        if app is None or time.monotonic() < self.next:
            return
        self.next = time.monotonic() + LOOK_AT_FILES
        scenes = [app.getCallbackIdx(index).fileName for index in range(app.getNumScenes())]
        found = self.look([*self.files, *filter(None, scenes)])
        if not all(found.values()):
            return  # a file that is being replaced
        changed = any(self.seen.get(file, time) != time for file, time in found.items())
        self.seen = found
        if changed:
            app.followKey(ord("r"))


def is_program(file: str) -> bool:
    """Whether a script does its work itself, rather than in a function buildScene."""
    if Path(file).suffix != ".py" or not Path(file).is_file():
        return False
    try:
        tree = ast.parse(Path(file).read_bytes())
    except SyntaxError:
        return False  # the scene's error is shown on the picture
    return not any(isinstance(node, ast.FunctionDef) and node.name == "buildScene" for node in tree.body)


def wrong(text: str) -> int:
    print(f"hyxOSG: {text}\n(--help lists what there is)", file=sys.stderr)
    return 2


def main(arguments: list[str] | None = None) -> int:
    words = sys.argv[1:] if arguments is None else arguments
    if "--doctor" in words:
        signal.signal(signal.SIGPIPE, signal.SIG_DFL)  # a reader such as `head` may have enough
        return doctor()
    if words and is_program(words[0]):
        sys.argv = list(words)
        runpy.run_path(words[0], run_name="__main__")
        return 0
    parser = hyxIO.ArgumentParser()
    parser.addFlag("--doctor", "Say what works on this machine, and what to install for the rest")
    parser.addOption("--page", "Write the journal that is opened as one HTML file of pictures, and end")
    parser.addOption("--page-rate", "Pictures a recorded second in that file", "20")
    parser.addFlag("--no-watch", "Do not look for changes of the files")
    try:
        parser.parse(words)
        if parser.isHelpRequested():
            return 0
        files = [str(file) for file in parser.getPositional()]
        if not files and not parser.has("--script") and not parser.has("--journal-play"):
            return wrong("name a file to open")
        for file in files:
            if not os.path.isfile(file):
                return wrong(f"'{file}' is a folder" if os.path.isdir(file) else f"there is no file '{file}'")
        return show(parser, files)
    except (RuntimeError, ValueError, OSError) as error:
        return wrong(str(error))


def page(app: hyxOSG.ExampleApplication, parser: hyxIO.ArgumentParser) -> int:
    app.initScene()
    if not app.getJournal().isPlaying():
        return wrong("--page needs a journal to open")
    file = parser.getString("--page")
    print(f"{write_page(app, file, parser.getReal('--page-rate'))} pictures in {file}")
    return 0


def show(parser: hyxIO.ArgumentParser, files: list[str]) -> int:
    with hyxOSG.ExampleApplication() as app:
        app.setWindowTitle(f"{' '.join(Path(file).name for file in files)} - F1 shows the keys")
        app.init(parser)
        if not parser.has("--no-graphics"):
            app.initGraphics()
            app.setEnableStatus(parser.has("--status") or not app.hasOffscreenWindow())
        if not app.getNumScenes() and not app.getJournalPlaybackPath():
            return wrong(f"'{files[0]}' is of no kind that can be opened")
        if parser.has("--page"):
            return page(app, parser)
        watcher = Watcher(files)
        if not parser.has("--no-watch"):
            app.addListener(watcher)
        return app.run()


if __name__ == "__main__":
    raise SystemExit(main())
