"""What becomes of a page's request for a new window, under each of the four settings."""

import os
import threading
import time

from bars import PageTest
from harness import main, reply, run, wait_for

QUESTION = "Open Popup?"
LINK, SCRIPT = (350, 150), (350, 300)  # places in the main window: the page's link, and what runs a script

OPENER = """<title>{title}</title><body style='margin:0'>
<a href='/new?link' target=_blank style='display:block;height:100px;background:yellow'>Link</a>
<div style='height:400px;background:aqua' onclick='{script}'>Script</div>"""
NEW = """<title>New page</title><body style='margin:0'>
<a href='/further' target=_blank style='display:block;height:100px;background:lime'>Further</a>
<div style='height:2000px;background:blue' onclick='if (opener) opener.document.title = "Heard of it"; window.close()'>
</div>"""


class Popups(PageTest):
    def begin(self, policy, script="window.open(\"/new?script\")", title="Opener", allowed=""):
        """`allowed`: the site that may open windows without a press."""
        home = self.home(Popups=policy, Default=self.page("/default", "<title>Default</title>"))
        os.makedirs(os.path.join(home, "engine"))
        with open(os.path.join(home, "engine", "engine.ini"), "w") as file:
            file.write(f"[Element]\nwindow sites={allowed}\n")
        self.page("/new", NEW)
        self.page("/further", "<title>Further page</title>")
        self.program = self.start(self.page("/", OPENER.format(title=title, script=script)), home=home)
        self.program.wait_title(title)
        wait_for(lambda: self.program.pixel(self.screen, *SCRIPT) == (0, 255, 255), "the page, painted")

    def requested(self, path):
        return self.server.requests.count(path)

    def wait_request(self, path, times=1):
        wait_for(lambda: self.requested(path) >= times, f"request {times} of {path}")

    def click_in(self, window, x, y):
        run("xdotool", "windowactivate", "--sync", window)
        run("xdotool", "mousemove", "--window", window, str(x), str(y), "click", "1")

    def gone(self, window):
        wait_for(lambda: window not in self.program.windows(), "the end of the window")

    def test_none_is_opened(self):
        self.begin(0)
        for place in (LINK, SCRIPT):
            self.program.click(*place)
            time.sleep(0.5)
        self.program.click(160, 60)  # a new tab, which comes behind all that was asked before
        self.program.wait_title("Default")
        self.assertEqual(list(self.program.windows()), [self.program.window])
        self.assertEqual([path for path in self.server.requests if "new" in path], [])

    def test_a_window_of_the_elements_own(self):
        self.begin(1)
        program = self.program
        program.click(*LINK)
        self.wait_request("/new?link")
        plain = program.wait_window("New page")
        self.assertEqual(program.title, "Opener", "no tab is added")
        # A window that it asks for is another of its kind, without a question.
        wait_for(lambda: (0, 255, 0) in self.colours(plain), "the new page, painted")
        self.click_in(plain, 300, 90)
        further = program.wait_window("Further page")
        self.assertEqual(len(program.windows()), 3)
        run("wmctrl", "-i", "-c", further)
        self.gone(further)
        run("wmctrl", "-i", "-c", plain)
        self.gone(plain)

        run("xdotool", "windowactivate", "--sync", program.window)
        program.click(*SCRIPT)
        plain = program.wait_window("New page")
        wait_for(lambda: (0, 0, 255) in self.colours(plain), "the new page, painted")
        self.click_in(plain, 300, 400)  # the page closes itself
        self.gone(plain)
        program.wait_title("Heard of it")
        self.assertEqual(program.close(), 0)

    def colours(self, window):
        left, top, width, height = self.rect(window)
        crop = self.screen.shot().crop((left, top, left + width, top + height))
        return {colour for _, colour in crop.getcolors(100000)}

    @staticmethod
    def rect(window):
        text = run("xdotool", "getwindowgeometry", "--shell", window)
        values = dict(line.split("=") for line in text.splitlines())
        return tuple(int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))

    def test_a_new_tab(self):
        self.begin(2)
        program = self.program
        program.click(*LINK)
        self.wait_request("/new?link")
        program.wait_title("New page")
        program.click(75, 92)  # the first tab
        program.wait_title("Opener")
        program.click(*SCRIPT)
        self.wait_request("/new?script")
        program.wait_title("New page")
        wait_for(lambda: program.page_pixel(self.screen) == (0, 0, 255), "the new page, painted")
        program.click(350, 330)  # tells its opener
        program.click(75, 92)
        program.wait_title("Heard of it")
        self.assertEqual(list(program.windows()), [program.window])

    def ask(self, place=SCRIPT):
        run("xdotool", "windowactivate", "--sync", self.program.window)
        self.program.click(*place)
        question = self.program.wait_window(QUESTION)
        self.program.wait_active(question)
        return question

    def press(self, name):
        self.program.press(QUESTION, name)

    def enter(self):
        wait_for(lambda: self.focused("In new tab"), "the keyboard at the first answer")
        self.program.key("Return")

    def test_each_answer_by_mouse_and_by_key(self):
        self.begin(3)
        program = self.program
        for count, answer in enumerate((lambda: self.press("Do not open"), lambda: program.key("alt+d"))):
            question = self.ask((LINK, SCRIPT)[count])
            answer()
            self.gone(question)
            time.sleep(1.3)  # a refusal holds for a moment
        self.assertEqual(program.windows(), {program.window: "Opener"})
        self.assertEqual([path for path in self.server.requests if "new" in path], [])

        for answer in (lambda: self.press("In new browser"), lambda: program.key("alt+b")):
            question = self.ask()
            answer()
            self.gone(question)
            plain = program.wait_window("New page")
            wait_for(lambda: (0, 255, 0) in self.colours(plain), "the new page, painted")
            self.click_in(plain, 300, 90)
            # It is asked about in the same way, and what the tab was told is no answer.
            again = program.wait_window(QUESTION)
            program.wait_active(again)
            answer()
            self.gone(again)
            further = program.wait_window("Further page")
            self.assertEqual(program.title, "Opener")
            for window in (further, plain):
                run("wmctrl", "-i", "-c", window)
                self.gone(window)

        for answer in (lambda: self.press("In new tab"), lambda: program.key("alt+t"), self.enter):
            question = self.ask()
            answer()
            self.gone(question)
            program.wait_title("New page")
            self.assertEqual(list(program.windows()), [program.window])
            program.click(75, 92)
            program.wait_title("Opener")
        self.assertEqual(program.close(), 0)

    def test_only_an_answer_ends_it_and_others_go_on_meanwhile(self):
        self.begin(3)
        program = self.program
        program.click(160, 60)
        program.wait_title("Default")
        # Of another site, whose process doesn't wait for the answer.
        beat = self.page("/beat", "<title>Beat</title><script>setInterval(() => fetch('/drum'), 300)</script>")
        program.type_address(beat.replace("127.0.0.1", "localhost"))
        program.wait_title("Beat")
        program.click(75, 92)
        program.wait_title("Opener")
        question = self.ask()
        before = self.requested("/drum")
        program.key("Escape")
        program.key("alt+F4")
        run("wmctrl", "-i", "-c", question)
        self.wait_request("/drum", before + 4)
        self.assertIn(question, program.windows())
        # Neither is the main window's end one: a modal question stands before it.
        self.assertIsNone(program.process.poll())
        program.key("alt+d")
        self.gone(question)
        self.assertEqual(program.windows(), {program.window: "Opener"})

    def test_a_page_that_asks_in_a_loop_is_refused_once_for_all(self):
        self.begin(3)
        program = self.program
        program.type_address(self.page("/flood", "<title>Flood</title><script>onclick = () => "
                                       "{ for (let i = 0; i < 100; ++i) open('/new?' + i); fetch('/through') }</script>"
                                       "<p style='height:300px'>press me</p>"))
        program.wait_title("Flood")
        question = self.ask((350, 200))
        program.key("alt+d")
        self.gone(question)
        self.wait_request("/through")
        self.assertEqual(program.windows(), {program.window: "Flood"})
        self.assertEqual([path for path in self.server.requests if "new" in path], [])

    def test_another_site_that_asks_while_the_question_stands_is_refused(self):
        # Pages of one site share a process, which waits for the answer; so this is another one.
        self.begin(3, allowed="http://127.0.0.1;http://localhost")
        program = self.program
        asked = threading.Event()  # the other page asks only while the question stands
        self.page("/wait", lambda handler: (asked.wait(60), reply(handler, "")))
        script = "<script>fetch('/wait').then(() => { fetch('/asking'); open('/new?second') })</script>"
        program.click(160, 60)
        program.wait_title("Default")
        page = self.page("/second", "<title>second</title>" + script)
        program.type_address(page.replace("127.0.0.1", "localhost"))
        program.wait_title("second")
        program.click(75, 92)
        program.wait_title("Opener")
        question = self.ask()
        asked.set()
        self.wait_request("/asking")
        time.sleep(0.5)
        self.assertEqual(list(program.windows().values()).count(QUESTION), 1)
        program.key("alt+t")
        self.gone(question)
        self.wait_request("/new?script")
        program.wait_title("New page")
        self.assertEqual(program.windows(), {program.window: "New page"})
        self.assertEqual(self.requested("/new?second"), 0)
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    main(warnings="ignore")
