"""The processes that a program's pages live in."""

import time

from harness import children_of, wait_for, zombie


def of_pages(program):
    """Those that are alive."""
    found = []
    for pid in children_of(program.process.pid):
        try:
            with open(f"/proc/{pid}/comm") as file:
                if file.read().startswith("WebKitWebProces") and not zombie(pid):
                    found.append(pid)
        except OSError:
            pass
    return found


def busy(program):
    """The one that runs in a loop."""
    def used(pid):
        try:
            with open(f"/proc/{pid}/stat") as file:
                return int(file.read().rpartition(")")[2].split()[11])
        except OSError:
            return 0

    def look():
        before = {pid: used(pid) for pid in of_pages(program)}
        time.sleep(0.6)
        # In hundredths of a second, on a machine that others use as well.
        worked = {pid: used(pid) - ticks for pid, ticks in before.items()}
        most = max(worked, key=worked.get, default=None)
        return most if most and worked[most] > 8 else None

    return wait_for(look, "the process in a loop")
