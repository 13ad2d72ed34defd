"""The self-made frame under a real window manager: moving, sizing, maximising, minimising, dropping."""

import itertools
import os
import subprocess
import sys
import time

from harness import ProgramTest, main, run, wait_for
from inputs import move_to

HERE = os.path.dirname(os.path.abspath(__file__))
SCREEN_AREA = (0, 0, 1280, 900)
CUT = 4  # pixels of the frame that lie off the screen there
GREEN = (0, 128, 0)


class Frame(ProgramTest):
    def setUp(self):
        super().setUp()
        self.program = self.start(self.page("/", "<title>Green</title><body style='background:green'>"))
        self.program.wait_title("Green")
        wait_for(lambda: self.program.page_pixel(self.screen) == GREEN, "the page")

    def rect_becomes(self, rect):
        try:
            wait_for(lambda: self.program.rect == rect, f"the rectangle {rect}")
        except AssertionError as failure:
            raise AssertionError(f"{failure}; it is {self.program.rect}") from None

    def state(self):
        return run("xprop", "-id", self.program.window, "WM_STATE")

    def double_click_title(self):
        self.program.move(300, 12)
        run("xdotool", "click", "--repeat", "2", "--delay", "60", "1")

    def test_title_and_grips_move_and_size_it(self):
        program = self.program
        left, top, width, height = program.rect
        program.drag(300, 12, 100, -50)
        self.rect_becomes((left + 100, top - 50, width, height))
        program.drag(width - 2, 200, 100, 30)
        self.rect_becomes((left + 100, top - 50, width + 100, height))
        program.drag(300, height - 2, 40, 60)
        self.rect_becomes((left + 100, top - 50, width + 100, height + 60))
        program.drag(width + 95, height + 55, -60, -40)
        self.rect_becomes((left + 100, top - 50, width + 40, height + 20))
        # The page follows, and no grip goes below the least size.
        left, top, width, height = program.rect
        wait_for(lambda: program.pixel(self.screen, width - 12, height - 30) == GREEN, "the page in the new corner")
        program.drag(width - 2, 150, -700, 0)
        self.rect_becomes((left, top, 375, height))

    def test_maximised_and_back_to_the_exact_rectangle(self):
        before = self.program.rect
        self.double_click_title()
        self.rect_becomes(SCREEN_AREA)
        self.program.drag(300, 12, 50, 50)
        self.rect_becomes(SCREEN_AREA)
        self.double_click_title()
        self.rect_becomes(before)

    def test_the_desktop_maximises_it_and_ends_that(self):
        program, before = self.program, self.program.rect

        def ask(what):
            run("wmctrl", "-i", "-r", program.window, "-b", f"{what},maximized_vert,maximized_horz")

        ask("add")
        self.rect_becomes(SCREEN_AREA)
        program.click(SCREEN_AREA[2] - 30 + CUT, 12 - CUT)
        self.rect_becomes(before)
        wait_for(lambda: "MAXIMIZED" not in run("xprop", "-id", program.window, "_NET_WM_STATE"), "the state's end")
        for begin in (self.double_click_title, lambda: ask("add")):
            begin()
            self.rect_becomes(SCREEN_AREA)
            ask("remove")
            self.rect_becomes(before)
        wait_for(lambda: program.page_pixel(self.screen) == GREEN, "the page in its old place")

    def test_maximised_its_frame_lies_off_the_screen(self):
        def buttons():
            width = self.program.rect[2]
            left, top = (width + CUT, -CUT) if self.program.rect == SCREEN_AREA else (width, 0)
            return self.screen.shot().crop(tuple(side + place for side, place in zip(
                (left - 52, top + 5, left - 5, top + 20), self.program.rect[:2] * 2)))

        self.program.move(350, 300)
        before = buttons()
        self.double_click_title()
        self.rect_becomes(SCREEN_AREA)
        self.program.move(350, 300)
        wait_for(lambda: list(buttons().getdata()) == list(before.getdata()), "the buttons at the screen's own edge")
        wait_for(lambda: self.program.pixel(self.screen, 300, 890 - CUT) != GREEN, "the status bar above the lower edge")
        # Menus and presses go by what is seen.
        self.program.click(24 - CUT, 32 - CUT)
        self.program.move(26 - CUT, 33 - CUT)
        self.assertEqual(wait_for(self.program.menu, "the menu")[:2], (8 - CUT, 39 - CUT))

    def test_a_drag_is_the_window_managers(self):
        left, top, width, height = self.program.rect
        self.program.drag(300, 12, -left - 9, -top - 6)
        self.rect_becomes((0, 0, width, height))  # the edges of the screen hold it

    def test_minimised_and_restored_through_the_task_bar(self):
        before = self.program.rect
        self.program.click(662, 12)
        wait_for(lambda: "Iconic" in self.state(), "a minimised window")
        self.assertEqual(len(self.program.managed()), 1, "the entry stays")
        run("wmctrl", "-i", "-a", self.program.window)
        wait_for(lambda: "Normal" in self.state(), "a restored window")
        self.rect_becomes(before)
        wait_for(lambda: self.program.page_pixel(self.screen) == GREEN, "the page again")
        run("xdotool", "windowminimize", self.program.window)
        wait_for(lambda: "Iconic" in self.state(), "a window minimised by the window manager")
        run("wmctrl", "-i", "-a", self.program.window)
        wait_for(lambda: self.program.page_pixel(self.screen) == GREEN, "the page again")

    def test_the_close_button_saves_what_was_typed(self):
        self.program.type_address(self.page("/typed", "<title>Typed</title>"))
        self.program.wait_title("Typed")
        self.program.click(694, 12)
        self.assertEqual(self.program.wait_end(), 0)
        with open(os.path.join(self.program.home, "autocomplete.dat"), newline="") as file:
            self.assertEqual(file.read(), self.server.address + "/typed\r\n")

    def drop(self, kind, value, x, y, title="Taken"):
        """`title`: the source's, over the place."""
        def shown(title):
            return run("xdotool", "search", "--onlyvisible", "--name", f"^{title}$", check=False)

        def steady(window):
            places = {run("xdotool", "getwindowgeometry", "--shell", window) for _ in range(5) if not time.sleep(0.03)}
            values = dict(line.split("=") for line in places.pop().splitlines())
            return (int(values["X"]), int(values["Y"])) if not places else None

        source = subprocess.Popen([sys.executable, os.path.join(HERE, "drag_source.py"), kind, value])
        try:
            window = wait_for(lambda: shown("Drag source"), "the source")
            at = wait_for(lambda: steady(window), "the source's place")
            move_to(at[0] + 60, at[1] + 30)
            run("xdotool", "mousedown", "1")
            for step in (10, 20, 30):
                move_to(at[0] + 60 + step, at[1] + 30)
            wait_for(lambda: shown("Dragging"), "the drag")
            left, top, _, _ = self.program.settled()
            tries = itertools.count()

            def there():
                tried = next(tries)
                move_to(left + x + tried % 2, top + y)  # the place is asked at every move
                return tried > 4 and shown(title)

            wait_for(there, f"the source to say: {title}")
            run("xdotool", "mouseup", "1")
            self.assertEqual(source.wait(20), 0, "the drag's end")
        finally:
            run("xdotool", "mouseup", "1")
            source.kill()
            source.wait(10)

    def test_a_text_dropped_on_a_tab_behind_loads_there(self):
        self.program.click(162, 61)
        self.program.click(230, 93)
        self.program.wait_title("Welcome to Marlowick")
        dropped = self.page("/dropped", "<title>Dropped</title><body style='background:blue'>")
        title = self.program.title
        self.drop("text", dropped, 75, 93)
        wait_for(lambda: "/dropped" in self.server.requests, "the dropped address")
        self.assertEqual(self.program.title, title, "the tab stays behind")
        self.program.click(75, 93)
        self.program.wait_title("Dropped")
        self.drop("file", "file:///etc/hostname\r\n", 75, 93, title="Dragging")
        self.program.wait_title("Dropped")

    def test_what_is_dropped_on_the_field_replaces_its_text_and_loads(self):
        self.page("/to/the/field", "<title>Dropped</title>")
        for kind, dropped, title in (("text", self.server.address + "/to/the\n  /field\n", "Dropped"),
                                     ("file", "file:///etc/hostname\r\n", "hostname")):
            self.drop(kind, dropped, 500, 57)
            self.program.wait_title(title)


class Doubled(ProgramTest):
    def test_everything_shows_at_double_size_with_sharp_edges(self):
        program = self.start(self.page("/", "<title>Green</title><body style='background:green'>"),
                             environment={"GDK_SCALE": "2"})
        program.wait_title("Green")
        wait_for(lambda: program.page_pixel(self.screen) == GREEN, "the page")
        left, top, width, height = program.rect
        self.assertGreaterEqual(width, 1280)
        shot = self.screen.shot()
        # The toolbar's art in blocks of two by two pixels.
        for x in range(40, 500, 2):
            for y in range(92, 150, 2):
                x0, y0 = left - left % 2 + x, top - top % 2 + y
                block = {shot.getpixel((x0 + i, y0 + j)) for i in (0, 1) for j in (0, 1)}
                self.assertEqual(len(block), 1, f"a block at {x}, {y}")


if __name__ == "__main__":
    main()
