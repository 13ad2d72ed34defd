"""The keyboard while menus are open, with and without a window manager."""

import os
import re
import subprocess

from harness import LABELS, ProgramTest, click_at, main, move_to, run, wait_for

FORM = """<title>Form</title><body style='margin:0;background:green'>
<form action='/sent'><input name=q autofocus style='width:600px'><input type=submit></form>
<script>addEventListener('keydown', event => { new Image().src = '/key?' + event.key })</script>"""


class MenuKeys(ProgramTest):
    def setUp(self):
        super().setUp()
        self.page("/sent", "<title>Sent</title>")
        self.program = self.start(self.page("/", FORM))
        self.program.wait_title("Form")
        self.program.click(350, 300)
        self.program.click(100, 115)  # into the form's field
        self.program.key("a")
        wait_for(lambda: "/key?a" in self.server.requests, "a key on the page")

    def gone(self, how):
        wait_for(lambda: self.program.menu() is None, f"no menu after {how}", 5)

    def keys(self):
        return [path for path in self.server.requests if path.startswith("/key?")]

    def test_no_key_gets_past_an_open_menu(self):
        before = self.keys()
        self.program.open_menu("File")
        self.program.key("b", "Return", "Tab", "Down")
        self.assertIsNotNone(self.program.menu())
        self.program.key("Escape")
        self.gone("Escape")
        self.program.key("c")
        wait_for(lambda: "/key?c" in self.server.requests, "the page's keyboard again")
        self.assertEqual(self.keys(), [*before, "/key?c"])
        self.assertEqual(self.program.title, "Form", "nothing was sent")
        self.program.key("Return")
        self.program.wait_title("Sent")

    def test_a_shortcut_ends_the_menu_and_acts(self):
        self.program.open_menu("Edit")
        before = self.server.requests.count("/")
        self.program.key("F5")
        self.gone("a shortcut")
        wait_for(lambda: self.server.requests.count("/") > before, "the page anew")

    def test_a_fatal_message_of_a_row_lies_under_nothing_and_has_the_mouse(self):
        with open(os.path.join(self.program.home, "launch.dat"), "w", newline="") as file:
            file.write("Nothing there\r\n/no/such/program\r\n")
        other = subprocess.Popen(["xmessage", "-geometry", "200x60+10+10", "-buttons", "Pressed:7", "of another program"])
        self.addCleanup(other.wait)
        self.addCleanup(other.kill)
        window = wait_for(lambda: run("xdotool", "search", "--onlyvisible", "--class", "xmessage", check=False),
                          "the other program's window").split()[0]
        run("xdotool", "windowactivate", "--sync", self.program.window)
        self.program.choose("Launch", 1, 1)
        self.program.wait_window("Marlowick")
        # The mouse is every program's while the message is up.
        button = re.findall(r"\d+x\d+\+\S+ +\+(\d+)\+(\d+)", run("xwininfo", "-tree", "-id", window))[-1]
        click_at(int(button[0]) + 20, int(button[1]) + 12)
        self.assertEqual(other.wait(15), 7)
        self.program.press("Marlowick", "OK")
        self.assertEqual(self.program.process.wait(15), 1)


