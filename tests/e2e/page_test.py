"""What belongs to one page: its scripts' questions, permissions, downloads, encodings, and what must not end more
than the page."""

import os
import signal
import threading

from bars import PageTest
from harness import children_of, main, reply, run, wait_for
from inputs import click_at, type_text
from widgets import Widgets


class Pages(PageTest):
    def kill_pages(self):
        for pid in children_of(self.program.process.pid):
            try:
                with open(f"/proc/{pid}/comm") as file:
                    if file.read().startswith("WebKitWebProces"):
                        os.kill(pid, signal.SIGKILL)
            except (FileNotFoundError, ProcessLookupError):
                pass

    def goes_on(self):
        """The program takes the next typed address."""
        self.program.type_address(self.page("/next", "<title>Next</title>"))
        self.program.wait_title("Next")

    def test_scripts_ask_and_are_answered_in_one_bar(self):
        program = self.begin("<title>Asks</title><body onclick=\"alert('first text'); "
                             "document.title = [confirm('second text'), prompt('third text', 'given')].join()\">")
        program.wait_title("Asks")
        self.click_page()
        self.wait_told("127.0.0.1 says:")
        self.wait_told("first text")
        program.key("Return")
        self.wait_told("second text")
        self.assertIsNone(self.told("first text"), "one bar for all")
        program.key("Return")
        self.wait_told("third text")
        program.key("ctrl+a")
        type_text("typed")
        program.key("Return")
        program.wait_title("true,typed")
        self.click_page()
        for text in ("first text", "second text", "third text"):
            self.wait_told(text)
            program.key("Escape")
        program.wait_title("false,")
        # From the third question of a page on it can be told to stop.
        self.click_page()
        self.wait_told("first text")
        self.press("The page may not ask again")
        self.press("OK")
        wait_for(lambda: not self.told("text"), "the bar's end")
        program.wait_title("false,")
        self.goes_on()

    def test_a_page_that_dies_while_it_asks_ends_alone(self):
        program = self.begin("<title>Asks</title><body onclick=\"prompt('the question')\">")
        program.wait_title("Asks")
        self.click_page()
        self.wait_told("the question")
        self.kill_pages()
        program.wait_title("This page has come to a sudden end")
        wait_for(lambda: not self.told("the question"), "the bar's end")
        self.goes_on()
        program.type_address(self.page("/again", self.server.pages["/"]))
        program.wait_title("Asks")
        self.click_page()
        self.wait_told("the question")
        program.key("Return")
        self.assertEqual(program.close(), 0)

    def test_leaving_is_asked_about_where_the_page_wants_it(self):
        program = self.begin("<title>Holds</title><body onclick=\"document.title = 'Pressed'\">"
                             "<script>onbeforeunload = event => event.preventDefault()</script>")
        program.wait_title("Holds")
        self.click_page()
        program.wait_title("Pressed")
        other = self.page("/other", "<title>Other</title>")
        program.type_address(other)
        self.wait_told("Leave this page?")
        self.press("Stay")
        wait_for(lambda: not self.told("Leave this page?"), "the bar's end")
        self.assertEqual(program.title, "Pressed")
        self.assertNotIn("/other", self.server.requests)
        program.type_address(other)
        self.wait_told("Leave this page?")
        self.press("Leave")
        program.wait_title("Other")

    def test_permissions_are_asked_for_above_the_page(self):
        program = self.begin("<title>Wants</title><body onclick=\"navigator.geolocation.getCurrentPosition("
                             "() => document.title = 'given', error => document.title = 'code ' + error.code)\">")
        program.wait_title("Wants")
        self.click_page()
        self.wait_told("127.0.0.1 wants to know where you are.")
        self.press("Deny")
        program.wait_title("code 1")
        self.assertIsNone(self.told("wants to know"))
        self.click_page()
        self.goes_on()
        self.assertIsNone(self.told("wants to know"), "a question ends with its page")

    def test_a_download_needs_no_page_and_leaves_nothing_half(self):
        more = threading.Event()
        self.addCleanup(more.set)

        def slowly(handler):
            handler.send_response(200)
            handler.send_header("Content-Disposition", "attachment; filename=\"a name.bin\"")
            handler.send_header("Content-Length", "200000")
            handler.end_headers()
            handler.wfile.write(b"x" * 100000)
            handler.wfile.flush()
            more.wait(60)
            try:
                handler.wfile.write(b"y" * 100000)
            except OSError:
                pass

        self.server.pages["/file"] = slowly
        folder = os.path.join(os.environ["HOME"], "Downloads")
        path = os.path.join(folder, "a name.bin")
        program = self.begin("<title>Has a file</title><body onclick=\"location = '/file'\">",
                             {"Default": self.page("/default", "<title>Default</title>"), "Popups": "1"})
        program.wait_title("Has a file")
        program.click(160, 60)  # a new tab
        program.wait_title("Default")
        program.type_address(self.page("/other", self.server.pages["/"]))
        program.wait_title("Has a file")
        self.click_page()
        self.wait_told("a name.bin")
        program.click(185, 60)  # removes the tab on which it began
        wait_for(lambda: self.told("a name.bin"), "the row, below the other page")
        more.set()
        self.wait_told("Saved as " + path)
        with open(path, "rb") as file:
            self.assertEqual(file.read(), b"x" * 100000 + b"y" * 100000)

        more.clear()
        self.click_page()
        self.press("Cancel")
        self.wait_told("wasn't downloaded: it was cancelled")
        self.assertEqual(os.listdir(folder), ["a name.bin"])
        self.press("Close")
        # Whoever leaves in the middle leaves no half file either.
        self.click_page()
        wait_for(lambda: len(os.listdir(folder)) > 1, "the second file")
        run("wmctrl", "-i", "-c", program.window)
        question = Widgets(program, "Marlowick", message=True)
        question.one("1 file is still being downloaded, and will be lost.\n\nClose Marlowick all the same?")
        question.click("No")
        self.wait_told("a name (1).bin")
        run("wmctrl", "-i", "-c", program.window)
        Widgets(program, "Marlowick", message=True).click("Yes")
        self.assertEqual(program.wait_end(), 0)
        self.assertEqual(os.listdir(folder), ["a name.bin"])

    def test_encodings(self):
        text = "<title>Grüße</title>"
        answers = {"/sent": (text.encode("latin-1"), "text/html; charset=iso-8859-1"),
                   "/named": (("<meta charset=windows-1252>" + text).encode("cp1252"), "text/html"),
                   "/marked": (b"\xff\xfe" + text.encode("utf-16-le"), "text/html"),
                   "/plain": (("<meta charset=utf-8>" + text).encode(), "text/html")}
        for path, (body, kind) in answers.items():
            self.server.pages[path] = lambda handler, body=body, kind=kind: reply(handler, body, kind=kind)
        program = self.begin("<title>Begin</title>")
        program.wait_title("Begin")
        for path in answers:
            program.type_address(self.server.address + path)
            program.wait_title("Grüße")
            program.type_address("view-source:" + self.server.address + path)
            program.wait_title("Source of " + self.server.address + path)
            self.wait_told("Grüße")

    def test_no_address_and_no_proxy_ends_the_program(self):
        program = self.begin("<title>Begin</title>", proxy="http:proxy.example.org")
        program.wait_title("The proxy can't be used")
        for address in ("view-source:file:", "view-source:", "file:", "view-source:view-source:"):
            program.type_address(address)
            wait_for(lambda: program.title not in ("The proxy can't be used", "about:blank"), "another page")
            program.type_address("about:blank")
            program.wait_title("about:blank")
        self.assertEqual(program.close(), 0)

    def test_a_blank_tab_is_white(self):
        program = self.start("about:blank", settings={"Default": "about:blank"})
        wait_for(lambda: program.page_pixel(self.screen) == (255, 255, 255), "white")
        program.click(160, 60)
        wait_for(lambda: program.page_pixel(self.screen) == (255, 255, 255), "white")

    def test_a_plain_window_opens_none_by_itself(self):
        self.page("/eager", "<title>Eager</title><body style='margin:0' onclick=\"window.open('/pressed')\"><script>"
                  "let opened = 0; for (let i = 0; i < 5; ++i) if (open('/more')) ++opened;"
                  "fetch('/done?' + opened)</script>")
        self.page("/pressed", "<title>By a press</title>")
        program = self.begin("<title>Opener</title><body onclick=\"window.open('/eager')\">")
        program.wait_title("Opener")
        self.click_page()
        plain = program.wait_window("Eager")
        wait_for(lambda: "/done?0" in self.server.requests, "the end of its script")
        self.assertEqual(set(program.windows().values()), {"Opener", "Eager"})
        left, top, _, _ = self.rect_of(plain)
        click_at(left + 300, top + 300)
        program.wait_window("By a press")

    def test_history_opens_whatever_was_visited_and_says_what_is_missing(self):
        self.page("/visited", "<title>Visited</title>")
        program = self.start(self.page("/", "<title>Begin</title>"), settings={"History": "0"})
        self.program = program
        program.wait_title("Begin")
        folder = os.path.join(program.home, "history")
        wait_for(lambda: os.path.isdir(folder) and os.listdir(folder), "the first entry")
        links = [f"view-source:{self.server.address}/visited", "data:text/html,<title>Of data</title>"]
        with open(os.path.join(folder, "03 February 2001.htm"), "w", encoding="utf-8") as file:
            file.writelines(f"<p><a href='{link}' target=_top>Entry {number}</a>\r\n"
                            for number, link in enumerate(links))
        for today in os.listdir(folder):
            if "2001" not in today:
                os.remove(os.path.join(folder, today))
        for number, title in enumerate((f"Source of {self.server.address}/visited", "Of data")):
            program.click(227, 61)  # the history
            program.wait_title("History")
            if number == 0:
                self.wait_told("The file can't be opened")
                self.assertEqual(program.title, "History")
            self.press_link("03 February 2001")
            self.press_link(f"Entry {number}")
            program.wait_title(title)
            program.type_address(self.page(f"/between{number}", "<title>Between</title>"))
            program.wait_title("Between")

    def history_without_its_days(self, engine=""):
        """The program on its history, of which no day is left, with these lines in the engine's settings."""
        home = self.home(History="0")
        os.makedirs(os.path.join(home, "engine"))
        with open(os.path.join(home, "engine", "engine.ini"), "w") as file:
            file.write(f"[Element]\n{engine}\n")
        self.program = self.start(self.page("/", "<title>Begin</title>"), home=home)
        self.program.wait_title("Begin")
        folder = os.path.join(home, "history")
        wait_for(lambda: os.path.isdir(folder) and os.listdir(folder), "the first entry")
        for day in os.listdir(folder):
            os.remove(os.path.join(folder, day))
        return home

    def test_a_missing_day_is_told_with_scripts_off_too(self):
        self.history_without_its_days("scripts=false")
        self.program.click(227, 61)
        self.program.wait_title("History")
        self.wait_told("The file can't be opened")
        # And no page's scripts have come on by it.
        self.program.type_address(self.page("/still", "<title>Off</title><script>document.title = 'On'</script>"))
        self.program.wait_title("Off")
        self.assertEqual(self.program.close(), 0)

    def test_a_handler_that_fails_is_told_on_its_page_alone(self):
        import pyatspi
        home = self.history_without_its_days()
        os.mkdir(os.path.join(home, "engine", "frame-error.html"))  # so that it can't be written
        self.program.click(227, 61)
        self.wait_told("Something failed while this page was shown")
        wait_for(lambda: self.find(lambda node: node.getRole() == pyatspi.ROLE_PARAGRAPH and
                                   "frame-error.html" in node.queryText().getText(0, -1)), "what failed")
        self.goes_on()
        self.assertEqual(self.program.close(), 0)

    def press_link(self, name):
        import pyatspi
        link = wait_for(lambda: self.find(lambda node: node.name == name and node.getRole() == pyatspi.ROLE_LINK),
                        f'the link "{name}"')
        place = link.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        click_at(place.x + 10, place.y + place.height // 2)

    @staticmethod
    def rect_of(window):
        from inputs import run
        values = dict(line.split("=") for line in run("xdotool", "getwindowgeometry", "--shell", window).splitlines())
        return tuple(int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))


if __name__ == "__main__":
    main(warnings="ignore")
