"""The notes of a run, one line a call of the programmer or a thing that the person notices, and their texts."""

MOST_IN_FULL = 3  # a group that repeats more often than this is written once


def text_of(lines):
    return "".join(line + "\n" for line in lines)


def plain(number):
    """A number as text, the shortest that gives it back, without ".0"."""
    return str(int(number)) if number == int(number) else repr(number)


class Notes:
    """Takes down lines and keeps the frame buffer, whose bytes all have the value that is left there before the run."""

    def __init__(self, situation):
        self.lines = []
        self.other = situation
        self.frame_bytes = bytearray([situation.number("leftover")] * 20)

    def note(self, *words):
        self.lines.append(" ".join(map(str, words)))

    def frame(self, length, *leading):
        """Sends the buffer after setting its leading bytes; the others keep what was there."""
        self.frame_bytes[:len(leading)] = bytes(leading)
        self.note(f"usbcomwrite {length}:", self.frame_bytes[:length].hex(" ").upper())


def repeats(lines, at, size):
    """How often the group of that size at that place comes there in a row."""
    group, count = lines[at:at + size], 1
    while lines[at + size * count:at + size * (count + 1)] == group:
        count += 1
    return count


def compressed(lines):
    """From the first line on: the group of one line or else of two that repeats often enough here, or the line."""
    made, at = [], 0
    while at < len(lines):
        for size in (1, 2):
            count = repeats(lines, at, size)
            if count > MOST_IN_FULL:
                made += [f"{count} times", *("  " + line for line in lines[at:at + size])]
                at += size * count
                break
        else:
            made.append(lines[at])
            at += 1
    return made
