"""The address field at the keyboard and the mouse: completion, its list, and the shortcuts that come between."""

from harness import ProgramTest, click_at, main, run, type_text, wait_for


class AddressField(ProgramTest):
    def begin(self):
        self.first = self.page("/first-page", "<title>First</title>")
        self.other = self.page("/other-page", "<title>Other</title>")
        self.program = self.start("about:blank")
        self.go(self.other, "Other")
        self.go(self.first, "First")
        return self.program

    def go(self, address, title):
        self.program.type_address(address)
        self.program.wait_title(title)

    def requests(self, path):
        return self.server.requests.count(path)

    def test_typing_completes_from_the_addresses_typed_before(self):
        program = self.begin()
        start = self.other[:-6]
        program.type_address(start.removeprefix("http://"))
        program.wait_title("Other")
        self.assertEqual(self.requests("/other-page"), 2)
        # Deleting what was filled in completes nothing again.
        program.click(400, 57)
        program.key("ctrl+a")
        type_text(start)
        program.key("BackSpace", "Return")
        wait_for(lambda: self.requests(start[start.rindex("/"):]) == 1, "the address as it was left")

    def test_completion_can_be_switched_off(self):
        page = self.page("/other-page", "<title>Other</title>")
        listed = (page + "\r\n").encode()
        program = self.start(page, home=self.home({"autocomplete.dat": listed}, AutoComplete=1))
        program.wait_title("Other")
        program.type_address(page[:-2])
        wait_for(lambda: self.requests("/other-pa") == 1, "the address as it was typed")

    def test_behind_a_shortcut_the_whole_address_is_typed_over(self):
        program = self.begin()
        for keys in (["key", "ctrl+l"], ["key", "ctrl+l", "key", "ctrl+l"], ["key", "ctrl+plus", "key", "ctrl+l"]):
            with self.subTest(keys):
                before = self.requests("/other-page")
                program.click(400, 57)
                run("xdotool", *keys)
                type_text(self.other)
                program.key("Return")
                wait_for(lambda: self.requests("/other-page") == before + 1, "the address")
                program.wait_title("Other")
                self.go(self.first, "First")
        # A key that is still down at Enter comes up in the page.
        program.click(400, 57)
        program.key("ctrl+a")
        type_text(self.other[:-1])
        run("xdotool", "keydown", "e", "key", "Return", "keyup", "e")
        program.wait_title("Other")
        program.key("ctrl+l")
        type_text(self.first)
        program.key("Return")
        program.wait_title("First")

    def test_the_list_is_chosen_from_by_keyboard_and_mouse(self):
        program = self.begin()
        program.click(400, 57)
        program.key("Down")
        left, top, width, height = wait_for(program.menu, "the list")
        self.assertGreater(width, 200)
        self.assertLess(height, 60, "two rows")
        program.key("End", "Return")
        program.wait_title("Other")
        self.assertIsNone(program.menu())
        # The first row, by the mouse.
        program.click(400, 57)
        program.key("F4")
        wait_for(program.menu, "the list")
        click_at(left + 50, top + 9)
        program.wait_title("First")
        # A double click is the field's alone.
        place = program.rect
        run("xdotool", "mousemove", str(place[0] + 400), str(place[1] + 57), "click", "--repeat", "2", "--delay", "50", "1")
        program.key("End")
        self.assertEqual(program.rect, place)
        # Escape closes it and leaves the address; so does a press elsewhere, which does nothing else.
        program.click(400, 57)
        for end in (lambda: program.key("Escape"), lambda: program.click(400, 300)):
            program.key("alt+Down")
            wait_for(program.menu, "the list")
            end()
            wait_for(lambda: program.menu() is None, "its end")
        program.key("Return")
        wait_for(lambda: self.requests("/first-page") == 3, "the address as it was")


if __name__ == "__main__":
    main(warnings="ignore")
