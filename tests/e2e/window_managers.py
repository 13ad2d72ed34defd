"""Tries the program's window under one window manager after another, and writes the table of what worked.

Without arguments: under all of them, into docs/window-managers.md. With a name: under that one, shown only; a folder named
behind it gets a picture of the screen at each failure."""

import contextlib
import glob
import os
import re
import subprocess
import sys
import time

import inputs
from harness import LABELS, ROOT, SCREEN, Marlowick, Screen, Server, wait_for
from inputs import click_at, drag_by, hand, key, move_to, run, type_text

# The name that the window manager gives itself, its command, and its own keys for maximising and back.
MANAGERS = {
    "openbox": ("openbox", ["openbox"], None),
    "xfwm4": ("xfwm4", ["xfwm4"], ("alt+F10", "alt+F10")),
    "marco": ("marco", ["marco"], ("alt+F10", "alt+F5")),
    "mutter": ("mutter", ["mutter", "--x11"], ("super+Up", "super+Down")),
    "kwin_x11": ("kwin", ["kwin_x11"], None),
    "fluxbox": ("fluxbox", ["fluxbox"], None),
    "icewm": ("icewm", ["icewm"], ("alt+F10", "alt+F10")),
    "i3": ("i3", ["i3"], None),
    "none": (None, None, None),
    "weston": ("weston", ["weston", "--backend=x11-backend.so", "--xwayland", "--idle-time=0",
                          f"--width={SCREEN[0]}", f"--height={SCREEN[1]}"], None),
    "mutter, Wayland": ("mutter", ["mutter", "--wayland", "--nested"], ("super+Up", "super+Down")),
}
PAGE = """<title>Green</title><body style='background:green' onclick='document.documentElement.requestFullscreen()'>"""
GREEN = (0, 128, 0)
PATIENCE = 6  # seconds for what a window manager does


class CannotTry(Exception):
    """The window manager has no such thing."""


def soon(condition, what):
    return wait_for(condition, what, PATIENCE)


def by_the_edge(*command):
    """The mouse, to each place by way of the screen's edge, and slowly."""
    if command[0] == "mousemove":
        hand("mousemove", "1", str(SCREEN[1] - 1))
        time.sleep(0.1)
    hand(*command)
    if command[0] != "mousemove_relative":
        time.sleep(1.5 if command[0] == "mouseup" else 0.4)


