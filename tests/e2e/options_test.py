"""The options, the launch menu's own dialogs and the about box, as people use them."""

import os
import stat
import time

from harness import ProgramTest, main, run, wait_for
from hosts import Hosts
from inputs import click_at, key, type_text
from widgets import Widgets

OPTIONS = "Marlowick Options"
NEW_TAB, SEARCH, HISTORY = (160, 60), (260, 60), (227, 60)  # places in the main window
FIRST_TAB = (75, 92)


def coloured(title, colour, more=""):
    return f"<title>{title}</title><body style='margin:0;background:{colour}'>{more}</body>"


class Options(ProgramTest):
    def begin(self, address="about:blank", **settings):
        self.program = self.start(address, settings={"Default": "about:blank", **settings})
        return self.program

    def open(self):
        self.program.choose("View", 8, 4)
        return Widgets(self.program, OPTIONS)

    def ini(self):
        with open(os.path.join(self.program.home, "browser.ini"), newline="") as file:
            return file.read()

    def path(self, name):
        return os.path.join(self.program.home, name)

    def edge(self):
        """The colours of the left edge, which no dialog covers."""
        left, top, _, _ = self.program.rect
        return self.screen.shot().crop((left, top + 60, left + 5, top + 200)).getcolors(1000)

    def wait_tabs(self, count):
        """The number of tabs, by the button behind the last one."""
        wait_for(lambda: len(self.tabs()) == count, f"{count} tabs")

    def tabs(self):
        import pyatspi

        for application in pyatspi.Registry.getDesktop(0):
            if application is not None and application.get_process_id() == self.program.process.pid:
                application.clear_cache()
                return pyatspi.findAllDescendants(application, lambda node: node.getRole() == pyatspi.ROLE_PAGE_TAB)
        return []

    def test_every_option_acts(self):
        home = self.page("/home", coloured("Home page", "white", "<a href='/popup' target=_blank style='display:block;"
                                           "height:200px;background:yellow'>Popup</a>"))
        self.page("/popup", coloured("Popup page", "aqua"))
        mine, found = self.page("/mine", coloured("My page", "lime")), self.page("/found", coloured("Found page", "tan"))
        program = self.begin(home, Popups="0", History=" 0", SearchTab=" 0", Search="about:blank")
        program.wait_title("Home page")
        with open(self.path("autocomplete.dat"), "w", newline="") as file:
            file.write("http://completed.test/\r\n")
        before = self.edge()

        options = self.open()
        options.click("Start at same URL as current tab", "Open history in a new tab", "Open search in a new tab", "Defaults")
        options.click("My choice:")
        key("Tab")
        type_text(mine)
        key("Tab", "ctrl+a")
        type_text(found)
        options.click("Misc", "a new tab", "Use fast screen refresh when resizing", "Skins", "Steel")
        wait_for(lambda: len(options.all("Steel")) > 1, "the skin's name")
        self.assertEqual(self.edge(), before, "nothing is applied yet")
        options.click("Clear", "Do not use auto complete", "Cookies")
        self.assertFalse(options.enabled("Edit Filters"))
        options.click("Automatically remove cookies based on word filters")
        wait_for(lambda: options.enabled("Edit Filters"), "the filters' button")
        options.click("Show me a list of new cookies and I will confirm the ones to remove", "Do not remove any newly added cookies")
        wait_for(lambda: not options.enabled("Edit Filters"), "the filters' button, off")
        options.click("Ok")
        options.wait_end()
        self.assertEqual(self.ini(), "".join(f"[{name}]\r\n{value}\r\n\r\n" for name, value in (
            ("Skin", "skins\\Steel"), ("History", " 1"), ("SearchTab", " 1"), ("Search", found), ("Default", mine),
            ("Popups", "2"), ("Paint", " 1"), ("NewTab", "1"), ("AutoComplete", " 1"), ("CookieTrap", "0"))) + "\r\n")
        wait_for(lambda: self.edge() != before, "the new skin")

        # Every later action goes by it.
        program.click(400, 200)
        program.wait_title("Popup page")
        program.click(*FIRST_TAB)
        program.wait_title("Home page")
        program.click(*NEW_TAB)
        wait_for(lambda: self.server.requests.count("/home") == 2, "the same page in a new tab")
        program.choose("File", 0)
        program.wait_title("My page")
        program.click(*SEARCH)
        program.wait_title("Found page")
        self.wait_tabs(5)
        program.click(*HISTORY)
        self.wait_tabs(6)
        program.click(400, 57)
        key("ctrl+a")
        type_text("comp")
        time.sleep(0.5)  # for what must not come
        key("Return")
        self.wait_typed("comp")
        self.assertEqual(program.close(), 0)

    def wait_typed(self, text):
        """Until an address is in the list of those that were typed, at the latest when the options open."""
        self.open().click("Cancel")
        with open(self.path("autocomplete.dat")) as file:
            self.assertIn(text + "\n", file.read().replace("\r\n", "\n"))

    def test_it_stays_in_front_and_the_program_goes_on(self):
        program = self.begin(self.page("/", coloured("Page", "white", "<script>setInterval(() => fetch('/beat'), 200)</script>")))
        program.wait_title("Page")
        options = self.open()
        window = program.wait_window(OPTIONS)
        program.wait_active(window)
        left, top, _, height = program.rect
        click_at(left + 20, top + height - 60)
        wait_for(lambda: run("xdotool", "getactivewindow", check=False) == window, "the dialog in front again")
        beats = self.server.requests.count("/beat")
        wait_for(lambda: self.server.requests.count("/beat") > beats + 2, "the page that goes on")
        key("Escape")
        options.wait_end()
        self.assertEqual(program.close(), 0)

    def test_through_all_skins_with_ten_tabs(self):
        program = self.begin()
        for _ in range(9):
            program.click(*NEW_TAB)
        seen = [self.edge()]
        for skin in ("Midnight", "Paper", "Steel"):
            options = self.open()
            options.click("Skins", skin)
            # In the list, and as the name of the one on show.
            wait_for(lambda: len(options.all(skin)) > 1, "the skin's name")
            options.click("Ok")
            options.wait_end()
            wait_for(lambda: self.edge() not in seen, "the skin " + skin)
            seen.append(self.edge())
        options = self.open()
        options.click("Skins", "Default", "Ok")
        notice = Widgets(program, "Marlowick Information", message=True)
        self.assertTrue(notice.shows("You will need to restart Marlowick to display the skin you have selected."))
        notice.click("OK")
        options.wait_end()
        self.assertEqual(self.edge(), seen[-1], "until the next start")
        self.assertEqual(len(self.tabs()), 10)
        self.assertEqual(program.close(), 0)

    def test_odd_skins_are_shown_as_well_as_they_can_be(self):
        program = self.begin()
        for name, files in {"Empty": {}, "Broken": {"preview.bmp": b"BM and nothing more", "skin.ini": b"[name]\r\nA broken one\r\n"},
                            "Long": {"skin.ini": b"[name]\r\n" + b"Very long " * 500 + b"\r\n[description]\r\n" + b"x" * 5000}}.items():
            os.makedirs(self.path("skins/" + name))
            for file, content in files.items():
                with open(self.path(f"skins/{name}/{file}"), "wb") as out:
                    out.write(content)
        options = self.open()
        window = program.wait_window(OPTIONS)
        options.click("Skins")
        size = program.size(window)
        options.click("A broken one")
        wait_for(lambda: any("preview.bmp" in label.name for label in self.labels(options)), "the name of the broken file")
        key("Down", "Down")
        wait_for(lambda: any(label.name.startswith("Very long") for label in self.labels(options)), "the long name")
        self.assertEqual(program.size(window), size, "the dialog keeps its size")
        options.click("Ok")
        options.wait_end()
        self.assertEqual(program.close(), 0)

    @staticmethod
    def labels(options):
        import pyatspi

        found = []
        for top in options.tops():
            found += pyatspi.findAllDescendants(top, lambda node: node.getRole() == pyatspi.ROLE_LABEL)
        return found

    def test_both_are_cleared_on_the_real_files(self):
        program = self.begin(self.page("/", coloured("Page", "white")))
        program.wait_title("Page")
        wait_for(lambda: os.path.isdir(self.path("history")) and os.listdir(self.path("history")), "a day page")
        program.type_address(self.page("/typed", coloured("Typed", "white")))
        program.wait_title("Typed")
        options = self.open()
        self.assertIn("/typed", open(self.path("autocomplete.dat")).read())
        options.click("Clear")
        buttons = [node for node in options.all("Clear") if node.getRole() == options.pyatspi.ROLE_PUSH_BUTTON]
        self.assertEqual(len(buttons), 2)
        for button in buttons:
            box = button.queryComponent().getExtents(options.pyatspi.DESKTOP_COORDS)
            for _ in range(2):  # the second press finds nothing, and harms nothing
                click_at(box.x + box.width // 2, box.y + box.height // 2)
        wait_for(lambda: options.shows("The history is empty."), "the answer")
        self.assertEqual(os.listdir(self.path("history")), [])
        self.assertEqual(os.path.getsize(self.path("autocomplete.dat")), 0)
        options.click("Ok")
        options.wait_end()
        self.assertEqual(program.close(), 0)
        self.assertNotIn("/typed", "".join(open(self.path("autocomplete.dat")).readlines()) if os.path.exists(self.path("autocomplete.dat")) else "")

    def make_program(self, name, touches):
        path = os.path.join(os.path.dirname(self.program.home), name)
        with open(path, "w") as file:
            file.write(f"#!/bin/sh\ntouch '{touches}'\n")
        os.chmod(path, stat.S_IRWXU)
        return path

    def test_an_application_is_added_and_started(self):
        program = self.begin()
        ran = os.path.join(os.path.dirname(program.home), "it ran")
        path = self.make_program("a program", ran)
        program.choose("Launch", 0)
        launch = Widgets(program, "Customise Launch Menu")
        launch.click("Add")
        adding = Widgets(program, "Browse for file...")
        adding.click("Ok")  # says nothing, and stays
        adding.fill("Application Description:", "My tool")
        adding.click("Ok")
        adding.fill("Application Path:", path)
        adding.click("Ok")
        adding.wait_end()
        key("Escape")
        self.assertTrue(launch.shows("My tool"))
        launch.click("Close")
        launch.wait_end()
        with open(self.path("launch.dat"), newline="") as file:
            self.assertEqual(file.read(), f"My tool\r\n{path}\r\n")
        program.choose("Launch", 1, 1)
        wait_for(lambda: os.path.exists(ran), "the started program")
        self.assertEqual(program.close(), 0)

    def test_an_installed_application_fills_both_boxes(self):
        share = os.path.join(self.addTemporary(), "share")
        os.makedirs(os.path.join(share, "applications"))
        for name, command in (("Charts, tides", "sh -c true %U"), ("Almanac", "sh")):
            with open(os.path.join(share, "applications", name.split(",")[0] + ".desktop"), "w") as file:
                file.write(f"[Desktop Entry]\nType=Application\nName={name}\nExec={command}\nIcon=help-about\n")
        self.program = program = self.start("about:blank", settings={"Default": "about:blank"},
                                            environment={"XDG_DATA_DIRS": share + ":/usr/share"})
        program.choose("Launch", 0)
        Widgets(program, "Customise Launch Menu").click("Add")
        adding = Widgets(program, "Browse for file...")
        adding.click("Installed Applications...")
        chooser = Widgets(program, "Add to launch menu")
        wait_for(lambda: chooser.shows("Almanac"), "the list")
        type_text("chart")
        wait_for(lambda: not chooser.shows("Almanac"), "the search")
        key("Return")
        chooser.wait_end()
        wait_for(lambda: adding.text("Application Path:") == "sh -c true", "the command")
        self.assertEqual(adding.text("Application Description:"), "Charts tides")

    def addTemporary(self):
        import tempfile

        folder = tempfile.TemporaryDirectory(prefix="marlowick-e2e-")
        self.addCleanup(folder.cleanup)
        return folder.name

    def test_about(self):
        hosts = Hosts({"https://marlowick.example/": coloured("The project", "white")}, tls=True)
        self.addCleanup(hosts.close)
        tools = self.addTemporary()
        self.program = program = self.start("about:blank", settings={"Default": "about:blank"}, proxy=hosts.proxy,
                                            environment={"PATH": tools + ":" + os.environ["PATH"]})
        program.choose("Help", 0)
        about = Widgets(program, "About Marlowick")
        about.click("System Info...")
        message = Widgets(program, "Marlowick", message=True)
        wait_for(lambda: message.shows("System Information Is Unavailable At This Time"), "the message")
        message.click("OK")
        ran = os.path.join(tools, "it ran")
        with open(os.path.join(tools, "hardinfo"), "w") as file:
            file.write(f"#!/bin/sh\ntouch '{ran}'\n")
        os.chmod(os.path.join(tools, "hardinfo"), stat.S_IRWXU)
        about.click("System Info...")
        wait_for(lambda: os.path.exists(ran), "the information tool")
        about.click("https://marlowick.example/")
        about.wait_end()
        program.wait_title("The project")
        self.assertEqual(len(self.tabs()), 2)
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    main(warnings="ignore")
