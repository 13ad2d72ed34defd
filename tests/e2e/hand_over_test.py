"""One program a folder: what a further start with the same folder does."""

import os
import shutil
import signal
import tempfile
import time

from harness import PROGRAM, Marlowick, ProgramTest, children_of, main, run, wait_for
from inputs import key

NO_BUS = {"DBUS_SESSION_BUS_ADDRESS": ""}
CLOSE_BY = 0.4  # seconds, of a closing program's life that further starts are tried in


class HandOver(ProgramTest):
    def titled(self, title):
        return self.page("/" + title.replace(" ", "-"), f"<title>{title}</title>")

    def asked_for(self, address):
        return any(address.endswith(path) for path in self.server.requests)

    def further(self, home, *arguments, **more):
        """A further start, which may or may not become the program."""
        return self.start(*arguments, home=home, shown=False, **more)

    def alive(self, programs):
        return [program for program in programs if program.process.poll() is None]

    def behind_another(self, program):
        """Another window comes before the program's."""
        other = self.start(self.titled("Other"))
        other.wait_title("Other")
        other.wait_active(other.window)
        return other

    def hands_over(self, environment):
        program = self.start(self.titled("First"), home=self.home(), environment=environment)
        program.wait_title("First")
        self.behind_another(program)
        second = self.further(program.home, self.titled("Second"), environment=environment)
        self.assertEqual(second.wait_end(), 0)
        program.wait_title("Second")
        program.wait_active(program.window)
        program.key("ctrl+1")
        program.click(75, 92)
        program.wait_title("First")
        run("xdotool", "windowminimize", program.window)
        wait_for(lambda: run("xdotool", "getactivewindow", check=False) != program.window, "the window's way down")
        third = self.further(program.home, environment=environment)
        self.assertEqual(third.wait_end(), 0)
        program.wait_active(program.window)
        self.assertEqual(program.title, "First", "no further tab")
        self.assertEqual(program.close(), 0)

    def test_a_further_start_opens_a_tab_in_front(self):
        self.hands_over(None)

    def test_it_does_so_without_a_bus(self):
        self.hands_over(NO_BUS)

    def test_a_plain_window_can_be_had(self):
        program = self.start(self.titled("First"), home=self.home())
        program.wait_title("First")
        self.assertEqual(self.further(program.home, "--new-window", self.titled("Plain")).wait_end(), 0)
        plain = program.wait_window("Plain")
        program.wait_active(plain)
        self.assertEqual(program.title, "First")
        self.assertEqual(program.close(), 0)
        # Where nothing runs, it is a start.
        alone = self.start("--new-window", self.titled("Alone"))
        alone.wait_title("Alone")
        self.assertEqual(alone.close(), 0)

    def test_of_starts_at_once_one_has_the_folder_and_all_addresses(self):
        with tempfile.TemporaryDirectory(prefix="marlowick-e2e-") as folder:
            home = os.path.join(folder, "new")  # each would install it
            addresses = [self.titled(f"Page {i}") for i in range(6)]
            programs = [self.further(home, address) for address in addresses]
            wait_for(lambda: all(map(self.asked_for, addresses)), "all pages", 60)
            wait_for(lambda: len(self.alive(programs)) == 1, "one program")
            for program in programs:
                self.assertIn(program.process.poll(), (0, None))
            winner = self.alive(programs)[0]
            winner.window = wait_for(winner.find_window, "the main window")
            self.assertEqual(winner.close(), 0)

    def test_a_start_while_another_closes_loses_nothing(self):
        home = self.home()
        program = self.start(self.titled("Start"), home=home)
        program.wait_title("Start")
        for turn in range(6):
            address = self.titled(f"Turn {turn}")
            run("wmctrl", "-i", "-c", program.window)
            time.sleep(CLOSE_BY * turn / 5)
            further = self.further(home, address)
            wait_for(lambda: self.asked_for(address), f"turn {turn}'s page")
            wait_for(lambda: len(self.alive([program, further])) == 1 or program.process.poll() is not None, "one program")
            # The first one ends in any case; the page may have been in it while it could still be taken.
            self.assertEqual(program.wait_end(), 0)
            if further.process.poll() is not None:
                self.assertEqual(further.process.poll(), 0)
                further = self.start(home=home)
            further.window = wait_for(further.find_window, "the main window")
            program = further

    def test_a_killed_program_leaves_the_folder_to_the_next(self):
        home = self.home()
        program = self.start(self.titled("First"), home=home)
        program.wait_title("First")
        os.kill(program.process.pid, signal.SIGSTOP)
        waiting = self.further(home, self.titled("Waiting"))
        # It has handed its address over to one who will never read it.
        wait_for(lambda: has_socket(waiting.process.pid), "the connection")
        os.kill(program.process.pid, signal.SIGKILL)
        waiting.window = wait_for(waiting.find_window, "the main window")
        waiting.wait_title("Waiting")
        os.kill(waiting.process.pid, signal.SIGKILL)
        following = self.start(self.titled("Following"), home=home)
        following.wait_title("Following")
        self.assertEqual(following.close(), 0)

    def test_a_folder_whose_program_hangs_is_named(self):
        home = self.home()
        program = self.start(self.titled("First"), home=home)
        program.wait_title("First")
        os.kill(program.process.pid, signal.SIGSTOP)
        given_up, patient = self.further(home, self.titled("Given up")), self.further(home, self.titled("Patient"))
        for further in (given_up, patient):
            wait_for(lambda: further.windows(), "the word of it")
            self.assertIn(f'"{home}" is in use by Marlowick (process {program.process.pid})', further.told())
        window = next(iter(given_up.windows()))
        run("wmctrl", "-i", "-a", window)
        given_up.wait_active(window)
        key("Escape")
        self.assertEqual(given_up.wait_end(), 1)
        os.kill(program.process.pid, signal.SIGCONT)
        self.assertEqual(patient.wait_end(), 0)
        program.wait_title("Patient")
        self.assertFalse(self.asked_for("/Given-up"))
        self.assertEqual(program.close(), 0)

    def call(self, method, *arguments):
        return run("gdbus", "call", "--session", "--dest", "org.marlowick.Marlowick", "--object-path",
                   "/org/marlowick/Marlowick", "--method", "org.freedesktop.Application." + method, *arguments)

    def test_the_bus_starts_it_and_asks_it(self):
        services = os.path.join(os.environ["XDG_DATA_HOME"], "dbus-1", "services")
        os.makedirs(services, exist_ok=True)
        name = "org.marlowick.Marlowick.service"
        with open(os.path.join(os.path.dirname(PROGRAM), "packaging", name)) as file:
            lines = file.read().splitlines()
        start = next(i for i, line in enumerate(lines) if line.startswith("Exec="))
        lines[start] = f"Exec={PROGRAM} " + lines[start].split(" ", 1)[1]
        with open(os.path.join(services, name), "w") as file:
            file.write("\n".join(lines) + "\n")
        bus = ["gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path", "/org/freedesktop/DBus",
               "--method"]
        run(*bus, "org.freedesktop.DBus.ReloadConfig")
        run(*bus, "org.freedesktop.DBus.UpdateActivationEnvironment", str(dict(DISPLAY=os.environ["DISPLAY"])))
        home = os.path.join(os.environ["XDG_DATA_HOME"], "marlowick")
        shutil.copytree(os.path.join(os.path.dirname(PROGRAM), "data"), home, dirs_exist_ok=True)
        old_cache = os.path.join(home, "engine", "cache", "WebKitCache")  # where an earlier version kept it
        os.makedirs(os.path.join(old_cache, "Records"))
        self.call("Open", str([self.titled("One"), self.titled("Two")]), "{}")
        pid = int(run(*bus, "org.freedesktop.DBus.GetConnectionUnixProcessID", "org.marlowick.Marlowick")
                  .split()[-1].rstrip(",)"))
        program = Started(pid)
        self.addCleanup(program.end)
        program.window = wait_for(program.find_window, "the main window")
        wait_for(lambda: self.asked_for("/One") and self.asked_for("/Two"), "both pages")
        self.call("ActivateAction", "new-window", "[]", "{}")
        program.wait_window("Welcome to Marlowick")
        self.behind_another(program)
        self.call("Activate", "{}")
        program.wait_active(program.window)
        # Its folder is the usual one, and its start the only one.
        self.assertEqual(self.further("", self.titled("Three"), environment={"MARLOWICK_HOME": ""}).wait_end(), 0)
        program.wait_title("Three")
        self.assertIn("WebKitCache", os.listdir(os.path.join(os.environ["XDG_CACHE_HOME"], "marlowick")))
        wait_for(lambda: not os.path.exists(old_cache), "the end of the old cache")
        run("wmctrl", "-i", "-c", program.window)
        wait_for(lambda: not os.path.exists(f"/proc/{pid}"), "its end")


class Started(Marlowick):
    """A program that somebody else started."""

    class Process:
        def __init__(self, pid):
            self.pid = pid

        def poll(self):
            return None if os.path.exists(f"/proc/{self.pid}") else 0

    def __init__(self, pid):
        self.process, self.window = self.Process(pid), None

    def end(self):
        for each in [*children_of(self.process.pid), self.process.pid]:
            if os.path.exists(f"/proc/{each}"):
                os.kill(each, signal.SIGKILL)


def has_socket(pid):
    """Whether a process has a connection to anybody."""
    folder = f"/proc/{pid}/fd"
    return any(os.readlink(os.path.join(folder, name)).startswith("socket:") for name in os.listdir(folder))


if __name__ == "__main__":
    main()
