"""The situations of the runs: situations.txt has a line for each transcript, its name and then KEY=VALUE.

The name is that of the file without ".txt". A key that is not there has its default. Where a run has several presses
of Record, a value may be a list with commas, one for each press; the last one holds for the presses that follow.

    route        usb, registers
    model        the number of the programmer's model
    generation   0, 17
    leftover     what all 20 bytes of the frame buffer are before the run (0)

of the analyzer:

    runs         how often Record is pressed (1)
    banks        the programmer's RAM banks (1)
    buflength    the length of the buffer in bytes (524288); 2200 more are mapped
    trigger      in, ext (in)
    level        low, high (low)
    pin          0 to 7 (0)
    wait         where the person acts: reply, bank0 .. bank15 (USB) or search (registers); none (none)
    pass         in which pass of the message loop of that wait, from 1 (1)
    act          what the person does there: stop, close (stop); only Stop works during a bank
    reset        answers, absent (answers); absent is what hwreset returns 1 for
    bulk_fails   the bank whose read reports 4; none (none)
    bulk_hangs   the bank whose read reports nothing; none (none)
    replies      how many replies other than 0xAA come first, one at each pass (0)
    answer       what each regin returns; none is (7*k + 3) mod 256 for read k, from 0 over the whole file (none)
    fails_at     the read, counted like k, that returns -1 and so do all after it; none (none)
    elapsed      seconds between the two readings of the time of day, exact in single precision (0.5)

of the meter and the generator:

    reset        as above
    board        answers, absent (answers); absent is what boardsel returns 2 for
    counts       what the counter reads at each tick of the timer (1000,123456,16777215)
    hertz        the text in Text1; empty is the empty text
"""

import pathlib

FILE = pathlib.Path(__file__).resolve().parent / "situations.txt"

DEFAULTS = {
    "generation": "0", "leftover": "0", "runs": "1", "banks": "1", "buflength": "524288", "trigger": "in",
    "level": "low", "pin": "0", "wait": "none", "pass": "1", "act": "stop", "reset": "answers", "bulk_fails": "none",
    "bulk_hangs": "none", "replies": "0", "answer": "none", "fails_at": "none", "elapsed": "0.5", "board": "answers",
    "counts": "1000,123456,16777215", "hertz": "empty",
}


class Situation:
    """The values of one line; `press` counts the presses of Record from 0."""

    def __init__(self, values):
        unknown = values.keys() - DEFAULTS.keys() - {"route", "model"}
        if unknown:
            raise ValueError(f"unknown keys {sorted(unknown)}")
        self.values = {**DEFAULTS, **values}

    def text(self, key, press=0):
        listed = self.values[key].split(",")
        return listed[min(press, len(listed) - 1)]

    def number(self, key, press=0):
        """None for none."""
        text = self.text(key, press)
        return None if text == "none" else int(text)

    def numbers(self, key):
        return [int(text) for text in self.values[key].split(",")]

    @property
    def usb(self):
        return self.values["route"] == "usb"

    @property
    def model(self):
        return int(self.values["model"])

    @property
    def generation(self):
        return int(self.values["generation"])


def situations():
    """Name -> Situation."""
    rows = [line.split() for line in FILE.read_text(encoding="utf-8").splitlines()]
    made = {name: Situation(dict(pair.split("=") for pair in pairs)) for name, *pairs in rows}
    if len(made) != len(rows):
        raise ValueError("a name appears twice")
    return made
