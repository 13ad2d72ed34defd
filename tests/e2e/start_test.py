"""From the command line to a painted page, and down again."""

import os
import shutil
import signal
import tempfile
import time
from unittest import mock

from harness import ProgramTest, PROGRAM, children_of, main, wait_for

GREEN, BLUE = (0, 128, 0), (0, 0, 255)


def coloured(colour, title, more=""):
    return f"<title>{title}</title><body style='margin:0;background:{colour}'>{more}</body>"


class Start(ProgramTest):
    def test_a_page_shows_and_closing_leaves_nothing_behind(self):
        program = self.start(self.page("/green", coloured("green", "Green page")))
        program.wait_title("Green page")
        wait_for(lambda: program.page_pixel(self.screen) == GREEN, "a green page")
        self.assertEqual(len(program.managed()), 1, "one entry on the task bar")
        self.assertEqual(program.rect[2:], (707, 454))
        self.assertEqual(program.close(), 0)

    def test_a_second_tab_loads_behind_the_first(self):
        arrived = []

        def slow(handler):
            time.sleep(1.5)
            body = coloured("blue", "Slow page").encode()
            handler.send_response(200)
            handler.send_header("Content-Type", "text/html")
            handler.send_header("Content-Length", str(len(body)))
            handler.end_headers()
            handler.wfile.write(body)
            arrived.append(True)

        first = self.page("/green", coloured("green", "Green page"))
        default = self.page("/default", coloured("white", "Default page"))
        program = self.start(self.page("/slow", slow), settings={"Default": default})
        program.click(160, 60)  # New Tab
        program.wait_title("Default page")
        program.type_address(first)
        program.wait_title("Green page")
        wait_for(lambda: arrived, "the slow page")
        program.click(75, 92)  # the first tab
        program.wait_title("Slow page")
        wait_for(lambda: program.page_pixel(self.screen) == BLUE, "the slow page, painted")

    def test_a_killed_page_process_leaves_the_program_alive(self):
        program = self.start(self.page("/green", coloured("green", "Green page")))
        program.wait_title("Green page")
        pages = [pid for pid in children_of(program.process.pid) if "WebKitWebProces" in comm(pid)]
        self.assertTrue(pages)
        for pid in pages:
            os.kill(pid, signal.SIGKILL)
        wait_for(lambda: program.page_pixel(self.screen) != GREEN, "the page that tells of the crash")
        self.assertIsNone(program.process.poll())
        program.type_address(self.page("/blue", coloured("blue", "Blue page")))
        wait_for(lambda: program.page_pixel(self.screen) == BLUE, "a blue page")
        self.assertEqual(program.close(), 0)

    def files_below(self, folder):
        return sorted(os.path.relpath(os.path.join(at, name), folder) for at, _, names in os.walk(folder)
                      for name in names if name not in (".lock", ".socket", "tabs.dat") and
                      not at.startswith((os.path.join(folder, "engine"), os.path.join(folder, "history"))))

    def others_read(self, top):
        """The files that another user may read by their modes and those of the folders above them, from `top` on."""
        mode = os.stat(top).st_mode
        if not os.path.isdir(top):
            return [top] if mode & 0o044 else []
        if not mode & 0o011:
            return []
        return [path for name in os.listdir(top) for path in self.others_read(os.path.join(top, name))]

    def test_nobody_else_reads_what_is_kept(self):
        with tempfile.TemporaryDirectory(prefix="marlowick-e2e-") as folder:
            carried = os.path.join(folder, "carried")
            shutil.copytree(os.path.join(os.path.dirname(PROGRAM), "data"), carried)
            os.makedirs(os.path.join(carried, "engine"))
            shutil.copy(PROGRAM, os.path.join(carried, "marlowick"))
            keeps = "<title>Keeps</title><script>localStorage.kept = 1; document.cookie = 'kept=1; max-age=9999'</script>"
            page = self.page("/", keeps)
            mask = os.umask(0)
            self.addCleanup(os.umask, mask)
            for home, program in ((os.path.join(folder, "own"), PROGRAM), (carried, os.path.join(carried, "marlowick"))):
                with self.subTest(home), mock.patch("harness.PROGRAM", program):
                    started = self.start(page, home=home, environment={} if program == PROGRAM else {"MARLOWICK_HOME": ""})
                    started.wait_title("Keeps")
                    self.assertEqual(started.close(), 0)
                    self.assertTrue(os.path.exists(os.path.join(home, "engine", "cookies.sqlite")))
                    # A folder that is carried about is its owner's to share, but for what sites keep in it.
                    self.assertEqual(self.others_read(home if program == PROGRAM else os.path.join(home, "engine")), [])

    def test_a_first_start_installs_all_and_a_cut_one_is_made_good(self):
        with tempfile.TemporaryDirectory(prefix="marlowick-e2e-") as folder:
            home = os.path.join(folder, "new", "home")
            delivered = self.files_below(os.path.join(os.path.dirname(PROGRAM), "data"))
            page = self.page("/green", coloured("green", "Green page"))
            program = self.start(page, home=home)
            program.wait_title("Green page")
            wait_for(lambda: self.files_below(home) == delivered, "all that is delivered, and nothing else")
            self.assertEqual(program.close(), 0)

            mode = lambda name: os.stat(os.path.join(home, name)).st_mode & 0o777
            self.assertEqual([mode(name) for name in ("", "engine", "browser.ini")], [0o700, 0o700, 0o600])
            self.assertEqual({mode(os.path.join("history", name)) for name in os.listdir(os.path.join(home, "history"))},
                             {0o600})

            # A folder of an earlier version is put right.
            os.chmod(home, 0o755)
            # As after a power cut: the mark is still there, skins are half copied, a file has lost what was in it.
            shutil.rmtree(os.path.join(home, "skins"))
            os.makedirs(os.path.join(home, "skins.new-1", "Steel"))
            for name in (".installing", "history.dat"):
                open(os.path.join(home, name), "w").close()
            with open(os.path.join(home, "launch.dat"), "w") as file:
                file.write("mine")
            program = self.start(page, home=home)
            program.wait_title("Green page")
            self.assertEqual([name for name in self.files_below(home) if name != "autocomplete.dat"], delivered)
            self.assertEqual(mode(""), 0o700)
            self.assertGreater(os.path.getsize(os.path.join(home, "history.dat")), 0)
            with open(os.path.join(home, "launch.dat")) as file:
                self.assertEqual(file.read(), "mine", "the user's own")
            self.assertEqual(program.close(), 0)

            # What the user removes later stays away.
            shutil.rmtree(os.path.join(home, "skins"))
            program = self.start(page, home=home)
            program.wait_title("Green page")
            self.assertEqual(program.close(), 0)
            self.assertFalse(os.path.exists(os.path.join(home, "skins")))

    def ends_naming(self, home, *names):
        """A start in this folder shows what is wrong, and ends with status 1."""
        program = self.start(home=home, shown=False)
        program.wait_active(program.wait_window("Marlowick"))
        program.key("Return")
        self.assertEqual(program.wait_end(), 1)
        for name in names:
            self.assertIn(name, program.told())

    def test_what_is_missing_is_named(self):
        with tempfile.TemporaryDirectory(prefix="marlowick-e2e-") as folder:
            home = os.path.join(folder, "a höme")
            shutil.copytree(os.path.join(os.path.dirname(PROGRAM), "data"), home)
            ini = os.path.join(home, "browser.ini")
            with open(ini, newline="") as file:
                whole = file.read()
            for text, name in ((whole.replace("[AutoComplete]", "[Other]"), "[autocomplete]"),
                               (whole.replace("[Popups]\r\n2", "[Popups]\r\n40000"), "40000")):
                with open(ini, "w", newline="") as file:
                    file.write(text)
                self.ends_naming(home, "browser.ini", name)
            with open(ini, "w", newline="") as file:
                file.write(whole)
            os.remove(os.path.join(home, "filter.dat"))
            self.ends_naming(home, os.path.join(home, "filter.dat"))


def comm(pid):
    try:
        with open(f"/proc/{pid}/comm") as file:
            return file.read().strip()
    except OSError:
        return ""


if __name__ == "__main__":
    main()
