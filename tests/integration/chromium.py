"""Drives headless Chromium over its debugging pipe: one browser, one page, synchronous calls."""

import fcntl
import json
import os
import subprocess
import tempfile

FLAGS = ("--headless --no-sandbox --disable-gpu --disable-quic --no-first-run --disable-background-networking "
         "--disable-component-update --disable-sync --disable-dev-shm-usage "
         "--remote-debugging-pipe").split()


def pipe():
    """A pipe whose ends are clear of 3 and 4, where the browser expects its own, and closed in the browser."""
    ends = os.pipe()
    moved = [fcntl.fcntl(end, fcntl.F_DUPFD_CLOEXEC, 10) for end in ends]
    for end in ends:
        os.close(end)
    return moved


class Chromium:
    def __init__(self):
        self.profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        to_browser, self.out = pipe()
        self.into, from_browser = pipe()

        def give_pipes():
            os.dup2(to_browser, 3)
            os.dup2(from_browser, 4)

        self.process = subprocess.Popen(["chromium", *FLAGS, f"--user-data-dir={self.profile.name}", "about:blank"],
                                        close_fds=False, preexec_fn=give_pipes,
                                        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        self.buffer, self.number, self.session, self.events = b"", 0, None, []
        target = next(t for t in self.call("Target.getTargets")["targetInfos"] if t["type"] == "page")
        self.session = self.call("Target.attachToTarget", targetId=target["targetId"], flatten=True)["sessionId"]
        for domain in ("Page", "Network", "Runtime"):
            self.call(f"{domain}.enable")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait(20)
        os.close(self.into)
        os.close(self.out)
        self.profile.cleanup()

    def message(self):
        while b"\0" not in self.buffer:
            data = os.read(self.into, 1 << 20)
            if not data:
                raise RuntimeError("Chromium has gone")
            self.buffer += data
        text, _, self.buffer = self.buffer.partition(b"\0")
        return json.loads(text)

    def call(self, method, **parameters):
        self.number += 1
        request = {"id": self.number, "method": method, "params": parameters}
        if self.session:
            request["sessionId"] = self.session
        os.write(self.out, json.dumps(request).encode() + b"\0")
        while True:
            message = self.message()
            if message.get("id") == self.number:
                if "error" in message:
                    raise RuntimeError(f"{method}: {message['error']['message']}")
                return message["result"]
            self.events.append(message)

    def open(self, url):
        """Loads a page to its end; returns the URLs that it asked for besides its own, those left out that the
        page's policy stopped."""
        self.events.clear()
        result = self.call("Page.navigate", url=url)
        if "errorText" in result:
            raise RuntimeError(f"{url}: {result['errorText']}")
        while not any(event.get("method") == "Page.loadEventFired" for event in self.events):
            self.events.append(self.message())
        return self.asked()[1:]

    def asked(self):
        """The URLs asked for since the page was opened, its own first."""
        blocked = {event["params"]["requestId"] for event in self.events
                   if event.get("method") == "Network.loadingFailed" and event["params"].get("blockedReason") == "csp"}
        asked = [event["params"] for event in self.events if event.get("method") == "Network.requestWillBeSent"]
        return [request["request"]["url"] for request in asked if request["requestId"] not in blocked]

    def evaluate(self, expression):
        return self.call("Runtime.evaluate", expression=expression, returnByValue=True)["result"].get("value")
