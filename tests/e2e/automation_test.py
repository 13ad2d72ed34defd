"""Driven by a tool: the engine's WebDriver server, spoken to as Selenium does."""

import base64
import glob
import io
import json
import os
import shutil
import socket
import subprocess
import tempfile
import unittest
import urllib.error
import urllib.request

from PIL import Image

from harness import PROGRAM, ProgramTest, children_of, main, reply, wait_for, zombie

SERVER = shutil.which("WebKitWebDriver")
ELEMENT = "element-6066-11e4-a52e-4f735466cecf"  # by the standard
BAR = "Another program drives Marlowick here, in a folder that goes with it."
PAGE = """<title>Page</title><body style='margin:0;background:#008000'>
<form action=/sent><input id=field name=q><button id=send>Send</button></form>
<button id=ask onclick='document.title = confirm("Really?") ? "Yes" : "No"'>Ask</button>
<button id=open onclick='window.open("/other")'>Open</button>"""


class WebDriver:
    """A session with the program, started by the server."""

    def __init__(self):
        with socket.socket() as any_port:
            any_port.bind(("127.0.0.1", 0))
            self.address = f"http://127.0.0.1:{any_port.getsockname()[1]}"
        self.user_home = os.path.join(tempfile.mkdtemp(prefix="marlowick-e2e-"), "home")
        self.process = subprocess.Popen([SERVER, "-p", self.address.rpartition(":")[2]],
                                        env={**os.environ, "MARLOWICK_HOME": self.user_home})
        self.session = ""
        wait_for(self.ready, "the server")

    def ready(self):
        try:
            return self.send("GET", "/status")["ready"]
        except urllib.error.URLError:
            return False

    def send(self, method, path, body=None):
        data = json.dumps(body or {}).encode() if method == "POST" else None
        request = urllib.request.Request(self.address + self.session + path, data, method=method)
        try:
            with urllib.request.urlopen(request, timeout=60) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise AssertionError(f"{method} {path}: {error.read().decode()}") from None

    def get(self, path):
        return self.send("GET", path)

    def post(self, path, **body):
        return self.send("POST", path, body)

    def begin(self):
        options = {"binary": PROGRAM, "args": ["--automation"]}
        made = self.post("/session", capabilities={"alwaysMatch": {"browserName": "Marlowick",
                                                                   "webkitgtk:browserOptions": options}})
        self.session = "/session/" + made["sessionId"]
        return made["capabilities"]

    def end(self):
        self.send("DELETE", "")
        self.session = ""

    def find(self, selector):
        return "/element/" + self.post("/element", using="css selector", value=selector)[ELEMENT]

    def click(self, selector):
        self.post(self.find(selector) + "/click")

    def script(self, code):
        return self.post("/execute/sync", script=code, args=[])

    def wait_title(self, title):
        wait_for(lambda: self.get("/title") == title, f'the title "{title}"')

    def picture(self, path="/screenshot"):
        return Image.open(io.BytesIO(base64.b64decode(self.get(path)))).convert("RGB")

    def close(self):
        self.process.terminate()
        self.process.wait(10)


@unittest.skipUnless(SERVER, "webkit2gtk-driver isn't installed")
class Automation(ProgramTest):
    def setUp(self):
        super().setUp()
        self.cookies = []

        def page(handler):
            self.cookies.append(handler.headers.get("Cookie"))
            reply(handler, PAGE, headers={"Set-Cookie": "made=here"})

        self.server.pages.update({"/": page, "/sent": "<title>Sent</title>", "/other": "<title>Other</title>"})
        self.driver = WebDriver()
        self.addCleanup(self.driver.close)

    def folders(self):
        return glob.glob(os.path.join(tempfile.gettempdir(), "marlowick-driven-*"))

    def program(self):
        return next(pid for pid in children_of(self.driver.process.pid)
                    if os.path.realpath(f"/proc/{pid}/exe") == os.path.realpath(PROGRAM))

    def test_a_page_is_driven_and_the_end_asks_nothing(self):
        driver = self.driver
        self.assertEqual(driver.begin()["browserName"], "Marlowick")
        program = self.program()
        self.assertEqual(len(self.folders()), 1)
        driver.post("/url", url=self.server.address + "/")
        self.assertEqual(driver.get("/title"), "Page")
        self.assertEqual(driver.get("/url"), self.server.address + "/")
        self.wait_green()
        self.assertIn(BAR, self.names(program))

        driver.post(driver.find("#field") + "/value", text="typed")
        self.assertEqual(driver.script("return document.getElementById('field').value"), "typed")
        driver.post("/cookie", cookie={"name": "given", "value": "there"})
        self.assertEqual({cookie["name"] for cookie in driver.get("/cookie")}, {"made", "given"})
        driver.click("#ask")
        self.assertEqual(driver.get("/alert/text"), "Really?")
        driver.post("/alert/accept")
        driver.wait_title("Yes")
        driver.click("#ask")
        driver.post("/alert/dismiss")
        driver.wait_title("No")
        driver.click("#send")
        driver.wait_title("Sent")
        self.assertIn("/sent?q=typed", self.server.requests)
        driver.post("/back")
        driver.wait_title("No")
        driver.post("/refresh")
        driver.wait_title("Page")
        self.assertEqual(set(self.cookies[-1].split("; ")), {"made=here", "given=there"})

        driver.script("onbeforeunload = event => event.preventDefault()")
        driver.end()
        wait_for(lambda: zombie(program), "the program's end")
        wait_for(lambda: not self.folders(), "the end of the temporary folder")
        self.assertFalse(os.path.exists(driver.user_home), "the user's folder is nobody's business")

    def wait_green(self):
        wait_for(lambda: self.driver.picture().getpixel((300, 200)) == (0, 128, 0), "a picture of the green page")

    def names(self, pid):
        """What screen readers find in the program's windows."""
        import pyatspi  # connects to the session bus, which has to be there

        def below(node):
            yield node.name
            for child in node:
                if child is not None and child.getRole() != pyatspi.ROLE_DOCUMENT_WEB:
                    yield from below(child)

        return [name for application in pyatspi.Registry.getDesktop(0)
                if application is not None and application.get_process_id() == pid for name in below(application)]

    def test_tabs_and_windows_come_and_go(self):
        driver = self.driver
        driver.begin()
        first = driver.get("/window")
        driver.post("/url", url=self.server.address + "/")
        for kind in ("tab", "window"):
            for _ in range(2):  # the second one in the place of the first
                made = driver.post("/window/new", type=kind)
                self.assertEqual(made["type"], kind)
                driver.post("/window", handle=made["handle"])
                driver.post("/url", url=self.server.address + "/")
                self.wait_green()
                driver.click("#ask")  # with the mouse, in what is on show
                driver.post("/alert/accept")
                driver.wait_title("Yes")
                self.assertEqual(len(driver.get("/window/handles")), 2)
                self.assertEqual(driver.send("DELETE", "/window"), [first])
                driver.post("/window", handle=first)
        driver.click("#open")
        opened = wait_for(lambda: set(driver.get("/window/handles")) - {first}, "the page's new tab").pop()
        driver.post("/window", handle=opened)
        driver.wait_title("Other")
        driver.post("/window", handle=first)
        driver.click("#field")  # a tab that was behind
        driver.wait_title("Page")
        driver.end()

    def test_stands_alone(self):
        done = subprocess.run([PROGRAM, "--automation", "about:blank"], capture_output=True, text=True, timeout=20)
        self.assertEqual(done.returncode, 2)
        self.assertIn("stands alone", done.stderr)


main()
