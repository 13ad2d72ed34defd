"""The log of visited pages: what titles from outside can do to it, and two programs that write it at once."""

import os
import re
import shutil
import tempfile
import time

from harness import ProgramTest, main, run, wait_for

# Each would ask the server for /escaped, or change the title, if anything of it ran.
HOSTILE = [
    "<script>fetch('{server}/escaped'); top.document.title = 'escaped'</script>",
    "<img src=x onerror=\"new Image().src='{server}/escaped'\"><img src='{server}/escaped'>",
    "--><script src={server}/escaped></script>",
    "<meta http-equiv=refresh content='0;url={server}/escaped'>",
    "</a><iframe src='{server}/escaped'></iframe><iframe srcdoc=\"<script>top.location='{server}/escaped'</script>\"></iframe>",
    "</font></body></html><form action='{server}/escaped'><input autofocus onfocus='form.submit()'></form>",
    "<link rel=stylesheet href={server}/escaped><style>@import '{server}/escaped'; body {{ display: none }}</style>",
    "<svg onload=\"location='{server}/escaped'\"><object data={server}/escaped></object><base href={server}/escaped/>",
]
ENTRY = r'<font face="Arial"><a href="{}" target="_top">{}</a> at \d\d:\d\d:\d\d</font><br>'
ADDRESS = '<font face="Arial"><font size="1">{}</font><br>'


class History(ProgramTest):
    def setUp(self):
        super().setUp()
        folder = tempfile.mkdtemp(prefix="marlowick-e2e-")
        self.addCleanup(shutil.rmtree, folder, ignore_errors=True)
        self.home = os.path.join(folder, "a höme with ß and 日本")
        self.page("/blank", "<title>Blank</title>")

    def open_history(self, program):
        program.click(227, 61)
        program.wait_title("History")

    def day_pages(self):
        folder = os.path.join(self.home, "history")
        return sorted(os.listdir(folder)) if os.path.isdir(folder) else []

    def log(self):
        """The lines behind the last heading of today's page."""
        if not self.day_pages():
            return []
        with open(os.path.join(self.home, "history", self.day_pages()[-1]), newline="", encoding="utf-8") as file:
            text = file.read()
        return text.split("</h1>\r\n")[-1].split("\r\n")[:-1]

    def heading(self):
        """The date at the top of today's page."""
        with open(os.path.join(self.home, "history", self.day_pages()[-1]), encoding="utf-8") as file:
            return file.read().split("<h1>")[1].split("</h1>")[0]

    def logged(self, address):
        return any(ADDRESS.format(address) == line for line in self.log())

    def visit(self, program, path, title):
        program.type_address(self.server.address + path)
        program.wait_title(title)
        wait_for(lambda: self.logged(self.server.address + path), f"the entry of {path}")
        time.sleep(0.3)  # the last of its events writes into the address field

    def begin(self, where):
        program = self.start(self.server.address + "/blank", home=self.home, settings={"History": str(where)})
        program.wait_title("Blank")
        wait_for(lambda: self.logged(self.server.address + "/blank"), "the first entry")
        return program

    def test_nothing_of_a_title_runs(self):
        program = self.begin(1)
        self.assertRegex(self.heading(), r"\d.*\d", "the date in the system's short form")
        titles = [title.format(server=self.server.address) for title in HOSTILE]
        for number, title in enumerate(titles):
            escaped = title.replace("&", "&amp;").replace("<", "&lt;")
            self.page(f"/page{number}", f"<title>{escaped}</title>")
            self.visit(program, f"/page{number}", title)
        lines = self.log()
        self.assertEqual(len(lines), 2 * (len(titles) + 1))
        for number, title in enumerate(titles):
            entry, address = lines[2 * number + 2:2 * number + 4]
            url = f"{self.server.address}/page{number}"
            self.assertRegex(entry, "^" + ENTRY.format(re.escape(url), re.escape(title)) + "$")
            self.assertEqual(address, ADDRESS.format(url))

        before = list(self.server.requests)
        self.open_history(program)
        time.sleep(3)
        self.assertEqual(self.server.requests, before, "no request of a shown log")
        self.assertEqual(program.title, "History")
        self.assertEqual(list(program.windows()), [program.window])
        self.assertEqual(program.close(), 0)

    def links(self, program):
        """The links on show, by name, with their places."""
        import pyatspi
        from gi.repository import GLib

        found = {}

        def look(node):
            if node.getRole() == pyatspi.ROLE_LINK:
                found[node.name] = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
            for child in node:
                if child is not None:
                    look(child)

        try:
            for application in pyatspi.Registry.getDesktop(0):
                if application is not None and application.get_process_id() == program.process.pid:
                    look(application)
        except (GLib.Error, NotImplementedError):  # something went away while it was looked at
            pass
        return found

    def click_link(self, program, name):
        def place():
            one = self.links(program).get(name)
            return one if one and one.width > 0 else None

        at = wait_for(place, f'the link "{name}"')
        run("xdotool", "mousemove", str(at.x + 10), str(at.y + at.height // 2), "click", "1")

    def test_links_change_the_frame_or_the_tab(self):
        program = self.begin(0)
        self.page("/visited", "<title>Visited page</title>")
        self.visit(program, "/visited", "Visited page")
        old = "03 February 2001.htm"
        with open(os.path.join(self.home, "history", old), "w", encoding="utf-8", newline="") as file:
            file.write("<title>Old</title><a href='http://127.0.0.1/' target=_top>An old page</a>\r\n")
        self.open_history(program)
        wait_for(lambda: "Visited page" in self.links(program), "today's entries")
        before = len(self.server.requests)
        self.click_link(program, old[:-4])
        wait_for(lambda: "An old page" in self.links(program), "the old day's entries")
        shown = self.links(program)
        self.assertNotIn("Visited page", shown)
        self.assertIn(old[:-4], shown, "the days stay")
        self.assertEqual(program.title, "History")
        self.click_link(program, next(name for name in shown if re.match(r"\d\d \w+ 20[2-9]\d$", name)))
        self.click_link(program, "Visited page")
        program.wait_title("Visited page")
        self.assertEqual(self.server.requests[before:].count("/visited"), 1)
        wait_for(lambda: old[:-4] not in self.links(program), "the end of the frame set")
        self.assertEqual(list(program.windows()), [program.window])


if __name__ == "__main__":
    main(warnings="ignore")
