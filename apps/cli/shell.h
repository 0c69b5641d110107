// The screen of a command line: dialogs are answered by the command, message boxes are kept for it to tell.
#pragma once

#include "forms/form.h"
#include "forms/shell.h"

#include <functional>
#include <vector>

namespace tamrix::cli {

class shell final : public forms::shell {
public:
    /// What answers the dialogs. It acts as a person would; a dialog that it leaves open is cancelled.
    std::function<void(forms::form&)> person;

    /// The answer to a report of a failing row.
    forms::answer failing_rows = forms::answer::abort;
    /// Where the programmer keeps a time of its own: its seconds, and what lets it pass. Empty: the system's clock.
    std::function<double()> clock;
    std::function<void()> on_doevents;

    /// Nobody is there to decide, so the answer is the one that changes the least: OK, else No or Cancel.
    forms::answer box(const forms::message_box& box) override;
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
