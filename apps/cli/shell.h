// The screen of a command line: the command answers dialogs, and gets the message boxes to print.
#pragma once

#include "forms/form.h"
#include "forms/shell.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tamrix::cli {

class shell final : public forms::shell {
public:
    /// Answers the dialogs, as a person would; a dialog that it leaves open is cancelled.
    std::function<void(forms::form&)> person;

    /// The answer to a report of a failing row.
    forms::answer failing_rows = forms::answer::abort;
    /// The answer to the question for a name to save to; none cancels.
    std::optional<std::string> file_to_save;
    /// For a programmer with its own time: the seconds, and a function that lets time pass. Empty: the system's clock.
    std::function<double()> clock;
    std::function<void()> on_doevents;

    /// Nobody is there to decide, so this chooses the answer that changes the least: OK, else No or Cancel.
    forms::answer box(const forms::message_box& box) override;
    std::optional<std::string> save_file(const forms::file_question&) override { return file_to_save; }
    void beep() override {}
    void doevents() override
    {
        if (on_doevents) on_doevents();
    }
    double seconds() override;

    /// The boxes that were shown, in their order.
    const std::vector<forms::message_box>& boxes() const { return boxes_; }

protected:
    void run_modal(forms::form& dialog) override;

private:
    std::vector<forms::message_box> boxes_;
};

}  // namespace tamrix::cli
