"""Writes a contact sheet of the dialogs: FILE, then variants of the desktop (none: all), a line for each."""

import sys
import time

from PIL import Image, ImageDraw

import harness
from harness import Marlowick, Screen, run, wait_for

# The environment of the program, and the screen.
VARIANTS = {
    "plain": ({}, (1280, 900)),
    "scale 2": ({"GDK_SCALE": "2"}, (2048, 1500)),
    "dark": ({"GTK_THEME": "Adwaita:dark"}, (1280, 900)),
    "large fonts": ({"GDK_DPI_SCALE": "1.6"}, (1280, 900)),
    "right to left": ({"LANGUAGE": "ar"}, (1280, 900)),
    "1024 by 600": ({}, (1024, 600)),
}
OPTION_PAGES = ("Tab Options", "Defaults", "Misc", "Skins", "Clear", "Cookies")
GAP, HEADING = 12, 24


class Sheet:
    def __init__(self, variant):
        self.pictures = []
        environment, size = VARIANTS[variant]
        harness.SCREEN = size
        self.screen = Screen()
        import pyatspi

        self.pyatspi = pyatspi
        self.program = Marlowick("about:blank", settings={"Popups": "3"}, environment=environment)

    def all(self, name):
        for application in self.pyatspi.Registry.getDesktop(0):
            if application is not None and application.get_process_id() == self.program.process.pid:
                application.clear_cache()
                return self.pyatspi.findAllDescendants(application, lambda node: node.name == name)
        return []

    def press(self, name):
        """By its name and not by its place, which each variant has elsewhere."""
        def pressed():
            for node in reversed(self.all(name)):
                if node.getRole() == self.pyatspi.ROLE_PAGE_TAB:
                    return node.parent.querySelection().selectChild(node.getIndexInParent())
                if "Action" in node.get_interfaces() and node.queryAction().nActions:
                    return node.queryAction().doAction(0)
            return False

        wait_for(pressed, f'"{name}"')

    def shoot(self, title, name=None):
        window = self.program.wait_window(title)
        time.sleep(0.7)  # for the last of the toolkit's animations
        text = run("xdotool", "getwindowgeometry", "--shell", window)
        values = dict(line.split("=") for line in text.splitlines())
        left, top, width, height = (int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))
        picture = self.screen.shot()
        if left < 0 or top < 0 or left + width > picture.width or top + height > picture.height:
            print(f"{name or title}: {width} x {height} doesn't fit the screen")
        self.pictures.append((name or title, picture.crop((left, top, left + width, top + height))))

    def take(self):
        self.press("Help")
        self.press("About...")
        self.shoot("About Marlowick")
        self.press("OK")
        self.press("Launch")
        self.press("Customise")
        self.shoot("Customise Launch Menu")
        self.press("Add")
        self.shoot("Browse for file...")
        self.press("Installed Applications...")
        self.shoot("Add to launch menu")
        self.press("Cancel")
        self.press("Cancel")
        self.press("Close")
        self.press("View")
        self.press("Browser Options...")
        for page in OPTION_PAGES:
            self.press(page)
            if page == "Skins":
                run("xdotool", "key", "Tab", "Down", "Down")
            self.shoot("Marlowick Options", page)
        return self.pictures

    def close(self):
        self.program.kill()
        self.screen.close()


def line_of(variant):
    sheet = Sheet(variant)
    try:
        pictures = sheet.take()
    finally:
        sheet.close()
    width = sum(picture.width + GAP for _, picture in pictures)
    line = Image.new("RGB", (width, HEADING + max(picture.height for _, picture in pictures) + GAP), (58, 62, 68))
    draw, x = ImageDraw.Draw(line), 0
    for name, picture in pictures:
        draw.text((x + 4, 6), f"{variant}: {name}", (225, 228, 232))
        line.paste(picture, (x, HEADING))
        x += picture.width + GAP
    return line


path, *variants = sys.argv[1:]
lines = [line_of(variant) for variant in variants or VARIANTS]
whole = Image.new("RGB", (max(line.width for line in lines), sum(line.height for line in lines)), (58, 62, 68))
y = 0
for line in lines:
    whole.paste(line, (0, y))
    y += line.height
whole.quantize(256).save(path, optimize=True)
print("Wrote", path)
