"""The stages of a system test that look at the pins: inputs and drivers."""

from model_facts import (DOT, DRIVER_CODE, DRIVER_NAME, GROUND, INPUT_HIGH, INPUT_LOW, INPUT_TEST, OUTPUT_HIGH,
                         OUTPUT_LOW, OUTPUT_TEST, VCC, VPP, has_driver_test, form_of, known_pins, lamp_of)
from model_ram import select_work_board


def pin_read(run, level, slot=0):
    """Reads all inputs, which register 50 pulls to the level; one status text and one question for all faults. Returns
    whether to go on."""
    run.regout(1 - level, 50)
    if run.usb:
        run.pin_frame(255 * level, 255, slot)
        run.replywait(3, 0, 0)
    else:
        run.delayms(100)
        for port in range(6):
            run.regout(255, 2 * port + 1)
        for port in range(6):
            run.regin(2 * port)
    ports = 6 if run.generation == 17 else 5
    lamps = [lamp_of(port, bit) for port in range(ports) for bit in range(8)]
    if all((0 if lamp in run.other.stuck_low else level) == level for lamp in lamps):
        return True
    run.status(INPUT_LOW if level else INPUT_HIGH)
    return run.ask()


def input_stage(run):
    run.status(INPUT_TEST)
    return input_reads(run)


def input_reads(run):
    if not pin_read(run, 1):
        return False
    if run.model >= 40:
        run.boardsel2(7, 3)
    else:
        run.boardsel(7)
    if not pin_read(run, 0):
        return False
    run.regout(1, 50)
    return True


def driver_reading(run, mode, pin, lamp, level):
    """The level of a lamp while the driver of a pin is on."""
    if lamp in run.other.stuck_low:
        return 0
    if lamp == pin - 1 and (mode, pin) not in run.other.dead_drivers:
        return 1 - level
    return level


def driver_test(run, mode):
    """Switches one driver after the other on and off. Returns whether to go on; the ground drivers ask nothing."""
    level = 1 if mode == GROUND else 0
    ports = 6 if run.generation == 17 else 5
    settle = 200 if form_of(run.model) == "pinnote4" else 20
    for pin in known_pins(run.model, mode):
        run.ctlout(pin + 128, DRIVER_CODE[mode])
        run.delayms(settle)
        if run.usb:
            run.replywait(3, 0, 0)
        else:
            run.delayms(50)
            for port in range(ports):
                run.regin(2 * port)
        if mode != GROUND and not driver_faults(run, mode, pin, level, ports):
            run.status("")
            return False
        run.ctlout(pin + 128, DRIVER_CODE[mode])
        run.delayms(50)
    run.status("")
    return True


def driver_faults(run, mode, pin, level, ports):
    for port in range(ports):
        for bit in range(8):
            lamp = lamp_of(port, bit)
            read = driver_reading(run, mode, pin, lamp, level)
            if (read != level) == (lamp == pin - 1):
                continue
            same = lamp == pin - 1  # the tested driver does nothing; otherwise another pin moves
            if mode == VCC:
                text = OUTPUT_LOW if same else OUTPUT_HIGH
            else:
                text = OUTPUT_HIGH if same else OUTPUT_LOW
            run.status(DRIVER_NAME[mode] + " " + text)
            if not run.ask():
                return False
    return True


def driver_stage(run, mode):
    run.status(DOT + OUTPUT_TEST + f" {DRIVER_NAME[mode]} " + ".....")
    return driver_test(run, mode)


def reset_ports(run):
    select_work_board(run)
    run.busmode(0)
    if run.usb:
        run.pin_frame(255, 0)
        run.delayms(500)
        run.pin_frame(255, 0)
        run.delayms(500)
        run.pin_frame(255, 255)
        run.delayms(500)


def driver_stages(run):
    """VPP, VCC, the reset of the ports, which every model has, and ground."""
    takes_part = has_driver_test(run.model)
    for mode in (VPP, VCC):
        if takes_part and not driver_stage(run, mode):
            return False
    reset_ports(run)
    return not takes_part or driver_stage(run, GROUND)
