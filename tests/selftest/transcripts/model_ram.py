"""The start of a system test and its tests of the memory."""

from model_facts import BLOCK, DOT, TEST


def start(run):
    if not run.usb:
        run.hwinit()
    run.hwreset()
    select_work_board(run)
    run.delayms(100)


def select_work_board(run):
    if run.model >= 40:
        run.boardsel2(0, 3)
    else:
        run.boardsel(3)


def ram_small(run):
    """Four blocks; they are written in one go and read one by one."""
    run.delayms(200)
    run.frame(4, 10, 0, 128)
    run.delayms(200)
    data = run.random_bytes(131089)
    for block in range(4):
        run.bulk_write(data[block * BLOCK:(block + 1) * BLOCK])
    for block in range(4):
        run.frame(8, 10, block, 64)
        run.bulk_read()
    run.frame(8, 10, 0, 0)
    return 4


def ram_large(run):
    """Asks for the large memory first; a programmer without it has one block."""
    data = run.random_bytes(524305)
    run.frame(16, 9, 1, b7=0)
    run.replycheck(3)
    if run.other.large_ram:
        run.frame(16, 10, 0, 128, 1)
        run.delayms(20)
        for block in range(8):
            run.bulk_write(data[block * 65536:(block + 1) * 65536])
        for block in range(16):
            run.frame(16, 10, block, 64)
            run.bulk_read()
        good = 16
    else:
        run.frame(16, 9, 0)
        run.replycheck(3)
        run.frame(16, 10, 0, 128)
        run.delayms(20)
        run.bulk_write(data[:BLOCK])
        run.frame(16, 10, 0, 64)
        run.bulk_read()
        good = 1
    run.frame(16, 10, 0, 0)
    return good


def ram_4096(run):
    run.frame(4, 10, 0, 128)
    run.delayms(20)
    run.bulk_write(run.random_bytes(4113)[:4096])
    run.frame(8, 10, 0, 64)
    run.bulk_read(4096)
    run.frame(8, 10, 0, 0)
    return 1


def ram_low_voltage(run):
    """57344 bytes: a whole block and a part of one."""
    run.delayms(200)
    run.frame(4, 51, 1, 128)
    run.delayms(200)
    run.bulk_write(run.random_bytes(65537)[:57344])
    run.frame(8, 51, 1)
    for block, size in enumerate((32768, 24576)):
        run.frame(8, 10, block, 64)
        run.bulk_read(size)
    run.frame(8, 10, 0, 0)
    return 1


def ram_stage(run, test):
    run.status(DOT + TEST + " RAM " + ".....")
    good = test(run)
    run.status(f" RAM level= {good}")
    run.delayms(5000)
