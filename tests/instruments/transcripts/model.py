#!/usr/bin/env python3
"""A second, slow model of the instruments: what they do with the programmer and show, one a line, and what they draw.

It shares no code with the instruments that it checks. situations.py says what each run meets. A transcript has a line
for each call of the programmer, and one for each thing that the person notices:

    hwreset, hwrelease, busmode, gndpin, boardsel, regout, regin, ctlout, ctlin, delayms, setvpp: arguments in decimal
    usbcomwrite LENGTH: BYTES     all bytes that are sent; those that the frame does not set keep earlier frames
    usbbulkread LENGTH
    frame bytes 2 and 3: M H      of the frame buffer, when the generator calls ctlout for address 140 on the next line
    clear, labels, draw           the surface is cleared, the four time labels are emptied, the view is drawn
    statusN TEXT, text1 TEXT      an assignment of panel N of the status bar, of Text1
    enabled NAME 0|1              an assignment, of Command4 by a press of Stop too
    timerN MILLISECONDS|off       an assignment of interval and on, or off, by the timer itself too
    sampleus NUMBER               the end of an analyzer's run
    error                         the click ends with an error; what follows it is not noted

Assignments are noted also where the value was there already. What the programmer answers and passes of the message loop
are not noted. A group of one line, or else of two, that repeats n times, more than three in a row, is written once
after "n times", each line indented by two blanks. An analyzer's file has the presses of Record without opening and
closing the dialog, unless closing ends the run; those of the meter and the generator have Start, the ticks, Stop and
the close.

The files dividers.txt, drawings.txt and views.txt are described in the modules that write them.

    model.py            writes all files beside this one
    model.py --check    compares them with what it would write; 1 when they differ
"""

import pathlib
import sys

sys.dont_write_bytecode = True  # the parts lie beside the transcripts
sys.path.append(str(pathlib.Path(__file__).resolve().parents[2] / "support"))

from capture_model import capture
from dividers import dividers
from drawings import drawings
from model_files import main
from run_notes import compressed, text_of
from situations import FILE as SITUATIONS
from situations import situations
from view_model import views
from wave_run_model import generator, meter

FOLDER = pathlib.Path(__file__).resolve().parent
RUNS = {"analyzer": capture, "meter": meter, "generator": generator}


def transcripts():
    return {name + ".txt": text_of(compressed(RUNS[name.split("-")[0]](situation)))
            for name, situation in situations().items()}


def tables():
    return {"dividers.txt": text_of(dividers()), "drawings.txt": text_of(drawings()), "views.txt": text_of(views())}


def wanted():
    return transcripts() | tables()


if __name__ == "__main__":
    sys.exit(main(FOLDER, wanted, sys.argv[1:], kept={SITUATIONS.name}))
