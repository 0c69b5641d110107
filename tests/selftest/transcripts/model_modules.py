"""The system test of the programmers that are a unit with four modules."""

from model_facts import GROUND, INPUT_TEST, TEST, VCC, VPP, WARNING
from model_pins import driver_stage, pin_read
from model_ram import ram_large, start
from model_registers import end


def module_reset(run, slot, wait=200):
    run.frame(15, 4, 170, slot)
    run.delayms(wait)


def module_start(run, slot, wait=500):
    run.frame(15, 236, 170, slot)
    run.delayms(wait)


def system_modules(run):
    start(run)
    unit_ram(run)
    end(run, all(module_stages(run, slot) for slot in range(1, 5)))
    run.status2(f"{run.waited // 1000} Sec ")
    run.beep()


def unit_ram(run):
    run.status(TEST + "Lomax4  RAM " + ".....")
    good = ram_large(run)
    run.status(f" Lomax4 RAM level  = {good}")
    run.delayms(5000)
    run.delayms(5000)


def module_stages(run, slot):
    module_reset(run, slot)
    module_start(run, slot)
    run.status(f"Lomax1  RAM ( No {slot} )  ")
    good = module_ram(run, slot)
    run.status(f"Lomax1  RAM ( No {slot} ) level= {good}")

    run.status(f" ( No {slot}")
    run.delayms(5000)
    if not pin_read(run, 0, slot):
        return False

    module_reset(run, slot)
    if not load_module(run, slot):
        return False
    run.status(INPUT_TEST)
    if not pin_read(run, 1, slot):
        return False

    run.pin_frame(255, 0, slot)
    run.delayms(2000)
    run.pin_frame(255, 0, slot)
    run.delayms(2000)
    run.pin_frame(255, 255, slot)
    run.delayms(500)
    run.delayms(500)
    if not driver_stage(run, GROUND):
        return False

    module_reset(run, slot)
    module_start(run, slot)
    run.delayms(5000)
    run.delayms(500)
    run.pin_frame(255, 255, slot)
    run.delayms(1000)
    if not driver_stage(run, VPP) or not driver_stage(run, VCC):
        return False
    run.delayms(1000)
    return True


def module_ram(run, slot):
    """Through the unit's memory into the module's, and back. What is compared is the second writing."""
    data = b"\0" + run.random_bytes(524288)
    run.frame(15, 10, 0, 128, 1, 0, b8=slot)
    run.delayms(100)
    for block in range(8):
        run.bulk_write(data[block * 65536:(block + 1) * 65536])
        run.delayms(100)
    for block in range(8):
        run.frame(15, 10, block * 2, 128, 1, 170, b8=slot)
        run.delayms(500)
        run.frame(16, 92, 0, 1, 0, 0)
        run.status2(f"Pass data to the programmer ......{block}  ")
        run.replycheck(5)
        run.delayms(1000)
    for block in range(8):
        run.bulk_write(data[block * 65536 + 1:(block + 1) * 65536 + 1])
        run.delayms(100)
    for block in range(16):
        run.frame(15, 10, block, 64, 1, 170, b8=slot)
        run.delayms(50)
        run.frame(16, 92, 1, 0, 128, 0)
        run.status2(f"Data is read from the programmer......{block}  ")
        run.replycheck(5)
        run.frame(16, 10, block, 64, 1, 0)
        run.bulk_read()
    run.frame(16, 10, 0, 0)
    return 16


def load_module(run, slot, fileindex=0, mode=0):
    """Sends the image in blocks. Without an image it says so, and the module is started all the same. Returns whether
    the run goes on."""
    run.set_bytes(b8=slot)
    image = run.other.image
    if image:
        for block in range(len(image) // 24576 + 1):
            load_block(run, slot, block, image[block * 24576:(block + 1) * 24576])
            run.set_bytes(b2=fileindex, b3=mode)
            run.replywait(22, 91 + block, 5)
    else:
        run.note(f"box {WARNING} | >> Read fig file err!!  ")
    run.regout(1, 55)
    run.delayms(1000)
    run.regout(0, 55)
    run.delayms(1000)
    run.regout(1, 51)
    run.delayms(1000)
    return bool(image)


def load_block(run, slot, block, data):
    run.frame(16, 10, 16, 128, 3, 0, b8=slot)
    run.delayms(50)
    run.bulk_write(data)
    run.delayms(50)
    run.frame(16, 10, 16, 128, 3, 170)
    run.delayms(50)
    run.frame(16, 92, 0, 0, len(data) // 256, len(data) % 256)
    run.replycheck(5)