class Window(Marlowick):
    """The program's window where nobody may keep a list of windows."""

    def windows(self):
        found = run("xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid), check=False).split()
        return {window: run("xdotool", "getwindowname", window, check=False) for window in found
                if "Override Redirect State: no" in run("xwininfo", "-id", window, check=False)}

    @property
    def rect(self):
        text = run("xwininfo", "-id", self.window)
        names = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        return tuple(int(re.search(rf"{name}:\s+(-?\d+)", text)[1]) for name in names)

    def popups(self):
        # Panels aren't managed either.
        found = []
        for line in run("xwininfo", "-root", "-children").splitlines():
            match = re.match(r"\s+(0x[0-9a-f]+) .*\(\"marlowick\".*\s(\d+)x(\d+)\+-?\d+\+-?\d+\s+\+(-?\d+)\+(-?\d+)", line)
            if match and int(match[2]) >= 60 and "IsViewable" in run("xwininfo", "-id", match[1], check=False):
                left, top = int(match[4]), int(match[5])
                if (left, top) != self.rect[:2]:
                    found.append((left, top, int(match[2]), int(match[3])))
        return found

    def settled(self):
        """Its place, once it stays."""
        places = []

        def stays():
            places.append(self.rect)
            time.sleep(0.1)
            return len(places) > 4 and len(set(places[-5:])) == 1

        soon(stays, "a place that stays")
        return places[-1]

    def becomes(self, rect, how):
        try:
            soon(lambda: self.rect == rect, "it")
        except AssertionError:
            raise AssertionError(f"{how}: {self.rect} instead of {rect}") from None
        if self.settled() != rect:
            raise AssertionError(f"{how}: {self.rect} instead of {rect}, after a moment")

    def shows(self, x, y, colour):
        """Whether a point of the screen has this colour."""
        return self.screen.shot().getpixel((x, y)) == colour


class Trial:
    """One program under one window manager; each `try_` method is a row of the table."""

    def __init__(self, manager):
        self.name = manager
        self.kind, command, self.keys = MANAGERS[manager]
        within = manager in ("weston", "mutter, Wayland")  # they show a screen in a window of theirs
        self.screen = Screen("")
        os.environ["MUTTER_DEBUG_DUMMY_MODE_SPECS"] = f"{SCREEN[0]}x{SCREEN[1]}"
        if self.kind == "i3":  # else it begins with a question that takes the keyboard
            folder = os.path.join(os.environ["XDG_CONFIG_HOME"], "i3")
            os.makedirs(folder)
            with open("/etc/i3/config") as given, open(os.path.join(folder, "config"), "w") as own:
                own.write(given.read().replace("Mod1", "Mod4"))  # Alt is the program's
        if command:
            before = set(os.listdir("/tmp/.X11-unix"))
            self.screen.launch(*command)
            if within:
                new = wait_for(lambda: set(os.listdir("/tmp/.X11-unix")) - before, "the X server within")
                os.environ["HANDS_DISPLAY"] = os.environ["DISPLAY"]
                os.environ["DISPLAY"] = ":" + min(new)[1:]
                os.environ["XAUTHORITY"] = next(glob.iglob(os.environ["XDG_RUNTIME_DIR"] + "/.mutter-Xwayland*"), "")
            wait_for(lambda: self.kind in run("wmctrl", "-m", check=False).lower(), "the window manager", 60)
            time.sleep(1)  # panels and the like
        if within:  # it counts the mouse's steps from wherever it takes the mouse to be
            if self.kind == "mutter":  # it tells of the mouse where that enters a window, and then with a button held only
                inputs.hand = by_the_edge
            for place in ((0, 0), (SCREEN[0] // 2, SCREEN[1] - 100)):
                move_to(*place)
        self.server = Server({"/": PAGE, "/typed": "<title>Typed</title>"})
        self.program = None

    def begin(self):
        self.program = Window(self.server.address + "/")
        self.program.screen = self
        with contextlib.suppress(AssertionError):
            self.program.wait_title("Green")
        self.program.settled()

    def shot(self):
        """What is on the outermost screen."""
        inner = os.environ["DISPLAY"]
        os.environ["DISPLAY"] = os.environ.get("HANDS_DISPLAY", inner)
        try:
            return self.screen.shot()
        except subprocess.TimeoutExpired:
            raise AssertionError("the screen can't be seen") from None
        finally:
            os.environ["DISPLAY"] = inner

    def close(self):
        if self.program:
            self.program.end()
        self.server.close()
        self.screen.close()

    def supports(self, hint):
        return hint in run("xprop", "-root", "_NET_SUPPORTED", check=False)

    def on_screen(self):
        """The part of the screen that the window covers, as left, top, right, bottom."""
        left, top, width, height = self.program.rect
        return max(left, 0), max(top, 0), min(left + width, SCREEN[0]), min(top + height, SCREEN[1])

    def close_button(self):
        """The middle of the close button, which is what a maximised window may lose."""
        left, top, width, _ = self.program.rect
        return left + width - 13, top + 12

    def free_place(self):
        """A place of the bare desktop."""
        left, top, right, bottom = self.on_screen()
        for x, y in ((SCREEN[0] - 30, 450), (30, 450), (640, 850), (640, 60)):
            if not (left <= x < right and top <= y < bottom):
                return x, y
        raise CannotTry

    def try_place_at_start(self):
        left, top, width, height = self.program.rect
        if not self.kind == "i3" and (left <= 0 or top <= 0 or left + width > SCREEN[0] or top + height > SCREEN[1]):
            raise AssertionError(f"opens at {left}, {top}")

    def try_title_drag(self):
        if self.kind == "i3":
            raise CannotTry
        left, top, width, height = self.program.settled()
        by_x, by_y = (100 if left < 400 else -100), (60 if top < 300 else -60)
        drag_by(left + 300, top + 12, by_x, by_y)
        wanted = (left + by_x, top + by_y, width, height)
        moved = self.program.settled()
        self.program.becomes(moved if abs(moved[0] - wanted[0]) == 1 else wanted, "after a drag")  # fluxbox

    def try_grips(self):
        if self.kind == "i3":
            raise CannotTry
        left, top, width, height = self.program.settled()
        drag_by(left + width - 2, top + 200, -60, 0)
        self.program.becomes((left, top, width - 60, height), "right edge")
        drag_by(left + 300, top + height - 2, 0, -40)
        self.program.becomes((left, top, width - 60, height - 40), "bottom edge")
        drag_by(left + width - 64, top + height - 44, 60, 40)
        self.program.becomes((left, top, width, height), "corner")

    def maximised(self, how):
        """Whether it fills what panels leave, with its buttons on the screen."""
        self.program.settled()

        def fills():
            left, top, right, bottom = self.on_screen()
            return right - left > SCREEN[0] - 80 and bottom - top > SCREEN[1] - 120

        try:
            soon(fills, "it")
        except AssertionError:
            raise AssertionError(f"{how}: {self.program.rect} isn't maximised") from None
        x, y = self.close_button()
        if not (0 < x < SCREEN[0] - 4 and 4 < y < SCREEN[1]):
            raise AssertionError(f"{how}: the buttons are at {x}, {y}")

    def try_maximise_by_its_button(self):
        before = self.program.settled()
        if self.kind == "i3":
            raise CannotTry
        x, y = self.close_button()
        click_at(x - 17, y)
        self.maximised("by the button")
        x, y = self.close_button()
        click_at(x - 17, y)
        self.program.becomes(before, "restored")

    def try_maximise_by_the_keyboard(self):
        if not self.keys:
            raise CannotTry
        before = self.program.settled()
        key(self.keys[0])
        self.maximised("by the keyboard")
        key(self.keys[1])
        self.program.becomes(before, "restored")

    def try_maximise_by_the_task_bar(self):
        if not self.supports("_NET_WM_STATE_MAXIMIZED_VERT"):
            raise CannotTry
        before = self.program.settled()
        for state in ("add", "remove"):
            run("wmctrl", "-i", "-r", self.program.window, "-b", state + ",maximized_vert,maximized_horz")
            if state == "add":
                self.maximised("by the task bar")
        self.program.becomes(before, "restored by the task bar")
        x, y = self.close_button()
        click_at(x - 17, y)
        self.maximised("by the button")
        run("wmctrl", "-i", "-r", self.program.window, "-b", "remove,maximized_vert,maximized_horz")
        self.program.becomes(before, "maximised by the button, restored by the task bar")

    def try_minimise_and_restore(self):
        if self.kind in ("i3", None) or not self.supports("_NET_WM_STATE_HIDDEN"):
            raise CannotTry
        before = self.program.settled()
        x, y = self.close_button()
        click_at(x - 32, y)
        soon(lambda: "Iconic" in run("xprop", "-id", self.program.window, "WM_STATE"), "a minimised window")
        run("wmctrl", "-i", "-a", self.program.window)
        soon(lambda: "Normal" in run("xprop", "-id", self.program.window, "WM_STATE"), "a restored window")
        self.program.becomes(before, "restored")
        left, top, width, height = self.program.rect
        soon(lambda: self.program.shows(left + width // 2, top + height // 2, GREEN), "the page again")

    def open_menu(self):
        time.sleep(0.8)  # longer than a double click
        x, y = LABELS["File"]
        self.program.click(x, y)
        self.program.move(x + 2, y + 1)
        soon(self.program.menu, "the menu")
        time.sleep(0.5)
        if not self.program.menu():
            raise AssertionError("the menu closes at once")

    def menu_ends(self, how):
        soon(lambda: not self.program.menu(), f"the menu's end by {how}")

    def try_menus(self):
        self.open_menu()
        left, top, _, _ = self.program.rect
        for beside in range(-3, 3):  # a hand doesn't jump
            move_to(left + LABELS["View"][0] + beside, top + LABELS["View"][1])
        soon(lambda: (self.program.menu() or (0,))[0] > left + 60, "the next menu along the bar")
        key("Escape")
        self.menu_ends("Escape")
        _, _, width, height = self.program.rect
        for how, x, y in (("the page", width - 60, height - 60), ("the title bar", 300, 12), ("its label", *LABELS["File"])):
            self.open_menu()
            self.program.click(x, y)
            self.menu_ends("a press on " + how)
        key("Escape")

    def try_menus_ended_by_the_desktop(self):
        place = self.free_place()
        self.open_menu()
        click_at(*place)
        self.menu_ends("a press on the desktop")

    def try_menus_ended_by_another_window(self):
        left, top, _, _ = self.program.rect
        self.program.click(300, 12)
        other = subprocess.Popen(["xmessage", "-geometry", "+900+600", "another program, with a text of some length"])
        try:
            window = soon(lambda: run("xdotool", "search", "--onlyvisible", "--name", "xmessage", check=False),
                          "another window").split()[0]
            time.sleep(1)
            self.program.click(300, 12)
            self.open_menu()
            text = run("xwininfo", "-id", window)
            x, y = (int(re.search(rf"Absolute upper-left {axis}:\s+(-?\d+)", text)[1]) for axis in "XY")
            click_at(x + 20, y + 10)
            self.menu_ends("a press on another window")
        finally:
            other.terminate()
            other.wait()
        time.sleep(0.5)

    def try_keyboard_after_menus(self):
        self.open_menu()
        key("Escape")
        self.menu_ends("Escape")
        key("ctrl+l")
        type_text(self.server.address + "/typed", 25)
        key("Return")
        soon(lambda: self.program.title.startswith("Typed"), "the page that was typed")
        key("alt+Left")
        soon(lambda: self.program.title.startswith("Green"), "the page before")

    def try_full_screen(self):
        before = self.program.settled()
        left, top, width, height = before
        time.sleep(1)  # a page that has just come back has its title before it takes a press
        click_at(left + width // 2, top + height // 2)
        try:
            soon(lambda: self.program.shows(*[side - 30 for side in SCREEN], GREEN)
                 and self.program.shows(30, 30, GREEN), "it")
        except AssertionError:
            raise AssertionError("the page doesn't fill the screen") from None
        time.sleep(0.5)
        key("Escape")
        self.program.becomes(before, "after full screen")

    def try_dialog_over_the_window(self):
        before = set(self.program.windows())
        key("ctrl+o")
        dialog = soon(lambda: set(self.program.windows()) - before, "the dialog").pop()
        time.sleep(1)
        picture = self.shot()
        left, top, width, height = self.program.rect
        if picture.getpixel((left + width // 2, top + height // 2)) == GREEN:
            raise AssertionError("the dialog lies behind")
        key("Escape")
        soon(lambda: dialog not in self.program.windows(), "the dialog's end by Escape")

    def try_close(self):
        click_at(*self.close_button())
        if soon(lambda: self.program.process.poll() is not None, "the program's end") and self.program.process.returncode:
            raise AssertionError(f"status {self.program.process.returncode}")
        self.begin()
        if self.supports("_NET_CLOSE_WINDOW"):
            run("wmctrl", "-i", "-c", self.program.window)
            soon(lambda: self.program.process.poll() is not None, "the program's end by the task bar")


ROWS = [name for name in vars(Trial) if name.startswith("try_")]


def tried(manager, shots=None, *rows):
    """What each row came to: "yes", "no: why", or nothing where there is nothing to try."""
    trial = Trial(manager)
    found = {}
    try:
        for row in rows or ROWS:
            if not trial.program or trial.program.process.poll() is not None:
                trial.begin()
            try:
                getattr(trial, row)()
                found[row] = "yes"
            except CannotTry:
                found[row] = ""
            except AssertionError as failure:
                found[row] = "no: " + str(failure).replace(f"waited {PATIENCE} s in vain for ", "there is not ")
                if shots:
                    with contextlib.suppress(AssertionError):
                        trial.shot().save(os.path.join(shots, f"{manager}-{row}.png"))
                trial.program.kill()
            print(f"{manager}\t{row}\t{found[row]}", flush=True)
    finally:
        trial.close()
    return found


def table(found):
    """The page of docs/ from (manager, row) to what was found."""
    managers = list(dict.fromkeys(manager for manager, _ in found))
    notes = []

    def cell(manager, row):
        result = found.get((manager, row), "no: not reached")
        if not result.startswith("no"):
            return result or "–"
        notes.append(f"{len(notes) + 1}. {manager}, {row[4:].replace('_', ' ')}: {result[4:]}")
        return f"no ({len(notes)})"

    lines = ["| | " + " | ".join(managers) + " |", "|---" * (len(managers) + 1) + "|"]
    for row in ROWS:
        lines.append(f"| {row[4:].replace('_', ' ')} | " + " | ".join(cell(manager, row) for manager in managers) + " |")
    return "\n".join(lines) + "\n\n" + "\n".join(notes) + "\n"


def run_all():
    found = {}
    for manager in MANAGERS:
        child = subprocess.run([sys.executable, __file__, manager], capture_output=True, text=True, timeout=900)
        print(child.stdout, end="", flush=True)
        if child.returncode:
            print(f"{manager}: {child.stderr[-600:]}", file=sys.stderr)
        for line in filter(lambda line: "\t" in line, child.stdout.splitlines()):  # the bus's services talk as well
            manager, row, result = line.split("\t")
            found[manager, row] = result
    path = os.path.join(ROOT, "docs", "window-managers.md")
    with open(path) as file:
        head = file.read().partition("| | ")[0]
    with open(path, "w") as file:
        file.write(head + table(found))
    print("Wrote", path)


if __name__ == "__main__":
    if len(sys.argv) > 1:
        tried(*sys.argv[1:])
    else:
        run_all()
