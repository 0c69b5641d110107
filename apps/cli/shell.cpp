#include "cli/shell.h"

#include <chrono>

namespace tamrix::cli {

forms::answer shell::box(const forms::message_box& box)
{
    boxes_.push_back(box);
    switch (box.buttons) {
    case forms::buttons_of_box::ok: return forms::answer::ok;
    case forms::buttons_of_box::ok_cancel:
    case forms::buttons_of_box::retry_cancel: return forms::answer::cancel;
    case forms::buttons_of_box::yes_no: return forms::answer::no;
    case forms::buttons_of_box::abort_retry_ignore: return failing_rows;
    }
    return forms::answer::cancel;
}

double shell::seconds()
{
    if (clock) return clock();
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void shell::run_modal(forms::form& dialog)
{
    if (person) person(dialog);
    if (dialog.is_open()) dialog.ask_to_leave();
}

}  // namespace tamrix::cli
