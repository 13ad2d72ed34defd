"""Internet Options in the real program, files in other encodings than expected, and settings that lead nowhere."""

import os

from harness import ProgramTest, key, main, type_text, wait_for
from hosts import Hosts

OPTIONS = "Internet Options"
RADIO = ("radio button",)


class Settings(ProgramTest):
    def test_a_proxy_named_by_hand_carries_the_next_page(self):
        hosts = Hosts()
        self.addCleanup(hosts.close)
        home = self.home(Default="about:blank")
        program = self.start(self.page("/", "<title>Near</title>"), home=home)
        program.wait_title("Near")
        program.choose_row("View", "Internet Options...")
        window = program.wait_window(OPTIONS)
        program.wait_active(window)
        program.press(OPTIONS, "By this proxy:", *RADIO)
        key("Tab")
        key("ctrl+a")
        type_text(hosts.proxy.removeprefix("http://"))
        key("Return")
        wait_for(lambda: window not in program.windows(), "the end of the dialog")
        program.type_address(hosts.page("http://far.test/", "<title>Far</title>"))
        program.wait_title("Far")
        self.assertEqual(program.close(), 0)
        with open(os.path.join(home, "engine", "engine.ini")) as file:
            self.assertIn(hosts.proxy.removeprefix("http://"), file.read())

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
