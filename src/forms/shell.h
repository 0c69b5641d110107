// What a form or routine asks of the platform: modal dialogs, message boxes, names of files, a printer, the message
// pump, the clock.
#pragma once

#include "forms/message_box.h"

namespace tamrix::forms {

class form;

class shell {
public:
    virtual ~shell() = default;

    /// Loads the form, runs it until it is closed, unloads it. An error that a handler throws ends the dialog and comes
    /// out here.
    void show_modal(form& dialog);
    virtual answer box(const message_box& box) = 0;
    virtual void beep() = 0;
    /// Lets waiting messages pass: one round of the message pump.
    virtual void doevents() = 0;
    /// Seconds of a clock that never goes back; only differences mean something.
    virtual double seconds() = 0;

protected:
    virtual void run_modal(form& dialog) = 0;
};

}  // namespace tamrix::forms
