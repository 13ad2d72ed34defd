"""What a kill, a log-out or a broken disk may not cost."""

import os
import signal
import subprocess
import sys

from bars import PageTest
from harness import main, wait_for

SAVED_WITHIN = 60  # seconds; the program promises half of it
SCREEN_OF_ITS_OWN = """
import sys
sys.path.insert(0, sys.argv[1])
import harness
screen = harness.Screen()
print(screen.processes[0].pid, harness.os.environ["DISPLAY"], flush=True)
sys.stdin.read()
"""


class Loss(PageTest):
    def typed(self, home):
        path = os.path.join(home, "autocomplete.dat")
        if not os.path.exists(path):
            return []
        with open(path) as file:
            return file.read().split()

    def test_what_was_typed_outlives_a_kill(self):
        program = self.begin("<title>Start</title>", home=self.home())
        program.wait_title("Start")
        address = self.page("/typed", "<title>Typed</title>")
        program.type_address(address)
        program.wait_title("Typed")
        wait_for(lambda: address in self.typed(program.home), "the address on the disk", SAVED_WITHIN)
        os.kill(program.process.pid, signal.SIGKILL)
        program.wait_end()
        self.assertIn(address, self.typed(program.home))

    def test_the_end_of_the_screen_is_a_closing(self):
        # Its own screen, and what the user does on it.
        helper = subprocess.Popen([sys.executable, "-c", SCREEN_OF_ITS_OWN, os.path.dirname(os.path.abspath(__file__))],
                                  stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.addCleanup(helper.communicate)
        server, display = helper.stdout.readline().split()
        shown, os.environ["DISPLAY"] = os.environ["DISPLAY"], display
        self.addCleanup(os.environ.__setitem__, "DISPLAY", shown)

        def set_cookie(handler):
            handler.send_response(200)
            handler.send_header("Set-Cookie", "kept=1; Max-Age=1000000")
            handler.send_header("Content-Type", "text/html")
            handler.end_headers()
            handler.wfile.write(b"<title>Cookie</title>")

        home = self.home(CookieTrap=3)
        program = self.begin("<title>Start</title>", home=home)
        program.wait_title("Start")
        address = self.page("/typed", set_cookie)
        program.type_address(address)
        program.wait_title("Cookie")
        os.kill(int(server), signal.SIGKILL)
        program.wait_end()
        self.assertIn(address, self.typed(home))
        self.assertEqual(program.process.returncode, 0)

    def test_a_damaged_store_is_put_aside_and_told_once(self):
        home = self.home()
        engine = os.path.join(home, "engine")
        os.makedirs(os.path.join(engine, "data"))
        for name in ("cookies.sqlite", "data/hsts.sqlite"):
            with open(os.path.join(engine, name), "w") as file:
                file.write("this has never been a database")
        program = self.begin("<title>Start</title>", home=home)
        program.wait_title("Start")
        notice = "What sites kept here was damaged"
        program.wait_window(notice)
        aside = [name for name in os.listdir(engine) if name.startswith("cookies.sqlite.damaged-")]
        self.assertEqual(len(aside), 1)
        with open(os.path.join(engine, aside[0])) as file:
            self.assertEqual(file.read(), "this has never been a database")
        self.wait_told(aside[0])
        self.wait_told(os.path.join(engine, "data/hsts.sqlite"))
        self.assertEqual(program.close(), 0)
        program = self.begin("<title>Again</title>", home=home)
        program.wait_title("Again")
        self.assertNotIn(notice, program.windows().values())
        self.assertEqual(program.close(), 0)

    def test_what_a_killed_run_left_goes(self):
        ended = subprocess.Popen(["true"])
        ended.wait()
        home = self.home()
        left = [f"autocomplete.dat.new-{ended.pid}", f"favourites/.importing-{ended.pid}", "engine.ini.A1B2C3"]
        left[2] = os.path.join("engine", left[2])
        os.makedirs(os.path.join(home, "engine"))
        for name in left:
            with open(os.path.join(home, name), "w") as file:
                file.write("half")
        program = self.begin("<title>Start</title>", home=home)
        program.wait_title("Start")
        for name in left:
            self.assertFalse(os.path.exists(os.path.join(home, name)), name)
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    main()
