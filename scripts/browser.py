"""A browser that scripts drive: Chromium without a window, by its debugging protocol through two pipes."""

import base64
import json
import os
import subprocess
import tempfile

KEYS = {"Tab": 9, "Escape": 27, "End": 35, "Home": 36, "ArrowLeft": 37, "ArrowRight": 39}


class Browser:
    """One page in it. Leaves nothing behind `with`."""

    def __enter__(self):
        self.folder = tempfile.TemporaryDirectory()
        from_us, self.to = os.pipe()
        self.back, to_us = os.pipe()
        # Containers have no sandbox for a browser, and it sees nothing but files of ours. It reads from 3 and writes to 4.
        self.process = subprocess.Popen(
            ["bash", "-c", f'exec 3<&{from_us} 4>&{to_us}; exec "$@"', "bash", "chromium", "--headless", "--no-sandbox",
             "--disable-gpu", "--remote-debugging-pipe", f"--user-data-dir={self.folder.name}"],
            pass_fds=(from_us, to_us), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(from_us)
        os.close(to_us)
        self.count, self.pending, self.events, self.session = 0, b"", [], None
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Network", "Accessibility"):
            self.call(f"{domain}.enable")
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait()
        os.close(self.to)
        os.close(self.back)
        self.folder.cleanup()

    def _receive(self):
        while b"\0" not in self.pending:
            block = os.read(self.back, 1 << 16)
            if not block:
                raise RuntimeError("the browser is gone")
            self.pending += block
        message, self.pending = self.pending.split(b"\0", 1)
        return json.loads(message)

    def call(self, method, **parameters):
        self.count += 1
        message = {"id": self.count, "method": method, "params": parameters}
        if self.session:
            message["sessionId"] = self.session
        os.write(self.to, json.dumps(message).encode() + b"\0")
        while True:
            answer = self._receive()
            if answer.get("id") != self.count:
                self.events.append(answer)
            elif "error" in answer:
                raise RuntimeError(f"{method}: {answer['error']['message']}")
            else:
                return answer["result"]

    def open(self, path, width=1200, height=900, dark=False, scripts=True):
        """@return addresses that the page asked for beside its own"""
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=False)
        scheme = "dark" if dark else "light"
        self.call("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": scheme}])
        self.call("Emulation.setScriptExecutionDisabled", value=not scripts)
        self.events.clear()
        self.call("Page.navigate", url=f"file://{path}")
        while not any(event.get("method") == "Page.loadEventFired" for event in self.events):
            self.events.append(self._receive())
        asked = [event["params"]["request"]["url"] for event in self.events
                 if event.get("method") == "Network.requestWillBeSent"]
        return [address for address in asked if address != f"file://{path}"]

    def run(self, script):
        """The value of an expression."""
        answer = self.call("Runtime.evaluate", expression=script, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in answer:
            raise RuntimeError(str(answer["exceptionDetails"]))
        return answer["result"].get("value")

    def press(self, key):
        for kind in ("keyDown", "keyUp"):
            self.call("Input.dispatchKeyEvent", type=kind, key=key, code=key, windowsVirtualKeyCode=KEYS[key])

    def point(self, x, y):
        self.call("Input.dispatchMouseEvent", type="mouseMoved", x=x, y=y)

    def tree(self):
        """What programs that read aloud are told: (role, name, description) of each node."""
        def value(node, field):
            return node.get(field, {}).get("value") or ""
        nodes = self.call("Accessibility.getFullAXTree")["nodes"]
        return [(value(node, "role"), value(node, "name"), value(node, "description")) for node in nodes
                if not node["ignored"]]

    def shoot(self, path):
        picture = self.call("Page.captureScreenshot", format="png", captureBeyondViewport=True)["data"]
        with open(path, "wb") as file:
            file.write(base64.b64decode(picture))
