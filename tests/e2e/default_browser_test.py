"""Whether other programs' addresses come here, as Internet Options says and offers it."""

import os
import re

from bars import PageTest
from harness import PROGRAM, main, run, wait_for

ENTRY = "org.marlowick.Marlowick.desktop"
ELSEWHERE, HERE = "Addresses in other programs don't open in Marlowick.", "Addresses in other programs open in Marlowick."
MAKE, NO = "Make Marlowick the Default", "No, Thanks"


class DefaultBrowser(PageTest):
    def install(self):
        """The desktop's entry, for this run's user."""
        applications = os.path.join(os.environ["XDG_DATA_HOME"], "applications")
        os.makedirs(applications, exist_ok=True)
        with open(os.path.join(os.path.dirname(PROGRAM), "packaging", ENTRY)) as file:
            text = file.read()
        text = re.sub(r"TryExec=.*\n", "", text).replace("Exec=marlowick", "Exec=" + PROGRAM)
        with open(os.path.join(applications, ENTRY), "w") as file:
            file.write(text)
        self.addCleanup(os.remove, os.path.join(applications, ENTRY))
        chosen = os.path.join(os.environ["XDG_CONFIG_HOME"], "mimeapps.list")
        self.addCleanup(lambda: os.path.exists(chosen) and os.remove(chosen))

    def options(self, home):
        program = self.begin("<title>Start</title>", home=home)
        program.wait_title("Start")
        program.wait_active(program.window)
        program.choose_row("View", "Internet Options...")
        program.wait_active(program.wait_window("Internet Options"))
        return program

    def chosen(self):
        return run("gio", "mime", "x-scheme-handler/https").splitlines()[0]

    def test_it_says_so_and_offers_it_once(self):
        home = self.home()
        program = self.options(home)
        self.wait_told("Marlowick isn't installed")
        self.assertFalse(self.told(MAKE))
        self.assertEqual(program.close(), 0)

        self.install()
        program = self.options(home)
        self.wait_told(ELSEWHERE)
        self.press(NO)
        wait_for(lambda: not self.told(MAKE), "the end of the offer")
        self.assertEqual(program.close(), 0)
        program = self.options(home)
        self.wait_told(ELSEWHERE)
        self.assertFalse(self.told(MAKE) or self.told(NO))
        # The settings that are confirmed keep that answer.
        program.key("Return")
        wait_for(lambda: "Internet Options" not in program.windows().values(), "the end of the dialog")
        self.assertEqual(program.close(), 0)
        with open(os.path.join(home, "engine", "engine.ini")) as file:
            self.assertIn("no default browser=true", file.read())
        self.assertNotIn(ENTRY, self.chosen())

    def test_it_becomes_it(self):
        self.install()
        program = self.options(self.home())
        self.wait_told(ELSEWHERE)
        self.press(MAKE)
        self.wait_told(HERE)
        self.assertFalse(self.told(MAKE))
        self.assertIn(ENTRY, self.chosen())
        self.assertEqual(program.close(), 0)
        with open(os.path.join(os.environ["XDG_CONFIG_HOME"], "mimeapps.list")) as file:
            self.assertIn("text/html=" + ENTRY, file.read())
        self.assertEqual(run("xdg-settings", "get", "default-web-browser"), ENTRY)

    def test_the_desktops_tool_makes_it_so(self):
        self.install()
        run("xdg-settings", "set", "default-web-browser", ENTRY)
        self.assertEqual(run("xdg-settings", "check", "default-web-browser", ENTRY), "yes")
        program = self.options(self.home())
        self.wait_told(HERE)
        self.assertFalse(self.told(MAKE))
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    main()
