"""A headless browser, steered over its debugging port."""

import base64
import json
import os
import signal
import subprocess
import time
import urllib.request

from subprocesses import plain_environment
from web_client import WebSocket

# As root the sandbox cannot be set up, and the shared memory of containers is small.
COMMAND = [
    "chromium-headless-shell",
    "--no-sandbox",
    "--disable-gpu",
    "--disable-dev-shm-usage",
    "--hide-scrollbars",
    "--remote-debugging-port=0",
]


class Browser:
    """One page. Calls `serve` while it waits; nothing takes longer than the `seconds` given for it."""

    def __init__(self, serve, folder, width=900, height=640):
        self.serve = serve
        self.process = subprocess.Popen(
            [*COMMAND, f"--user-data-dir={folder}", f"--window-size={width},{height}", "about:blank"],
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
            start_new_session=True,
            env=plain_environment(),
        )
        try:
            self.page = self.connect(folder / "DevToolsActivePort")
        except BaseException:
            self.close()
            raise
        self.calls = 0

    def connect(self, port_file):
        assert self.wait(lambda: port_file.exists() and "\n" in port_file.read_text(), 30), "the browser does not start"
        port = int(port_file.read_text().split()[0])
        with urllib.request.urlopen(f"http://127.0.0.1:{port}/json/list", timeout=10) as answer:
            pages = [target for target in json.load(answer) if target["type"] == "page"]
        page = WebSocket(self.serve, port, "/devtools/page/" + pages[0]["id"])
        assert page.open
        return page

    def wait(self, condition, seconds=40):
        """Whether the condition comes true in time."""
        end = time.monotonic() + seconds
        while not condition():
            if time.monotonic() > end:
                return False
            self.serve()
            time.sleep(0.001)
        return True

    def call(self, method, seconds=40, **parameters):
        self.calls += 1
        self.page.send(id=self.calls, method=method, params=parameters)
        answer = self.page.receive(lambda message: message.get("id") == self.calls, seconds)
        assert answer and "result" in answer, f"{method}: {answer}"
        return answer["result"]

    def evaluate(self, expression):
        result = self.call("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True)
        assert "exceptionDetails" not in result, result
        return result["result"].get("value")

    def open(self, url):
        self.call("Page.navigate", url=url)

    def drag(self, *places, button="left"):
        """Presses at the first place (x, y), in pixels of the page, and releases at the last."""
        mouse = lambda kind, at, held: self.call(
            "Input.dispatchMouseEvent", type=kind, x=at[0], y=at[1], button=button, buttons=held, clickCount=1
        )
        mouse("mousePressed", places[0], 1)
        for place in places[1:]:
            mouse("mouseMoved", place, 1)
        mouse("mouseReleased", places[-1], 0)

    def scroll(self, place, amount):
        """Turns the wheel, away from the person for a negative amount."""
        self.call("Input.dispatchMouseEvent", type="mouseWheel", x=place[0], y=place[1], deltaX=0, deltaY=amount)

    def press(self, key):
        for kind in ("keyDown", "keyUp"):
            self.call("Input.dispatchKeyEvent", type=kind, key=key, text=key if kind == "keyDown" else "")

    def click(self, selector):
        """Presses the middle of an element, as a person would."""
        box = self.evaluate(
            f"(() => {{ const e = document.querySelector({selector!r}); e.scrollIntoViewIfNeeded();"
            " const b = e.getBoundingClientRect(); return [b.left + b.width / 2, b.top + b.height / 2]; })()"
        )
        self.drag(box)

    def screenshot(self, path):
        path.write_bytes(base64.b64decode(self.call("Page.captureScreenshot")["data"]))

    def close(self):
        # The command is a script around the browser: both end with their group.
        os.killpg(self.process.pid, signal.SIGKILL)
        self.process.wait(10)
