"""Clicks on options: which test they run, and the calibrations."""

from model_facts import NEED_ADAPTOR, NEED_BOARD, NO_DEVICE, form_of, has_single_vpp
from model_modules import system_modules
from model_output import ALL_SWAPPED, HIGH_FIRST, output_40_pins, output_default, output_modules
from model_system import system_40_pins, system_default, system_isp, system_low_voltage

# Option: supply, pin, and whether the status panel asks for the adaptor.
CALIBRATIONS = {
    "pinnote": {
        1: (("setvcc", 3000), ("vccpin", 2, 1), True),
        2: (("setvpp", 12000, 0), ("vpppin", 2, 1), False),
        3: (("setvpp", 12000, 1), ("vpppin", 3, 1), False),
        4: (("setvpp", 25000, 0), ("vpppin", 2, 1), True),
        5: (("setvpp", 25000, 1), ("vpppin", 3, 1), True),
    },
    "single VPP": {
        1: (("setvcc", 5000), ("vccpin", 4, 1), False),
        2: (("setvpp", 12000, 0), ("vpppin", 6, 1), False),
        4: (("setvpp", 21000, 0), ("vpppin", 6, 1), False),
    },
    "pinnote4": {
        1: (("setvcc", 5000), ("vccpin", 4, 1), False),
        2: (("setvpp", 12000, 0), ("vpppin", 6, 1), False),
        4: (("setvcc", 3300), ("vccpin", 4, 1), False),
    },
    "pinnote_sepm": {
        1: (("setvcc", 1800), ("vccpin", 3, 1), False),
        2: (("setvcc", 3000), ("vccpin", 3, 1), False),
        3: (("setvcc", 5000), ("vccpin", 3, 1), False),
    },
    "pinnoteISP": {
        1: (("setvcc", 6000), ("vccpin", 2, 1), True),
        2: (("setvcc", 3300), ("vccpin", 104, 1), False),
        3: (("setvpp", 12000, 1), ("vpppin", 3, 1), False),
    },
}


def calibrations_of(model):
    if form_of(model) == "pinnote204":
        return CALIBRATIONS["pinnote"]
    return CALIBRATIONS["single VPP" if has_single_vpp(model) else form_of(model)]


def click_option(run, option, note):
    """The programmer of modules shows its notes beside the drawing and not in the status bar."""
    run.option = option
    if form_of(run.model) == "pinnote204":
        return
    run.status(NO_DEVICE)
    if note:
        run.status(note)


def calibration(run, option):
    """The voltage stays on until Stop."""
    supply, pin, adaptor = calibrations_of(run.model)[option]
    click_option(run, option, NEED_ADAPTOR if adaptor else "")
    run.hwreset()
    if run.model > 40:
        run.boardsel2(0, 3)
    run.gndpin(1, 1)
    getattr(run, supply[0])(*supply[1:])
    getattr(run, pin[0])(*pin[1:])
    run.note("stop")
    run.drop_everything()


def calibrations(run):
    for option in calibrations_of(run.model):
        run.note(f"== option {option}")
        calibration(run, option)


def output(run):
    form = form_of(run.model)
    click_option(run, 4 if form == "pinnote_sepm" else 6, NEED_BOARD)
    if form == "pinnote204":
        output_modules(run, HIGH_FIRST)
    elif form == "pinnote4":
        output_40_pins(run)
    else:
        output_default(run)


def output_isp(run):
    click_option(run, 7, NEED_BOARD)
    output_modules(run, ALL_SWAPPED)


SYSTEM_OF_FORM = {
    "pinnote": system_default,
    "pinnote4": system_40_pins,
    "pinnote_sepm": system_low_voltage,
    "pinnoteISP": system_isp,
    "pinnote204": system_modules,
}


def system(run):
    SYSTEM_OF_FORM[form_of(run.model)](run)
