// What a form or routine asks of the platform: modal dialogs, message boxes, names of files, a printer, the message
// pump, the clock.
#pragma once

#include "forms/file_question.h"
#include "forms/message_box.h"
#include "forms/page.h"

#include <optional>
#include <string>

namespace tamrix::forms {

class form;

class shell {
public:
    virtual ~shell() = default;

    /// Loads the form, runs it until it is closed, and unloads it. An error that a handler throws ends the dialog and
    /// comes out here.
    void show_modal(form& dialog);
    virtual answer box(const message_box& box) = 0;
    /// The name of a file to read or to write, UTF-8; none if the person cancels, or if the platform has nobody to ask.
    /// The person has agreed to replace an existing file that is named for writing.
    virtual std::optional<std::string> open_file(const file_question&) { return std::nullopt; }
    virtual std::optional<std::string> save_file(const file_question&) { return std::nullopt; }
    /// Shows the page, asks for a printer and prints; says so if that fails. What the job throws comes out.
    virtual print_end print(const print_job&) { return print_end::cancelled; }
    virtual void beep() = 0;
    /// Handles the waiting messages: one round of the message pump.
    virtual void doevents() = 0;
    /// Seconds of a clock that never goes back; only differences mean something.
    virtual double seconds() = 0;

protected:
    virtual void run_modal(form& dialog) = 0;
};

}  // namespace tamrix::forms
