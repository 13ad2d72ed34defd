"""The keyboard while menus are open, with and without a window manager."""

import os
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
        self.program.choose("Launch", 1, 1)
        self.program.press("Marlowick", "OK")
        self.assertEqual(self.program.process.wait(15), 1)


class NoWindowManager(ProgramTest):
    """Nobody else takes the keyboard from the program here, so that a press elsewhere ends a menu by itself."""

    def setUp(self):
        super().setUp()
        self.program = self.start(self.page("/", FORM))
        self.program.wait_title("Form")
        manager = next(one for one in self.screen.processes if one.args == ["openbox"])
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
