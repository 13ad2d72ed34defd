"""Internet Options in the real program, files in other encodings than expected, and settings that lead nowhere."""

import os

from harness import ProgramTest, key, main, reply, type_text, wait_for
from hosts import Hosts
from widgets import Widgets

OPTIONS = "Internet Options"
RADIO = ("radio button",)
CHECK = ("check box",)
# Tells how wide it finds itself, and how large its smallest text is.
MEASURE = """<title>No scripts</title><p id=small style='font-size:4px'>small</p><script>
const tell = () => document.title = innerWidth + " wide, " + getComputedStyle(small).fontSize;
onresize = tell; tell()</script>"""


class Settings(ProgramTest):
    def test_pages_come_by_the_proxy_that_is_chosen(self):
        address = self.page("/", "<title>Direct</title>")
        # Connections that are open already are used on.
        hosts = Hosts({address: lambda handler: reply(handler, "<title>By the proxy</title>", headers={"Connection": "close"})})
        self.addCleanup(hosts.close)
        program = self.program = self.start(address, settings={"Default": "about:blank"},
                                            environment={"http_proxy": hosts.proxy})
        program.wait_title("By the proxy")

        self.open_options()
        program.press(OPTIONS, "Without a proxy", *RADIO)
        self.confirm()
        program.type_address(address)
        program.wait_title("Direct")

        # What is none is refused with its name.
        self.open_options()
        program.press(OPTIONS, "By this proxy:", *RADIO)
        for typed, title in (("", "No proxy is named"), ("http:nonsense", "This is no proxy")):
            program.wait_active(self.window)
            program.press(OPTIONS, "By this proxy:", *RADIO)
            key("Tab", "ctrl+a", "BackSpace")
            type_text(typed)
            key("Return")
            notice = Widgets(program, title)
            self.assertTrue(any(typed in text for text in program.told_by("label")))
            key("Escape")
            notice.wait_end()
        program.wait_active(self.window)
        type_text(hosts.proxy.removeprefix("http://"))
        self.confirm()
        program.type_address(address)
        program.wait_title("By the proxy")
        self.assertEqual(self.setting("proxy address"), hosts.proxy.removeprefix("http://"))

        hosts.pages[address] = "<title>By the system's</title>"
        self.open_options()
        program.press(OPTIONS, "As the system is set up", *RADIO)
        self.confirm()
        program.type_address(address)
        program.wait_title("By the system's")
        self.assertEqual(self.setting("proxy"), "system")
        self.assertEqual(program.close(), 0)

    def open_options(self):
        self.program.choose_row("View", "Internet Options...")
        self.window = self.program.wait_window(OPTIONS)
        self.program.wait_active(self.window)

    def confirm(self, key_or_button="OK"):
        self.program.press(OPTIONS, key_or_button)
        wait_for(lambda: self.window not in self.program.windows(), "the end of the dialog")

    def number(self, mnemonic, value):
        key(mnemonic)
        key("ctrl+a")
        type_text(value)

    def setting(self, name):
        with open(os.path.join(self.program.home, "engine", "engine.ini")) as file:
            return next(line.split("=", 1)[1].strip() for line in file if line.startswith(name + "="))

    def test_pages_are_shown_as_they_are_set(self):
        home = self.home()
        address = self.page("/", MEASURE)
        program = self.program = self.start(address, home=home)
        wait_for(lambda: "wide" in program.title, "the page")
        width = int(program.title.split()[0])

        self.open_options()
        self.number("alt+z", "200")
        self.number("alt+m", "30")
        self.confirm("Cancel")
        program.key("F5")
        wait_for(lambda: self.server.requests.count("/") == 2, "the page anew")
        program.wait_title(f"{width} wide, 4px")

        self.open_options()
        self.number("alt+z", "200")
        self.number("alt+m", "30")
        program.press(OPTIONS, "Use Current")
        self.confirm()
        program.key("F5")  # the page measures itself when it loads, and the zoom and the type change one after the other
        program.wait_title(f"{width // 2} wide, 15px")
        self.assertEqual((self.setting("zoom"), self.setting("minimum font size"), self.setting("home")),
                         ("200", "30", address))

        self.open_options()
        program.press(OPTIONS, "Pages may run scripts", *CHECK)
        self.confirm()
        program.type_address(address)
        program.wait_title("No scripts")
        self.assertEqual(program.close(), 0)

        # The smallest text is told in pixels of the screen. All of it holds at the next start, which begins at the home page.
        program = self.program = self.start(home=home)
        program.wait_title("No scripts")
        self.open_options()
        program.press(OPTIONS, "Pages may run scripts", *CHECK)
        program.press(OPTIONS, "Use Start Page")
        self.confirm()
        self.assertEqual(self.setting("home"), "")
        program.key("F5")
        program.wait_title(f"{width // 2} wide, 15px")
        program.key("alt+Home")
        program.wait_title("Welcome to Marlowick")
        self.open_options()
        program.press(OPTIONS, "Use Blank")
        self.confirm()
        program.key("alt+Home")
        program.wait_title("about:blank")
        self.assertEqual(program.close(), 0)

    def test_what_pages_have_left_is_cleared_as_far_as_it_is_chosen(self):
        cookies = []

        def counted(handler):
            cookies.append(handler.headers.get("Cookie"))
            reply(handler, f"<script src='/kept'></script><title>Visit {len(cookies)}</title>",
                  headers={"Set-Cookie": "been=here; Max-Age=9000"})

        self.server.pages.update({"/": counted, "/kept": lambda handler: reply(
            handler, "", headers={"Cache-Control": "max-age=9000"}, kind="text/javascript")})
        program = self.program = self.start(self.server.address + "/?1")
        program.wait_title("Visit 1")

        def visit(number, asked):
            program.type_address(f"{self.server.address}/?{number}")
            program.wait_title(f"Visit {number}")
            self.assertEqual(self.server.requests.count("/kept"), asked)

        def clear(*boxes):
            self.open_options()
            for box in boxes:
                program.press(OPTIONS, box, *CHECK)
            program.press(OPTIONS, "Clear Now")
            wait_for(lambda: program.place(OPTIONS, "Cleared", "label"), "its end")
            self.confirm()

        visit(2, asked=1)
        clear()  # the cache, which is chosen already
        visit(3, asked=2)
        clear("Copies of pages (the cache)", "Cookies and other data of sites")
        visit(4, asked=2)
        self.assertEqual(cookies, [None, "been=here", "been=here", None])
        self.assertEqual(program.close(), 0)

    def test_files_in_any_encoding_cost_nothing(self):
        page = self.page("/", "<title>Käse — 日本</title>")
        home = self.home({"autocomplete.dat": b"http://caf\xe9.test/\r\n" + page.encode() + b"\r\n",
                          "launch.dat": b"\xff\xfe\x00broken\r\nxmessage \xe9\r\n",
                          "filter.dat": b"w\xf6rter\r\n"})
        program = self.start(page, home=home)
        program.wait_title("Käse — 日本")
        program.open_menu("Launch")
        key("Escape")
        program.type_address(self.page("/two", "<title>Zwei</title>"))
        program.wait_title("Zwei")
        self.assertEqual(program.close(), 0)
        with open(os.path.join(home, "autocomplete.dat"), "rb") as file:
            kept = file.read()
        self.assertIn(page.encode() + b"\r\n", kept)
        self.assertIn(b"caf", kept, "the line that isn't UTF-8")

    def test_a_skin_that_isnt_there_leaves_the_built_in_one(self):
        program = self.start(self.page("/", "<title>Here</title>"), settings={"Skin": "skins\\\\Nowhere"})
        program.wait_title("Here")
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    main(warnings="ignore")
