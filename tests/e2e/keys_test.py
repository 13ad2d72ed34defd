"""Each key of the program's window and of its plain windows, and the place that the keyboard always has."""

import contextlib
import os
import signal

from harness import ProgramTest, main, run, type_text, wait_for
from inputs import key
from processes import of_pages

# Tells the server of every key that reaches it, and when it can be seen: its title is there sooner.
PAGE = """<title>{0}</title><body style='margin:0;height:3000px'>
<script>
const tell = what => {{ new Image().src = `/${{what}}?${{Math.random()}}` }}
addEventListener('keydown', event => tell(`key?{0}?${{event.key}}`))
addEventListener('pageshow', () => requestAnimationFrame(() => tell('shown?{0}')))
</script>
<p>needle</p><p>needle</p>{1}"""


class Keys(ProgramTest):
    def setUp(self):
        super().setUp()
        for name in ("one", "two", "three"):
            self.page("/" + name, PAGE.format(name, ""))
        self.program = self.start(self.server.address + "/one", settings={"Default": self.server.address + "/two"})
        self.program.wait_title("one")

    def count(self, path):
        return self.server.requests.count(path)

    def reaches(self, page):
        """A key goes to this page, once it is on the screen."""
        wait_for(lambda: self.told(f"shown?{page}?") >= self.count("/" + page), f"the page {page}")
        before = self.keys(page, "x")
        key("x")
        wait_for(lambda: self.keys(page, "x") == before + 1, f"a key on the page {page}")

    def told(self, what):
        """How often pages have told the server this."""
        return sum(path.startswith("/" + what) for path in self.server.requests)

    def keys(self, page, name):
        return self.told(f"key?{page}?{name}?")

    def type(self, address, title):
        """Where the keyboard is, with nothing done before: it has to be the field, with all of it selected."""
        type_text(self.server.address + address if address.startswith("/") else address)
        key("Return")
        self.program.wait_title(title)
        self.reaches(title)

    def test_the_keyboard_always_has_a_place(self):
        program = self.program
        self.reaches("one")  # after the start
        for new_tab in (lambda: key("ctrl+t"), lambda: program.click(160, 60), lambda: program.choose("File", 0)):
            new_tab()
            self.type("/three", "three")
        key("ctrl+w")
        program.wait_title("three")
        self.reaches("three")
        key("ctrl+l")
        program.click(100, 91)  # the first tab
        program.wait_title("one")
        self.reaches("one")
        key("ctrl+l")
        program.open_menu("View")
        key("Escape")
        wait_for(lambda: program.menu() is None, "the menu's end")
        self.reaches("one")
        # A bar that goes leaves the keyboard to the page.
        key("ctrl+f")
        type_text("needle")
        key("Escape")
        self.reaches("one")

    def test_keys_that_walk_the_tabs(self):
        program = self.program
        for address in ("two", "three"):
            key("ctrl+t")
            self.type("/" + address, address)
        for press, title in (("ctrl+1", "one"), ("ctrl+9", "three"), ("ctrl+2", "two"), ("ctrl+7", "two"),
                             ("ctrl+Page_Down", "three"), ("ctrl+Page_Up", "two"), ("ctrl+Tab", "three"),
                             ("ctrl+Tab", "one"), ("ctrl+shift+Tab", "three"), ("ctrl+F4", "two")):
            with self.subTest(press):
                key(press)
                program.wait_title(title)
                self.reaches(title)

    def test_keys_that_lead_somewhere(self):
        program = self.program
        for focus, title in (("ctrl+l", "two"), ("alt+d", "three"), ("F6", "two")):
            key(focus)
            self.type("/" + title, title)
        key("ctrl+l")
        self.type("/three", "three")
        for press, title in (("alt+Left", "two"), ("alt+Right", "three"), ("XF86Back", "two"), ("XF86Forward", "three")):
            with self.subTest(press):
                key(press)
                program.wait_title(title)
        left, top, _, _ = program.rect
        for place in ((350, 300), (500, 57), (8, 300)):  # the page, the field, the frame
            for button, title in ((8, "two"), (9, "three")):
                program.click(*place, button=button)
                program.wait_title(title)
        for press in ("F5", "ctrl+r", "XF86Refresh", "ctrl+F5", "ctrl+shift+r"):
            with self.subTest(press):
                before = self.count("/three")
                key(press)
                wait_for(lambda: self.count("/three") == before + 1, "the page anew")
                program.wait_title("three")
        key("ctrl+u")
        wait_for(lambda: program.title.startswith("Source of"), "the source")
        key("alt+Home")
        wait_for(lambda: program.title == "Welcome to Marlowick", "the home page")
        key("ctrl+h")
        wait_for(lambda: "istory" in program.title, "the history")

    def test_a_key_that_the_page_returns_late(self):
        """It acts nowhere else, and the next page gets its first key."""
        pages = of_pages(self.program)
        for pid in pages:
            os.kill(pid, signal.SIGSTOP)
        key("x")
        key("ctrl+l")
        type_text(self.server.address + "/tw")
        for pid in pages:
            os.kill(pid, signal.SIGCONT)
        wait_for(lambda: self.keys("one", "x"), "the key on the page")
        self.type("o", "two")

    def test_past_the_cache(self):
        def kept(handler):
            handler.send_response(200)
            for name, value in (("Content-Type", "text/css"), ("Cache-Control", "max-age=10000"), ("Content-Length", "0")):
                handler.send_header(name, value)
            handler.end_headers()

        self.server.pages["/kept.css"] = kept
        key("ctrl+l")
        self.page("/styled", PAGE.format("styled", "<link rel=stylesheet href=/kept.css>"))
        self.type("/styled", "styled")
        for press, fetched in (("F5", 1), ("ctrl+F5", 2), ("ctrl+shift+r", 3)):
            loads = self.count("/styled")
            key(press)
            wait_for(lambda: self.count("/styled") == loads + 1, "the page anew")
            wait_for(lambda: self.count("/kept.css") >= fetched, f"the style after {press}")
            self.reaches("styled")
            self.assertEqual(self.count("/kept.css"), fetched, press)

    def test_finding_goes_on_without_the_bar(self):
        import pyatspi
        key("F3")  # asks first
        type_text("needle")
        self.bar("Find on this page", pyatspi.ROLE_TEXT)
        self.bar("2 matches", pyatspi.ROLE_LABEL)
        key("Escape")
        wait_for(lambda: not self.parts("2 matches", pyatspi.ROLE_LABEL), "the bar's end")
        for press in ("ctrl+g", "F3", "shift+F3", "ctrl+shift+g"):
            key(press)
            self.bar("2 matches", pyatspi.ROLE_LABEL)
        self.reaches("one")
        key("Escape", "F3")
        self.bar("2 matches", pyatspi.ROLE_LABEL)
        key("Escape")
        self.reaches("one")

    def test_escape_takes_what_is_on_top(self):
        program = self.program
        held = []
        self.server.pages["/held"] = lambda handler: held.append(handler.rfile.read(1))  # waits until it is given up
        key("ctrl+l")
        type_text(self.server.address + "/held")
        key("Return")
        wait_for(lambda: "/held" in self.server.requests, "the request")
        key("ctrl+f", "Escape")
        self.assertFalse(held, "the bar was on top")
        key("Escape")
        wait_for(lambda: held, "the end of the load")
        self.reaches("one")
        key("ctrl+f", "shift+Escape")
        wait_for(lambda: self.keys("one", "Escape"), "Escape on the page")

    def test_keys_of_the_program(self):
        program = self.program
        key("F12")
        inspector = program.wait_window("Web Inspector")
        program.wait_active(inspector)
        run("wmctrl", "-i", "-a", program.window)
        program.wait_active(program.window)
        key("F12")
        wait_for(lambda: inspector not in program.windows(), "its end")
        key("F7")
        key("ctrl+d")
        dialog = program.wait_window("Add to Favourites")
        program.wait_active(dialog)
        program.press("Add to Favourites", "Cancel")
        wait_for(lambda: dialog not in program.windows(), "the dialog's end")
        run("wmctrl", "-i", "-a", program.window)
        program.wait_active(program.window)
        key("ctrl+q")
        self.assertEqual(program.wait_end(), 0)

    def test_plain_windows_have_them_too(self):
        program = self.program
        key("ctrl+n")
        window = program.wait_window("one")
        program.wait_active(window)
        self.plain("/two", "two")
        for focus, title in (("ctrl+l", "three"), ("alt+d", "two"), ("F6", "three")):
            key(focus)
            self.plain("/" + title, title)
        for press, title in (("alt+Left", "two"), ("alt+Right", "three"), ("XF86Back", "two"), ("XF86Forward", "three")):
            with self.subTest(press):
                key(press)
                program.wait_window(title)
        for press in ("F5", "ctrl+r", "ctrl+F5", "ctrl+shift+r"):
            before = self.count("/three")
            key(press)
            wait_for(lambda: self.count("/three") == before + 1, press)
        key("ctrl+f")
        type_text("needle")
        key("Return", "F3", "Escape")
        self.reaches("three")
        for press in ("ctrl+k", "ctrl+e"):
            key(press)
            type_text("needle")
            wait_for(lambda: "? needle" in program.field_texts("three"), "what is to be searched for")
            key("Escape")
            wait_for(lambda: self.server.address + "/three" in program.field_texts("three"), "the page's address")
        key("ctrl+j")
        downloads = program.wait_window("Downloads")
        program.wait_active(downloads)
        key("alt+s")
        wait_for(lambda: downloads not in program.windows(), "the list's end")
        program.wait_active(window)
        key("ctrl+u")
        wait_for(lambda: any(name.startswith("Source of") for name in program.windows().values()), "the source")
        key("ctrl+w")
        wait_for(lambda: window not in program.windows(), "the window's end")
        self.assertEqual(program.title, "one")

    def plain(self, address, title):
        type_text(self.server.address + address)
        key("Return")
        self.program.wait_window(title)
        self.reaches(title)

    def bar(self, name, role):
        return wait_for(lambda: self.parts(name, role), f'"{name}"')

    def parts(self, name, role):
        import pyatspi
        from gi.repository import GLib

        def below(node):
            if node.getRole() == role and name in (None, node.name) and \
                    node.getState().contains(pyatspi.STATE_SHOWING):
                yield node
            for child in node:
                if child is not None:
                    yield from below(child)

        with contextlib.suppress(GLib.Error):
            for application in pyatspi.Registry.getDesktop(0):
                if application is not None and application.get_process_id() == self.program.process.pid:
                    application.clear_cache()
                    return list(below(application))
        return []


if __name__ == "__main__":
    main(warnings="ignore")
