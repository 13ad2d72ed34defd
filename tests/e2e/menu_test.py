"""The drawn menus with the mouse alone, and the commands behind them in the real engine."""

import os
import time

from harness import LABELS, ProgramTest, another_program, main, run, wait_for

GREEN, BLUE = (0, 128, 0), (0, 0, 255)


class Menus(ProgramTest):
    def setUp(self):
        super().setUp()
        self.program = self.start(self.page("/", "<title>Green</title><body style='background:green'>ship shape"))
        self.program.wait_title("Green")
        wait_for(lambda: self.program.page_pixel(self.screen) == GREEN, "the page")

    def gone(self, how):
        wait_for(lambda: self.program.menu() is None, f"no menu after {how}")

    def test_opens_below_its_label_and_slides_along_the_bar(self):
        left, top, _, _ = self.program.rect
        self.assertEqual(self.program.open_menu("File")[:2], (left + 8, top + 39))
        places = set()
        for label in ("Edit", "View", "Favourites", "Launch", "Tabs", "Help", "Tabs", "File"):
            x, y = LABELS[label]
            self.program.move(x, y)
            time.sleep(0.1)
            self.program.move(x + 1, y)
            time.sleep(0.2)
            places.add(wait_for(self.program.menu, f"the menu {label}")[0])
        self.assertEqual(len(places), 7)

    def test_a_press_anywhere_else_ends_it(self):
        left, top, _, _ = self.program.rect
        for how, x, y in (("title bar", 300, 12), ("page", 350, 300)):
            self.program.open_menu("File")
            self.program.click(x, y)
            self.gone(f"a press on the {how}")
            self.program.move(350, 440)
        self.program.open_menu("File")
        run("xdotool", "mousemove", str(left + 900 if left < 300 else 20), str(top - 60 if top > 100 else 850), "click", "1")
        self.gone("a press on the desktop")
        with another_program() as window:
            run("wmctrl", "-i", "-a", self.program.window)
            self.program.wait_active(self.program.window)
            self.program.open_menu("File")
            run("wmctrl", "-i", "-a", window)
            self.gone("another window's becoming active")
        # The last one, since the label goes on as one that was pressed.
        run("wmctrl", "-i", "-a", self.program.window)
        self.program.wait_active(self.program.window)
        self.program.open_menu("File")
        self.program.click(*LABELS["File"])
        self.gone("a press on its own label")

    def test_rows_do_what_they_say(self):
        self.program.choose("File", 0)  # New Tab
        self.gone("a row")
        wait_for(lambda: self.program.title != "Green", "a new tab on show")
        self.program.choose("Tabs", 2, 1)  # the first tab
        self.program.wait_title("Green")
        self.program.choose("View", 3)  # Refresh
        wait_for(lambda: self.server.requests.count("/") == 2, "a second request")

    def test_offline_sends_nothing(self):
        self.program.choose("File", 6, 3)  # Work Offline
        time.sleep(0.3)
        before = len(self.server.requests)
        self.program.type_address(self.page("/away", "<title>Away</title><body style='background:blue'>"))
        time.sleep(2)
        self.assertEqual(len(self.server.requests), before)
        self.program.choose("File", 6, 3)  # Work Online
        self.program.type_address(self.server.address + "/away")
        wait_for(lambda: self.program.page_pixel(self.screen) == BLUE, "the page, online again")

    def test_the_keys_of_any_browser(self):
        program = self.program
        program.click(350, 300)
        program.key("ctrl+l")
        run("xdotool", "type", self.page("/blue", "<title>Blue</title><body style='background:blue'>"))
        program.key("Return")
        program.wait_title("Blue")
        program.key("alt+Left")
        program.wait_title("Green")
        program.key("alt+Right")
        program.wait_title("Blue")
        program.key("F5")
        wait_for(lambda: self.server.requests.count("/blue") >= 2, "the page anew")
        program.key("ctrl+t")
        wait_for(lambda: program.title != "Blue", "a new tab")
        program.key("ctrl+Tab")
        program.wait_title("Blue")
        program.key("ctrl+shift+Tab")
        wait_for(lambda: program.title != "Blue", "the new tab")
        program.key("ctrl+w")
        program.wait_title("Blue")

    def test_a_word_is_found_on_the_page(self):
        before = self.screen.shot()
        self.program.key("ctrl+f")
        time.sleep(0.7)
        run("xdotool", "type", "shape")
        wait_for(lambda: self.screen.shot() != before, "the find bar")
        time.sleep(0.5)
        left, top, width, height = self.program.rect
        found = self.screen.shot().crop((left + 5, top + 105, left + width - 20, top + 180))
        self.assertGreater(len(found.getcolors(100000)), 20, "a highlighted word among the page's text")
        self.program.key("Escape")
        time.sleep(0.5)

    def test_a_page_is_printed_to_a_file(self):
        target = os.path.join(self.program.home, "printed.pdf")
        self.program.key("ctrl+p")
        dialog = wait_for(lambda: run("xdotool", "search", "--onlyvisible", "--name", "^Print", check=False), "the dialog")
        dialog = dialog.split()[-1]
        time.sleep(1.5)
        self.print_to(dialog, target)
        wait_for(lambda: os.path.exists(target) and os.path.getsize(target) > 0, "the printed file")
        wait_for(lambda: "ship shape" in run("pdftotext", target, "-", check=False), "its text")

    def print_to(self, dialog, target):
        """Chooses the file printer by name over the accessibility bus, its file, and Print."""
        import pyatspi

        def below(node, depth=0):
            yield node
            if depth < 25:
                for child in node:
                    if child is not None:
                        yield from below(child, depth + 1)

        def find(role, name):
            for application in pyatspi.Registry.getDesktop(0):
                if application is not None and "marlowick" in application.name.lower():
                    for node in below(application):
                        if node.getRoleName() == role and name in node.name:
                            return node
            return None

        cell = wait_for(lambda: find("table cell", "Print to File"), "the file printer")
        cell.queryComponent().grabFocus()
        cell.parent.querySelection().selectChild(cell.getIndexInParent())
        button = wait_for(lambda: find("push button", ".pdf") or find("push button", "output"), "the file's button")
        button.queryAction().doAction(0)
        time.sleep(1)
        self.program.key("ctrl+a")
        run("xdotool", "type", target)
        self.program.key("Return")
        time.sleep(1)
        wait_for(lambda: find("push button", "Print"), "Print").queryAction().doAction(0)


if __name__ == "__main__":
    main()
