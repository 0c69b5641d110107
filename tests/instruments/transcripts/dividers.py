"""The file dividers.txt: what the generator makes of every frequency, as checksums, and chosen ones in full.

    branch ROUTE MODEL GENERATION CRC
        The zlib CRC-32 of the lines "TEXT LO MID HI SHOWN" or "TEXT error", each with its end of line, for the texts
        "0" to "200000" and then 200000 + 7919*i for i from 1 to 1000.
    models ROUTE GENERATION CRC
        The CRC-32 of the lines "MODEL TEXT LO MID HI SHOWN" for the models 0 to 60, and for each the texts of TEXTS.
    sample ROUTE MODEL GENERATION TEXT LO MID HI SHOWN
    sample ROUTE MODEL GENERATION TEXT error

SHOWN is what Text1 shows afterwards, which is the text as typed where it was not changed.
"""

import zlib

from run_notes import text_of
from wave_model import TABLE, divider_line

BRANCHES = (("registers", 1, 0), ("registers", 1, 17), ("registers", 40, 0), ("registers", 40, 17), ("usb", 1, 0),
            ("usb", 1, 17), ("usb", 9, 0), ("usb", 9, 17), ("usb", 15, 0), ("usb", 15, 17), ("usb", 40, 0),
            ("usb", 40, 17))
FIRST = 200001
MODELS = range(61)
TEXTS = ("3", "440", "2000", "3000", "22222", "60000", "120000", "700000")
LIMITS = tuple(limit for limit, _, _ in TABLE)


def texts_of_a_branch():
    yield from map(str, range(FIRST))
    yield from (str(200000 + 7919 * i) for i in range(1, 1001))


def around(ticks):
    """The frequencies whose half period, in ticks, rounds to that number and to its neighbours."""
    return [int(562500 / (ticks + half)) + step for half in (-0.5, 0.5) for step in (0, 1)]


def sample_texts():
    numbers = {0, 1, 2, 3, 4, 8, 9, 10, 50, 440, 999, 1000, 10000, 50000, 124999, 125000, 125001, 199999, 200000,
               600000, 1124999, 1125000, 1125001, 9999999, 2147483647, 2147483648, 4294967296, 9999999999}
    for limit in LIMITS:
        numbers |= {limit - 1, limit, limit + 1}
    for ticks in (1, 2, 3, 4, 5, 6, 254, 255, 256, 257, 511, 512, 65535, 65536, 131071, 131072):
        numbers |= set(around(ticks))
    return ["empty", *map(str, sorted(numbers)), "00440", "0000000000440"]


def checksum(lines):
    return f"{zlib.crc32(text_of(lines).encode()):08X}"


def branch(route, model, generation):
    usb = route == "usb"
    return checksum(divider_line(text, usb, model, generation) for text in texts_of_a_branch())


def all_models(route, generation):
    return checksum(f"{model} {divider_line(text, route == 'usb', model, generation)}"
                    for model in MODELS for text in TEXTS)


def dividers():
    lines = [f"branch {route} {model} {generation} {branch(route, model, generation)}"
             for route, model, generation in BRANCHES]
    lines += [f"models {route} {generation} {all_models(route, generation)}"
              for route in ("registers", "usb") for generation in (0, 17)]
    for route, model, generation in BRANCHES:
        lines += [f"sample {route} {model} {generation} "
                  + divider_line("" if text == "empty" else text, route == "usb", model, generation)
                  for text in sample_texts()]
    return lines
