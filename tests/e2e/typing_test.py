"""What the user types into the address field while pages come and go."""

import time

from harness import ProgramTest, main, wait_for
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


if __name__ == "__main__":
    main(warnings="ignore")
