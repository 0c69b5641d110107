#include "wxui/wx_shell.h"

#include "wxui/file_window.h"
#include "wxui/form_dialog.h"
#include "wxui/host_window.h"
#include "wxui/print_preview.h"
#include "wxui/printing.h"

#include <chrono>

#include <wx/app.h>
#include <wx/evtloop.h>

namespace tamrix::wxui {

namespace {

/// The window that a new modal one belongs to; may be null.
wxWindow* window_in_front()
{
    wxWindow* active = wxGetActiveWindow();
    return active != nullptr ? wxGetTopLevelParent(active) : wxTheApp->GetTopWindow();
}

}  // namespace

void wx_shell::run_modal(forms::form& dialog)
{
    toolkit_.need_display();
    const host_window host;
    form_dialog window{dialog, window_in_front()};
    host.put_behind(window);
    window.run();
}

forms::answer wx_shell::box(const forms::message_box& box)
{
    toolkit_.need_display();
    const host_window host;
    return ask(window_in_front(), box, answer_texts_);
}

std::optional<std::string> wx_shell::open_file(const forms::file_question& question)
{
    toolkit_.need_display();
    const host_window host;
    return ask_for_file(window_in_front(), question, file_use::open);
}

std::optional<std::string> wx_shell::save_file(const forms::file_question& question)
{
    toolkit_.need_display();
    const host_window host;
    return ask_for_file(window_in_front(), question, file_use::save);
}

forms::print_end wx_shell::print(const forms::print_job& job)
{
    toolkit_.need_display();
    const host_window host;
    if (!preview(window_in_front(), job)) return forms::print_end::cancelled;
    const auto [end, reason] = wxui::print(window_in_front(), job);
    if (end == forms::print_end::failed) {
        box({.text = "The page was not printed: the printer is not there, or the file cannot be written." + reason,
             .title = job.title,
             .picture = forms::icon::error});
    }
    return end;
}

void wx_shell::beep() { wxBell(); }

void wx_shell::doevents()
{
    if (wxEventLoopBase* loop = wxEventLoopBase::GetActive(); loop != nullptr) {
        loop->YieldFor(wxEVT_CATEGORY_ALL);
    } else {
        serve_host_messages();
    }
}

double wx_shell::seconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace tamrix::wxui