class MenusByKey(ProgramTest):
    """The drawn menus without the mouse."""

    def setUp(self):
        super().setUp()
        self.program = self.start(self.page("/", FORM), home=self.home({
            "favourites/Reference/Local.url": f"[InternetShortcut]\r\nURL={self.page('/kept', '<title>Kept</title>')}\r\n"
            .encode()}))
        self.program.wait_title("Form")
        self.program.move(350, 300)

    def menu_at(self, label):
        """Waits for the menu below this label, and returns its place."""
        left = self.program.rect[0] + LABELS[label][0]
        return wait_for(lambda: next((menu for menu in self.program.popups() if left - 45 < menu[0] <= left), None),
                        f"the menu {label}")

    def wait_gone(self):
        wait_for(lambda: self.program.menu() is None, "no menu")

    def picture(self, place):
        left, top, width, height = place
        return self.screen.shot().crop((left, top, left + width, top + height)).tobytes()

    def test_f10_and_a_lone_alt_open_the_bar_and_arrows_walk_it(self):
        program = self.program
        for opens in ("F10", "Alt_L"):
            program.key(opens)
            self.menu_at("File")
            for step, label in (("Right", "Edit"), ("Right", "View"), ("Right", "Favourites"), ("Right", "Launch"),
                                ("Left", "Favourites"), ("Left", "View"), ("h", "Help"), ("Right", "File"),
                                ("Left", "Help")):
                program.key(step)
                self.menu_at(label)
            program.key(opens)
            self.wait_gone()
        # Not with another key between.
        program.key("alt+a", "alt+shift", "b")
        wait_for(lambda: "/key?b" in self.server.requests, "the page's key behind them")
        self.assertIsNone(program.menu())
        program.key("F10", "Escape")
        self.wait_gone()
        program.key("z")
        wait_for(lambda: "/key?z" in self.server.requests, "the keyboard on the page")

    def test_rows_look_as_under_the_mouse_and_are_chosen(self):
        program = self.program
        program.open_menu("View")
        by_mouse = []
        place = program.menu()
        for row in (1, 2):
            move_to(place[0] + 40, place[1] + 8 + 15 * row + 7)
            by_mouse.append(wait_for(lambda: self.steady(place, by_mouse), "the highlight"))
        program.key("Escape")
        program.move(350, 300)
        self.wait_gone()
        program.key("F10", "v")
        self.assertEqual(self.menu_at("View"), place)
        program.key("Down", "Down")
        wait_for(lambda: self.picture(place) == by_mouse[0], "the row as under the mouse")
        program.key("Up", "Up", "Home", "End", "Home", "Down", "Down")
        wait_for(lambda: self.picture(place) == by_mouse[1], "the next row as under the mouse")
        program.key("s", "s", "s")  # Source, Stop, Search once more: round the rows
        program.key("Escape")
        self.wait_gone()
        program.key("F10", "h", "Down", "Return")
        program.wait_window("About Marlowick")

    def steady(self, place, others):
        """The picture there, once it stays and differs from these."""
        picture = self.picture(place)
        return picture if picture not in others and picture == self.picture(place) else None

    def test_first_letters_find_rows(self):
        self.program.key("F10", "Down", "c", "Return")
        self.assertEqual(self.program.wait_end(), 0)

    def test_a_screen_reader_hears_of_the_row(self):
        import pyatspi
        from gi.repository import GLib

        def focused(node):
            if node.getRole() in (pyatspi.ROLE_MENU_ITEM, pyatspi.ROLE_MENU) and \
                    node.getState().contains(pyatspi.STATE_FOCUSED):
                yield node.name
            for child in node:
                if child is not None:
                    yield from focused(child)

        def names():
            try:
                for application in pyatspi.Registry.getDesktop(0):
                    if application is not None and application.get_process_id() == self.program.process.pid:
                        application.clear_cache()
                        return list(focused(application))
            except GLib.Error:
                pass
            return []

        self.program.key("F10", "Down", "Down")
        wait_for(lambda: names() == ["New Window"], "the row that has the keyboard")
        self.program.key("p")
        wait_for(lambda: names() == ["Print..."], "the row with the letter")
        self.program.key("F10")
        self.program.key("F10", "f", "r")
        wait_for(lambda: names() == ["Reference"], "the folder")

    def test_the_favourites_are_walked_into_and_out_of(self):
        program = self.program
        program.key("F10", "f", "r", "Right")
        wait_for(lambda: len(program.popups()) == 2, "the folder's window")
        program.key("Left")
        wait_for(lambda: len(program.popups()) == 1, "the window of all")
        program.key("Return")
        wait_for(lambda: len(program.popups()) == 2, "the folder's window")
        program.key("l", "Return")
        program.wait_title("Kept")
        self.wait_gone()
        program.key("F10", "f", "Down", "Return")
        program.wait_window("Add to Favourites")


class NoWindowManager(ProgramTest):
    """Nobody else takes the keyboard from the program here, so that a press elsewhere ends a menu by itself."""

    def setUp(self):
        super().setUp()
        self.program = self.start(self.page("/", FORM))
        self.program.wait_title("Form")
        manager = next(one for one in self.screen.processes if "openbox" in one.args)
        manager.terminate()
        manager.wait(10)
        self.addCleanup(self.manage_again, self.screen.processes.index(manager))

    def manage_again(self, place):
        self.screen.processes[place] = subprocess.Popen(["openbox"], stdout=subprocess.DEVNULL,
                                                        stderr=subprocess.DEVNULL)
        wait_for(lambda: "Openbox" in run("wmctrl", "-m", check=False), "the window manager")

    def test_the_end_of_the_second_of_two_leaves_the_first_and_the_mouse(self):
        program = self.program
        wait_for(lambda: os.path.isdir(os.path.join(program.home, "favourites")), "the delivered favourites")
        x, y = LABELS["Favourites"]
        program.click(x, y)
        program.move(x + 2, y + 1)
        left, top, _, _ = wait_for(program.menu, "the favourites")
        for y in (55, 57):  # the first folder
            move_to(left + 40, top + y)
        wait_for(lambda: len(program.popups()) == 2, "the first folder's window")
        for y in (20, 18):  # a row that is no folder
            move_to(left + 40, top + y)
        wait_for(lambda: len(program.popups()) == 1, "the top window alone")
        program.key("a")
        self.assertEqual(program.menu()[:2], (left, top))
        click_at(5, 895)  # outside the program, which only the holder of the mouse hears of
        wait_for(lambda: program.menu() is None, "no menu after a press elsewhere", 5)
        program.click(350, 300)
        program.key("b")
        wait_for(lambda: "/key?b" in self.server.requests, "the page's mouse and keyboard again", 5)
        self.assertNotIn("/key?a", self.server.requests)

    def test_a_menu_stays_open_without_one(self):
        program = self.program
        left, top, _, height = program.open_menu("File")
        for y in range(10, height, 10):
            run("xdotool", "mousemove", str(left + 40), str(top + y))
            self.assertIsNotNone(program.menu())
        program.move(*LABELS["View"])
        program.move(LABELS["View"][0] + 1, LABELS["View"][1])
        wait_for(lambda: (program.menu() or (left,))[0] > left, "the neighbour's menu", 5)
        program.key("a", "Escape")
        wait_for(lambda: program.menu() is None, "no menu after Escape", 5)
        self.assertNotIn("/key?a", self.server.requests)
        program.open_menu("File")
        program.click(350, 300)
        wait_for(lambda: program.menu() is None, "no menu after a press elsewhere", 5)


if __name__ == "__main__":
    main()
