"""Numbers by chance that another language repeats, and checksums of lists."""

import zlib

from run_notes import text_of


class Chance:
    """state = state * 1664525 + 1013904223 in 32 bits; a draw is the upper 16 bits, 0 to 65535.

    The state begins with the number of the case, and the first three draws are thrown away.
    """

    def __init__(self, case):
        self.state = case
        for _ in range(3):
            self.draw()

    def draw(self):
        self.state = (self.state * 1664525 + 1013904223) & 0xFFFFFFFF
        return self.state >> 16

    def draw_large(self):
        """Two draws: the first one is the upper half."""
        upper = self.draw()
        return upper << 16 | self.draw()


def checksum(lines):
    """The zlib CRC-32 of the lines, each with its end of line."""
    return f"{zlib.crc32(text_of(lines).encode()):08X}"


def counted(lines):
    """COUNT CRC."""
    return f"{len(lines)} {checksum(lines)}"
