"""What the analyzer draws of its samples, on the surface and on paper, as a list of texts in the order of drawing.

    RRGGBB X1 Y1 X2 Y2     a line from one point to the other, in twips
    labelN TEXT            the text of the time label N
    text A|30|B|25|C|25|D|50|Oscillogram
                           the text on paper: the labels, with the tabs between them

Widths and heights are whole twips. The others are calculated in doubles, with each step as it is written here, and
become whole at the canvas: the nearest number, halves to the even one. Paper counts from a point 2800 right of and 2600
below the page's corner, which is not added here.
"""

from dataclasses import dataclass, field
from decimal import ROUND_HALF_UP, Decimal

BLUE, GREEN, RED, BLACK, WHITE = "0000FF", "00FF00", "FF0000", "000000", "FFFFFF"
CHANNEL_INKS = (BLUE, GREEN, RED) * 3
CHANNELS = range(1, 9)
BOTTOM_Y = 6400  # of the paper's axes

# Of each row's bar on paper: what is added to the upper and to the lower end.
BAR_ENDS = ((130, -70), (130, -70), (130, -70), (130, -100), (110, -90), (100, -90), (100, -90), (100, -120))


@dataclass
class View:
    width: int
    height: int
    bitwidth: float
    viewpos: int
    mapped: int  # samples from there on do not exist
    sampleus: float
    pattern: bytes = field(repr=False, default=b"\0")  # the samples, again and again

    @property
    def count(self):
        """How many samples fit in the view; None where they are too narrow to be drawn."""
        width = round(self.bitwidth)
        return self.width // width if width else None

    def sample(self, index):
        """None where there is none."""
        return self.pattern[index % len(self.pattern)] if 0 <= index < self.mapped else None


def line(ink, x1, y1, x2, y2):
    return f"{ink} {round(x1)} {round(y1)} {round(x2)} {round(y2)}"


def traces(view, first, h, inks):
    made, w = [], view.bitwidth
    for i in range(first, view.count + 1):
        sample, before = view.sample(i + view.viewpos), view.sample(i + view.viewpos - 1)
        if sample is None:
            continue
        for c in CHANNELS:
            high = sample >> (c - 1) & 1
            if i > 1 and before is not None and before >> (c - 1) & 1 != high:
                made.append(line(inks[c - 1], (i - 1) * w, (c - 0.1) * h, (i - 1) * w, (c - 0.8) * h))
            y = (c - (0.8 if high else 0.1)) * h
            made.append(line(inks[c - 1], (i - 1) * w, y, i * w, y))
    return made


def ruler(view, h):
    step = view.width // 32
    return [line(BLACK, step * t, 8.9 * h, step * t, 8.9 * h - (70 if t in (8, 16, 24) else 20)) for t in range(33)]


def fixed(value, decimals):
    """With so many decimals; of a multiple of the last one's half the larger amount."""
    whole = int(Decimal(value * 10**decimals).to_integral_value(ROUND_HALF_UP))
    digits = str(abs(whole)).rjust(decimals + 1, "0")
    at = len(digits) - decimals
    return ("-" if whole < 0 else "") + digits[:at] + ("." + digits[at:] if decimals else "")


def label_texts(view):
    """Four texts, or none where nothing is drawn."""
    if view.count is None:
        return []
    width, w, us = view.width, view.bitwidth, view.sampleus
    offsets = (0, width // round(4 * w), width // round(2 * w), 3 * width // round(4 * w))
    places = [view.viewpos + offset for offset in offsets]
    if view.viewpos * us < 1000:
        return [fixed(p * us, 0) + "uS" for p in places]
    if view.viewpos < 1000000 / us:
        return [fixed(p / 1000 * us, 3) + "mS" for p in places]
    return [fixed(p / 1000000 * us, 6) + "Sec" for p in places]


def grid(view):
    made = []
    for k in range(1, 17):
        x, between = k * view.width / 16, (2 * k - 1) * view.width / 32
        made.append(line(WHITE, x, 0, x, view.height))
        made.append(line(WHITE, between, view.height, between, view.height * 99 / 100))
    return made


def on_screen(view):
    h = round(view.height / 9)
    made = [] if view.count is None else traces(view, 0, h, CHANNEL_INKS)
    made += ruler(view, h)
    made += [f"label{number} {text}" for number, text in enumerate(label_texts(view), 1)]
    return made + grid(view)


def on_paper(view):
    width, row = view.width, view.height / 8.1
    h = round(row)
    made = [line(BLACK, 0, 0, 0, BOTTOM_Y), line(BLACK, 0, 0, 60, 100), line(BLACK, 0, BOTTOM_Y, width, BOTTOM_Y),
            line(BLACK, 0, BOTTOM_Y + 10, width, BOTTOM_Y + 10),
            line(BLACK, width - 100, BOTTOM_Y - 60, width, BOTTOM_Y)]
    made += [line(BLACK, 10, k * row + upper, 10, (k + 1) * row + lower) for k, (upper, lower) in enumerate(BAR_ENDS)]
    if view.count is not None:
        made += traces(view, 1, h, (BLACK,) * 8)
    made += ruler(view, h)
    labels = label_texts(view) or [""] * 4
    return made + [f"text {labels[0]}|30|{labels[1]}|25|{labels[2]}|25|{labels[3]}|50|Oscillogram"]


def zoomed(bitwidth, way, presses):
    """After so many presses of Zoom In, 1, or Zoom Out, 2."""
    for _ in range(presses):
        if way == 1 and bitwidth < 900:
            bitwidth *= 2
        elif way == 2 and bitwidth > 4:
            bitwidth /= 2
    return bitwidth
