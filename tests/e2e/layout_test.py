"""Tab layouts, saved and restored through the real file dialogs."""

import os
import time

from harness import ProgramTest, main, wait_for

SAVE, OPEN, QUESTION = "Save Tab Layout", "Open Tab Layout", "Overwrite file?"


class Layouts(ProgramTest):
    def setUp(self):
        super().setUp()
        first, second, default = (self.page("/" + name, f"<title>{name} page</title>")
                                  for name in ("first", "second", "default"))
        self.layout = ["<Tab Layout File>", first, second]
        program = self.program = self.start(first, settings={"Default": default})
        program.wait_title("first page")
        program.click(160, 60)  # New Tab
        program.wait_title("default page")
        program.type_address(second)
        program.wait_title("second page")
        self.path = os.path.join(program.home, "my layout")

    def lines(self):
        with open(self.path + ".tab", newline="") as file:
            return file.read().split("\r\n")

    def no_dialog(self):
        wait_for(lambda: list(self.program.windows()) == [self.program.window], "the end of the dialogs")

    def save(self):
        self.program.choose("Tabs", 0)
        self.program.answer_save(SAVE, self.path)

    def restore(self, path):
        self.program.choose("Tabs", 1)
        self.program.answer_open(OPEN, path)
        self.no_dialog()

    def cancel(self, window):
        """Escape; a file dialog that still reads its folder may not hear the first one."""
        def gone():
            self.program.key("Escape")
            time.sleep(1)
            return window not in self.program.windows()

        wait_for(gone, "the end of the cancelled dialog")
        self.no_dialog()

    def answer(self, key):
        self.program.wait_active(self.program.wait_window(QUESTION))
        self.program.key(key)
        self.no_dialog()

    def test_saved_tabs_come_back(self):
        program = self.program
        self.save()
        wait_for(lambda: os.path.exists(self.path + ".tab"), "the file, with its extension")
        self.assertEqual(self.lines(), [*self.layout, ""])
        self.no_dialog()

        # Something else in both tabs, and a third.
        program.click(160, 60)
        program.wait_title("default page")
        program.click(75, 92)
        program.wait_title("first page")
        program.type_address(self.page("/other", "<title>other page</title>"))
        program.wait_title("other page")
        before = len(self.server.requests)
        self.restore(self.path + ".tab")
        program.wait_title("first page")
        wait_for(lambda: sorted(self.server.requests[before:]) == ["/first", "/second"], "both pages' requests")
        program.click(225, 92)
        program.wait_title("second page")
        program.key("ctrl+Tab")
        program.wait_title("first page")  # there is no third
        self.assertEqual(program.close(), 0)

    def test_no_answer_but_yes_overwrites_and_a_cancel_changes_nothing(self):
        program = self.program
        with open(self.path + ".tab", "w", newline="") as file:
            file.write("kept\r\n")
        for row, title in enumerate((SAVE, OPEN)):
            program.choose("Tabs", row)
            window = program.wait_window(title)
            program.wait_active(window)
            self.cancel(window)
        for key in ("Return", "Escape"):
            self.save()
            self.answer(key)
            self.assertEqual(self.lines(), ["kept", ""])
        # Neither does what isn't a layout change the tabs.
        before = list(self.server.requests)
        self.restore(self.path + ".tab")
        time.sleep(0.5)
        self.assertEqual(program.title, "second page")
        self.assertEqual(self.server.requests, before)
        self.save()
        self.answer("alt+y")
        wait_for(lambda: self.lines() == [*self.layout, ""], "the new layout")
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    main(warnings="ignore")
