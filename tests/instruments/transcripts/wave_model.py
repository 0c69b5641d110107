"""What the generator makes of a typed frequency: three divider bytes and the text that is shown then."""

LARGEST_NUMBER = 2**31 - 1

# Above each limit: what is shown, and what is sent (None: the frequency as typed). From model 40 on.
TABLE = ((510000, 1000000, None), (375000, 510000, 500000), (200000, 247000, 247000), (140000, 161000, 161000),
         (112500, 125600, 125000), (90000, 100000, 100000), (76200, 80000, 80000), (67500, 71400, 71000),
         (59000, 62000, 62000), (53000, 55900, 55000), (49000, 50000, 50000))
FIRST_TABLE_MODEL = 40


class ClickError(Exception):
    """An error that ends the click: a text that is no number, a division by zero, an overflow."""


def signed_16(value):
    if not -32768 <= value <= 32767:
        raise ClickError
    return value


def cut(value, more):
    """The three bytes, lowest first, with `more` added after each division."""
    low = round(value)
    middle = low // 256 + more
    high = middle // 256 + more
    return low % 256, middle % 256, high % 256


def shown_for(hertz):
    """Rounded down to hundreds."""
    return round(hertz) // 100 * 100


def small_registers(ticks, generation):
    factor, limit = (11, 148000) if generation == 17 else (9, 125000)
    if ticks <= 4:
        return 1, limit
    low = ticks - 3
    return low, shown_for(500000 / (signed_16((low - 1) * 8) / factor + 4))


def clock_of(model, generation):
    """In MHz."""
    if model < 5:
        return 33.0 if generation == 17 else 28.636
    return 33.0 if model in (9, 10, 13, 14) else 24.0


def small_usb(ticks, model, generation):
    if ticks <= 4:
        return 1, 132500
    low = ticks - 3
    loop = signed_16(signed_16(low * 2 + 7) * 12) / clock_of(model, generation)
    return low, shown_for(500000 / loop)


def corrected(ticks, usb, model, generation):
    """The half period in ticks, less what the output loop itself takes."""
    whole = round(ticks)
    middle, high = whole // 256 % 256, whole // 65536
    less = signed_16(high * 514)
    if not usb:
        if generation == 17:
            return ticks - 4 + signed_16(middle * 45) - less
        return ticks - 4 - signed_16(middle * 2) - less
    if model in (9, 10, 13, 14) or (model < 5 and generation == 17):
        return ticks - 20 + signed_16(middle * 55) - less
    if model < 5:
        return ticks + signed_16(middle * 15) - less
    return ticks - signed_16(middle * 34) - less


def from_table(hertz):
    for limit, shown, sent in TABLE:
        if hertz > limit:
            return cut(hertz if sent is None else sent, 0), shown
    return cut(hertz, 0), None


def divider_of(hertz, usb, model, generation):
    """((low, middle, high), the number shown or None where the text stays as it is). Raises ClickError."""
    if model >= FIRST_TABLE_MODEL:
        return from_table(hertz)
    if hertz == 0:
        raise ClickError
    ticks = (500000 / float(hertz)) / (8 / 9)
    whole = round(ticks)
    if whole // 256:
        return cut(corrected(ticks, usb, model, generation), 1), None
    low, shown = small_usb(whole, model, generation) if usb else small_registers(whole, generation)
    return (low, 0, 0), shown


def number_of(text):
    """What the text of Text1 is taken for: digits alone come through its filter."""
    if not text or int(text) > LARGEST_NUMBER:
        raise ClickError
    return int(text)


def divider_line(text, usb, model, generation):
    """TEXT LO MID HI SHOWN, or TEXT error."""
    try:
        (low, middle, high), shown = divider_of(number_of(text), usb, model, generation)
    except ClickError:
        return f"{text or 'empty'} error"
    return f"{text} {low} {middle} {high} {text if shown is None else shown}"
