"""What a page may set going: other programs, printing, sound, and its own process."""

import io
import os
import time
import wave

import processes
from bars import PageTest
from harness import Server, main, reply, run, wait_for, zombie
from hosts import Hosts
from widgets import Widgets

ENDS_SOON = 5  # seconds; the engine itself gives up a process that hangs after ten


class Hanging(PageTest):
    HANGS = "<title>Hangs</title><body><script>onclick = () => { document.title = 'Hanging'; " \
            "setTimeout(() => { for (;;); }, 200); };</script>"

    def hang(self):
        """A page of which the process runs in a loop; the process."""
        program = self.begin(self.HANGS, {"Popups": "1", "Default": self.page("/default", "<title>Default</title>")})
        program.wait_title("Hangs")
        self.click_page()
        program.wait_title("Hanging")
        return processes.busy(self.program)

    def wait_gone(self, pid):
        wait_for(lambda: zombie(pid), "the end of the process", ENDS_SOON)

    def test_it_is_offered_to_be_ended(self):
        pid = self.hang()
        self.click_page()
        self.wait_told("127.0.0.1 doesn't answer.")
        self.press("End It")
        self.program.wait_title("This page was ended")
        self.wait_gone(pid)
        self.assertIsNone(self.told("doesn't answer"))

    def test_an_address_is_loaded_at_once(self):
        pid = self.hang()
        self.program.type_address(self.page("/next", "<title>Next</title>"))
        self.program.wait_title("Next")
        self.wait_gone(pid)

    def test_stop_ends_it(self):
        pid = self.hang()
        self.click_page()
        self.wait_told("127.0.0.1 doesn't answer.")
        self.program.click(127, 61)
        self.program.wait_title("This page was ended")
        self.wait_gone(pid)

    def test_its_tab_is_closed_with_its_process(self):
        program = self.begin("<title>First</title>", {"Popups": "1", "Default": "about:blank"})
        program.wait_title("First")
        other = Server({"/": "<title>Other</title>"}, place=("127.0.0.2", 0))  # of another site than the one that hangs
        self.addCleanup(other.close)
        program.type_address(f"http://127.0.0.2:{other.http.server_address[1]}/")
        program.wait_title("Other")
        program.click(160, 60)  # a new tab
        program.type_address(self.page("/hangs", self.HANGS))
        program.wait_title("Hangs")
        self.click_page()
        program.wait_title("Hanging")
        pid = processes.busy(self.program)
        program.click(195, 60)  # removes the tab
        self.wait_gone(pid)
        self.assertIsNone(self.program.process.poll())

    def test_the_program_is_closed_with_it(self):
        pid = self.hang()
        self.assertEqual(self.program.close(), 0)
        self.wait_gone(pid)

    def test_a_page_that_waits_for_an_answer_does_not_hang(self):
        program = self.begin("<title>Asks</title><script>addEventListener('click', () => alert('Well?'), {once: true})</script>")
        program.wait_title("Asks")
        self.click_page()
        self.wait_told("Well?")
        for _ in range(10):
            program.click(350, 400)
            time.sleep(0.5)
        self.assertIsNone(self.told("doesn't answer"))
        self.press("OK")
        wait_for(lambda: not self.told("Well?"), "the end of the question")


class OtherPrograms(PageTest):
    def setUp(self):
        super().setUp()
        self.letters = os.path.join(os.environ["HOME"], "letters")
        if os.path.exists(self.letters):
            os.remove(self.letters)
        programs = os.path.join(os.environ["XDG_DATA_HOME"], "applications")
        os.makedirs(programs, exist_ok=True)
        with open(os.path.join(programs, "post.desktop"), "w") as file:
            file.write("[Desktop Entry]\nType=Application\nName=Post Office\nMimeType=x-scheme-handler/mailto;\n"
                       f"Exec=sh -c 'echo \"$1\" >> {self.letters}' sh %u\n")
        with open(os.path.join(os.environ["XDG_CONFIG_HOME"], "mimeapps.list"), "w") as file:
            file.write("[Default Applications]\nx-scheme-handler/mailto=post.desktop\n")

    def sent(self):
        if not os.path.exists(self.letters):
            return []
        with open(self.letters) as file:
            return file.read().split()

    def visit(self, pages):
        self.hosts = Hosts(pages)
        self.addCleanup(self.hosts.close)
        self.program = self.start("http://bank.test/", proxy=self.hosts.proxy, settings={"Popups": "1"})
        self.program.wait_title("Bank")

    def wait_request(self, address):
        wait_for(lambda: address in self.hosts.requests, f"the request of {address}")

    def test_each_press_asks_once(self):
        self.visit({"http://bank.test/": "<title>Bank</title><body><script>onclick = () => { location = 'mailto:a@x.test';"
                    "setTimeout(() => location = 'mailto:b@x.test', 100);"
                    "setTimeout(() => { location = 'mailto:c@x.test'; fetch('/done'); }, 500); }</script>"})
        self.click_page()
        wish = 'bank.test wants to open "mailto:a@x.test" in Post Office.'
        self.wait_told(wish)
        self.wait_request("http://bank.test/done")
        self.assertIsNone(self.told("b@x.test"))
        self.assertEqual(self.sent(), [])
        self.press("Cancel")
        wait_for(lambda: not self.told("Post Office"), "the bar's end")
        self.click_page()
        self.wait_told(wish)
        self.press("Open")
        wait_for(lambda: self.sent() == ["mailto:a@x.test"], "the letter")
        self.assertIsNone(self.told("Post Office"))

    def test_without_a_press_nobody_asks(self):
        frame = "<body><script>onmessage = () => { location = 'mailto:e@x.test'; fetch('/tried') }</script>"
        self.visit({"http://bank.test/": "<title>Bank</title><body><iframe src='http://evil.test/'></iframe><script>"
                    "location = 'mailto:a@x.test'; onclick = () => { document.title = 'Pressed';"
                    "setTimeout(() => frames[0].postMessage('go', '*'), 1500) }</script>", "http://evil.test/": frame})
        self.wait_request("http://evil.test/")
        self.click_page()
        self.program.wait_title("Pressed")
        self.wait_request("http://evil.test/tried")
        self.program.type_address("http://bank.test/?again")  # behind all that was asked before
        self.wait_request("http://bank.test/?again")
        self.assertIsNone(self.told("Post Office"))
        self.assertEqual(self.sent(), [])

    def test_what_the_user_types_is_no_question(self):
        self.visit({"http://bank.test/": "<title>Bank</title>"})
        self.program.type_address("mailto:a@x.test")
        wait_for(lambda: self.sent() == ["mailto:a@x.test"], "the letter")
        self.assertEqual(self.program.title, "Bank")


