"""What is painted at once, without waiting for a frame; and the messages that must be seen."""

import io
import os
import re
import shutil
import signal
import subprocess
import tempfile
import threading
import time

from PIL import Image

from harness import PROGRAM, ProgramTest, main, run, wait_for


def override_windows():
    """The windows on the screen that no window manager holds: their numbers."""
    found = []
    for line in run("xwininfo", "-root", "-children").splitlines():
        number, size = line.split()[0] if line.strip().startswith("0x") else "", re.search(r" (\d+)x(\d+)\+", line)
        if not number or int(size[1]) < 60 or int(size[2]) < 25:
            continue
        about = run("xwininfo", "-id", number, check=False)
        if "IsViewable" in about and "Override Redirect State: yes" in about:
            found.append(number)
    return found


class Repaint(ProgramTest):
    def test_a_slow_load_shows_its_progress_and_what_it_opens(self):
        release = threading.Event()
        self.addCleanup(release.set)

        def slow(handler):
            handler.send_response(200)
            handler.send_header("Content-Type", "text/html")
            handler.end_headers()
            handler.wfile.write(b"<title>Slow</title><body style='background:green'>" + b" " * 4096)
            handler.wfile.flush()
            release.wait(30)

        program = self.start(self.page("/", "<title>Quick</title>"))
        program.wait_title("Quick")
        _, _, width, height = program.rect

        def status():
            left, top, _, _ = program.rect
            return self.screen.shot().crop((left, top + height - 24, left + width, top + height))

        time.sleep(0.5)
        idle = status()
        program.type_address(self.page("/slow", slow))
        wait_for(lambda: "/slow" in self.server.requests, "the request")

        def dark(picture, part):
            # Ink differs from the bar's art at rest, column by column.
            first, last = part
            return sum(picture.getpixel((x, y)) != idle.getpixel((x, y))
                       for x in range(first, last) for y in range(picture.height))

        wait_for(lambda: dark(status(), (5, width - 130)) > 100, "the status text of the load")
        wait_for(lambda: dark(status(), (width - 118, width - 30)) > 200, "the progress bar of the load")


class Splash(ProgramTest):
    def own_home(self):
        folder = tempfile.mkdtemp(prefix="marlowick-e2e-")
        self.addCleanup(shutil.rmtree, folder, True)
        home = os.path.join(folder, "home")
        shutil.copytree(os.path.join(os.path.dirname(PROGRAM), "data"), home)
        return home

    def test_it_shows_its_picture_while_the_start_goes_on(self):
        home = self.own_home()
        # Addresses without end, so that the splash stays up long enough to be looked at.
        with open(os.path.join(home, "autocomplete.dat"), "w", newline="") as file:
            file.writelines(f"http://place-{number}.test/\r\n" for number in range(1_500_000))
        program = self.start(self.page("/", "<title>Up</title>"), home=home, shown=False)
        splash = wait_for(override_windows, "the splash")[0]
        program.process.send_signal(signal.SIGSTOP)
        data = subprocess.run(["import", "-window", splash, "png:-"], check=True, capture_output=True, timeout=30).stdout
        program.process.send_signal(signal.SIGCONT)
        colours = Image.open(io.BytesIO(data)).convert("RGB").getcolors(1 << 20)
        self.assertGreater(len(colours), 50, "the splash's picture")

    def test_the_message_of_a_failed_start_lies_under_nothing(self):
        home = self.own_home()
        os.remove(os.path.join(home, "filter.dat"))
        process = subprocess.Popen([PROGRAM], env={**os.environ, "MARLOWICK_HOME": home}, stderr=subprocess.DEVNULL)
        self.addCleanup(process.kill)
        wait_for(lambda: run("xdotool", "search", "--onlyvisible", "--name", "^Marlowick$", check=False)
                 and any("Marlowick" in line for line in run("wmctrl", "-l", check=False).splitlines()), "the message")
        wait_for(lambda: not override_windows(), "the end of the splash")

    def test_without_a_display_it_says_so(self):
        without = {key: value for key, value in os.environ.items() if key != "DISPLAY"}
        for environment, told in ((without, "DISPLAY is not set"), ({**without, "DISPLAY": ":9999"}, 'DISPLAY is ":9999"')):
            ended = subprocess.run([PROGRAM], env=environment, capture_output=True, text=True, timeout=20)
            self.assertEqual(ended.returncode, 1)
            self.assertIn(told, ended.stderr)


if __name__ == "__main__":
    main()
