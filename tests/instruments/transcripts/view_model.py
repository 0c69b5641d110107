"""How zoom and scroll bar of the analyzer move the view.

The file views.txt:

    sequence NUMBER BANKS COUNT CRC
    view NUMBER BANKS
    step TEXT

A sequence has the count and the checksum of its steps' texts; a view shows them in full. All widths are twips. The banks
of a sequence are its first draw; a view is a sequence without that draw.
"""

from cases import Chance, counted
from run_notes import plain

CASES = range(1, 201)
BANK = 32768
STEPS = 40


class Moves:
    """Zoom, scroll bar and view. The surface has its first size when the dialog opens."""

    def __init__(self, width, banks):
        self.samples = banks * BANK
        self.width = width
        self.viewpos = 0
        self.value = 0
        self.maximum = max(0, self.samples // 32 - 1)
        self.resize(width)

    def resize(self, width):
        self.width = width
        self.bitwidth = float(width // 32)

    def fit_maximum(self):
        """To the zoom of now, where that can be calculated. A value beyond it comes back with it, which scrolls."""
        screens = round(self.width / self.bitwidth) if self.bitwidth else 0
        if screens:
            self.maximum = max(0, self.samples // screens - 1)
            self.scroll(self.value)

    def zoom_in(self):
        if self.bitwidth < 900:
            self.bitwidth *= 2
            self.fit_maximum()

    def zoom_out(self):
        if self.bitwidth > 4:
            self.bitwidth /= 2
            self.fit_maximum()

    def scroll(self, value):
        """A value outside becomes the nearest end; the same value again does nothing."""
        value = min(max(value, 0), self.maximum)
        if value == self.value:
            return
        self.value = value
        if round(self.bitwidth):
            count = self.width // round(self.bitwidth)
            self.viewpos = value * count
            if self.viewpos >= self.samples:
                self.viewpos = self.samples - 2 * count

    def text(self):
        return f"{plain(self.bitwidth)} {self.maximum} {self.value} {self.viewpos}"


def sequence(chance, banks):
    """WHAT BITWIDTH MAXIMUM VALUE VIEWPOS after each step."""
    width = 320 + chance.draw() % 12000
    moves = Moves(width, banks)
    made = [f"open {width} {moves.text()}"]
    for _ in range(STEPS):
        what, number = chance.draw() % 16, chance.draw_large()
        if what < 4:
            moves.zoom_in()
            name = "in"
        elif what < 9:
            moves.zoom_out()
            name = "out"
        elif what < 12:
            wanted = number % (moves.maximum + 1)
            moves.scroll(wanted)
            name = f"scroll {wanted}"
        elif what == 12:
            moves.scroll(moves.maximum)
            name = "last"
        elif what == 13:
            moves.scroll(0)
            name = "first"
        elif what == 14:
            width = number % 40 if number % 8 == 0 else 320 + number % 12000
            moves.resize(width)
            name = f"resize {width}"
        else:
            moves.fit_maximum()
            name = "captured"
        made.append(f"{name} {moves.text()}")
    return made


def views():
    lines = []
    for number, banks in ((1, 0), (2, 1), (3, 16)):
        lines.append(f"view {number} {banks}")
        lines += ["step " + text for text in sequence(Chance(number), banks)]
    for number in CASES:
        chance = Chance(number)
        banks = chance.draw() % 17
        lines.append(f"sequence {number} {banks} " + counted(sequence(chance, banks)))
    return lines
