"""The mouse on the tab strip, and a page on the whole screen."""

import time

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
    FILM = "<title>Film</title><body style='margin:0'><div id=film style='height:300px;background:lime' " \
           "onclick='this.requestFullscreen()'></div><script>document.onfullscreenchange = () => " \
           "fetch('/full?' + (document.fullscreenElement !== null))</script>"
    NOTICE = "127.0.0.1 fills the whole screen. Press Escape to go back."

    def begin(self):
        self.program = program = self.start(self.page("/", "<title>Page</title><body style='background:blue'>"))
        program.wait_title("Page")
        wait_for(lambda: program.page_pixel(self.screen) == BLUE, "the page, painted")
        return program

    def whole(self, colour):
        shot = self.screen.shot()
        return all(shot.getpixel((x, y)) == colour for x in (2, SCREEN[0] - 3) for y in (2, SCREEN[1] - 3))

    def fill(self, colour=BLUE):
        self.program.key("F11")
        wait_for(lambda: self.whole(colour), "the page on the whole screen")

    def wait_back(self, colour=BLUE):
        wait_for(lambda: not self.whole(colour) and self.program.pixel(self.screen, 350, 250) == colour,
                 "the page in its place")

    def told(self, full, times=1):
        wait_for(lambda: self.server.requests.count(f"/full?{full}") == times, f"the page, told {full} {times} times")

    def test_any_page_by_its_key(self):
        program = self.begin()
        before = program.rect
        for leave in ("F11", "Escape"):
            self.fill()
            program.key(leave)
            self.wait_back()
            self.assertEqual(program.rect, before)
        # The program's other keys go on; another tab is to be seen with what is around it.
        self.fill()
        program.key("ctrl+t")
        wait_for(lambda: not self.whole(BLUE), "the end of the whole screen")
        self.assertEqual(program.rect, before)
        self.assertEqual(program.close(), 0)

    def test_what_is_around_the_page_comes_back_for_keys_that_ask_for_it(self):
        program = self.begin()
        for number, key in enumerate(("ctrl+l", "alt+d", "F6", "ctrl+k", "ctrl+e")):
            self.fill()
            program.key(key)
            self.wait_back()
            program.wait_active(program.window)
            # A search is asked for behind the mark that stands there.
            program.key("ctrl+a")
            address = self.page(f"/{number}", f"<title>Page {number}</title><body style='background:blue'>")
            run("xdotool", "type", address)
            program.key("Return")
            program.wait_title(f"Page {number}")
            self.wait_back()
        self.fill()
        program.key("F10")
        wait_for(program.menu, "the menu")
        self.assertFalse(self.whole(BLUE))
        program.key("Escape")
        wait_for(lambda: not program.menu(), "the menu's end")
        self.assertEqual(program.close(), 0)

    def test_a_plain_window(self):
        program = self.begin()
        program.key("ctrl+n")
        plain = program.wait_window("Page")
        program.wait_active(plain)
        self.fill()
        program.key("ctrl+l")
        wait_for(lambda: not self.whole(BLUE), "the end of the whole screen")
        program.wait_active(plain)
        run("xdotool", "type", self.page("/next", "<title>Next</title>"))
        program.key("Return")
        program.wait_window("Next")
        self.assertEqual(program.close(), 0)

    def test_a_page_that_closes_itself_leaves_nothing_of_it(self):
        self.page("/window", "<title>Window</title><body style='background:lime' onclick='window.close()'>")
        self.page("/", "<title>Page</title><body style='background:blue' onclick=\"window.open('/window')\">")
        self.program = program = self.start(self.server.address + "/", settings={"Popups": "2"})
        program.wait_title("Page")
        wait_for(lambda: program.page_pixel(self.screen) == BLUE, "the page, painted")
        program.click(350, 250)
        program.wait_title("Window")
        wait_for(lambda: program.page_pixel(self.screen) == LIME, "the window, painted")
        self.fill(LIME)
        run("xdotool", "mousemove", "600", "500", "click", "1")
        wait_for(lambda: not self.whole(LIME), "the end of the whole screen")
        wait_for(lambda: list(program.windows()) == [program.window], "the program's window alone")
        program.click(*FIRST_TAB)
        program.wait_title("Page")
        self.wait_back()
        self.assertEqual(program.close(), 0)

    def film(self, html=FILM):
        self.program = program = self.start(self.page("/", html))
        program.wait_title("Film")
        wait_for(lambda: program.pixel(self.screen, 350, 250) == LIME, "the page, painted")
        return program

    def start_film(self, times=1):
        self.told("true", times)
        wait_for(lambda: self.whole(LIME), "the film on the whole screen")

    def wait_notice(self):
        """It stands for some seconds only, and so is looked for at once."""
        wait_for(lambda: self.program.place("Film", self.NOTICE, "label"), "the notice")

    def test_a_page_that_wants_it(self):
        program = self.film()
        before = program.rect
        for times, leave in enumerate(("Escape", "F11"), 1):
            program.click(350, 250)
            if times == 1:
                self.wait_notice()
            self.start_film(times)
            program.key(leave)
            self.wait_back(LIME)
            self.told("false", times)
            self.assertEqual(program.rect, before)
        self.assertEqual(program.close(), 0)

    def test_a_page_that_wants_it_where_the_user_does(self):
        program = self.film()
        program.key("F11")
        wait_for(lambda: self.screen.shot().getpixel((2, 2)) == LIME, "the page on the whole screen")
        run("xdotool", "mousemove", "600", "100", "click", "1")
        self.wait_notice()
        self.start_film()
        program.key("Escape")
        self.told("false")
        self.assertEqual(self.screen.shot().getpixel((2, 2)), LIME, "the user's wish stays")
        program.key("Escape")
        self.wait_back(LIME)
        self.assertEqual(program.close(), 0)

    def test_a_page_that_hangs_holds_nobody(self):
        program = self.film(self.FILM.replace("() =>", "() => document.fullscreenElement && setTimeout(hang, 300) &&") +
                            "<script>function hang() { fetch('/hangs'); setTimeout(() => { for (;;); }, 300) }</script>")
        program.click(350, 250)
        self.start_film()
        wait_for(lambda: "/hangs" in self.server.requests, "the loop")
        time.sleep(0.5)
        program.key("Escape")
        wait_for(lambda: list(program.windows()) == [program.window], "the end of the whole screen", 5)
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    main(warnings="ignore")
