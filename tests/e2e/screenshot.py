"""Writes a picture of the program: FILE, then an address (none: the home page) and a skin."""

import sys
import time

from harness import Marlowick, Screen

path, address, skin = sys.argv[1:4]
screen = Screen()
program = Marlowick(*([address] if address else []),
                    settings={"Skin": skin if skin == "default" else f"skins\\{skin}"})
try:
    for _ in range(2):
        program.click(160, 60)
        time.sleep(1)
    program.move(350, 250)
    time.sleep(2)
    left, top, width, height = program.rect
    # A small file: 256 colours are enough for what is drawn.
    screen.shot().crop((left, top, left + width, top + height)).quantize(256).save(path, optimize=True)
    print("Wrote", path)
finally:
    program.kill()
    screen.close()
