"""What `cmake --install` puts where, and the program that runs from there."""

import configparser
import os
import pathlib
import re
import shutil
import subprocess
import tempfile

import harness
from harness import Marlowick, PROGRAM, ProgramTest, ROOT, main, run, wait_for
from PIL import Image

GREEN = (0, 128, 0)
NAME = "org.marlowick.Marlowick"
SKINS = ("Midnight", "Paper", "Steel")


class Installed(ProgramTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.stage = tempfile.mkdtemp(prefix="marlowick-stage-")
        cls.addClassCleanup(shutil.rmtree, cls.stage)
        done = subprocess.run(["cmake", "--install", os.path.dirname(PROGRAM), "--prefix", "/usr"], text=True,
                              capture_output=True, timeout=60, env={**os.environ, "DESTDIR": cls.stage})
        if done.returncode:
            raise AssertionError(done.stdout + done.stderr)

    def path(self, *parts):
        return os.path.join(self.stage, "usr", *parts)

    def start_installed(self, *arguments):
        """With the folder that a user's first start makes."""
        data = tempfile.mkdtemp(prefix="marlowick-data-")
        self.addCleanup(shutil.rmtree, data, ignore_errors=True)
        build, harness.PROGRAM = harness.PROGRAM, self.path("bin", "marlowick")
        try:
            program = Marlowick(*arguments, home=os.path.join(data, "marlowick"),
                                environment={"XDG_DATA_HOME": data, "MARLOWICK_HOME": ""})
        finally:
            harness.PROGRAM = build
        self.addCleanup(program.end)
        return program

    def test_runs_from_there_and_finds_what_is_delivered(self):
        program = self.start_installed(self.page("/", "<title>Green</title><body style='background:green'>"))
        program.wait_title("Green")
        wait_for(lambda: program.page_pixel(self.screen) == GREEN, "the page")
        for skin in SKINS:
            wait_for(lambda: os.path.exists(os.path.join(program.home, "skins", skin, "skin.ini")), f"the skin {skin}")
        for name in ("browser.ini", "start.html", "filter.dat"):
            self.assertTrue(os.path.exists(os.path.join(program.home, name)), name)
        self.assertEqual(program.close(), 0)

    def test_a_shortcuts_file_opens_its_address(self):
        for kind in ("a path", "an address"):
            with self.subTest(kind), tempfile.TemporaryDirectory(prefix="marlowick short cut ") as folder:
                shortcut = os.path.join(folder, "To the härbour.url")
                address = self.page("/harbour", "<title>Harbour</title>")
                with open(shortcut, "w") as file:
                    file.write(f"[InternetShortcut]\r\nURL={address}\r\n")
                if kind == "an address":
                    shortcut = pathlib.Path(shortcut).as_uri()
                # As the desktop starts it: by the entry's own line.
                line = self.entry()["Exec"].replace("%u", "{}").split()
                self.assertEqual(line[0], "marlowick")
                program = self.start_installed(*(part.format(shortcut) for part in line[1:]))
                program.wait_title("Harbour")
                self.assertEqual(program.close(), 0)

    def entry(self):
        reader = configparser.ConfigParser(interpolation=None, delimiters="=")
        reader.optionxform = str
        reader.read(self.path("share", "applications", NAME + ".desktop"))
        return reader["Desktop Entry"]

    def test_the_desktops_entry_is_that_of_a_browser(self):
        self.assertEqual(run("desktop-file-validate", self.path("share", "applications", NAME + ".desktop")), "")
        entry = self.entry()
        kinds = set(entry["MimeType"].strip(";").split(";"))
        self.assertLessEqual({"text/html", "application/xhtml+xml", "application/x-mswinurl", "x-scheme-handler/http",
                              "x-scheme-handler/https"}, kinds)
        self.assertEqual(os.path.basename(entry["Exec"].split()[0]), os.path.basename(entry["TryExec"]))
        self.assertTrue(os.access(self.path("bin", entry["TryExec"]), os.X_OK))
        self.assertTrue(entry["Keywords"])
        # The desktop finds the window's entry by the class, and the icon by its name.
        program = self.start_installed(self.page("/", "<title>Green</title>"))
        self.assertIn(f'"{entry["StartupWMClass"]}"', run("xprop", "-id", program.window, "WM_CLASS"))
        for size in (16, 24, 32, 48, 64, 128, 256, 512):
            with Image.open(self.path("share", "icons", "hicolor", f"{size}x{size}", "apps", entry["Icon"] + ".png")) as icon:
                self.assertEqual(icon.size, (size, size))
                self.assertGreater(len(icon.convert("RGB").getcolors(1 << 20)), 3, "something is drawn")
        self.assertTrue(os.path.exists(self.path("share", "icons", "hicolor", "scalable", "apps", entry["Icon"] + ".svg")))

    def test_the_metainfo_is_valid_and_shows_every_skin(self):
        path = self.path("share", "metainfo", NAME + ".metainfo.xml")
        told = subprocess.run(["appstreamcli", "validate", "--no-net", path], capture_output=True, text=True, timeout=60)
        self.assertEqual(told.returncode, 0, told.stdout)
        with open(path) as file:
            text = file.read()
        shown = re.findall(r"<image>\S+/(\w+)\.png</image>", text)
        delivered = os.listdir(self.path("share", "marlowick", "skins"))
        self.assertEqual(sorted(shown), sorted(["default", *delivered]))
        # All tell the same version, which stands in one place.
        version = re.search(r'<release version="([\d.]+)"', text)[1]
        self.assertIn(f"Marlowick {version}", run(self.path("bin", "marlowick"), "--version"))
        with open(self.path("share", "man", "man1", "marlowick.1")) as file:
            manual = file.read()
        self.assertIn(f'"Marlowick {version}', manual)
        # Every option that the program tells of is in the manual.
        for option in re.findall(r"--[a-z-]+", run(self.path("bin", "marlowick"), "--help")):
            self.assertIn(option.replace("-", r"\-"), manual)
        with open(os.path.join(ROOT, "LICENSE")) as own, open(self.path("share", "doc", "marlowick", "LICENSE")) as file:
            self.assertEqual(file.read(), own.read())


if __name__ == "__main__":
    main()
