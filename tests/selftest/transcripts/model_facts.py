"""The texts, and what a model is."""

BLOCK = 32768  # bytes of memory that are written or read at a time

TEST = "Test"
WARNING = "Warning! "
DOT = "."
FAIL = " fail!"
OK = " OK!"
REGISTER_FAULT = "Device Test Fail!Address:"
SYSTEM_TEST = "System Test"
OUTPUT_TEST = "Output Test"
NEED_BOARD = 'Note!Need "Test Board" On Socket!'
INPUT_TEST = "Input Test...."
NO_BOARD = 'Error! No "Test Board" On Socket!'
OUTPUT_HIGH = "Output is HIGH!"
OUTPUT_LOW = "Output is LOW!"
INPUT_HIGH = "Input is HIGH!"
INPUT_LOW = "Input is LOW!"
NO_DEVICE = "Note: Do NOT insert any device in the socket!"
NEED_ADAPTOR = "Note!" + " Need AC adaptor!"

def form_of(model):
    if model in (11, 12, 25, 26):
        return "pinnoteISP"
    if model in (23, 24, 28, 29):
        return "pinnote4"
    if model == 27:
        return "pinnote_sepm"
    return "pinnote204" if model in (39, 52, 54) else "pinnote"


def routes_of(model):
    """The programmers with 40 positions wired across have no registers for their pins."""
    return ("usb",) if form_of(model) == "pinnote4" else ("usb", "registers")


def has_single_vpp(model):
    """These calibrate one VPP generator and have short lists of drivers."""
    return model in (15, 16, 57, 58)


def has_driver_test(model):
    """The groups that have a driver test; the others skip its three stages."""
    return model in (9, 10, 13, 14, 15, 16) or model >= 40 or form_of(model) in ("pinnote4", "pinnote_sepm")


GROUND, VCC, VPP = 0, 1, 2
DRIVER_CODE = {GROUND: 138, VCC: 137, VPP: 135}
DRIVER_NAME = {GROUND: "GND", VCC: "VCC", VPP: "VPP"}

SHORT_LISTS = {
    GROUND: [13, 14, *range(17, 22), 23, 24, 26, 27, 28, 30, 31, 33, 34],
    VCC: [11, 13, 15, 16, 17, 20, *range(24, 31), *range(33, 38), 39, 43, 45],
    VPP: [4, 8, *range(10, 19), 20, 23, 31, 32, 33, 34, 37, 38],
}


def known_pins(model, mode):
    """The pins that a driver test switches. What is not known of a list is not driven: three VCC pins and all VPP pins
    of 57 and 58, and every list of the programmers with 40 positions."""
    if form_of(model) in ("pinnote4", "pinnote_sepm") or (model in (57, 58) and mode == VPP):
        return []
    if has_single_vpp(model):
        return SHORT_LISTS[mode]
    return list(range(1, 49))


def lamp_of(port, bit):
    """The lamp of a bit of a port; lamp 0 is pin 1."""
    return 20 + bit + 4 * port * (2 * (bit // 4) - 1)
