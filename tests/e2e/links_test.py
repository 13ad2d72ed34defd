"""What the user does with a link, the page's menu, and windows that a page wants without a press."""

import os

from harness import ProgramTest, main, reply, run, wait_for
from widgets import Widgets

# Places in the main window: a link, a picture, the page beside them, the buttons of the first two tabs.
LINK, PICTURE, BESIDE = (350, 150), (250, 300), (500, 400)
FIRST_TAB, SECOND_TAB = (75, 92), (225, 92)
YELLOW, AQUA = (255, 255, 0), (0, 255, 255)

PAGE = """<title>Links</title><body style='margin:0'>
<a href='/new' style='display:block;height:100px;background:yellow'>Link</a>
<img src='/picture' style='display:block;width:400px;height:200px'>"""
DRAWING = "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='10'><rect width='20' height='10' fill='aqua'/></svg>"


class Links(ProgramTest):
    def begin(self, policy=0):
        self.page("/new", "<title>New page</title><body style='background:lime'>")
        self.page("/picture", lambda handler: reply(handler, DRAWING, kind="image/svg+xml"))
        self.program = self.start(self.page("/", PAGE), settings={"Popups": str(policy)})
        self.show_links()

    def show_links(self):
        self.program.click(*FIRST_TAB)
        self.program.wait_title("Links")
        for place, colour in ((LINK, YELLOW), (PICTURE, AQUA)):
            wait_for(lambda: self.program.pixel(self.screen, *place) == colour, "the page, painted")

    def wait_requests(self, path, times):
        wait_for(lambda: self.server.requests.count(path) >= times, f"request {times} of {path}")

    def press_holding(self, *keys, button=1):
        self.program.move(*LINK)
        for name in keys:
            run("xdotool", "keydown", name)
        run("xdotool", "click", str(button))
        for name in keys:
            run("xdotool", "keyup", name)

    def test_a_press_says_where_a_link_opens(self):
        self.begin()  # no page may open windows: what the user chose is none of theirs
        program = self.program
        for times, keys in enumerate(((), ("ctrl",)), 1):
            self.press_holding(*keys, button=1 if keys else 2)
            self.wait_requests("/new", times)
            self.assertEqual(program.title, "Links", "the tab opens behind the one on show")
            self.assertEqual(program.pixel(self.screen, *LINK), YELLOW)
        program.click(*SECOND_TAB)
        program.wait_title("New page")
        wait_for(lambda: program.page_pixel(self.screen) == (0, 255, 0), "the page of the tab behind, at its full size")
        for keys in (("shift",), ("ctrl", "shift")):
            self.show_links()
            self.press_holding(*keys, button=2 if keys == ("shift",) else 1)
            program.wait_title("New page")
        self.assertEqual(list(program.windows()), [program.window])
        self.show_links()
        self.press_holding("shift")
        program.wait_window("New page")
        self.assertEqual(program.title, "Links")

    def test_a_link_of_a_plain_window_opens_in_the_program(self):
        self.begin()
        program = self.program
        self.page("/new", PAGE.replace("Links", "Plain").replace("/new", "/deep"))
        self.page("/deep", "<title>Deep</title>")
        self.press_holding("shift")
        plain = program.wait_window("Plain")
        self.wait_requests("/picture", 2)
        run("xdotool", "windowactivate", "--sync", plain)
        run("xdotool", "mousemove", "--window", plain, "300", "90", "keydown", "shift", "click", "2", "keyup", "shift")
        self.wait_requests("/deep", 1)
        program.wait_title("Deep")
        self.assertEqual(len(program.windows()), 2)

    def test_selected_words_are_searched_for(self):
        self.server.pages["/find"] = lambda handler: reply(handler, f"<title>{handler.path}</title>")
        home = self.home(files={}, Popups="0")
        os.makedirs(os.path.join(home, "engine"))
        with open(os.path.join(home, "engine", "engine.ini"), "w") as file:
            file.write(f"[Element]\nsearch={self.server.address}/find?q=%s\n")
        page = ("<title>Words</title><body style='margin:0'><div style='height:300px;background:yellow'>"
                "www.some_place.org and more words than a menu has room for</div>"
                "<script>getSelection().selectAllChildren(document.querySelector('div'))</script>")
        self.program = program = self.start(self.page("/", page), home=home)
        program.wait_title("Words")
        wait_for(lambda: program.pixel(self.screen, 350, 250) == YELLOW, "the page, painted")
        self.choose((35, 112), 'Search for "www.some_place.org and more wo…"')
        program.wait_title("/find?q=www.some_place.org%20and%20more%20words%20than%20a%20menu%20has%20room%20for")

    def choose(self, place, row):
        self.program.click(*place, button=3)
        wait_for(self.program.menu, "the page's menu")
        self.program.press_row(row)
        wait_for(lambda: not self.program.menu(), "the end of the menu")

    def paste_address(self):
        self.program.click(400, 57)
        self.program.key("ctrl+a", "ctrl+v", "Return")

    def test_the_menu_of_a_link_and_of_a_picture(self):
        self.begin()
        program = self.program
        self.choose(LINK, "Open Link in New Tab")
        self.wait_requests("/new", 1)
        self.assertEqual(program.title, "Links")
        self.choose(LINK, "Open Link in New Window")
        plain = program.wait_window("New page")
        run("wmctrl", "-i", "-c", plain)
        wait_for(lambda: plain not in program.windows(), "the window's end")
        for place, row, begins in ((LINK, "Save Link As...", b"<title>New page"), (PICTURE, "Save Picture As...", b"<svg")):
            path = os.path.join(os.path.dirname(program.home), row[:9])
            with open(path, "w") as file:
                file.write("the file before")
            self.choose(place, row)
            program.wait_active(program.wait_window("Save As"))
            program.type_path("Save As", path)
            self.wait_content(path, begins)
        self.choose(PICTURE, "Copy Picture Address")
        self.paste_address()
        self.wait_requests("/picture", 3)
        program.key("alt+Left")
        self.show_links()
        self.choose(LINK, "Copy Link Address")
        self.paste_address()
        program.wait_title("New page")

    def wait_content(self, path, begins):
        def has():
            with open(path, "rb") as file:
                return file.read().startswith(begins)

        wait_for(has, f"the content of {path}")

    def test_the_menu_of_the_page(self):
        self.begin()
        program = self.program
        program.type_address(self.server.address + "/new")
        program.wait_title("New page")
        self.choose(BESIDE, "Back")
        self.show_links()
        self.choose(BESIDE, "Forward")
        program.wait_title("New page")
        self.choose(BESIDE, "Refresh")
        self.wait_requests("/new", 2)
        self.choose(BESIDE, "View Source")
        wait_for(lambda: program.title.startswith("view-source:") or "ource" in program.title, "the source")

    def test_a_window_without_a_press_is_held_back(self):
        self.begin(policy=2)
        program = self.program
        address = self.page("/held", "<title>Held</title><body style='background:blue'>"
                            "<script>for (const n of [1, 2, 2]) open('/new?' + n); fetch('/through')</script>")
        program.type_address(address)
        self.wait_requests("/through", 1)
        text = "127.0.0.1 wants to open 2 new windows."
        wait_for(lambda: program.place("Held", text, "label"), "the bar")
        self.assertEqual([path for path in self.server.requests if "new" in path], [])
        program.press("Held", "Open")
        for n in (1, 2):
            self.wait_requests(f"/new?{n}", 1)
        program.wait_title("New page")
        program.click(*FIRST_TAB)
        program.wait_title("Held")
        self.assertIsNone(program.place("Held", text, "label"))

        program.key("F5")
        wait_for(lambda: program.place("Held", text, "label"), "the bar of the page, loaded again")
        program.press("Held", "Allow for This Site")
        self.wait_requests("/new?2", 2)
        program.click(*FIRST_TAB)
        program.wait_title("Held")
        program.key("F5")  # nobody is asked any more
        self.wait_requests("/new?2", 3)
        program.wait_title("New page")
        program.click(*FIRST_TAB)
        program.wait_title("Held")
        program.choose_row("View", "Internet Options...")  # the permission is taken back
        options = Widgets(program, "Internet Options")
        options.fill("Sites that may open windows:", "http://other.example")
        options.click("OK")
        options.wait_end()
        program.key("F5")
        wait_for(lambda: program.place("Held", text, "label"), "the bar again")
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    main(warnings="ignore")
