#!/usr/bin/env python3
"""Draws the thousand screens of bench_instruments with the separate model of the drawing.

Prints "slow_screens MILLISECONDS" of the processor and "slow_screens_lines NUMBER".
"""

import pathlib
import sys
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "tests/instruments/transcripts"))

from drawing_model import View, on_screen  # noqa: E402

WIDTH, HEIGHT, SAMPLES = 28800, 10500, 16 * 32768


def noise():
    state = 1
    for _ in range(SAMPLES):
        state = (state * 1664525 + 1013904223) % 2**32
        yield state >> 24


samples = bytes(noise())
started = time.process_time()
lines = 0
for screen in range(1000):
    view = View(WIDTH, HEIGHT, WIDTH / 32, 32 * screen, SAMPLES, 3.4, samples)
    lines += sum(not made.startswith("label") for made in on_screen(view))
print(f"slow_screens {1000 * (time.process_time() - started):.3f}")
print(f"slow_screens_lines {lines}")
