"""What keeps pages from the user's things, and a machine that allows none of it."""

import os
import shutil
import tempfile
import unittest

import alone
from bars import PageTest
from harness import children_of, main, run, wait_for
from start_test import comm

BWRAP = "/usr/bin/bwrap"
REASON = "bwrap: Failed to make / slave: Permission denied"
OFF = os.environ.get("MARLOWICK_SANDBOX") == "off"


class Sandbox(PageTest):
    def setUp(self):
        super().setUp()
        self.folder = tempfile.mkdtemp(prefix="sandbox-")
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def stand_in(self, line):
        """Puts a script in the place of the sandbox's program, and returns the file with a line for each call."""
        if not alone.in_namespaces:
            self.skipTest("without a mount namespace the sandbox's program can't be replaced")
        calls, script = os.path.join(self.folder, "calls"), os.path.join(self.folder, "script")
        with open(script, "w") as file:
            file.write(f'#!/bin/sh\necho "$@" >>{calls}\n{line}\n')
        os.chmod(script, 0o755)
        run("mount", "--bind", script, BWRAP)
        self.addCleanup(run, "umount", BWRAP)
        return calls

    def page_processes(self, program):
        return wait_for(lambda: [pid for pid in children_of(program.process.pid) if "WebKitWebProces" in comm(pid)],
                        "the page's process")

    @unittest.skipIf(OFF, "this machine allows no sandbox")
    def test_a_page_is_kept_in_one(self):
        program = self.begin("<title>In</title>")
        program.wait_title("In")
        for pid in self.page_processes(program):
            self.assertNotEqual(os.readlink(f"/proc/{pid}/ns/pid"), os.readlink("/proc/self/ns/pid"))
            self.assertFalse(os.path.exists(f"/proc/{pid}/root{self.folder}"), "the user's files")
        self.assertEqual(program.close(), 0)

    @unittest.skipIf(OFF, "this machine allows no sandbox")
    def test_an_ordinary_start_tries_nothing(self):
        real = shutil.copy(BWRAP, self.folder)
        calls = self.stand_in(f'exec {real} "$@"')
        home = self.home()
        for _ in range(3):
            program = self.begin("<title>In</title>", home=home, environment={"MARLOWICK_SANDBOX": "on"})
            program.wait_title("In")
            self.assertEqual(program.close(), 0)
        with open(calls) as file:
            self.assertEqual(file.read().count("/bin/true\n"), 1)

    def question(self, home, **environment):
        program = self.start(self.page("/", "<title>Out</title>"), home=home, shown=False,
                             environment={"MARLOWICK_SANDBOX": "", **environment})
        self.program = program
        program.wait_active(program.wait_window("Marlowick"))
        self.wait_told(REASON)
        return program

    def test_a_machine_without_one_is_asked_about(self):
        calls = self.stand_in(f'echo "{REASON}" >&2; exit 1')
        home = self.home()
        program = self.question(home)
        program.key("Return")  # no is what is chosen until the user chooses
        self.assertEqual(program.wait_end(), 1)
        self.assertIn(REASON, program.told())
        self.assertNotIn("/", self.server.requests)

        program = self.question(home)
        program.press("Marlowick", "Yes")
        program.window = wait_for(program.find_window, "the main window")
        program.wait_title("Out")
        program.press("Out", "Pages run without a sandbox")
        program.wait_window("Properties")
        self.wait_told("Pages run without a sandbox")
        self.assertEqual(program.close(), 0)

        # The answer was for that start.
        program = self.question(home, MARLOWICK_SANDBOX="on")
        program.key("Return")
        self.assertEqual(program.wait_end(), 1)
        self.assertIn("MARLOWICK_SANDBOX", program.told())

        # A tool that drives it can't answer.
        for wish in ("", "on"):
            driven = self.start("--automation", home=home, shown=False, environment={"MARLOWICK_SANDBOX": wish})
            self.assertEqual(driven.wait_end(), 1)
            self.assertIn(REASON, driven.told())
            self.assertIn("MARLOWICK_SANDBOX", driven.told())

        os.remove(calls)
        program = self.begin("<title>Out</title>", home=home, environment={"MARLOWICK_SANDBOX": "off"})
        program.wait_title("Out")
        self.assertEqual(program.close(), 0)
        self.assertFalse(os.path.exists(calls), "nothing to be tried")


if __name__ == "__main__":
    main()
