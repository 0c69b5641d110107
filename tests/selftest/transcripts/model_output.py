"""The output tests."""

from model_facts import DOT, FAIL, NO_BOARD, OK, OUTPUT_HIGH, OUTPUT_LOW, OUTPUT_TEST
from model_modules import module_reset, module_start

HIGH_FIRST = ((1, 0), (0, 0), (0, 1), (1, 1))  # level and driven side of each sweep
LOW_FIRST = ((0, 0), (1, 0), (0, 1), (1, 1))
ALL_SWAPPED = ((0, 0), (1, 0), (1, 1), (0, 1))


class Output:
    """One output test: counts the faults of all its sweeps."""

    def __init__(self, run, no_board_counts, from_40=False, slot=0):
        self.run = run
        self.no_board_counts = no_board_counts
        self.from_40 = from_40
        self.slot = slot
        self.faults = 0
        self.pulled_down = False

    def sweeps(self, first, limit, order):
        return all(self.sweep(first, limit, level, side) for level, side in order)

    def sweep(self, first, limit, level, side):
        """Drives line after line, then asks about the faults. Returns whether to go on."""
        self.prepare(level, side)
        idle = 255 * level
        found = 0
        for line in range(first, limit):
            if line > first and line % 4 == 0:
                self.run.regout(idle, self.address(line - 1))  # the port just left
            bit = 1 << line % 4 if side == 0 else 128 >> line % 4
            self.run.regout(idle ^ bit, self.address(line))
            self.read()
            found += self.faults_at(line, level, side)
        found += self.floating(first, limit, level)
        self.faults += found
        if self.faults in self.no_board_counts:
            return False
        for _ in range(found):
            self.run.status(OUTPUT_LOW if level else OUTPUT_HIGH)
            if not self.run.ask():
                return False
        return True

    @staticmethod
    def address(line):
        return 2 * (5 - line // 4)

    def prepare(self, level, side):
        run = self.run
        if self.from_40:
            run.boardsel2(7, 0)
            run.setvcc(5000)
            run.delayms(100)
        elif not run.usb:
            run.regout(1 - level, 50)
        for _ in range(2):
            run.pin_frame(255 * level, 15 if side else 240, self.slot)
            run.delayms(500)

    def read(self):
        if self.run.usb:
            self.run.replywait(3, 0, 0)
        else:
            for port in range(6):
                self.run.regin(2 * port)

    def faults_at(self, line, level, side):
        """A line without its connection leaves its partner at the level of rest."""
        driven, partner = (47 - line, line) if side else (line, 47 - line)
        connected = self.run.other.board and line not in self.run.other.open_lines
        moved = {driven, partner} if connected else {driven}
        return sum((lamp in moved) != (lamp in (driven, partner)) for lamp in range(48))

    def floating(self, first, limit, level):
        """Where nothing pulls it down, an open line that is not in the sweep rests high among low ones."""
        if level or self.pulled_down:
            return 0
        return sum(not first <= line < limit for line in self.run.other.open_lines)

    def verdict(self, number=""):
        if self.faults in self.no_board_counts:
            self.run.status(NO_BOARD + number)
        else:
            self.run.status(OUTPUT_TEST + (FAIL if self.run.asked else OK + number))


def output_default(run):
    if run.model >= 40:
        test = Output(run, (24, 552), from_40=True)
        run.boardsel2(0, 3)
        run.status(DOT + OUTPUT_TEST + ".....")
        test.sweeps(0, 24, HIGH_FIRST)
    else:
        test = Output(run, (20,))
        run.boardsel(0)
        run.status(DOT + OUTPUT_TEST + ".....")
        output_below_40(run, test)
    test.verdict()
    run.beep()


def output_below_40(run, test):
    if not test.sweeps(4, 24, HIGH_FIRST):
        return
    if run.generation != 17:
        run.boardsel(7)
        run.delayms(500)
        test.pulled_down = not run.usb
    test.sweeps(0, 4, LOW_FIRST)


def output_40_pins(run):
    run.hwreset()
    run.status(DOT + OUTPUT_TEST)
    run.regout(0, 50)
    run.regout(255, 50)
    for address in (2, 4, 6, 8):
        run.regout(255, address)
    test = Output(run, (40,))
    test.sweeps(4, 24, HIGH_FIRST)
    test.verdict()
    run.beep()


def output_modules(run, order):
    """Module after module: the person moves the board and presses Continue, which is no fault."""
    for slot in range(1, 5):
        module_reset(run, slot, 500)
        module_start(run, slot, 500)
        test = Output(run, (24, 552), from_40=True, slot=slot)
        run.boardsel2(0, 3)
        run.status(DOT + OUTPUT_TEST + ".....")
        test.sweeps(0, 24, order)
        test.verdict(f" ( No {slot}")
        run.frame(9, 6, 1, 54, 6, 80, 1, b8=slot)
        if slot < 4:
            run.status(f"( No {slot + 1}")
            run.ask()
            run.asked = False
    run.beep()
