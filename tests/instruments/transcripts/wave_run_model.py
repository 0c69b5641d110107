"""Runs of the frequency meter and of the generator: from Start over Stop to the closing of the dialog."""

from run_notes import Notes
from wave_model import FIRST_TABLE_MODEL, ClickError, divider_of, number_of


class WaveRun(Notes):
    def __init__(self, situation):
        super().__init__(situation)
        self.table_model = situation.model >= FIRST_TABLE_MODEL

    def begin(self):
        """Returns whether the programmer answered."""
        self.note("enabled bigan 0")
        self.note("hwreset")
        if self.other.text("reset") == "absent":
            self.note("hwrelease")
            return False
        self.note("delayms", 100)
        self.note("gndpin", 1, 1)
        self.note("busmode", 0)
        return True

    def board_answers(self):
        self.note("boardsel", 0)
        return self.other.text("board") == "answers"

    def stop_and_close(self):
        self.note("enabled bigan 1")
        self.note("enabled Text1 1")
        self.let_go()
        self.let_go()

    def let_go(self):
        self.note("timer1 off")
        self.note("hwreset")

    def start_meter(self):
        """Returns whether it counts."""
        if not self.begin():
            return False
        self.note("regout", 255, 1)
        self.note("delayms", 100)
        if not self.other.usb:
            for address in (47, 46, 45):
                self.note("ctlout", 0, address)
        elif self.table_model and not self.board_answers():
            return False
        self.note("ctlout", 0, 141)
        self.note("timer1", 800)
        return True

    def read_counter(self, count):
        if not self.other.usb:
            for address in (45, 46, 47):
                self.note("ctlin", address)
        self.note("text1", f"{count:06d}")

    def start_generator(self):
        """Returns whether the click went without an error."""
        if not self.begin():
            return True
        self.note("enabled Text1 0")
        typed = self.other.text("hertz")
        try:
            hertz = number_of("" if typed == "empty" else typed)
            if self.table_model and not self.board_answers():
                return True
            (low, middle, high), shown = divider_of(hertz, self.other.usb, self.other.model, self.other.generation)
        except ClickError:
            return False
        if shown is not None:
            self.note("text1", shown)
        if not self.other.usb and not self.table_model:
            self.note("ctlout", high, 44)
            self.note("ctlout", middle, 43)
        self.frame_bytes[2:4] = middle, high
        self.note("frame bytes 2 and 3:", self.frame_bytes[2:4].hex(" ").upper())
        self.note("ctlout", low, 140)
        return True


def meter(situation):
    run = WaveRun(situation)
    if run.start_meter():
        for count in situation.numbers("counts"):
            run.read_counter(count)
    run.stop_and_close()
    return run.lines


def generator(situation):
    run = WaveRun(situation)
    if run.start_generator():
        run.stop_and_close()
    else:
        run.note("error")
    return run.lines
