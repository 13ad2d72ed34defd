"""The cookies of real pages: the manager, what counts as new, and the clean-up at the end by each mode."""

import contextlib
import os
import re
import signal
import sqlite3
import time

from harness import ProgramTest, children_of, main, run, wait_for

MANAGER, QUESTION, CLOSING = "Cookie Manager", "Delete Cookies?", "Closing down..."
LASTS = "; Max-Age=1000000"
TABLE = """CREATE TABLE IF NOT EXISTS moz_cookies (id INTEGER PRIMARY KEY, name TEXT, value TEXT, host TEXT, path TEXT,
expiry INTEGER, lastAccessed INTEGER, isSecure INTEGER, isHttpOnly INTEGER, sameSite INTEGER)"""


class SessionManager:
    """What the desktop's session manager is to its clients, on the test's own bus."""

    NAME, PATH, CLIENT = "org.gnome.SessionManager", "/org/gnome/SessionManager", "/org/gnome/SessionManager/Client1"
    INTERFACES = """<node><interface name="org.gnome.SessionManager"><method name="RegisterClient">
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="o" direction="out"/></method></interface>
    <interface name="org.gnome.SessionManager.ClientPrivate"><method name="EndSessionResponse">
    <arg type="b" direction="in"/><arg type="s" direction="in"/></method></interface></node>"""

    def __init__(self):
        from gi.repository import Gio, GLib
        self.variant = GLib.Variant
        self.clients, self.responses = [], []
        self.context = GLib.MainContext()
        self.context.push_thread_default()
        self.bus = Gio.DBusConnection.new_for_address_sync(
            os.environ["DBUS_SESSION_BUS_ADDRESS"], Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT |
            Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        for path, interface in zip((self.PATH, self.CLIENT), Gio.DBusNodeInfo.new_for_xml(self.INTERFACES).interfaces):
            self.bus.register_object(path, interface, self.called, None, None)
        Gio.bus_own_name_on_connection(self.bus, self.NAME, Gio.BusNameOwnerFlags.NONE, None, None)
        self.context.pop_thread_default()

    def called(self, bus, sender, path, interface, method, arguments, call):
        if method == "RegisterClient":
            name = arguments.unpack()[0]
            self.clients.append(name)
            # The desktop's own helpers come as well.
            call.return_value(self.variant("(o)", (self.CLIENT if name == "marlowick" else self.PATH + "/Other",)))
        else:
            self.responses.append(arguments.unpack()[0])
            call.return_value(None)

    def wait(self, condition, what):
        def look():
            while self.context.iteration(False):
                pass
            return condition()

        wait_for(look, what)

    def tell(self, signal):
        arguments = None if signal == "Stop" else self.variant("(u)", (0,))
        self.bus.emit_signal(None, self.CLIENT, "org.gnome.SessionManager.ClientPrivate", signal, arguments)
        self.bus.flush_sync(None)

    def close(self):
        self.bus.close_sync(None)


class Cookies(ProgramTest):
    def setUp(self):
        super().setUp()
        self.port = self.server.http.server_address[1]

    def sets(self, path, title, *cookies):
        """A page that sets cookies, and says which ones it was sent."""
        def answer(handler):
            sent = re.findall(r"([^ ;=]+)=", handler.headers.get("Cookie", ""))
            body = f"<title>{title}: {' '.join(sorted(sent)) or 'none'}</title>".encode()
            handler.send_response(200)
            for cookie in cookies:
                handler.send_header("Set-Cookie", cookie)
            handler.send_header("Content-Length", str(len(body)))
            handler.end_headers()
            handler.wfile.write(body)

        self.server.pages[path] = answer

    def at(self, host, path):
        return f"http://{host}:{self.port}{path}"

    def begin(self, address, mode=0, home=None, title="Set: none"):
        program = self.start(address, settings={"CookieTrap": str(mode)}, home=home or self.home())
        if title:
            program.wait_title(title)
        return program

    def home(self):
        import tempfile
        folder = tempfile.TemporaryDirectory(prefix="marlowick-e2e-")
        self.addCleanup(folder.cleanup)
        return os.path.join(folder.name, "home")

    def store(self, home):
        return os.path.join(home, "engine", "cookies.sqlite")

    def stored(self, home):
        """The names in the store on the disk, which must be whole."""
        if not os.path.exists(self.store(home)):
            return []
        with contextlib.closing(sqlite3.connect(self.store(home), timeout=10)) as store:
            self.assertEqual(store.execute("PRAGMA integrity_check").fetchone(), ("ok",))
            with contextlib.suppress(sqlite3.OperationalError):  # no table yet
                return sorted(row[0] for row in store.execute("SELECT name FROM moz_cookies"))
        return []

    def wait_stored(self, home, *names):
        def look():
            with contextlib.suppress(sqlite3.OperationalError):  # the engine writes
                return self.stored(home) == sorted(names)
            return False

        wait_for(look, f"the cookies {names} on the disk")

    def fill(self, home, names, host="filled.test"):
        """Cookies from before this run."""
        os.makedirs(os.path.join(home, "engine"), exist_ok=True)
        with contextlib.closing(sqlite3.connect(self.store(home))) as store:
            store.execute(TABLE)
            store.executemany("INSERT INTO moz_cookies VALUES (NULL, ?, 'v', ?, '/', 4102444800, 0, 0, 0, 0)",
                              [(name, host) for name in names])
            store.commit()

    def cells(self, program, window):
        """The rows of the list on show in a window, as a screen reader finds them; None without a list."""
        import pyatspi

        def lists(node):
            if node.getRole() in (pyatspi.ROLE_TABLE, pyatspi.ROLE_TREE_TABLE, pyatspi.ROLE_LIST_BOX):
                if node.getState().contains(pyatspi.STATE_SHOWING):
                    yield node
                return
            for child in node:
                if child is not None:
                    yield from lists(child)

        for application in pyatspi.Registry.getDesktop(0):
            if application is not None and application.get_process_id() == program.process.pid:
                application.clear_cache()
                for top in application:
                    if top is not None and top.name == window:
                        return next(([cell for cell in found if cell.getRole() == pyatspi.ROLE_TABLE_CELL]
                                     for found in lists(top)), None)
        return None

    def rows(self, program, window):
        cells = self.cells(program, window)
        return cells if cells is None else [cell.name for cell in cells]

    def click_row(self, program, window, row):
        import pyatspi
        place = self.cells(program, window)[row].queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        run("xdotool", "mousemove", str(place.x + 20), str(place.y + place.height // 2), "click", "1")

    def wait_rows(self, program, *names):
        rows = []

        def look():
            nonlocal rows
            rows = self.rows(program, MANAGER)
            return rows == list(names)

        try:
            wait_for(look, f"the rows {names}")
        except AssertionError as error:
            raise AssertionError(f"{error}; there are {rows}") from None

    def open_manager(self, program):
        program.choose("View", 7, 3)
        return program.wait_window(MANAGER)

    def answer(self, program, button):
        question = program.wait_window(QUESTION)
        program.wait_active(question)
        program.key("alt+" + button[0].lower())
        wait_for(lambda: question not in program.windows(), "the end of the question")

    def ended(self, program, seconds=15):
        return program.process.wait(seconds)

    def press_close(self, program):
        run("wmctrl", "-i", "-c", program.window)

    def test_the_manager_lists_and_removes(self):
        self.sets("/", "Set", "session=1", "lasting=1" + LASTS, "hidden=1; HttpOnly" + LASTS)
        self.sets("/deep/page", "Deep", "Deep=1; Path=/deep" + LASTS)
        self.sets("/b", "Other", "other=1" + LASTS)
        home = self.home()
        program = self.begin(self.at("a.localhost", "/"), home=home)
        for host, path, title in (("a.localhost", "/deep/page", "Deep: hidden lasting session"),
                                  ("b.localhost", "/b", "Other: none")):
            program.type_address(self.at(host, path))
            program.wait_title(title)
        manager = self.open_manager(program)
        everything = ["Cookie:Deep@a.localhost/deep", "Cookie:hidden@a.localhost/", "Cookie:lasting@a.localhost/",
                      "Cookie:other@b.localhost/", "Cookie:session@a.localhost/"]
        self.wait_rows(program, *everything)

        # It stays in front of the main window, and lets the user go to another program.
        run("wmctrl", "-i", "-a", program.window)
        program.wait_active(manager)

        # A no removes nothing; nothing selected, neither does a yes.
        for button in ("No", "Yes"):
            program.press(MANAGER, "Remove Selected")
            self.answer(program, button)
            self.wait_rows(program, *everything)
        self.wait_stored(home, "Deep", "hidden", "lasting", "other")

        program.press(MANAGER, "Remove All")
        self.answer(program, "Yes")
        self.wait_rows(program)
        self.assertEqual(self.stored(home), [])
        program.press(MANAGER, "Close")
        wait_for(lambda: manager not in program.windows(), "the end of the manager")
        # The page has no session any more.
        self.sets("/who", "Known")
        program.type_address(self.at("a.localhost", "/who"))
        program.wait_title("Known: none")
        self.assertEqual(program.close(), 0)

    def test_the_exit_leaves_what_the_mode_says(self):
        self.sets("/old", "Set", "old=1" + LASTS, "oldbank=1" + LASTS)
        self.sets("/new", "New", "new=1" + LASTS, "bank=1" + LASTS, "old=2" + LASTS, "session=1")
        left = {0: ("bank", "new", "old", "oldbank"), 1: ("old", "oldbank"), 3: ("new", "old")}
        for mode, names in left.items():
            with self.subTest(mode=mode):
                home = self.home()
                program = self.begin(self.at("localhost", "/old"), mode=0, home=home)
                self.wait_stored(home, "old", "oldbank")
                self.assertEqual(program.close(), 0)
                self.assertEqual(self.stored(home), ["old", "oldbank"], "nothing is cleaned up")

                with open(os.path.join(home, "filter.dat"), "w") as file:
                    file.write("\r\nBANK@\r\n")
                program.set(CookieTrap=str(mode))
                program = self.begin(self.at("localhost", "/new"), home=home, title="New: old oldbank")
                self.wait_stored(home, "bank", "new", "old", "oldbank")
                self.assertEqual(program.close(), 0)
                self.assertEqual(self.stored(home), sorted(names))

    def test_the_user_confirms_what_goes(self):
        self.sets("/", "Set", "a=1" + LASTS, "b=1" + LASTS, "session=1")
        home = self.home()
        program = self.begin(self.at("localhost", "/"), mode=2, home=home)
        self.wait_stored(home, "a", "b")
        self.press_close(program)
        manager = program.wait_window(MANAGER)
        # The cookie of the session isn't asked about.
        self.wait_rows(program, "Cookie:a@localhost/", "Cookie:b@localhost/")
        program.wait_active(manager)
        self.click_row(program, MANAGER, 0)
        program.press(MANAGER, "Remove Selected")
        self.wait_stored(home, "b")
        self.wait_rows(program, "Cookie:b@localhost/")
        program.press(MANAGER, "Close")
        self.assertEqual(self.ended(program), 0)
        self.assertEqual(self.stored(home), ["b"])

        # Nothing new: nothing is asked.
        program = self.begin(self.at("localhost", "/"), home=home, title="Set: b")
        self.wait_stored(home, "a", "b")
        program.choose("View", 7, 3)
        self.wait_rows(program, "Cookie:a@localhost/", "Cookie:b@localhost/", "Cookie:session@localhost/")
        program.press(MANAGER, "Remove All")
        self.answer(program, "Yes")
        self.wait_stored(home)
        self.press_close(program)
        self.assertEqual(self.ended(program), 0)

    def test_a_log_out_asks_nothing(self):
        self.sets("/", "Set", "a=1" + LASTS)
        for mode, names in ((1, []), (2, ["a"]), (0, ["a"])):
            with self.subTest(mode=mode):
                home = self.home()
                program = self.begin(self.at("localhost", "/"), mode=mode, home=home)
                self.wait_stored(home, "a")
                below = children_of(program.process.pid)
                program.process.send_signal(signal.SIGTERM)
                self.assertEqual(self.ended(program), 0)
                self.assertEqual(self.stored(home), names)
                wait_for(lambda: not any(os.path.exists(f"/proc/{pid}") for pid in below), "the end of the pages")

    def test_the_session_manager_is_heard(self):
        self.sets("/", "Set", "a=1" + LASTS)
        manager = SessionManager()
        self.addCleanup(manager.close)
        home = self.home()
        program = self.begin(self.at("localhost", "/"), mode=1, home=home)
        self.wait_stored(home, "a")
        manager.wait(lambda: "marlowick" in manager.clients, "the program's registration")
        # It listens a moment after its registration.
        manager.wait(lambda: manager.responses or manager.tell("QueryEndSession"), "the program's consent")
        self.assertTrue(manager.responses[0])
        manager.tell("CancelEndSession")
        manager.tell("EndSession")
        self.assertEqual(self.ended(program), 0)
        self.assertEqual(self.stored(home), [])

    def test_a_thousand_cookies_and_a_kill(self):
        names = [f"c{i}" for i in range(1000)]
        self.sets("/", "Set", "a=1" + LASTS)
        home = self.home()
        program = self.begin(self.at("localhost", "/"), home=home)
        self.assertEqual(program.close(), 0)
        with open(os.path.join(home, "filter.dat"), "w") as file:
            file.write("filled.test\r\n")
        program.set(CookieTrap="3")
        for moment in (0, 0.05, 0.2, 0.4, None):
            with contextlib.closing(sqlite3.connect(self.store(home))) as store:
                store.execute("DELETE FROM moz_cookies WHERE host = 'filled.test'")
                store.commit()
            self.fill(home, names)
            program = self.begin(self.at("localhost", "/"), home=home, title="Set: a")
            below = children_of(program.process.pid)
            self.press_close(program)
            if moment is None:
                self.assertEqual(self.ended(program), 0)
                self.assertEqual(self.stored(home), ["a"])
                continue
            # The work has begun.
            wait_for(lambda: program.process.poll() is not None or program.window not in program.windows(), "the end to begin")
            time.sleep(moment)
            for pid in [program.process.pid, *below]:
                with contextlib.suppress(ProcessLookupError):
                    os.kill(pid, signal.SIGKILL)
            self.ended(program)
            left = self.stored(home)
            self.assertIn("a", left)
            self.assertLessEqual(set(left), {"a", *names})

    def test_a_store_that_is_broken(self):
        self.sets("/", "Set", "a=1")
        home = self.home()
        os.makedirs(os.path.join(home, "..", "engine"), exist_ok=True)
        program = self.begin(self.at("localhost", "/"), home=home)
        self.assertEqual(program.close(), 0)
        with open(self.store(home), "wb") as file:
            file.write(b"no store at all, but long enough to be taken for one" * 50)
        program = self.begin(self.at("localhost", "/"), home=home)
        manager = self.open_manager(program)
        self.wait_rows(program, "Cookie:a@localhost/")
        run("wmctrl", "-i", "-c", manager)
        wait_for(lambda: manager not in program.windows(), "the end of the manager")
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    main()