class Printing(PageTest):
    def dialogs(self):
        return [number for number, title in self.program.windows().items() if title == "Print 127.0.0.1"]

    def test_a_loop_is_asked_about_and_can_be_stopped(self):
        program = self.begin("<title>Prints</title><script>setInterval(print, 1500)</script>")
        program.wait_title("Prints")
        for _ in range(2):
            self.wait_told("127.0.0.1 wants to print.")
            self.assertIsNone(self.told("The page may not ask again"))
            self.press("Cancel")
            wait_for(lambda: not self.told("wants to print"), "the bar's end", 1.4)
        self.wait_told("wants to print")
        self.press("The page may not ask again")
        self.press("Cancel")
        wait_for(lambda: not self.told("wants to print"), "the bar's end")
        time.sleep(3)  # two more are wished for
        self.assertIsNone(self.told("wants to print"))
        self.assertEqual(self.dialogs(), [])

    def test_the_dialog_belongs_to_its_tab(self):
        program = self.begin("<title>First</title>",
                             {"Popups": "1", "Default": self.page("/default", "<title>Default</title>")})
        program.wait_title("First")
        program.key("ctrl+t")
        program.wait_title("Default")
        program.type_address(self.page("/prints", "<title>Prints</title>"
                                       "<body onclick='for (let i = 0; i < 5; ++i) print()'>"))
        program.wait_title("Prints")
        self.click_page()
        wait_for(self.dialogs, "the dialog")
        # The rest goes on.
        run("wmctrl", "-i", "-a", program.window)
        program.wait_active(program.window)
        program.key("ctrl+t")
        program.wait_title("Default")
        self.assertEqual(len(self.dialogs()), 1)
        program.key("ctrl+ISO_Left_Tab")
        program.wait_title("Prints")
        program.key("ctrl+w")
        wait_for(lambda: not self.dialogs(), "the dialog's end")
        self.assertEqual(program.close(), 0)


class Sound(PageTest):
    def test_it_needs_a_press_in_new_windows_too(self):
        # Played or refused is decided before anything is heard.
        sound = "new Audio('/sound.wav').play().then(() => fetch('/told/played'), " \
                "e => fetch('/told/' + e.name))"
        with io.BytesIO() as file:
            with wave.open(file, "wb") as wav:
                wav.setparams((1, 2, 8000, 0, "NONE", ""))
                wav.writeframes(b"\x00\x10" * 8000)
            data = file.getvalue()
        self.server.pages["/sound.wav"] = lambda handler: reply(handler, data, kind="audio/wav")
        self.page("/told/NotAllowedError", "")
        self.page("/window", f"<title>Window</title><script>{sound}</script>")
        program = self.begin(f"<title>Sounds</title><body onclick=\"window.open('/window')\"><script>{sound}</script>",
                             {"Popups": "2"})
        program.wait_title("Sounds")
        wait_for(lambda: "/told/NotAllowedError" in self.server.requests, "the refusal")
        self.click_page()
        program.wait_title("Window")
        wait_for(lambda: self.server.requests.count("/told/NotAllowedError") == 2, "the refusal in the window")
        self.assertNotIn("/told/played", self.server.requests)


class Tracking(PageTest):
    OPTIONS = "Internet Options"

    def test_sites_that_follow_are_hampered_until_the_user_says_otherwise(self):
        def tracker(handler):
            reply(handler, "<title>Tracker</title>", headers={"Set-Cookie": "who=you; Max-Age=1000; Path=/"})

        pages = {"http://tracker.test/": tracker, "http://tracker.test/pixel": "",
                 "http://news.test/": "<title>News</title><script>new Image().src = "
                                      "'http://tracker.test/pixel?' + location.search.slice(1)</script>"}
        hosts = Hosts(pages)
        self.addCleanup(hosts.close)
        self.program = program = self.start("http://tracker.test/", proxy=hosts.proxy)

        def followed(visit):
            program.type_address(f"http://news.test/?{visit}")
            address = f"http://tracker.test/pixel?{visit}"
            wait_for(lambda: address in hosts.headers, "the tracker's picture")
            return "who=you" in hosts.headers[address].get("Cookie", "")

        program.wait_title("Tracker")
        self.assertFalse(followed("first"))
        program.choose_row("View", "Internet Options...")
        options = Widgets(program, self.OPTIONS)
        self.assertTrue(options.checked("Keep sites from following you to others"))
        options.click("Keep sites from following you to others", "OK")
        options.wait_end()
        self.assertTrue(followed("second"))
        with open(os.path.join(program.home, "engine", "engine.ini")) as file:
            self.assertIn("tracking prevention=false", file.read())


if __name__ == "__main__":
    main(warnings="ignore")
