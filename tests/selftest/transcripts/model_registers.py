"""The stage of a system test that looks at the registers of the boards, and its end."""

from model_facts import DOT, FAIL, OK, REGISTER_FAULT, SYSTEM_TEST, TEST

# What the registers 1 to 8 of a board read in the ones pass; 255 where nothing else is given.
EXPECTED = {
    1: {3: 15, 4: 15},
    2: {3: 0, 4: 2},
    4: {4: 127, 5: 1},
    5: {3: 15, 4: 15},
    6: {1: 0, 2: 0, 3: 32, 4: 0},
    8: {4: 31, 5: 0},
    9: {4: 56, 5: 0},
    10: {3: 4, 4: 0},
    11: {1: 0, 2: 0, 3: 32, 4: 0},
    12: {1: 0, 2: 0, 3: 127, 4: 0, 5: 0},
    13: {1: 0, 2: 0, 3: 127, 4: 0, 5: 0},
    14: {5: 0},
    15: {3: 0, 4: 2, 5: 2},
    16: {3: 63, 4: 15},
}


def last_board(run):
    if run.model == 1 or (run.model == 2 and not run.usb):
        return 14
    if run.model in (0, 2, 3, 4, 9, 10, 13, 14):
        return 16
    return 7 if run.model in (*range(5, 9), *range(15, 19)) else 0


def registers_of(board):
    """How many registers a board has; those without any still get their frames."""
    exact = {1: 0, 3: 2, 4: 0, 5: 0, 6: 2, 9: 3, 10: 2, 11: 2, 12: 2, 13: 2, 14: 0, 16: 0}
    return exact.get(board, 4 if board < 4 else 5)


def register_test(run):
    run.regout(0, 11)
    run.hwreset()
    for board in range(last_board(run) + 1):
        if board == 7 and run.generation >> 4 == 1:
            continue
        if board in (3, 4) and run.model < 9:
            continue
        fault = register_passes(run, board)
        if fault:
            register, value = fault
            run.status(f"{REGISTER_FAULT}{board}{register}{value:X}")
            if not run.ask():
                return False
    run.hwrelease()
    run.status("")
    return True


def register_passes(run, board):
    """Returns the number to show and the value that was read, for the first register that reads wrong."""
    count = registers_of(board)
    run.boardsel(board)
    run.busmode(0)
    if run.usb:
        run.pin_frame(0, 0, b13=0)
        run.delayms(1)
        run.replywait(3, 0, 0)
    else:
        register_accesses(run, count, 0)
    for register in range(1, count + 1):
        read = run.other.registers.get((board, register), 0)
        if read:
            return register, read
    run.busmode(1)
    if run.usb:
        run.pin_frame(255, 0)
        run.delayms(1)
        run.replywait(3, 0, 0)
    else:
        register_accesses(run, count, 255)
    for register in range(1, count + 1):
        expected = EXPECTED.get(board, {}).get(register, 255)
        read = expected ^ run.other.registers.get((board, register), 0)
        if read != expected:
            return register + 10, read
    return None


def register_accesses(run, count, value):
    for register in range(1, count + 1):
        run.regout(0, 2 * register + 1)
        run.regout(value, 2 * register)
    for register in range(1, count + 1):
        run.regin(2 * register)


def register_stage(run):
    """The programmers from 40 on have no registers to look at."""
    run.status(DOT + TEST + " IC " + ".....")
    return run.model >= 40 or register_test(run)


def end(run, went_on):
    run.status(SYSTEM_TEST + (FAIL if run.asked or not went_on else OK))
