"""Pages of one site share a process, and what becomes of them when it dies, hangs or is left by one of them."""

import os
import signal

import processes
from bars import PageTest
from harness import Server, main, wait_for, zombie
from hosts import Hosts

TABS = ((75, 92), (225, 92), (375, 92), (525, 92))
UNDER_BAR, LIME = (350, 125), (0, 255, 0)
ENDED, DIED = "This page was ended", "This page has come to a sudden end"


def counting(title, then=""):
    """A page that counts the presses it has got, and tells the server."""
    return f"<title>{title}</title><body style='background:lime'><script>let n = 0; onclick = () => {{ fetch('/{title}-' + ++n); {then} }}</script>"


def busy_for(milliseconds, title):
    return f"setTimeout(() => {{ document.title = '{title}'; setTimeout(() => " \
           f"{{ for (const end = Date.now() + {milliseconds}; Date.now() < end;); }}, 200) }}, 100)"


class Sharing(PageTest):
    def open_tab(self, address, title):
        self.program.key("ctrl+t")
        wait_for(lambda: self.program.title == self.start_title, "the new tab")
        self.program.type_address(address)
        self.program.wait_title(title)

    def begin_at(self, address, title, **more):
        self.program = self.start(settings={"Default": "home", "Popups": "2"}, **more)
        self.start_title = wait_for(lambda: self.program.title, "the start page")
        self.program.type_address(address)
        self.program.wait_title(title)

    def press_in(self, tab, server, request):
        """The page of a tab gets a press, and tells what it has kept."""
        self.program.click(*TABS[tab])
        self.click_page()
        wait_for(lambda: any(one.endswith(request) for one in server.requests), f"the answer {request}")

    def show(self, tab, title):
        self.program.click(*TABS[tab])
        self.program.wait_title(title)

    def test_its_end_takes_all_its_tabs_to_a_page_that_can_be_refreshed_and_no_other_tab(self):
        other = Server({"/": counting("Other")}, place=("127.0.0.2", 0))
        self.addCleanup(other.close)
        pages = [self.page(f"/{n}", f"<title>Page {n}</title><body style='background:lime' onclick='for (;;);'>")
                 for n in range(3)]
        self.begin_at(pages[0], "Page 0")
        program = self.program
        self.open_tab(f"http://127.0.0.2:{other.http.server_address[1]}/", "Other")
        self.click_page()
        wait_for(lambda: "/Other-1" in other.requests, "the other page, pressed")
        for n in (1, 2):
            self.open_tab(pages[n], f"Page {n}")
        # One that comes back shares again.
        program.key("ctrl+w")
        program.wait_title("Page 1")
        program.key("ctrl+shift+t")
        program.wait_title("Page 2")
        for round in range(2):  # once more, since so does what is refreshed
            wait_for(lambda: program.page_pixel(self.screen) == LIME, "the page, painted")
            self.click_page()
            pid = processes.busy(program)
            os.kill(pid, signal.SIGKILL)
            for tab, n in ((3, 2), (2, 1), (0, 0)):
                program.click(*TABS[tab])
                wait_for(lambda: program.title == DIED, f"the page that says so in place of page {n}")
                if round == 0:
                    program.key("F5")
                    program.wait_title(f"Page {n}")
            self.show(1, "Other")
            self.click_page()
            wait_for(lambda: f"/Other-{round + 2}" in other.requests, "the other page, as it was")
            if round == 0:
                self.show(0, "Page 0")
        self.assertEqual(program.close(), 0)

    def begin_two(self, then):
        """Two tabs of one site, of which the second is on show; its script runs at each press."""
        self.hosts = Hosts({"http://a.example.com/": counting("Keeps"), "http://b.example.com/": counting("Hangs", then),
                            "http://other.test/": "<title>Other</title>"})
        self.addCleanup(self.hosts.close)
        self.begin_at("http://a.example.com/", "Keeps", proxy=self.hosts.proxy)
        self.click_page()
        wait_for(lambda: "http://a.example.com/Keeps-1" in self.hosts.requests, "the first page, pressed")
        self.open_tab("http://b.example.com/", "Hangs")

    def hang(self):
        wait_for(lambda: self.program.page_pixel(self.screen) == LIME, "the page, painted")
        self.click_page()
        self.program.wait_title("Hanging")
        return processes.busy(self.program)

    def wait_bar(self):
        """Says that the page doesn't answer. Screen readers would wait for the page themselves."""
        def top():
            return self.program.pixel(self.screen, *UNDER_BAR)

        self.assertEqual(top(), LIME)
        self.click_page()
        wait_for(lambda: top() != LIME, "the bar")

    def test_who_leaves_a_page_that_hangs_ends_no_other(self):
        self.begin_two(busy_for(9000, "Hanging"))
        program = self.program
        pid = self.hang()
        program.type_address("http://other.test/")
        wait_for(lambda: program.title == "Other", "the page of another site", 8)
        self.press_in(0, self.hosts, "Keeps-2")
        self.show(1, "Other")
        program.type_address("http://b.example.com/")
        program.wait_title("Hangs")
        self.hang()
        program.click(195, 60)  # removes the tab
        program.wait_title("Keeps")
        self.press_in(0, self.hosts, "Keeps-3")
        self.assertFalse(zombie(pid))
        self.assertEqual(program.close(), 0)

    def test_who_stops_a_page_that_hangs_ends_no_other(self):
        self.begin_two(busy_for(12000, "Hanging"))
        program = self.program
        pid = self.hang()
        self.wait_bar()
        program.click(127, 61)
        wait_for(lambda: program.title == ENDED, "the page that says so", 5)
        self.press_in(0, self.hosts, "Keeps-2")
        self.show(1, ENDED)
        program.key("F5")
        program.wait_title("Hangs")
        self.assertFalse(zombie(pid))
        self.assertEqual(program.close(), 0)

    def test_the_user_ends_it_for_all_its_tabs(self):
        self.begin_two(busy_for(60000, "Hanging"))
        program = self.program
        pid = self.hang()
        self.wait_bar()
        self.press("End It")
        program.wait_title(ENDED)
        wait_for(lambda: zombie(pid), "the end of the process", 5)
        self.show(0, ENDED)
        for tab, title in ((0, "Keeps"), (1, "Hangs")):
            self.show(tab, ENDED)
            program.key("F5")
            program.wait_title(title)
        self.assertEqual(program.close(), 0)

    def test_what_was_typed_on_a_home_page_of_the_web_is_there_on_the_way_back(self):
        other = Server({"/": "<title>Other</title>"}, place=("127.0.0.2", 0))
        self.addCleanup(other.close)
        elsewhere = f"http://127.0.0.2:{other.http.server_address[1]}/"
        home = self.page("/", "<title>Home</title><body><input style='position:fixed;inset:0;width:100%;height:100%'"
                         " oninput='document.title = value'><script>onpageshow = () => setTimeout(() => "
                         "document.title = document.querySelector('input').value || 'Home', 100)</script>")
        folder = self.home({}, Default="home", Popups="2")
        os.makedirs(os.path.join(folder, "engine"), exist_ok=True)
        with open(os.path.join(folder, "engine", "engine.ini"), "w") as file:
            file.write(f"[Element]\nhome={home}\n")
        self.program = program = self.start(elsewhere, home=folder)
        program.wait_title("Other")
        program.key("ctrl+t")
        program.wait_title("Home")
        self.click_page()
        program.key("w", "o", "r", "d")
        program.wait_title("word")
        program.type_address(elsewhere)
        program.wait_title("Other")
        program.key("alt+Left")
        program.wait_title("word")
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    main(warnings="ignore")
