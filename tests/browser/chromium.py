"""A headless Chromium, steered through pipes (Chrome DevTools Protocol)."""

import json
import os
import shutil
import subprocess
import tempfile


def executable():
    """The path of an installed Chromium or Chrome, or None."""
    names = ("chromium", "chromium-browser", "google-chrome")
    return next(filter(None, map(shutil.which, names)), None)


class CommandError(RuntimeError):
    """The browser refused a command."""


class EvaluationError(RuntimeError):
    """An expression threw, or the document that it was for went away meanwhile."""


class Chromium:
    """One page. Console errors and broken rules of the page are kept in `complaints`."""

    def __init__(self, width=1280, height=900):
        self.complaints = []
        self._frames = []
        self._last_id = 0
        self._received = b""
        self._profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        # The browser reads commands from descriptor 3 and answers on 4.
        command_in, self._commands = os.pipe()
        self._answers, answer_out = os.pipe()
        shell = f"exec 3<&{command_in} 4>&{answer_out}; exec \"$@\""
        options = ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                   "--remote-debugging-pipe", f"--window-size={width},{height}",
                   f"--user-data-dir={self._profile.name}"]
        self._process = subprocess.Popen(
            ["bash", "-c", shell, "-", executable(), *options],
            pass_fds=(command_in, answer_out), stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(command_in)
        os.close(answer_out)
        target = self._call("Target.createTarget", url="about:blank")["targetId"]
        self._session = self._call("Target.attachToTarget", targetId=target,
                                   flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log"):
            self.call(f"{domain}.enable")
        # A frame without rights is a target of its own.
        self.call("Target.setAutoAttach", autoAttach=True, waitForDebuggerOnStart=False,
                  flatten=True)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        try:
            self._call("Browser.close")
            self._process.wait(10)
        except (EOFError, OSError, subprocess.TimeoutExpired):
            self._process.kill()
            self._process.wait()
        os.close(self._commands)
        os.close(self._answers)
        self._profile.cleanup()

    def open(self, url):
        """Returns when the page has loaded."""
        self._loaded = False
        self.call("Page.navigate", url=url)
        while not self._loaded:
            self._take(self._receive())

    def evaluate(self, expression, frame=None):
        """The value of a JavaScript expression, awaited; in a frame if one is given."""
        try:
            answer = self._call("Runtime.evaluate", frame or self._session, expression=expression,
                                returnByValue=True, awaitPromise=True, userGesture=True)
        except CommandError as error:
            raise EvaluationError(str(error)) from error
        if "exceptionDetails" in answer:
            raise EvaluationError(json.dumps(answer["exceptionDetails"]))
        return answer["result"].get("value")

    def frame(self):
        """The frame without rights that came last, or None."""
        return self._frames[-1] if self._frames else None

    def choose(self, selector, files):
        """Gives files, by their paths, to an input."""
        field = self.call("Runtime.evaluate", expression=f"document.querySelector('{selector}')")
        self.call("DOM.setFileInputFiles", files=list(map(str, files)),
                  objectId=field["result"]["objectId"])

    def drag(self, kind, x, y, files):
        """A step of dragging files: dragEnter, dragOver or drop."""
        data = {"items": [], "files": list(map(str, files)), "dragOperationsMask": 1}
        self.call("Input.dispatchDragEvent", type=kind, x=x, y=y, data=data)

    def press(self, key, code):
        """A key that types nothing, such as "Enter" with its code 13."""
        what = {"key": key, "code": key, "windowsVirtualKeyCode": code}
        if key == "Enter":
            what["text"] = "\r"
        self.call("Input.dispatchKeyEvent", type="keyDown", **what)
        self.call("Input.dispatchKeyEvent", type="keyUp", key=key, code=key)

    def type(self, text):
        self.call("Input.insertText", text=text)

    def call(self, method, **parameters):
        return self._call(method, self._session, **parameters)

    def _call(self, method, session=None, **parameters):
        self._last_id += 1
        command = {"id": self._last_id, "method": method, "params": parameters}
        if session:
            command["sessionId"] = session
        os.write(self._commands, json.dumps(command).encode() + b"\0")
        while True:
            message = self._receive()
            if message.get("id") != self._last_id:
                self._take(message)
            elif "error" in message:
                raise CommandError(f"{method}: {message['error']['message']}")
            else:
                return message["result"]

    def _receive(self):
        while b"\0" not in self._received:
            more = os.read(self._answers, 1 << 16)
            if not more:
                raise EOFError("the browser has ended")
            self._received += more
        message, _, self._received = self._received.partition(b"\0")
        return json.loads(message)

    def _take(self, event):
        method, about = event.get("method"), event.get("params", {})
        if method == "Page.loadEventFired" and event["sessionId"] == self._session:
            self._loaded = True
        elif method == "Target.attachedToTarget" and about["targetInfo"]["type"] == "iframe":
            self._frames.append(about["sessionId"])
        elif method == "Target.detachedFromTarget" and about["sessionId"] in self._frames:
            self._frames.remove(about["sessionId"])
        elif method == "Runtime.exceptionThrown":
            self.complaints.append(json.dumps(about["exceptionDetails"]))
        elif method == "Log.entryAdded" and about["entry"]["level"] in ("error", "warning"):
            self.complaints.append(about["entry"]["text"])
        elif method == "Runtime.consoleAPICalled" and about["type"] in ("error", "assert"):
            self.complaints.append(json.dumps(about["args"]))
