"""The Favourites menu with the mouse, and the windows that add, arrange, import and export."""

import os
import shutil

from harness import LABELS, ProgramTest, another_program, click_at, key, main, move_to, run, type_text, wait_for

GREEN = (0, 128, 0)
FIXED_ROWS, FIRST_ROW, ROW = 8, 49, 15  # pixels: where the rows begin in a deeper and in the top window, and a row


def shortcut(address):
    return f"[InternetShortcut]\r\nURL={address}\r\n"


class Favourites(ProgramTest):
    def setUp(self):
        super().setUp()
        self.green = self.page("/green", "<title>Green</title><body style='background:green'>")
        self.folder = self.home()
        self.favourites = os.path.join(self.folder, "favourites")
        shutil.rmtree(self.favourites)
        self.link("Art/Deep/Deeper/green", self.green)
        self.link("Art/one", self.green)
        self.link("Zoo/two", self.green)
        self.link("home", self.green)
        self.program = self.start(self.page("/", "<title>Start</title><body style='background:blue'>"), home=self.folder)
        self.program.wait_title("Start")

    def link(self, name, address):
        path = os.path.join(self.favourites, name + ".url")
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", newline="") as file:
            file.write(shortcut(address))

    def menus(self):
        """The open menu windows from left to right: left, top, width, height."""
        return sorted(self.program.popups())

    def open(self):
        x, y = LABELS["Favourites"]
        self.program.click(x, y)
        self.program.move(x + 2, y + 1)
        return wait_for(self.menus, "the favourites")[0]

    def hover(self, window, row, first=FIXED_ROWS):
        left, top, _, _ = window
        move_to(left + 40, top + first + row * ROW + 7)
        move_to(left + 42, top + first + row * ROW + 7)

    def deeper(self, count):
        return wait_for(lambda: len(self.menus()) == count and self.menus(), f"{count} windows")[-1]

    def gone(self, how):
        wait_for(lambda: not self.menus(), f"no menu after {how}", 8)

    def test_leads_down_three_levels_to_a_page(self):
        top = self.open()
        left, above, _, _ = self.program.rect
        self.assertEqual(top[:2], (left + 1680 // 15, above + (300 + 95 + 195 + 7) // 15))
        self.hover(top, 0, FIRST_ROW)  # Art
        art = self.deeper(2)
        self.assertEqual(art[0], top[0] + top[2] - 4)
        self.hover(art, 0)
        deep = self.deeper(3)
        self.hover(deep, 0)
        deeper = self.deeper(4)
        left, above, _, _ = deeper
        click_at(left + 40, above + FIXED_ROWS + 7)
        self.program.wait_title("Green")
        self.gone("a shortcut")
        wait_for(lambda: self.program.page_pixel(self.screen) == GREEN, "the page")

    def test_every_way_out_ends_all_levels(self):
        def two_levels():
            self.hover(self.open(), 0, FIRST_ROW)
            self.deeper(2)

        two_levels()
        self.program.click(500, 400)
        self.gone("a press on the page")
        two_levels()
        self.program.click(400, 12)
        self.gone("a press on the title bar")
        two_levels()
        key("Escape")
        self.gone("Escape")
        two_levels()
        left, top, _, _ = self.program.rect
        click_at(left + 900 if left < 300 else 20, 880)
        self.gone("a press on the desktop")
        with another_program() as window:
            run("wmctrl", "-i", "-a", self.program.window)
            self.program.wait_active(self.program.window)
            two_levels()
            run("wmctrl", "-i", "-a", window)
            self.gone("another window's becoming active")
        run("wmctrl", "-i", "-a", self.program.window)
        self.program.wait_active(self.program.window)
        # Another menu of the bar takes over, and back.
        two_levels()
        x, y = LABELS["Launch"]
        self.program.move(x, y)
        self.program.move(x + 1, y)
        wait_for(lambda: len(self.menus()) == 1, "the Launch menu alone")
        x, y = LABELS["Favourites"]
        self.program.move(x, y)
        self.program.move(x + 1, y)
        self.deeper(1)
        self.hover(self.menus()[0], 0, FIRST_ROW)
        self.deeper(2)
        # Leaving the program takes all of it along.
        self.assertEqual(self.program.close(), 0)
        self.assertEqual(self.menus(), [])

    def test_a_long_folder_scrolls_to_its_end(self):
        for number in range(150):
            self.link(f"Long/{number:03}", self.green)
        top = self.open()
        self.hover(top, 1, FIRST_ROW)  # Art, Long, Zoo
        left, above, width, height = long = self.deeper(2)
        self.assertLessEqual(above + height, 900 + 6)  # the strip goes over by up to 4 pixels of the sizing frame
        before = self.screen.shot().crop((left, above, left + width, above + height))
        for _ in range(300):
            run("xdotool", "mousemove", str(left + 30), str(above + height - 8), "mousemove_relative", "1", "0")
        after = self.screen.shot().crop((left, above, left + width, above + height))
        self.assertNotEqual(list(before.getdata()), list(after.getdata()))
        self.assertEqual(self.deeper(2), long)
        # The last row stands above the frame: a click on it opens its page.
        click_at(left + 40, above + height - 30)
        self.program.wait_title("Green")

    def test_the_wheel_scrolls(self):
        for number in range(150):
            self.link(f"Long/{number:03}", self.green)
        self.hover(self.open(), 1, FIRST_ROW)
        left, above, width, height = self.deeper(2)
        move_to(left + 40, above + 100)
        box = (left, above, left + width, above + height)
        first = list(self.screen.shot().crop(box).getdata())
        run("xdotool", "click", "--repeat", "5", "5")
        wait_for(lambda: list(self.screen.shot().crop(box).getdata()) != first, "another picture")
        run("xdotool", "click", "--repeat", "6", "4")
        wait_for(lambda: list(self.screen.shot().crop(box).getdata()) == first, "the first picture", 5)

    def test_adds_a_page_that_the_menu_then_has(self):
        key("ctrl+d")
        window = self.program.wait_window("Add to Favourites")
        self.program.wait_active(window)
        key("ctrl+a")
        type_text("Begin: here/there")
        key("Return")
        wait_for(lambda: os.path.exists(os.path.join(self.favourites, "Begin- here-there.url")), "the shortcut")
        with open(os.path.join(self.favourites, "Begin- here-there.url"), newline="") as file:
            self.assertEqual(file.read(), shortcut(self.server.address + "/"))
        top = self.open()
        self.assertEqual(top[3], FIRST_ROW + 4 * ROW + 8)

    def test_organises_imports_and_exports(self):
        sample = os.path.join(os.path.dirname(__file__), "..", "gtk", "favourites", "samples", "firefox.html")
        shutil.copy(sample, os.path.join(self.folder, "browser.html"))
        top = self.open()
        click_at(top[0] + 40, top[1] + FIXED_ROWS + ROW + 7)
        title = "Organise Favourites"
        self.program.wait_active(self.program.wait_window(title))
        self.gone("the window")
        self.program.press(title, "Import...")
        self.program.answer_open("Import Bookmarks", os.path.join(self.folder, "browser.html"))
        imported = os.path.join(self.favourites, "browser")
        wait_for(lambda: os.path.isdir(imported), "the imported folder")
        with open(os.path.join(imported, "Guide & Tour.url"), newline="") as file:
            self.assertEqual(file.read(), shortcut("https://docs.bank.test/guide?a=1&copy=2&b=%22x%22"))
        self.program.press(title, "Export...")
        out = os.path.join(self.folder, "out.html")
        self.program.answer_save("Export Favourites", out)
        wait_for(lambda: os.path.exists(out), "the exported file")
        with open(out) as file:
            self.assertIn('<A HREF="https://docs.bank.test/guide?a=1&amp;copy=2&amp;b=%22x%22">Guide &amp; Tour</A>',
                          file.read())
        self.program.press(title, "Close")


if __name__ == "__main__":
    main()
