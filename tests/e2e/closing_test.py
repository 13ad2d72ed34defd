"""Nothing goes without a word: a page that wants it is asked before it goes, and a form isn't sent twice by itself."""

from harness import ProgramTest, main, reply, run, wait_for
from inputs import click_at

QUESTION = "Leave this page? What you have entered may be lost."
FIRST_TAB, SECOND_TAB = (75, 92), (225, 92)
GUARDED = """<title>{}</title><body style='background:blue;height:100vh' onclick="fetch('/pressed')">
<script>onbeforeunload = event => {{ fetch('/asked'); event.preventDefault(); event.returnValue = 'x' }}</script>"""


class Closing(ProgramTest):
    def begin(self, *titles):
        for title in titles:
            self.page("/" + title, GUARDED.format(title) if title != "Plain" else "<title>Plain</title>")
        self.page("/pressed", "")
        self.page("/asked", "")
        self.program = self.start(self.server.address + "/" + titles[0], settings={"Default": "about:blank"})
        self.program.wait_title(titles[0])
        if titles[0] != "Plain":
            self.touch()
        for title in titles[1:]:
            self.program.key("ctrl+t")
            wait_for(lambda: self.program.title != titles[0], "the new tab")
            self.program.type_address(self.server.address + "/" + title)
            self.program.wait_title(title)
            if not title.startswith("Plain"):
                self.touch()

    def touch(self):
        """A page that nobody has touched may not ask."""
        before = self.server.requests.count("/pressed")
        self.program.click(350, 300)
        wait_for(lambda: self.server.requests.count("/pressed") > before, "the page, pressed")

    def asks(self, title):
        return self.program.place(title, QUESTION, "label")

    def answer(self, title, name):
        wait_for(lambda: self.asks(title), "the question")
        self.program.press(title, name)
        wait_for(lambda: not self.asks(title), "its end")

    def test_a_tab(self):
        self.begin("Plain", "Guarded")
        program = self.program
        program.key("ctrl+w")
        self.answer("Guarded", "Stay")
        self.assertEqual(program.title, "Guarded")
        # Behind, it comes to the front with its question.
        program.click(*FIRST_TAB)
        program.wait_title("Plain")
        program.click(*SECOND_TAB, button=2)
        program.wait_title("Guarded")
        self.answer("Guarded", "Leave")
        program.wait_title("Plain")
        self.assertEqual(self.server.requests.count("/asked"), 2)

    def test_a_page_that_is_left_for_another_site(self):
        """Typed, by a link and back: the other page comes into another process."""
        other = self.page("/other", "<title>Other</title>").replace("127.0.0.1", "localhost")
        link = f"<a href='{other}' style='position:fixed;left:0;top:0;width:100px;height:100px'>Other</a>"
        self.page("/Guarded", GUARDED.format("Guarded") + link)
        for path in ("/pressed", "/asked"):
            self.page(path, "")
        program = self.program = self.start(other)
        program.wait_title("Other")
        program.type_address(self.server.address + "/Guarded")
        program.wait_title("Guarded")
        left, top, _, _ = program.place("Guarded", "Other", "link")
        ways = (lambda: program.type_address(other), lambda: click_at(left + 5, top + 5), lambda: program.key("alt+Left"))
        for leave in ways:
            self.touch()
            leave()
            self.answer("Guarded", "Stay")
            self.assertEqual(program.title, "Guarded")
        self.assertEqual(self.server.requests.count("/other"), 1)
        for leave in ways:
            self.touch()
            leave()
            self.answer("Guarded", "Leave")
            program.wait_title("Other")
            program.type_address(self.server.address + "/Guarded")
            program.wait_title("Guarded")
        # Whoever wants another page while it asks has it without a second question.
        self.touch()
        program.type_address(other)
        wait_for(lambda: self.asks("Guarded"), "the question")
        program.type_address(other + "?again")
        wait_for(lambda: "/other?again" in self.server.requests, "the second page")
        program.wait_title("Other")

    def test_the_program(self):
        self.begin("Guarded", "Other", "Plain")
        program = self.program
        run("wmctrl", "-i", "-c", program.window)
        wait_for(lambda: self.asks("Guarded") or self.asks("Other"), "a question")
        self.answer(program.title, "Stay")
        self.assertIsNone(program.process.poll())
        # Each comes to the front with its question, the one after the other; without such pages there is none.
        run("wmctrl", "-i", "-c", program.window)
        left = 0
        while wait_for(lambda: self.asks(program.title) or program.process.poll() is not None, "a question or the end") is not True:
            self.answer(program.title, "Leave")
            left += 1
        self.assertEqual((left, program.wait_end()), (2, 0))

    def test_a_plain_window(self):
        self.begin("Plain")
        program = self.program
        self.page("/Window", GUARDED.format("Window"))
        program.key("ctrl+n")
        plain = program.wait_window("Plain")
        run("xdotool", "windowactivate", "--sync", plain)
        program.key("ctrl+l")
        run("xdotool", "type", self.server.address + "/Window")
        program.key("Return")
        program.wait_window("Window")
        before = self.server.requests.count("/pressed")
        run("xdotool", "mousemove", "--window", plain, "300", "300", "click", "1")
        wait_for(lambda: self.server.requests.count("/pressed") > before, "the page, pressed")
        run("wmctrl", "-i", "-c", plain)
        self.answer("Window", "Stay")
        self.assertIn(plain, program.windows())
        run("wmctrl", "-i", "-c", plain)
        self.answer("Window", "Leave")
        wait_for(lambda: plain not in program.windows(), "the window's end")

    def test_a_page_that_asks_by_itself_can_be_closed_meanwhile(self):
        self.begin("Plain")
        program = self.program
        self.page("/Goes", GUARDED.format("Goes").replace("onclick=\"", "onclick=\"setTimeout(() => location = '/Plain', 500);"))
        program.key("ctrl+t")
        wait_for(lambda: program.title != "Plain", "the new tab")
        program.type_address(self.server.address + "/Goes")
        program.wait_title("Goes")
        self.touch()
        wait_for(lambda: "/asked" in self.server.requests, "the page's own question")
        wait_for(lambda: self.asks("Goes"), "its bar")
        program.key("ctrl+w")
        wait_for(lambda: self.server.requests.count("/asked") == 2, "the question of the one who closes it")
        self.answer("Goes", "Leave")
        program.wait_title("Plain")
        wait_for(lambda: program.pixel(self.screen, *SECOND_TAB) == program.pixel(self.screen, 640, 92), "one tab")
        self.assertEqual(program.close(), 0)

    def test_a_page_that_takes_its_time_is_heard_out(self):
        self.begin("Plain")
        program = self.program
        self.page("/Slow", GUARDED.format("Slow").replace(
            "event =>", "event => { for (const end = Date.now() + 500; Date.now() < end;); say(event) }; function say(event)"))
        program.key("ctrl+t")
        wait_for(lambda: program.title != "Plain", "the new tab")
        program.type_address(self.server.address + "/Slow")
        program.wait_title("Slow")
        self.touch()
        for answer, left in (("Stay", "Slow"), ("Leave", "Plain")):
            program.key("ctrl+w")
            self.answer("Slow", answer)
            program.wait_title(left)
        self.assertEqual(program.close(), 0)

    def test_a_page_that_hangs_holds_nothing(self):
        self.begin("Plain")
        self.page("/Loop", "<title>Loop</title><script>onbeforeunload = () => { for (;;); }</script>")
        self.program.key("ctrl+t")
        self.program.type_address(self.server.address + "/Loop")
        self.program.wait_title("Loop")
        self.program.key("ctrl+w")
        self.program.wait_title("Plain")
        self.assertEqual(self.program.close(), 0)

    def test_staying_keeps_the_form_at_every_refresh(self):
        self.page("/Form", "<title>Form</title><body style='background:blue'><input autofocus oninput='document.title = value'>"
                  "<script>onbeforeunload = event => { fetch('/asked'); event.preventDefault(); event.returnValue = 'x' }"
                  "</script>")
        self.page("/asked", "")
        self.program = program = self.start(self.server.address + "/Form", settings={"Default": "about:blank"})
        program.wait_title("Form")
        wait_for(lambda: program.page_pixel(self.screen) == (0, 0, 255), "the page, painted")
        program.click(350, 400)
        program.key("Tab")
        for times, letter in enumerate("abc", 1):
            program.key(letter)
            program.wait_title("abc"[:times])  # what was typed before is there
            program.key("F5")
            wait_for(lambda: self.server.requests.count("/asked") == times, f"question {times}")
            self.answer(program.title, "Stay")
            self.assertEqual(program.title, "abc"[:times])
        self.assertEqual(self.server.requests.count("/Form"), 1)
        program.key("F5")
        wait_for(lambda: self.server.requests.count("/asked") == 4, "the last question")
        self.answer("abc", "Leave")
        program.wait_title("Form")
        self.assertEqual(self.server.requests.count("/Form"), 2)

    def test_a_form_is_sent_again_only_by_a_yes(self):
        sent = []

        def take(handler):
            length = int(handler.headers.get("Content-Length", 0))
            sent.append(handler.rfile.read(length))
            reply(handler, "<title>Sent</title><body style='background:lime'>")

        self.server.http.RequestHandlerClass.do_POST = take
        program = self.start(self.page("/", "<title>Form</title><form method=post action=/sent><input name=a autofocus "
                                       "value=b><button style='width:300px;height:300px'>Send</button></form>"))
        program.wait_title("Form")
        program.click(300, 250)
        program.wait_title("Sent")
        question = "To show this page again, what was entered in a form has to be sent once more."
        asked = (("F5", "Stay", 1), ("F5", "Stay", 1), ("ctrl+F5", "Stay", 1), ("F5", "Send Again", 2))
        for times, (key, name, count) in enumerate(asked):
            program.key(key)
            wait_for(lambda: program.place("Sent", question, "label"), f"question {times}")
            program.press("Sent", name)
            wait_for(lambda: not program.place("Sent", question, "label"), "its end")
            wait_for(lambda: len(sent) == count, f"{count} requests")
            self.assertEqual(program.page_pixel(self.screen), (0, 255, 0))
        self.assertEqual(sent, [b"a=b", b"a=b"])


if __name__ == "__main__":
    main(warnings="ignore")
