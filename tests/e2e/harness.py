"""The real program on a real screen: Xvfb, openbox, a session bus, a local web server."""

import atexit
import contextlib
import faulthandler
import functools
import http.server
import io
import os
import re
import select
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
import unittest

from PIL import Image

import alone
from inputs import click_at, drag_by, key, move_to, run, type_text  # noqa: F401

alone.enter()

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
PROGRAM = os.environ.get("MARLOWICK_PROGRAM", os.path.join(ROOT, "build", "marlowick"))
SCREEN = (1280, 900)
TEST_LIMIT = 150  # seconds that one test may take, as a last resort where a step hangs without a limit of its own
SILENCE = 2000  # ms after which a page that waits for the user is taken for one that answers no screen reader
# What no test may leave in the program's error output: complaints of its own libraries, reports of the sanitizers.
COMPLAINT = re.compile(r"\(marlowick:\d+\): .*CRITICAL.*|.*ERROR: (?:Address|Leak)Sanitizer.*|.*: runtime error: .*")
# What the toolkit complains of by itself: its print dialog asked by a screen reader, and its file dialog whose field
# goes away by the key that it still has to handle.
KNOWN_COMPLAINTS = ("gtk_notebook_get_tab_label: assertion 'list != NULL'",
                    "gtk_widget_event: assertion 'WIDGET_REALIZED_FOR_EVENT")

# Where the labels of the menu bar are, in the main window; how high the parts of an open menu are.
LABELS = {"File": (24, 32), "Edit": (58, 32), "View": (92, 32), "Favourites": (145, 32), "Launch": (204, 32),
          "Tabs": (246, 32), "Help": (280, 32)}
ROW, SEPARATOR, MARGIN = 15, 8, 8


