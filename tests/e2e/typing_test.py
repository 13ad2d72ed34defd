"""What the user types into the address field while pages come and go."""

import os
import time

from harness import ProgramTest, main, reply, wait_for
from inputs import key, type_text


class Typing(ProgramTest):
    def test_what_is_typed_into_a_new_tab_is_what_is_loaded(self):
        self.page("/typed", "<title>Typed page</title>")

        def slow(handler):
            time.sleep(1.5)
            handler.send_response(200)
            handler.send_header("Content-Type", "text/html")
            handler.end_headers()
            handler.wfile.write(b"<title>Slow page</title>")

        self.server.pages["/slow"] = slow
        first = self.page("/first", "<title>First page</title><script>let n = 0;"
                                    "setInterval(() => document.title = 'First ' + ++n, 100)</script>")
        program = self.start(first, settings={"Default": self.server.address + "/slow"})
        wait_for(lambda: program.title.startswith("First"), "the first page")
        for wait in (0, 0.7, 1.4):
            with self.subTest(wait):
                # The first tab changes its title all the time, and the new one ends its load meanwhile.
                key("ctrl+t")
                time.sleep(wait)
                key("ctrl+l")
                type_text(self.server.address + "/typ", delay=40)
                type_text("ed", delay=300)
                key("Return")
                program.wait_title("Typed page")
        self.assertFalse([path for path in self.server.requests if path not in ("/first", "/slow", "/typed")])
        self.assertEqual(program.close(), 0)

    def test_what_is_composed_is_typed(self):
        program = self.start(self.page("/", "<title>Moves</title><script>let n = 0; setInterval(() => {"
                                            "history.replaceState(0, '', '/' + ++n); fetch('/moved') }, 100)</script>"))
        program.wait_title("Moves")

        def moves_on():
            seen = self.server.requests.count("/moved")
            wait_for(lambda: self.server.requests.count("/moved") > seen + 5, "further addresses of the page")

        key("ctrl+l", "ctrl+shift+u", "e")
        moves_on()
        key("9")
        moves_on()
        key("space")
        wait_for(lambda: "\u00e9" in program.field_texts("Moves"), "the character that was composed, alone")
        moves_on()
        self.assertIn("\u00e9", program.field_texts("Moves"))


class FromOutside(ProgramTest):
    """Words, and what comes from other programs."""

    def test_words_are_searched_for_and_what_is_neither_is_offered(self):
        for path in ("/find", "/wiki"):
            self.server.pages[path] = lambda handler: reply(handler, f"<title>{handler.path}</title>")
        home = self.home()
        os.makedirs(os.path.join(home, "engine"))
        with open(os.path.join(home, "engine", "engine.ini"), "w") as file:
            file.write(f"[Element]\nsearch={self.server.address}/find?q=%s\nkeywords=w {self.server.address}/wiki?q=%s\n")
        program = self.start("about:blank", home=home)
        for typed, title in (("naive words & more", "/find?q=naive%20words%20%26%20more"),
                             ("w weather", "/wiki?q=weather"), ("oneword", "/find?q=oneword")):
            key("ctrl+l")
            type_text(typed)
            key("Return")
            program.wait_title(title)
        for search in ("ctrl+k", "ctrl+e"):
            key(search)
            type_text("example.org")
            key("Return")
            program.wait_title("/find?q=example.org")
            program.key("alt+Left")
            program.wait_title("/find?q=oneword")
        key("ctrl+l")
        type_text("not..an.address")
        key("Return")
        program.wait_title("This is no address")
        program.press("This is no address", "Search for it", "link")
        program.wait_title("/find?q=not..an.address")

    def test_pasted_lines_become_one_and_may_be_loaded_at_once(self):
        self.page("/in/two/lines", "<title>Pasted</title>")
        address = self.server.address + "/in/two"
        self.page("/copied", "")
        program = self.program = self.start(self.page("/text", f"""<title>Text</title>
            <body oncopy="fetch('/copied')"><pre>{address}\n   /lines</pre>"""))
        program.wait_title("Text")
        program.click(350, 300)
        key("ctrl+a", "ctrl+c")
        wait_for(lambda: "/copied" in self.server.requests, "the page's copy")
        wait_for(lambda: self.pastes(address + "/lines"), "the address in the field")
        key("Return")
        program.wait_title("Pasted")
        key("alt+Left")
        program.wait_title("Text")
        key("ctrl+l", "Menu")
        wait_for(lambda: "Paste and Go" in program.told_by("menu item"), "the field's menu")
        key("g")
        program.wait_title("Pasted")

    def pastes(self, text):
        key("ctrl+l", "ctrl+v")
        return text in self.program.field_texts("Text")

    def test_an_address_reads_well(self):
        self.page("/%C3%BCber/%D0%BF%D1%83%D1%82%D1%8C", "<title>Read</title>")
        program = self.start(self.server.address + "/%C3%BCber/%D0%BF%D1%83%D1%82%D1%8C")
        program.wait_title("Read")
        wait_for(lambda: self.server.address + "/\u00fcber/\u043f\u0443\u0442\u044c" in program.field_texts("Read"),
                 "the address in its own letters")
        key("ctrl+l", "Return")  # and it leads there
        wait_for(lambda: self.server.requests.count("/%C3%BCber/%D0%BF%D1%83%D1%82%D1%8C") == 2, "the page again")


if __name__ == "__main__":
    main(warnings="ignore")
