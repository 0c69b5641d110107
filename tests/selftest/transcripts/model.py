#!/usr/bin/env python3
"""A second, slow model of the self-tests: what a run does with the programmer and what the person notices, one a line.

It shares no code with the self-tests that it checks. A line is a call of the programmer (arguments in decimal), a frame
with all its bytes, a text of the status bar ("status" is its first panel, "status2" its second), a beep, a message box,
or a wait for the person with the press that ends it. What the programmer answers is not in it.

    model.py            writes the transcripts beside this file
    model.py --check    compares them with what it would write; 1 when they differ
"""

import pathlib
import sys

sys.dont_write_bytecode = True  # the parts lie beside the transcripts
sys.path.append(str(pathlib.Path(__file__).resolve().parents[2] / "support"))

from model_facts import VCC, form_of, routes_of
from model_files import main
from model_options import calibrations, output, output_isp, system
from model_run import Run, Situation

FOLDER = pathlib.Path(__file__).resolve().parent
MODELS = (1, 2, 9, 15, 27, 23, 11, 25, 39, 40, 50, 57)


def transcript(work, model, route, generation=0, situation=None):
    run = Run(model, route == "usb", generation, situation or Situation())
    work(run)
    return "".join(line + "\n" for line in run.lines)


def name_of(model, route, run, generation=0):
    return "-".join([form_of(model), route, str(model), *(["gen17"] if generation == 17 else []), run]) + ".txt"


def runs_of(model):
    runs = {"system": system, "calibrations": calibrations}
    if form_of(model) != "pinnoteISP":
        runs["output"] = output
    if form_of(model) == "pinnote204":
        runs["output_isp"] = output_isp
    return runs


def sound_files():
    """Generation 17 has a file of its own where it makes a difference."""
    files = {}
    for model in MODELS:
        for route in routes_of(model):
            for name, work in runs_of(model).items():
                plain = transcript(work, model, route)
                files[name_of(model, route, name)] = plain
                other = transcript(work, model, route, 17)
                if other != plain:
                    files[name_of(model, route, name, 17)] = other
    return files


def files_of_odd_situations():
    """One block of RAM, no image, faults and presses: (model, route, run, work, what is odd)."""
    rows = [
        (40, "usb", "small_ram", system, {"large_ram": False}),
        (39, "usb", "no_image", system, {"image": b""}),
        (40, "usb", "input_7_stuck_low", system, {"stuck_low": {6}}),
        (40, "usb", "vcc_30_dead_stop", system, {"dead_drivers": {(VCC, 30)}, "press": "stop"}),
        # Board 5 has no register that the test reads, so this fault is not seen.
        (9, "registers", "board_5_register_2", system, {"registers": {(5, 2): 1}}),
        (9, "registers", "board_8_register_2", system, {"registers": {(8, 2): 1}}),
    ]
    for model, route in ((40, "usb"), (40, "registers"), (9, "usb"), (9, "registers")):
        rows.append((model, route, "output_no_board", output, {"board": False}))
        rows.append((model, route, "output_line_7_open", output, {"open_lines": {7}}))
    return {name_of(model, route, name): transcript(work, model, route, 0, Situation(**odd))
            for model, route, name, work, odd in rows}


def wanted():
    return sound_files() | files_of_odd_situations()


if __name__ == "__main__":
    sys.exit(main(FOLDER, wanted, sys.argv[1:]))
