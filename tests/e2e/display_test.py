"""The parts of dialogs and the windows of the scene on a real display: what the toolkit's widgets do, and what leaves
nothing behind."""

import os
import subprocess

from harness import PROGRAM, ProgramTest, main


class Display(ProgramTest):
    def test_widgets_and_windows(self):
        tests = os.path.join(os.path.dirname(PROGRAM), "tests", "display_tests")
        done = subprocess.run([tests], capture_output=True, text=True, timeout=120)
        self.assertEqual(done.returncode, 0, done.stdout[-4000:] + done.stderr[-4000:])
        self.assertIn("PASSED", done.stdout)


if __name__ == "__main__":
    main(warnings="ignore")
