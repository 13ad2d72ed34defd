"""The user's hands: mouse and keyboard of the screen that DISPLAY names. Places are points of that screen.

Where the program's screen is itself a window on another one, HANDS_DISPLAY names that."""

import os
import subprocess
import time


def run(*command, check=True, **more):
    """Runs a helper program, and returns what it says; one that hangs fails the test by its name."""
    try:
        return subprocess.run(command, check=check, capture_output=True, text=True, timeout=20, **more).stdout.strip()
    except subprocess.TimeoutExpired:
        raise AssertionError(f"waited 20 s in vain for the end of: {' '.join(command)}") from None


def hand(*command):
    """What the mouse or the keyboard does, in xdotool's words."""
    display = os.environ.get("HANDS_DISPLAY") or os.environ["DISPLAY"]
    run("xdotool", *command, env={**os.environ, "DISPLAY": display})


def move_to(x, y):
    hand("mousemove", str(x), str(y))
    time.sleep(0.05)


def click_at(x, y, button=1):
    move_to(x, y)
    hand("click", str(button))
    time.sleep(0.05)


def drag_by(x, y, by_x, by_y, steps=10, pause=0.02):
    """From a point, holding the left button; the program gets every step as a movement of its own."""
    move_to(x, y)
    hand("mousedown", "1")
    for _ in range(steps):
        hand("mousemove_relative", "--", str(by_x // steps), str(by_y // steps))
        time.sleep(pause)
    hand("mouseup", "1")


def key(*keys):
    hand("key", *keys)


def type_text(text, delay=12):
    """Types a text, with a delay in ms between its letters."""
    hand("type", "--delay", str(delay), text)
