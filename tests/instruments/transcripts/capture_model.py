"""A run of the analyzer: from the press of Record to the end of what it does, once or several times.

The last line is the sample period that the display uses then.
"""

from run_notes import Notes, plain

BANK = 32768
BULK_READ = BANK + 1
MAPPED_MORE = 2200  # bytes that are mapped beyond the length of the buffer
READS = 131073
PERIOD_DIVISOR = 131072  # intentional: one less than the reads
SEARCH_LIMIT = 131072

BY_GENERATION = (2, 3, 4, 9, 10, 13, 14)
SLOW = (5, 6, 7, 8, 15, 16, 17, 18, 19)


def period_after_usb(model, generation):
    if model in BY_GENERATION:
        return 3.5 if generation == 17 else 3.8
    return 4.7 if model in SLOW else 3.4


def period_at_first(model, generation):
    """Intentional: model 4 differs here from its period after a capture."""
    return 3.4 if model == 4 else period_after_usb(model, generation)


class Capture(Notes):
    def __init__(self, situation):
        super().__init__(situation)
        self.press = 0
        self.reads = 0
        self.fails_at = self.answer = None
        self.closing = False
        self.sampleus = period_at_first(situation.model, situation.generation)

    def state(self, text):
        self.note("status1", "Status:" + text)

    def enable(self, name, on):
        self.note("enabled", name, on)

    def number(self, key):
        return self.other.number(key, self.press)

    def acts_at(self, wait):
        """The person acts in this wait; both ways leave Stop pressed."""
        if self.other.text("wait", self.press) != wait:
            return False
        self.closing = self.other.text("act", self.press) == "close"
        self.enable("Command4", 0)
        return True

    def record(self):
        self.note("clear")
        self.note("labels")
        self.note("hwreset")
        if self.other.text("reset", self.press) == "absent":
            self.note("hwrelease")
            return
        self.note("busmode", 0)
        self.note("gndpin", 5, 1)
        self.note("regout", 255, 1)
        self.note("delayms", 100)
        self.enable("Command4", 1)
        self.enable("Command3", 0)
        self.note("status2", "Rec.Time:")
        (self.record_usb if self.other.usb else self.record_registers)()
        if self.closing:
            self.leave_safe()

    def leave_safe(self):
        """What closing the dialog adds to a run that it ended."""
        self.note("setvpp", 5000, 0)
        self.note("setvpp", 5000, 1)
        self.note("hwreset")

    # The registers.

    def regin(self):
        """The byte, or -1."""
        self.lines.append("regin 0")
        read, self.reads = self.reads, self.reads + 1
        if self.fails_at is not None and read >= self.fails_at:
            return -1
        return (7 * read + 3) % 256 if self.answer is None else self.answer

    def search(self):
        """Returns whether the level came before Stop."""
        high, pin = self.other.text("level", self.press) == "high", self.number("pin")
        counter = passes = 0
        while True:
            if counter > SEARCH_LIMIT:
                passes += 1
                if passes == self.number("pass") and self.acts_at("search"):
                    return False
                counter = 0
            counter += 1
            byte = self.regin()
            self.state("Search Trigger Signeal....")
            if bool(byte >> pin & 1) == high:
                return True

    def record_registers(self):
        self.fails_at, self.answer = self.number("fails_at"), self.number("answer")
        if self.other.text("trigger", self.press) == "ext" and not self.search():
            return
        self.state("Record....")
        for _ in range(READS):
            if self.regin() == -1:
                self.note("hwrelease")
                self.state("Record Error!")
                break
        elapsed = float(self.other.text("elapsed", self.press))
        self.sampleus = elapsed * 1000000 / PERIOD_DIVISOR
        self.note("status2", "Rec.Time:" + plain(elapsed))
        self.state("Record OK!")
        self.note("draw")
        self.buttons_at_the_end()

    # USB.

    def record_usb(self):
        mask = 1 << self.number("pin")
        level = 0xFF if self.other.text("level", self.press) == "high" else 0
        mode = 1 if self.other.text("trigger", self.press) == "ext" else 0
        self.frame(5, 0x21, 1, mode, mask, mask & level)
        self.state("Record....")
        if not self.acts_at("reply"):  # other replies and passes of the message loop leave no trace
            self.note("delayms", 100)
            if self.read_banks():
                self.frame(8, 0x0A, 0, 0)
                self.sampleus = period_after_usb(self.other.model, self.other.generation)
                self.state("Record OK!")
                self.note("draw")
            else:
                self.state("Record Error!")
        self.note("timer2 off")
        self.frame(5, 0x21, 0)
        self.note("hwreset")
        self.buttons_at_the_end()

    def read_banks(self):
        mapped = self.number("buflength") + MAPPED_MORE
        for bank in range(self.number("banks")):
            if bank * BANK + BULK_READ > mapped:
                return False
            self.frame(8, 0x0A, bank, 0x40)
            self.note("usbbulkread", BULK_READ)
            self.note("timer2", 8000)
            self.acts_at(f"bank{bank}")
            if self.number("bulk_fails") == bank:
                return False
            if self.number("bulk_hangs") == bank:
                self.note("timer2 off")  # by the timer itself
                return False
        return True

    def buttons_at_the_end(self):
        self.enable("Command4", 0)
        self.enable("Command3", 1)


def capture(situation):
    run = Capture(situation)
    for run.press in range(situation.number("runs")):
        run.record()
    run.note("sampleus", plain(run.sampleus))
    return run.lines