def wait_for(condition, what, seconds=20.0):
    """Waits until condition() is true and returns its value; fails naming what was waited for."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"waited {seconds} s in vain for {what}")
        time.sleep(0.05)


class Screen:
    """An X server with a window manager and a session bus, for one test file."""

    def __init__(self, manager="openbox"):
        """`manager`: the window manager's command and name; empty for none."""
        self.processes = []
        atexit.register(self.close)
        signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # so that what was started ends then, too
        # In namespaces any number is free. It names files that other runs may meet, so each run has another; a lock
        # would be one more of them.
        mine = [f":{alone.number % 50000 + 1000}", "-nolock"] if alone.in_namespaces else []
        number = self.begin("Xvfb", *mine, "-displayfd", "{}", "-screen", "0", f"{SCREEN[0]}x{SCREEN[1]}x24", "-nolisten",
                            "tcp", "-noreset")  # else the first helper that disconnects takes the window manager along
        bus = self.begin("dbus-daemon", "--session", "--nofork", "--print-address={}",
                         "--address=unix:dir=" + os.environ["XDG_RUNTIME_DIR"])
        os.environ.update(DISPLAY=":" + number, DBUS_SESSION_BUS_ADDRESS=bus, GDK_BACKEND="x11", LANG="C.UTF-8",
                          GTK_THEME="Adwaita", NO_AT_BRIDGE="0")
        os.environ.setdefault("LSAN_OPTIONS", "suppressions=" + os.path.join(ROOT, "tests", "leaks_of_libraries.txt"))
        os.environ.setdefault("ASAN_OPTIONS", "fast_unwind_on_malloc=0:malloc_context_size=15")  # names the libraries
        os.environ.setdefault("UBSAN_OPTIONS", "print_stacktrace=1")
        os.environ.pop("GDK_SCALE", None)
        if manager:
            self.launch(manager)
            wait_for(lambda: manager in run("wmctrl", "-m", check=False).lower(), "the window manager")

    def launch(self, *command):
        """Starts a program that ends with the screen."""
        self.processes.append(subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
        return self.processes[-1]

    def begin(self, *command):
        """Starts a program that writes one line to the pipe whose number replaces "{}", and returns that line."""
        read, write = os.pipe()
        with os.fdopen(read) as pipe:
            self.processes.append(subprocess.Popen([part.replace("{}", str(write)) for part in command],
                                                   pass_fds=[write], stderr=subprocess.DEVNULL))
            os.close(write)
            ready, _, _ = select.select([pipe], [], [], 20)
            if not ready:
                raise AssertionError(f"waited 20 s in vain for {command[0]} to be ready")
            return pipe.readline().strip()

    def close(self):
        for process in reversed(self.processes):
            process.terminate()
            process.wait(10)
        self.processes = []

    def shot(self, path=None):
        """The screen as a picture; also saved where a path is given."""
        data = subprocess.run(["import", "-window", "root", "png:-"], check=True, capture_output=True, timeout=30).stdout
        if path:
            with open(path, "wb") as file:
                file.write(data)
        return Image.open(io.BytesIO(data)).convert("RGB")


def reply(handler, body, status=200, headers=None, kind="text/html; charset=utf-8"):
    """Answers a request with a text or with bytes."""
    body = body.encode() if isinstance(body, str) else body
    handler.send_response(status)
    for name, value in {"Content-Type": kind, "Content-Length": len(body), **(headers or {})}.items():
        handler.send_header(name, str(value))
    handler.end_headers()
    handler.wfile.write(body)


def serve(handler, page):
    """Answers with a page: HTML, a function of the handler, or None where there is none."""
    if callable(page):
        page(handler)
    elif page is None:
        reply(handler, "<title>Not here</title>", 404)
    else:
        reply(handler, page)


class Server:
    """A web server on this machine. `pages` maps a path to HTML, or to a function of the handler."""

    def __init__(self, pages=None, place=("127.0.0.1", 0)):
        self.pages = dict(pages or {})
        self.requests = []
        server = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                server.requests.append(self.path)
                serve(self, server.pages.get(self.path.split("?")[0]))

            def do_POST(self):
                self.body = self.rfile.read(int(self.headers.get("Content-Length", 0)))
                self.do_GET()

            def log_message(self, *_):
                pass

        self.http = http.server.ThreadingHTTPServer(place, Handler)
        self.http.daemon_threads = True
        threading.Thread(target=self.http.serve_forever, daemon=True).start()
        self.address = f"http://127.0.0.1:{self.http.server_address[1]}"

    def close(self):
        self.http.shutdown()
        self.http.server_close()


def set_values(home, **settings):
    """Changes values of a folder's browser.ini."""
    path = os.path.join(home, "browser.ini")
    with open(path, newline="") as file:
        text = file.read()
    for key, value in settings.items():
        text = re.sub(rf"(?i)(\[{key}\]\r\n).*?\r\n", lambda match: f"{match[1]}{value}\r\n", text)
    with open(path, "w", newline="") as file:
        file.write(text)


def children_of(pid):
    """All processes below one, by the process table."""
    parents = {}
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                with open(f"/proc/{entry}/stat") as file:
                    parents[int(entry)] = int(file.read().rpartition(")")[2].split()[1])
            except OSError:
                pass
    found, below = set(), {pid}
    while below:
        below = {child for child, parent in parents.items() if parent in below} - found
        found |= below
    return found


class Marlowick:
    """One run of the program, in a folder of its own unless one is given."""

    def __init__(self, *arguments, home=None, settings=None, environment=None, shown=True, stderr=None,
                 proxy=None):
        self.own_home = home is None
        self.home = home or os.path.join(tempfile.mkdtemp(prefix="marlowick-e2e-"), "home")
        if (settings or proxy) and not os.path.exists(self.home):
            shutil.copytree(os.path.join(os.path.dirname(PROGRAM), "data"), self.home)
            self.set(**(settings or {}))
        if proxy:
            os.makedirs(os.path.join(self.home, "engine"), exist_ok=True)
            with open(os.path.join(self.home, "engine", "engine.ini"), "w") as file:
                file.write(f"[Element]\nproxy=by hand\nproxy address={proxy}\n")
        self.window, self.last_words = None, ""
        self.errors = stderr or tempfile.TemporaryFile("w+", errors="replace")
        self.own_errors = stderr is None
        self.process = subprocess.Popen([PROGRAM, *arguments], stderr=self.errors,
                                        env={**os.environ, "MARLOWICK_HOME": self.home, **(environment or {})})
        if shown:
            try:
                self.window = wait_for(self.find_window, "the main window")
            except AssertionError as error:
                self.kill()
                raise AssertionError(f"{error}; the program said: {self.told()}") from None

    def told(self):
        """What the program has written to its error output so far."""
        # By a path, since the program writes on from where this file's own offset stands.
        if self.errors.closed:
            return self.last_words
        with open(f"/proc/self/fd/{self.errors.fileno()}", errors="replace") as file:
            return file.read()

    def set(self, **settings):
        set_values(self.home, **settings)

    def find_window(self):
        for window in self.windows():
            width, height = self.size(window)
            if width >= 375 and height >= 200:
                return window
        return None

    @staticmethod
    def managed():
        """The windows that the window manager knows, as decimal texts."""
        return [str(int(line.split()[0], 16)) for line in run("wmctrl", "-l", check=False).splitlines()]

    @staticmethod
    def size(window):
        text = run("xdotool", "getwindowgeometry", "--shell", window, check=False)
        values = dict(line.split("=") for line in text.splitlines())
        return int(values.get("WIDTH", 0)), int(values.get("HEIGHT", 0))

    @property
    def rect(self):
        """Left, top, width, height on the screen."""
        text = run("xdotool", "getwindowgeometry", "--shell", self.window)
        values = dict(line.split("=") for line in text.splitlines())
        return tuple(int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))

    @property
    def title(self):
        return run("xdotool", "getwindowname", self.window, check=False)

    def wait_title(self, title):
        wait_for(lambda: self.title == title, f'the title "{title}"')

    def settled(self):
        """The window's place on the screen, once it stays: the window may just have come up."""
        places = [self.rect]

        def stays():
            time.sleep(0.03)
            places.append(self.rect)
            return len(places) > 3 and len(set(places[-4:])) == 1

        wait_for(stays, "the window's place")
        return places[-1]

    def move(self, x, y):
        """The mouse, to a point of the main window."""
        left, top, _, _ = self.settled()
        move_to(left + x, top + y)

    def click(self, x, y, button=1):
        left, top, _, _ = self.settled()
        click_at(left + x, top + y, button)

    def drag(self, x, y, by_x, by_y, steps=10):
        left, top, _, _ = self.settled()
        drag_by(left + x, top + y, by_x, by_y, steps)
        time.sleep(0.3)

    def key(self, *keys):
        key(*keys)

    def type_address(self, address):
        """Into the address field, and Enter."""
        self.click(400, 57)
        self.key("ctrl+a")
        type_text(address)
        self.key("Return")

    def windows(self):
        """The windows of this run that the window manager knows, by their number, with their titles."""
        found = {}
        for line in run("wmctrl", "-lp", check=False).splitlines():
            number, _, pid, _, *title = line.split(None, 4)
            if int(pid) == self.process.pid:
                found[str(int(number, 16))] = "".join(title)
        return found

    def wait_window(self, title, seconds=20.0):
        """Waits for a window with this title beside the main one, and returns its number."""
        def look():
            return next((number for number, name in self.windows().items()
                         if name == title and number != self.window), None)

        return wait_for(look, f'a window called "{title}"', seconds)

    def place(self, window, name, *roles):
        """Left, top, width, height on the screen of what a screen reader finds under this name, in one of these roles,
        in the window with this title; None while it isn't there."""
        import pyatspi  # connects to the session bus, which has to be there
        from gi.repository import Atspi, GLib

        Atspi.set_timeout(SILENCE, 0)

        def find(node):
            try:
                if (node.getRoleName() in roles and node.name == name and
                        node.getState().contains(pyatspi.STATE_SHOWING)):
                    return node
                return next(filter(None, (find(child) for child in node if child is not None)), None)
            except GLib.Error:  # it went away meanwhile, or is a page that waits for the user and answers nobody
                return None

        try:
            for application in pyatspi.Registry.getDesktop(0):
                if application is not None and application.get_process_id() == self.process.pid:
                    application.clear_cache()
                    found = next(filter(None, (find(top) for top in application if top and top.name == window)), None)
                    return found and tuple(found.queryComponent().getExtents(pyatspi.DESKTOP_COORDS))
        except GLib.Error:  # something went away while it was looked at
            pass
        return None

    def press(self, window, name, *roles):
        """The mouse, on what has this name in the window with this title: a button where no role is given."""
        left, top, width, height = wait_for(lambda: self.place(window, name, *(roles or ("push button",))),
                                            f'"{name}" in "{window}"')
        click_at(left + width // 2, top + height // 2)

    def wait_active(self, window):
        wait_for(lambda: run("xdotool", "getactivewindow", check=False) == window, "the window's focus")
        time.sleep(0.3)

    def answer_open(self, title, path):
        """Chooses a file in the dialog with this title that opens one."""
        self.wait_active(self.wait_window(title))
        self.key("ctrl+l")  # makes a field
        self.type_path(title, path)

    def answer_save(self, title, path):
        """Names a file in the dialog with this title that saves one."""
        self.wait_active(self.wait_window(title))
        self.type_path(title, path)

    def type_path(self, title, path):
        """Into the field of a file dialog, and Enter; a busy dialog may lose the first letters, so it's looked at."""
        for _ in range(3):
            self.key("ctrl+a")
            type_text(path, 25)
            with contextlib.suppress(AssertionError):
                wait_for(lambda: path in self.field_texts(title), "the path", 5)
                break
        else:
            raise AssertionError(f'"{title}" has {self.field_texts(title)} instead of {path}')
        # The toolkit's list of names that fit takes the first one where it has come up meanwhile.
        for _ in range(3):
            self.key("Return")
            with contextlib.suppress(AssertionError):
                return wait_for(lambda: title not in self.windows().values(), f'the end of "{title}"', 4)
        raise AssertionError(f'"{title}" took no Enter')

    def field_texts(self, window):
        """What stands in the fields of the window with this title."""
        import pyatspi
        from gi.repository import GLib

        def below(node):
            if node.getRole() in (pyatspi.ROLE_TEXT, pyatspi.ROLE_ENTRY):
                yield node.queryText().getText(0, -1)
            elif node.getRole() != pyatspi.ROLE_TABLE:  # the files
                for child in node:
                    if child is not None:
                        yield from below(child)

        with contextlib.suppress(GLib.Error, NotImplementedError):
            for application in pyatspi.Registry.getDesktop(0):
                if application is not None and application.get_process_id() == self.process.pid:
                    application.clear_cache()
                    return [text for top in application if top and top.name == window for text in below(top)]
        return []

    def told_by(self, *roles):
        """The names of all that a screen reader finds on show in these roles, texts where something has no name."""
        import pyatspi
        from gi.repository import GLib

        names = []

        def look(node):
            with contextlib.suppress(GLib.Error, NotImplementedError, AttributeError):  # it went away meanwhile
                if node.getState().contains(pyatspi.STATE_SHOWING) and node.getRoleName() in roles:
                    names.append(node.name or node.queryText().getText(0, -1))
            with contextlib.suppress(GLib.Error, NotImplementedError, AttributeError):
                for child in node:
                    look(child)

        for application in pyatspi.Registry.getDesktop(0):
            if application is not None and application.get_process_id() == self.process.pid:
                application.clear_cache()
                look(application)
        return names

    def menu(self):
        """Left, top, width, height of the open menu; None while there is none."""
        return next(iter(self.popups()), None)

    def popups(self):
        """The places of all open menus, the front-most first."""
        found = []
        for line in run("xwininfo", "-root", "-children").splitlines():
            match = re.match(r"\s+(0x[0-9a-f]+) .*\s(\d+)x(\d+)\+-?\d+\+-?\d+\s+\+(-?\d+)\+(-?\d+)", line)
            if not match or int(match[2]) < 60 or int(match[3]) < 25:
                continue
            about = run("xwininfo", "-id", match[1], check=False)
            if "IsViewable" in about and "Override Redirect State: yes" in about:
                found.append((int(match[4]), int(match[5]), int(match[2]), int(match[3])))
        return found

    def open_menu(self, label):
        x, y = LABELS[label]
        self.click(x, y)
        self.move(x + 2, y + 1)
        return wait_for(self.menu, f"the menu {label}")

    def choose(self, label, rows_above, separators_above=0):
        left, top, _, _ = self.open_menu(label)
        x, y = left + 40, top + MARGIN + rows_above * ROW + separators_above * SEPARATOR + 7
        click_at(x, y)

    def choose_row(self, label, name):
        """The row of this name of the menu of this label."""
        self.open_menu(label)
        self.press_row(name)

    def press_row(self, name):
        """The row of this name of the open menu."""
        import pyatspi
        from gi.repository import GLib

        def find(node):
            if node.getRole() == pyatspi.ROLE_MENU_ITEM and node.name == name:
                return tuple(node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS))
            return next(filter(None, (find(child) for child in node
                                      if child is not None and child.getRole() != pyatspi.ROLE_DOCUMENT_WEB)), None)

        def row():
            with contextlib.suppress(GLib.Error):
                for application in pyatspi.Registry.getDesktop(0):
                    if application is not None and application.get_process_id() == self.process.pid:
                        application.clear_cache()
                        return find(application)
            return None

        left, top, width, height = wait_for(row, f'the row "{name}"')
        click_at(left + width // 2, top + height // 2)

    def pixel(self, screen, x, y):
        left, top, _, _ = self.rect
        return screen.shot().getpixel((left + x, top + y))

    def page_pixel(self, screen):
        """The middle of the page."""
        _, _, width, height = self.rect
        return self.pixel(screen, width // 2, height // 2)

    def close(self):
        """As the task bar does; then no process of the program's is left."""
        below = children_of(self.process.pid)
        if self.process.poll() is None:
            run("wmctrl", "-i", "-c", self.window, check=False)
        status = self.wait_end()
        wait_for(lambda: all(zombie(pid) for pid in below), "the end of all child processes")
        self.clean()
        return status

    def wait_end(self):
        """Waits for the program's own end, and returns its status."""
        wait_for(lambda: self.process.poll() is not None, "the program's end")
        return self.process.returncode

    def kill(self):
        for pid in [*children_of(self.process.pid), self.process.pid]:
            try:
                os.kill(pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
        self.process.wait(10)
        self.clean()

    def end(self):
        """After a test: whatever state the program is in."""
        if self.process.poll() is None:
            self.kill()
        elif not self.errors.closed:
            self.clean()

    def clean(self):
        """Removes what the run wrote; fails if the program's error output has what it must not have."""
        if self.own_home:
            shutil.rmtree(os.path.dirname(self.home), ignore_errors=True)
        self.last_words = self.told()
        if self.own_errors:
            self.errors.close()
        if any(not any(known in line for known in KNOWN_COMPLAINTS) for line in COMPLAINT.findall(self.last_words)):
            raise AssertionError("the program complained:\n" + self.last_words)


@contextlib.contextmanager
def another_program():
    """The window of a program that isn't ours."""
    other = subprocess.Popen(["xmessage", "-geometry", "+10+10", "another program"])
    try:
        yield wait_for(lambda: run("xdotool", "search", "--onlyvisible", "--name", "xmessage", check=False),
                       "another window").split()[0]
    finally:
        other.terminate()
        other.wait(10)


def zombie(pid):
    """Whether a process has ended, be it that nobody has asked for its status yet."""
    try:
        with open(f"/proc/{pid}/stat") as file:
            return file.read().rpartition(")")[2].split()[0] == "Z"
    except OSError:
        return True


class ProgramTest(unittest.TestCase):
    """A test with a screen of its file's own, a server, and programs that end with it."""

    screen = None

    @classmethod
    def setUpClass(cls):
        if ProgramTest.screen is None:
            ProgramTest.screen = Screen()

    def setUp(self):
        faulthandler.dump_traceback_later(TEST_LIMIT, exit=True)
        self.addCleanup(faulthandler.cancel_dump_traceback_later)
        self.server = Server()
        self.addCleanup(self.server.close)

    def start(self, *arguments, **more):
        program = Marlowick(*arguments, **more)
        self.addCleanup(program.end)
        return program

    def home(self, files=None, **settings):
        """A folder for the program: the delivered one, with these settings, and these files of bytes."""
        folder = tempfile.mkdtemp(prefix="marlowick-e2e-")
        self.addCleanup(shutil.rmtree, folder, ignore_errors=True)
        home = os.path.join(folder, "home")
        shutil.copytree(os.path.join(os.path.dirname(PROGRAM), "data"), home)
        set_values(home, **settings)
        for name, content in (files or {}).items():
            with open(os.path.join(home, name), "wb") as file:
                file.write(content)
        return home

    def page(self, path, html):
        """Serves a page and returns its address."""
        self.server.pages[path] = html
        return self.server.address + path


main = functools.partial(unittest.main, verbosity=2)
