"""One run: what is broken, what is in the socket, what the person presses, and the notes of what happens."""

import random
import zlib
from dataclasses import dataclass, field

from model_facts import BLOCK


@dataclass
class Situation:
    large_ram: bool = True
    image: bytes = bytes((i * 7 + 3) % 256 for i in range(24576 + 100))
    stuck_low: set = field(default_factory=set)  # lamps
    dead_drivers: set = field(default_factory=set)  # (mode, pin)
    registers: dict = field(default_factory=dict)  # (board, register): the bits that read inverted
    board: bool = True
    open_lines: set = field(default_factory=set)
    press: str = "continue"


def stream_of_bytes():
    """The bytes of a run that starts with 1: the highest 8 bits of each draw of mt19937."""
    words = [1]
    for i in range(1, 624):
        words.append((1812433253 * (words[-1] ^ (words[-1] >> 30)) + i) & 0xFFFFFFFF)
    generator = random.Random()
    generator.setstate((3, (*words, 624), None))
    known = bytearray()

    def take(begin, count):
        known.extend(generator.getrandbits(8) for _ in range(begin + count - len(known)))
        return bytes(known[begin:begin + count])

    return take


RANDOM_BYTES = stream_of_bytes()

OPERATIONS = {"setvcc", "setvpp", "gndpin", "vccpin", "vpppin", "busmode", "hwinit", "hwreset", "ctlout", "regout",
              "regin", "replywait", "replycheck", "hwrelease", "boardsel", "boardsel2", "beep", "runstp"}


class Run:
    """One run on one programmer: notes what happens and keeps the frame buffer, which starts with zeros."""

    def __init__(self, model, usb, generation, situation):
        self.model = model
        self.usb = usb
        self.generation = generation
        self.other = situation
        self.lines = []
        self.frame_bytes = bytearray(20)
        self.waited = 0
        self.asked = False  # a fault was shown: the run cannot pass any more
        self.drawn = 0
        self.option = 0

    def __getattr__(self, operation):
        """The operations of the device object that a self-test uses, a beep and a wait, by their names."""
        if operation not in OPERATIONS:
            raise AttributeError(operation)

        def call(*arguments):
            self.note(" ".join([operation, *map(str, arguments)]))

        return call

    def note(self, line):
        self.lines.append(line)

    def delayms(self, milliseconds):
        self.waited += milliseconds
        self.note(f"delayms {milliseconds}")

    def status(self, text):
        self.note(f"status {text}" if text else "status")

    def status2(self, text):
        self.note(f"status2 {text}")

    def frame(self, length, *leading, **others):
        """Sends the buffer after setting its leading bytes and others, such as b8=1; the rest keeps earlier frames."""
        self.set_bytes(*leading, **others)
        sent = self.frame_bytes[:length].hex(" ").upper()
        self.note(f"usbcomwrite {length}: {sent}")

    def set_bytes(self, *leading, **others):
        self.frame_bytes[:len(leading)] = bytes(leading)
        for name, value in others.items():
            self.frame_bytes[int(name[1:])] = value

    def pin_frame(self, odd, even, slot=0, **others):
        """The six port outputs and the six companion bytes. A module is named in byte 15, so its frame is longer."""
        if slot:
            others["b15"] = slot
        self.frame(16 if slot else 15, 5, *[odd, even] * 6, **others)

    def bulk_write(self, data):
        self.note(f"usbbulkwrite {len(data)}: crc {zlib.crc32(data):08X}")

    def bulk_read(self, size=BLOCK):
        """A block and its end marker."""
        self.note(f"usbbulkread {size + 1}")

    def random_bytes(self, count):
        self.drawn += count
        return RANDOM_BYTES(self.drawn - count, count)

    def ask(self):
        """A fault was shown: waits for the person. Returns whether the run goes on."""
        self.asked = True
        self.beep()
        self.runstp()
        self.note(self.other.press)
        if self.other.press == "continue":
            return True
        self.drop_everything()
        return False

    def drop_everything(self):
        """What the Stop button does: a run of the first option only resets, the others make VPP safe first."""
        if self.option:
            self.setvpp(5000, 0)
            self.setvpp(5000, 1)
        self.hwreset()
