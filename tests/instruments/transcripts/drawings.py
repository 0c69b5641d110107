"""The file drawings.txt: drawings of the analyzer by chance, as counts and checksums, and five small ones in full.

    case NUMBER WIDTH HEIGHT BITWIDTH VIEWPOS MAPPED SAMPLEUS HOLD SCREEN_COUNT SCREEN_CRC PAPER_COUNT PAPER_CRC
    view WIDTH HEIGHT BITWIDTH VIEWPOS MAPPED SAMPLEUS SAMPLES
    screen TEXT
    paper TEXT

A count is that of all texts of a drawing, labels and the text on paper among them. The samples of a case repeat 1021
bytes, which pattern_of draws after everything else; those of a view are given, in hexadecimal. Samples before index 0
and from MAPPED on do not exist.
"""

from cases import Chance, counted
from drawing_model import View, on_paper, on_screen, zoomed
from run_notes import plain

CASES = range(1, 1001)
PATTERN_BYTES = 1021
BANK = 32768
PERIODS = (3.4, 3.5, 3.8, 4.7, 0.005, 12.5, 3.814697265625)


def pattern_of(chance, hold):
    """The larger `hold`, of 8, the longer a byte stays."""
    made, byte = bytearray(), 0
    for _ in range(PATTERN_BYTES):
        if chance.draw() % 8 >= hold:
            byte = chance.draw() >> 8
        made.append(byte)
    return bytes(made)


def place_of(chance, view, samples):
    """At the end of what exists, before its begin, near the begin, or anywhere."""
    kind, number = chance.draw() % 8, chance.draw_large()
    count = view.count or 0
    if kind == 0:
        return view.mapped - count // 2
    if kind == 1:
        return -count
    return number % (1000 if kind == 2 else samples + 1)


def case(number):
    chance = Chance(number)
    narrow = chance.draw() % 16 == 0
    width = chance.draw() % 64 if narrow else 320 + chance.draw() % 12000
    height = 200 + chance.draw() % 9000
    way = chance.draw() % 3
    bitwidth = zoomed(float(width // 32), way, chance.draw() % 6)
    samples = chance.draw() % 17 * BANK
    mapped = samples // 2 if chance.draw() % 4 == 0 else samples + 2200
    view = View(width, height, bitwidth, 0, mapped, 0.0)
    view.viewpos = place_of(chance, view, samples)
    view.sampleus = PERIODS[chance.draw() % len(PERIODS)]
    hold = chance.draw() % 8
    view.pattern = pattern_of(chance, hold)
    return " ".join([f"case {number} {numbers(view)} {hold}", counted(on_screen(view)), counted(on_paper(view))])


def numbers(view):
    return " ".join(map(plain, (view.width, view.height, view.bitwidth, view.viewpos, view.mapped, view.sampleus)))


def small_view(width, height, bitwidth, viewpos, sampleus, samples):
    bytes_there = bytes.fromhex(samples)
    return View(width, height, bitwidth, viewpos, len(bytes_there), sampleus, bytes_there)


SMALL_VIEWS = (
    small_view(320, 900, 80.0, 0, 3.5, "00FF0055AA01"),
    small_view(330, 905, 62.5, 2, 1000.0, "00010203FF8000807F"),  # thousandths, and halves of a twip
    small_view(400, 455, 100.0, 3, 500000.0, "0000000F0FF0"),  # seconds, and the last samples
    small_view(400, 1000, 100.0, -2, 4.7, "FF00FF"),
    small_view(20, 500, 0.0, 0, 3.4, "FF00"),  # no trace
)


def drawings():
    lines = []
    for view in SMALL_VIEWS:
        lines.append(f"view {numbers(view)} {view.pattern.hex().upper()}")
        lines += ["screen " + text for text in on_screen(view)]
        lines += ["paper " + text for text in on_paper(view)]
    return lines + [case(number) for number in CASES]
