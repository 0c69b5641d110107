"""The system tests of the programmers that are one unit."""

from model_facts import INPUT_TEST
from model_pins import driver_stages, input_reads, input_stage
from model_ram import ram_4096, ram_large, ram_low_voltage, ram_small, ram_stage, start
from model_registers import end, register_stage


def system_default(run):
    start(run)
    ram_stage(run, ram_large if run.model >= 40 else ram_small)
    end(run, input_stage(run) and driver_stages(run) and register_stage(run))
    run.beep()


def system_low_voltage(run):
    """As the default form's; only the RAM is another, and the driver lists."""
    start(run)
    ram_stage(run, ram_low_voltage)
    end(run, input_stage(run) and driver_stages(run) and register_stage(run))
    run.beep()


def system_40_pins(run):
    start(run)
    ram_stage(run, ram_4096)
    end(run, input_stage_40_pins(run) and (run.generation != 17 or driver_stages(run)))
    run.beep()


def input_stage_40_pins(run):
    run.status(INPUT_TEST)
    run.pin_frame(255, 0, b13=10)
    run.delayms(500)
    run.delayms(500)
    run.pin_frame(255, 255)
    return input_reads(run)


def system_isp(run):
    """There are no pins to look at: the RAM, and only over USB. Its end is silent."""
    if run.usb:
        run.hwreset()
        ram_stage(run, ram_small)
    else:
        run.hwinit()
        run.hwreset()
    run.delayms(5000)
    end(run, True)
