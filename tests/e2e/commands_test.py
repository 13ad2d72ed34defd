"""Commands of the menus that reach beyond the program's own windows: programs, files, the clipboard."""

import os
import tempfile
import time

from harness import ProgramTest, main, run, wait_for

FIELDS = """<title>Fields</title><body style='margin:0'>
<input id=one value='first words' style='width:650px;height:100px;display:block'>
<input id=two style='width:650px;height:100px;display:block'>
<script>oninput = () => document.title = `${one.value}|${two.value}`</script>"""


class Commands(ProgramTest):
    def begin(self, html="<title>Page: one</title><p>Words of the page", **more):
        self.program = self.start(self.page("/", html), settings={"History": "1"}, **more)
        wait_for(lambda: self.program.title == html[7:html.index("</")], "the page")
        time.sleep(0.5)
        return self.program

    def launch_entries(self, *lines):
        with open(os.path.join(self.program.home, "launch.dat"), "w", newline="") as file:
            file.write("".join(line + "\r\n" for line in lines))

    def test_an_entry_of_the_launch_menu_starts_a_program(self):
        program = self.begin()
        target = os.path.join(program.home, "made by a program")
        self.launch_entries("Message", "xmessage -name launched here", "Touch", f"touch \"{target}\"")
        program.choose("Launch", 2, 1)
        wait_for(lambda: os.path.exists(target), "the program's work")
        program.choose("Launch", 1, 1)
        window = wait_for(lambda: run("xdotool", "search", "--onlyvisible", "--name", "xmessage|launched", check=False),
                          "the program's window").split()[0]
        pid = int(run("xdotool", "getwindowpid", window, check=False) or 0)
        self.assertIsNone(program.process.poll())
        self.assertEqual(program.title, "Page: one")
        run("xdotool", "windowkill", window)
        self.assertNotEqual(pid, program.process.pid)
        self.assertEqual(program.close(), 0)

    def test_an_entry_that_cant_be_started_is_named_at_the_end(self):
        with tempfile.TemporaryFile("w+") as told:
            program = self.begin(stderr=told)
            self.launch_entries("Broken", "/nowhere/a-program --option")
            program.choose("Launch", 1, 1)
            box = program.wait_window("Marlowick")
            self.assertIsNone(program.process.poll())
            program.wait_active(box)
            program.key("Return")
            self.assertEqual(program.wait_end(), 1)
            told.seek(0)
            text = told.read()
        for name in ("\"broken\"", "/nowhere/a-program --option", os.path.join(program.home, "launch.dat")):
            self.assertIn(name, text)
        program.clean()

    def test_the_edit_menu_works_on_the_pages_field(self):
        program = self.begin(FIELDS)
        program.click(350, 150)
        program.choose("Edit", 3, 1)  # Select All
        program.choose("Edit", 1)  # Copy
        program.click(350, 250)
        program.choose("Edit", 2)  # Paste
        program.wait_title("first words|first words")
        program.choose("Edit", 3, 1)
        program.choose("Edit", 0)  # Cut
        program.wait_title("first words|")
        program.click(350, 150)
        program.key("End")
        program.choose("Edit", 2)
        program.wait_title("first wordsfirst words|")

    def test_source_and_new_window_show_the_same_address(self):
        program = self.begin()
        program.choose("File", 1)  # New Window
        plain = program.wait_window("Page: one")
        wait_for(lambda: self.server.requests.count("/") == 2, "its request")
        run("wmctrl", "-i", "-c", plain)
        wait_for(lambda: list(program.windows()) == [program.window], "its end")
        run("xdotool", "windowactivate", "--sync", program.window)
        program.choose("View", 6, 2)  # Source
        source = f"view-source:{self.server.address}/"
        folder = os.path.join(program.home, "history")

        def logged():
            with open(os.path.join(folder, os.listdir(folder)[0]), encoding="utf-8") as file:
                return f'<font size="1">{source}</font>' in file.read()

        wait_for(logged, "the source, among the pages visited")
        self.assertNotEqual(program.title, "Page: one")

    def test_a_page_is_saved_under_the_suggested_name(self):
        program = self.begin()
        folder = os.path.join(program.home, "saved")
        os.mkdir(folder)
        program.choose("File", 3)  # Save as...
        program.wait_window("Save As")
        time.sleep(0.5)
        program.key("Home")
        run("xdotool", "type", folder + "/")
        time.sleep(0.3)
        program.press("Save As", "Save")
        name = wait_for(lambda: os.listdir(folder), "the saved page")[0]
        self.assertEqual(os.path.splitext(name)[1], ".mhtml")
        self.assertTrue(name.startswith("Page"), name)
        self.assertNotIn(":", name)
        with open(os.path.join(folder, name), "rb") as file:
            saved = file.read()
        self.assertIn(b"multipart/related", saved)
        self.assertIn(b"Words of the page", saved)

    def test_a_cancelled_open_changes_nothing(self):
        program = self.begin()
        before = list(self.server.requests)
        program.choose("File", 2)  # Open...
        dialog = program.wait_window("Open Local Web Page")
        wait_for(lambda: program.menu() is None, "the end of the menu")
        program.press("Open Local Web Page", "Cancel")
        wait_for(lambda: dialog not in program.windows(), "the end of the dialog")
        self.assertEqual(program.title, "Page: one")
        self.assertEqual(self.server.requests, before)
        # And the program goes on as before.
        program.choose("View", 3)  # Refresh
        wait_for(lambda: len(self.server.requests) == len(before) + 1, "the page anew")

    def test_the_first_tab_stays(self):
        program = self.begin()
        program.key("ctrl+w")
        program.choose("File", 4, 1)  # Remove Tab
        time.sleep(0.5)
        self.assertEqual(program.title, "Page: one")
        program.key("F5")
        wait_for(lambda: self.server.requests.count("/") == 2, "the page anew")
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    main(warnings="ignore")
