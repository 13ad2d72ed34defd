"""What pages ask the user: in whose name, how often, and what stands while nobody answers."""

import os
import threading
import time

from bars import PageTest
from harness import main, reply, wait_for
from hosts import Hosts

QUESTION = "Open Popup?"


class Questions(PageTest):
    def visit(self, address, pages, tls=False, settings=None):
        """Starts at an address of several hosts; "/told" of each takes what the pages tell."""
        self.hosts = Hosts(pages, tls=tls)
        self.addCleanup(self.hosts.close)
        self.done = False
        self.addCleanup(setattr, self, "done", True)
        self.program = self.start(address, proxy=self.hosts.proxy, settings=settings or {"Popups": "1"})
        return self.program

    def never(self, handler):
        """A page that doesn't answer as long as the test runs."""
        while not self.done:
            time.sleep(0.05)

    def asked_for(self, what):
        return [address for address in self.hosts.requests if what in address]

    def wait_request(self, what):
        wait_for(lambda: self.asked_for(what), f"the request of {what}")

    def bars(self, text):
        """How many bars on show have this text."""
        found = []
        self.find(lambda node: found.append(node) if text == node.name else None)
        return len(found)

    def test_a_page_that_is_left_asks_in_its_own_name(self):
        leaving = """<title>Evil</title><body><script>
          onclick = () => { location = 'https://bank.test/slow';
            setTimeout(() => { navigator.geolocation.getCurrentPosition(() => 0);
                               open('/popup'); alert('Your PIN?'); }, 500); };
          </script>"""
        program = self.visit("https://evil.test/", {"https://evil.test/": leaving, "https://bank.test/slow": self.never,
                                                    "https://evil.test/popup": "<title>Popup</title>"},
                             tls=True, settings={"Popups": "3"})
        program.wait_title("Evil")
        self.click_page()
        question = program.wait_window(QUESTION)
        wait_for(lambda: program.place(QUESTION, "evil.test", "label"), "the name of the site")
        program.press(QUESTION, "Do not open")
        wait_for(lambda: question not in program.windows(), "the end of the question")
        self.wait_told("evil.test says:")
        self.wait_told("evil.test wants to know where you are.")
        self.assertIsNone(self.told("bank.test says"))
        self.wait_request("bank.test/slow")
        # What the user asks for is waited for without a question of the page before.
        program.type_address("https://bank.test/slow?typed")
        self.wait_request("slow?typed")
        self.assertIsNone(self.told("says:"))

    def test_a_frame_does_not_ask_in_the_pages_name(self):
        frame = "<body style='background:red'><script>onmessage = () => alert('Your PIN?')</script>"
        page = """<title>Bank</title><body><script>onclick = () => { alert('Welcome');
            const f = document.createElement('iframe'); f.src = 'http://evil.test/';
            f.onload = () => f.contentWindow.postMessage('go', '*'); document.body.append(f); };</script>"""
        program = self.visit("http://bank.test/", {"http://bank.test/": page, "http://evil.test/": frame,
                                                   "http://bank.test/next": "<title>Next</title>"})
        program.wait_title("Bank")
        self.click_page()
        self.wait_told("bank.test says:")
        self.wait_told("Welcome")
        program.key("Return")
        self.wait_told("Your PIN?")
        self.wait_told("bank.test, or a part of it from evil.test, says:")

    def field_has(self, title, address):
        wait_for(lambda: address in self.program.field_texts(title), f"{address} in the field")

    def test_an_address_that_shows_no_page_is_not_the_pages(self):
        # It answers that there is nothing to show; who asks and stands in the field is still the page before.
        page = """<title>Evil</title><body><script>
            const nothing = then => { location = 'http://bank.test/nothing';
                                      setTimeout(() => fetch('/told/answered').then(then), 300); };
            onload = () => setTimeout(() => nothing(() => open("/window")), 300);
            onclick = () => { onbeforeunload = e => { e.preventDefault(); e.returnValue = 'x'; }; document.title = 'Held'; };
            </script>"""

        def answered(handler):
            times = len(self.asked_for("answered"))
            wait_for(lambda: len(self.asked_for("bank.test/nothing")) >= times, "the request of nothing")
            time.sleep(0.5)  # what has been answered gets there
            reply(handler, "")

        self.hosts = Hosts({"http://evil.test/": page, "http://evil.test/told/answered": answered,
                            "http://bank.test/nothing": lambda handler: reply(handler, "", 204),
                            "http://bank.test/": "<title>Bank</title>"})
        self.addCleanup(self.hosts.close)
        home = self.home(Popups=2)
        os.makedirs(os.path.join(home, "engine"))
        with open(os.path.join(home, "engine", "engine.ini"), "w") as file:
            file.write(f"[Element]\nproxy=by hand\nproxy address={self.hosts.proxy}\nwindow sites=http://bank.test\n")
        self.program = program = self.start("http://bank.test/", home=home)
        program.wait_title("Bank")
        program.type_address("http://evil.test/")
        program.wait_title("Evil")
        self.wait_told("evil.test wants to open a new window.")
        self.assertFalse(self.asked_for("/window"))
        self.click_page()
        program.wait_title("Held")
        program.type_address("http://evil.test/typed")
        self.wait_told("Leave this page?")
        self.press("Stay")
        self.field_has("Held", "http://evil.test/")
        self.assertFalse(self.asked_for("/typed"))

    def test_a_window_sent_back_to_nothing_asks_in_nobodys_name(self):
        page = """<title>Opener</title><body><script>
            onclick = async () => {
              const w = open('http://bank.test/');
              await fetch('/told/come');
              w.location = 'about:blank';
              const asks = setInterval(() => { try { w.document.body.append('');
                                                     clearInterval(asks); w.alert('Your PIN?'); } catch (e) {} }, 100);
            };</script>"""
        come = threading.Event()
        self.addCleanup(come.set)
        program = self.visit("http://evil.test/", {"http://evil.test/": page, "http://bank.test/": "<title>Bank</title>",
                                                   "http://evil.test/told/come":
                                                   lambda handler: (come.wait(60), reply(handler, ""))},
                             settings={"Popups": "2"})
        program.wait_title("Opener")
        self.click_page()
        program.wait_title("Bank")
        come.set()
        self.wait_told("Your PIN?")
        self.wait_told("This page says:")
        self.assertIsNone(self.told("bank.test"))

    def test_a_page_that_comes_back_has_its_frames_again(self):
        frame = "<script>onmessage = () => alert('Your PIN?')</script>"
        bank = """<title>Bank</title><body><iframe src='http://evil.test/'></iframe><script>
            onclick = () => frames[0].postMessage('go', '*');</script>"""
        after = "<title>After</title><body><script>onclick = () => { location = '/nothing'; fetch('/told/sent'); }</script>"
        program = self.visit("http://bank.test/", {"http://bank.test/": bank, "http://evil.test/": frame,
                                                   "http://bank.test/after": after,
                                                   "http://bank.test/nothing": lambda handler: reply(handler, "", 204)})
        program.wait_title("Bank")
        self.wait_request("evil.test")
        program.type_address("http://bank.test/after")
        program.wait_title("After")
        self.click_page()
        self.wait_request("bank.test/nothing")
        self.wait_request("told/sent")
        program.key("alt+Left")
        program.wait_title("Bank")
        self.click_page()
        self.wait_told("Your PIN?")
        self.wait_told("bank.test, or a part of it from evil.test, says:")

    def test_a_blank_window_asks_in_its_openers_name(self):
        page = """<title>Opener</title><body><script>
            onclick = () => { const w = open('about:blank'); setTimeout(() => w.alert('From nowhere'), 500); };</script>"""
        program = self.visit("http://evil.test/", {"http://evil.test/": page}, settings={"Popups": "2"})
        program.wait_title("Opener")
        self.click_page()
        self.wait_told("From nowhere")
        self.wait_told("evil.test says:")

    def test_what_was_refused_is_not_asked_again(self):
        page = """<title>Wants</title><body><script>let codes = [];
            onclick = () => { for (let i = 0; i < 5; ++i) navigator.geolocation.getCurrentPosition(() => 0, e => {
              codes.push(e.code); document.title = 'codes ' + codes.length; }); };</script>"""
        program = self.begin(page)
        program.wait_title("Wants")
        self.click_page()
        wish = "127.0.0.1 wants to know where you are."
        self.wait_told(wish)
        self.assertEqual(self.bars(wish), 1, "equal requests are one question")
        self.press("Deny")
        program.wait_title("codes 5")
        self.click_page()
        program.wait_title("codes 10")
        self.assertIsNone(self.told(wish))
        program.key("F5")
        program.wait_title("Wants")
        self.click_page()
        self.wait_told(wish)

    def shown_bars(self):
        import pyatspi
        found = []
        self.find(lambda node: found.append(node) if node.getRole() == pyatspi.ROLE_INFO_BAR else None)
        return len(found)

    def test_three_bars_stand_at_the_most_whoever_asks(self):
        page = """<title>Many</title><body><script>
            onload = () => { open('/window');
              navigator.geolocation.getCurrentPosition(() => 0);
              print();
              location = '/file';
              setTimeout(() => fetch('/told/all'), 500); };
            onclick = () => setTimeout(() => alert('Hello'), 500);</script>"""
        self.page("/file", lambda handler: reply(handler, "file", kind="application/octet-stream"))
        program = self.begin(page, {"Popups": "2"})
        program.wait_title("Many")
        wait_for(lambda: self.shown_bars() == 3, "three bars")
        wait_for(lambda: "/told/all" in self.server.requests, "all that the page wants")
        self.wait_told("127.0.0.1 wants to open a new window.")
        self.assertEqual(self.shown_bars(), 3)
        self.click_page()
        self.wait_told("Hello")
        self.assertEqual(self.shown_bars(), 3)

    def test_a_held_window_says_why_it_stays_so(self):
        page = """<title>Opener</title><script>
            onload = () => open(URL.createObjectURL(new Blob(['<title>Blob</title>'], {type: 'text/html'})));</script>"""
        program = self.begin(page, {"Popups": "2"})
        program.wait_title("Opener")
        self.wait_told("127.0.0.1 wants to open a new window.")
        self.press("Open")
        self.wait_told('It wasn\'t opened: an address that begins with "blob:" is opened only where you press for it '
                       'in the page.')

    def test_nobody_answers_by_typing_on(self):
        page = "<title>Opener</title><body style='margin:0'><script>onkeydown = () => open('/new')</script>"
        self.page("/new", "<title>New</title>")
        program = self.begin(page, {"Popups": "3"})
        program.wait_title("Opener")
        self.click_page()
        # A typist in full course: what comes in the first half second of the question answers nothing.
        program.key("x", "Return", "space", "Return")
        question = program.wait_window(QUESTION)
        self.assertIn(question, program.windows())
        program.wait_active(question)
        self.assertIn(question, program.windows())
        # Who waits may answer by Enter.
        wait_for(lambda: self.focused("In new tab"), "the keyboard at the first answer")
        program.key("Return")
        program.wait_title("New")


if __name__ == "__main__":
    main(warnings="ignore")
