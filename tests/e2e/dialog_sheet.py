"""Writes a contact sheet of the dialogs: FILE, then variants of the desktop (none: all)."""

import os
import re
import subprocess
import sys
import time

from gi.repository import GLib
from PIL import Image, ImageDraw

import harness
from harness import Marlowick, Screen, run, wait_for
from inputs import key

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
WIDTH, GAP, HEADING = 1800, 12, 24
GROUND, INK = (58, 62, 68), (225, 228, 232)


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
            try:
                found = self.all(name)
            except GLib.Error:  # what has gone meanwhile
                return False
            pages = [node for node in found if node.getRole() == self.pyatspi.ROLE_PAGE_TAB]
            for node in pages or reversed(found):
                if node in pages:
                    return node.parent.querySelection().selectChild(node.getIndexInParent())
                if "Action" in node.get_interfaces() and node.queryAction().nActions:
                    return node.queryAction().doAction(0)
            return False

        wait_for(pressed, f'"{name}"')

    def shoot(self, title, name=None):
        window = self.program.wait_window(title)
        self.program.wait_active(window)
        time.sleep(0.7)  # for the last of the toolkit's animations
        text = run("xwininfo", "-id", window)
        left, top, width, height = (int(re.search(what + r":\s+(-?\d+)", text)[1]) for what in (
            "Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))
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
        # A modal dialog that a screen reader opens keeps it waiting; the keyboard's doesn't.
        key("alt+a")
        self.shoot("Browse for file...")
        key("alt+i")
        self.shoot("Add to launch menu")
        key("Escape")
        self.shoot("Browse for file...", "again")
        key("Escape")
        self.shoot("Customise Launch Menu", "again")
        key("alt+c")
        self.pictures = [(name, picture) for name, picture in self.pictures if name != "again"]
        self.press("View")
        self.press("Browser Options...")
        for page in OPTION_PAGES:
            self.press(page)
            if page == "Skins":
                key("Tab", "Down", "Down")
            self.shoot("Marlowick Options", page)
        return self.pictures

    def close(self):
        self.program.kill()
        self.screen.close()


def pictures_of(variant):
    sheet = Sheet(variant)
    try:
        return [(f"{variant}: {name}", picture) for name, picture in sheet.take()]
    finally:
        sheet.close()


def laid_out(pictures):
    """The pictures in lines, each below its name."""
    width = max(WIDTH, *(picture.width for _, picture in pictures))
    places, x, y, height = [], 0, 0, 0
    for name, picture in pictures:
        if x + picture.width > width:
            x, y, height = 0, y + height + HEADING + GAP, 0
        places.append((x, y))
        x, height = x + picture.width + GAP, max(height, picture.height)
    sheet = Image.new("RGB", (width, y + height + HEADING), GROUND)
    draw = ImageDraw.Draw(sheet)
    for (x, y), (name, picture) in zip(places, pictures):
        draw.text((x + 4, y + 6), name, INK)
        sheet.paste(picture, (x, y + HEADING))
    return sheet


def stacked(sheets):
    whole = Image.new("RGB", (max(sheet.width for sheet in sheets), sum(sheet.height + GAP for sheet in sheets)), GROUND)
    y = 0
    for sheet in sheets:
        whole.paste(sheet, (0, y))
        y += sheet.height + GAP
    return whole


path, *variants = sys.argv[1:]
if len(variants) == 1:
    sheet = laid_out(pictures_of(variants[0]))
else:
    # Each in a process of its own: the accessibility library knows one bus for good.
    parts = [f"{path}.{number}.png" for number, _ in enumerate(variants or VARIANTS)]
    for part, variant in zip(parts, variants or VARIANTS):
        subprocess.run([sys.executable, __file__, part, variant], check=True)
    sheet = stacked([Image.open(part).convert("RGB") for part in parts])
    for part in parts:
        os.remove(part)
sheet.quantize(256).save(path, optimize=True)
print("Wrote", path)
