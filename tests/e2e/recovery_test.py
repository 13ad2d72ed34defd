"""Tabs come back: those that were removed, and those of a run that was cut off."""

import contextlib
import os
import random
import re
import shutil
import stat
import tempfile
import time

from harness import ProgramTest, main, reply, wait_for

TOP, DEEP = (0, 0, 128), (0, 128, 0)  # a long page's colours: where it begins, and from 2000 pixels on


def long_page(title):
    """Says in its title when it has been scrolled and rests: a little behind that the engine takes note of the place."""
    return (f"<title>{title}</title><script>let rest; onscroll = () => {{ clearTimeout(rest);"
            f"rest = setTimeout(() => document.title = '{title} rests', 1000) }}</script><body style='margin:0'>"
            "<div style='height:2000px;background:#000080'></div>"
            "<div style='height:9000px;background:#008000'></div>")


class Tabs(ProgramTest):
    def setUp(self):
        super().setUp()
        self.posted = []
        self.server.pages.update({"/first": "<title>First</title>", "/short": "<title>Short</title>",
                                  "/long": long_page("Long"), "/order": self.order,
                                  "/form": "<title>Form</title><body onload='document.forms[0].submit()'>"
                                           "<form method=post action=/order><input name=q value=secret>"})

    def order(self, handler):
        self.posted.append(handler.command)
        reply(handler, "<title>Ordered</title>")

    def go(self, program, path, title):
        program.type_address(self.server.address + path)
        program.wait_title(title)

    def colour(self, program, wanted):
        wait_for(lambda: program.page_pixel(self.screen) == wanted, f"the colour {wanted}")

    def scroll(self, program, title):
        """Down to the green part."""
        self.colour(program, TOP)
        _, _, width, height = program.rect
        program.click(width // 2, height // 2)
        program.key("End")
        program.wait_title(f"{title} rests")
        self.colour(program, DEEP)


class RemovedTabs(Tabs):
    def test_come_back_with_their_history_and_place(self):
        program = self.start(self.server.address + "/first")
        program.wait_title("First")
        program.key("ctrl+shift+t")  # there is nothing yet
        program.key("ctrl+t")
        self.go(program, "/short", "Short")
        self.go(program, "/long", "Long")
        self.scroll(program, "Long")
        program.key("ctrl+w")
        program.wait_title("First")
        program.key("ctrl+shift+t")
        program.wait_title("Long rests")
        self.colour(program, DEEP)
        program.key("alt+Left")
        program.wait_title("Short")
        program.key("alt+Right")
        program.wait_title("Long rests")
        self.assertEqual(program.close(), 0)

    def test_send_no_form_again(self):
        program = self.start(self.server.address + "/first")
        program.key("ctrl+t")
        self.go(program, "/form", "Ordered")
        program.key("ctrl+w")
        program.wait_title("First")
        program.key("ctrl+shift+t")
        program.wait_title("Ordered")
        self.assertEqual(self.posted, ["POST", "GET"])
        self.assertEqual(program.close(), 0)


def kept(home):
    """The addresses in the file of a run's tabs; none where there is no file. Fails where it isn't whole."""
    try:
        with open(os.path.join(home, "tabs.dat"), "rb") as file:
            content = file.read()
    except FileNotFoundError:
        return []
    fields, start = [], b"<Marlowick Tabs>"
    assert content.startswith(start) and content.endswith(b"\r\n"), content
    rest = content[len(start):-2]
    while rest:
        length = int(re.match(rb"(\d+):", rest)[1])
        rest = rest[len(str(length)) + 1:]
        assert len(rest) >= length, content
        fields.append(rest[:length])
        rest = rest[length:]
    assert len(fields) % 3 == 1, content
    return [address.decode() for address in fields[1::3]]


class CutOff(Tabs):
    def setUp(self):
        super().setUp()
        folder = tempfile.mkdtemp(prefix="marlowick-e2e-")
        self.addCleanup(shutil.rmtree, folder, ignore_errors=True)
        self.home = os.path.join(folder, "home")

    def start_here(self, path="/first"):
        return self.start(self.server.address + path, home=self.home)

    def wait_kept(self, *paths):
        wanted = [self.server.address + path for path in paths]

        def there():
            with contextlib.suppress(AssertionError):  # a test has spoilt the one before
                return kept(self.home) == wanted

        wait_for(there, f"{wanted} in the file", 40)

    @staticmethod
    def offers(program):
        return program.place(program.title, "Restore", "push button")

    def test_leaves_tabs_that_come_back_when_they_are_looked_at(self):
        program = self.start_here()
        program.wait_title("First")
        for path, title in (("/short", "Short"), ("/long", "Long"), ("/short", "Short")):
            program.key("ctrl+t")
            self.go(program, path, title)
            if title == "Long":
                self.scroll(program, title)
        self.wait_kept("/first", "/short", "/long", "/short")
        self.assertEqual(stat.S_IMODE(os.stat(os.path.join(self.home, "tabs.dat")).st_mode), 0o600)
        time.sleep(11)  # the place in the long page has its own turn
        program.kill()

        self.server.requests.clear()
        program = self.start_here()
        program.wait_title("First")
        program.press("First", "Restore")
        program.wait_title("Short")  # the last one was on show
        program.key("ctrl+shift+Tab")
        program.wait_title("Long rests")
        self.colour(program, DEEP)
        self.assertEqual(self.server.requests, ["/first", "/short", "/long"])
        program.key("ctrl+shift+Tab")
        program.wait_title("Short")
        self.assertEqual(program.close(), 0)
        self.assertFalse(os.path.exists(os.path.join(self.home, "tabs.dat")))

        program = self.start_here()
        program.wait_title("First")
        self.go(program, "/short", "Short")  # an offer would be long there
        self.assertIsNone(self.offers(program))
        self.assertEqual(program.close(), 0)

    def test_leaves_no_password_and_nothing_sent(self):
        program = self.start_here()
        program.wait_title("First")
        program.type_address(self.server.address.replace("//", "//me:hidden@") + "/short")
        program.wait_title("Short")
        self.go(program, "/form", "Ordered")
        program.key("ctrl+t")
        program.type_address(self.server.address.replace("//", "//me:hidden@") + "/long")
        program.wait_title("Long")
        self.wait_kept("/order")
        with open(os.path.join(self.home, "tabs.dat"), "rb") as file:
            content = file.read()
        self.assertIn(b"/first", content)  # the history is there
        self.assertNotIn(b"hidden", content)
        self.assertNotIn(b"secret", content)
        program.process.terminate()  # as the end of the session does
        program.wait_end()
        self.assertEqual(kept(self.home), [self.server.address + "/order"])

    def test_leaves_a_whole_file_at_any_moment(self):
        self.cut_off_ten_times(1)

    def test_leaves_a_whole_file_at_any_other_moment(self):
        self.cut_off_ten_times(2)

    def cut_off_ten_times(self, seed):
        chance = random.Random(seed)
        for _ in range(10):
            program = self.start_here(chance.choice(["/first", "/short"]))
            began = time.monotonic()
            # The first writing is a second behind the first page, which takes a while itself.
            moment = chance.uniform(0, 1.8)
            program.key("ctrl+t")
            while time.monotonic() - began < moment:
                program.key(chance.choice(["ctrl+t", "ctrl+w", "ctrl+shift+t", "ctrl+Tab"]))
            program.kill()
            kept(self.home)
        program = self.start_here()
        wait_for(lambda: kept(self.home), "the tabs' file")
        program.kill()
        with open(os.path.join(self.home, "tabs.dat"), "r+b") as file:
            file.truncate(os.path.getsize(file.name) - 5)  # even a part of a file is an offer of what is whole in it
        program = self.start_here("/long")
        program.wait_title("Long")
        program.press("Long", "Forget")
        self.wait_kept("/long")
        self.assertEqual(program.close(), 0)


main()
