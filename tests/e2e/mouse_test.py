"""The mouse on the tab strip, and a page on the whole screen."""

import time
import unittest

from harness import SCREEN, ProgramTest, main, run, wait_for

FIRST_TAB, TAB = (75, 92), 150  # a tab's place in the main window, and what lies between two
STRIP, WINDOW_WIDTH = (92, 640), 705
BLUE, LIME = (0, 0, 255), (0, 255, 0)


class Strip(ProgramTest):
    def begin(self, tabs):
        page = self.page("/", "<title>First</title>")
        for n in range(1, tabs):
            self.page(f"/{n}", f"<title>Tab {n}</title>")
        self.program = self.start(page, settings={"Default": self.page("/default", "<title>Default</title>")})
        self.program.wait_title("First")
        for n in range(1, tabs):
            self.program.click(160, 60)
            self.program.wait_title("Default")
            self.program.type_address(self.server.address + f"/{n}")
            self.program.wait_title(f"Tab {n}")

    def tab(self, n):
        return FIRST_TAB[0] + n * TAB, FIRST_TAB[1]

    def test_middle_press_double_click_and_wheel(self):
        self.begin(4)
        program = self.program
        program.click(*self.tab(1), button=2)  # one behind: the one on show stays
        wait_for(lambda: program.pixel(self.screen, *self.tab(3)) == program.pixel(self.screen, 640, 92), "three tabs")
        self.assertEqual(program.title, "Tab 3")
        program.click(*self.tab(1))
        program.wait_title("Tab 2")
        program.click(*FIRST_TAB, button=2)
        program.click(*FIRST_TAB)
        program.wait_title("First")  # the first tab stays
        program.click(*self.tab(2), button=2)
        program.click(*self.tab(1), button=2)
        wait_for(lambda: program.pixel(self.screen, *self.tab(1)) == program.pixel(self.screen, 640, 92), "one tab")
        # A double click where no tab is.
        left, top, _, _ = program.rect
        run("xdotool", "mousemove", str(left + 640), str(top + 92), "click", "--repeat", "2", "--delay", "80", "1")
        program.wait_title("Default")
        program.click(*self.tab(1))
        self.assertEqual(program.title, "Default")

    def test_the_wheel_scrolls_as_the_arrows_do(self):
        self.begin(6)
        program = self.program
        program.click(400, 92, button=4)  # at its start nothing is to be scrolled back
        program.click(*FIRST_TAB)
        program.wait_title("First")
        for _ in range(2):
            program.click(400, 92, button=5)
        program.click(*FIRST_TAB)
        program.wait_title("Tab 2")
        program.click(400, 92, button=4)
        program.click(*FIRST_TAB)
        program.wait_title("Tab 1")

    def test_a_press_on_a_bar_of_the_page_moves_no_window(self):
        self.page("/", "<title>Asks</title><script>open('/other')</script><body style='background:blue'>")
        program = self.start(self.server.address + "/")
        program.wait_title("Asks")
        left, top, width, height = wait_for(
            lambda: program.place("Asks", "127.0.0.1 wants to open a new window.", "label"), "the bar")
        before = program.rect
        program.drag(left - before[0] + 20, top - before[1] + height // 2, 120, 90)
        run("xdotool", "mousemove", str(left + 20), str(top + height // 2), "click", "--repeat", "2", "1")
        time.sleep(0.5)
        self.assertEqual(program.rect, before)


class Screen(ProgramTest):
    def whole(self, colour):
        shot = self.screen.shot()
        return all(shot.getpixel((x, y)) == colour for x in (2, SCREEN[0] - 3) for y in (2, SCREEN[1] - 3))

    def test_any_page_by_its_key(self):
        program = self.start(self.page("/", "<title>Page</title><body style='background:blue'>"))
        program.wait_title("Page")
        before = program.rect
        wait_for(lambda: program.page_pixel(self.screen) == BLUE, "the page, painted")
        for leave in ("F11", "Escape"):
            program.key("F11")
            wait_for(lambda: self.whole(BLUE), "the page on the whole screen")
            program.key(leave)
            wait_for(lambda: not self.whole(BLUE) and program.page_pixel(self.screen) == BLUE, "the page in its place")
            self.assertEqual(program.rect, before)
        # The program's other keys go on; another tab is to be seen with what is around it.
        program.key("F11")
        wait_for(lambda: self.whole(BLUE), "the page on the whole screen")
        program.key("ctrl+t")
        wait_for(lambda: not self.whole(BLUE), "the end of the whole screen")
        self.assertEqual(program.rect, before)
        self.assertEqual(program.close(), 0)

    @unittest.skip("a known fault: the page gets back to its place, and isn't told")
    def test_a_page_that_wants_it(self):
        self.page("/", "<title>Film</title><body style='margin:0'><div id=film style='height:300px;background:lime' "
                  "onclick='this.requestFullscreen()'></div><script>onfullscreenchange = () => "
                  "fetch('/full?' + (document.fullscreenElement !== null))</script>")
        program = self.start(self.server.address + "/")
        program.wait_title("Film")
        wait_for(lambda: program.pixel(self.screen, 350, 250) == LIME, "the page, painted")
        program.click(350, 250)
        wait_for(lambda: self.whole(LIME), "the film on the whole screen")
        wait_for(lambda: program.place("Film", "127.0.0.1 fills the whole screen. Press Escape to go back.", "label"),
                 "the notice")
        program.key("Escape")
        wait_for(lambda: not self.whole(LIME), "the end of the whole screen")
        wait_for(lambda: "/full?false" in self.server.requests, "the page, told")
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    main(warnings="ignore")
