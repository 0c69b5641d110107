#include "wxui/wx_shell.h"

#include "wxui/form_dialog.h"
#include "wxui/host_window.h"
#include "wxui/text.h"

#include <chrono>

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/msgdlg.h>

namespace tamrix::wxui {

namespace {

/// The window that a new modal one belongs to; may be null.
wxWindow* window_in_front()
{
    wxWindow* active = wxGetActiveWindow();
    return active != nullptr ? wxGetTopLevelParent(active) : wxTheApp->GetTopWindow();
}

long style_of(const forms::message_box& box)
{
    long style = wxCENTRE;
    switch (box.picture) {
    case forms::icon::none: style |= wxICON_NONE; break;
    case forms::icon::information: style |= wxICON_INFORMATION; break;
    case forms::icon::warning: style |= wxICON_WARNING; break;
    case forms::icon::error: style |= wxICON_ERROR; break;
    case forms::icon::question: style |= wxICON_QUESTION; break;
    }
    switch (box.buttons) {
    case forms::buttons_of_box::ok: return style | wxOK;
    case forms::buttons_of_box::ok_cancel: return style | wxOK | wxCANCEL;
    case forms::buttons_of_box::retry_cancel: return style | wxOK | wxCANCEL;
    case forms::buttons_of_box::yes_no: return style | wxYES_NO;
    case forms::buttons_of_box::abort_retry_ignore: return style | wxYES_NO | wxCANCEL;
    }
    return style;
}

forms::answer answer_of(int result, forms::buttons_of_box buttons)
{
    const bool three = buttons == forms::buttons_of_box::abort_retry_ignore;
    switch (result) {
    case wxID_OK: return buttons == forms::buttons_of_box::retry_cancel ? forms::answer::retry : forms::answer::ok;
    case wxID_YES: return three ? forms::answer::abort : forms::answer::yes;
    case wxID_NO: return three ? forms::answer::retry : forms::answer::no;
    default: break;
    }
    switch (buttons) {  // the box was closed without one of its buttons
    case forms::buttons_of_box::ok: return forms::answer::ok;
    case forms::buttons_of_box::yes_no: return forms::answer::no;
    case forms::buttons_of_box::abort_retry_ignore: return forms::answer::ignore;
    default: return forms::answer::cancel;
    }
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
    const wxString title = box.title.empty() ? wxTheApp->GetAppDisplayName() : to_wx(box.title).Trim();
    // Line ends behind the last line would only make the box higher.
    wxMessageDialog window{window_in_front(), to_wx(box.text).Trim(), title, style_of(box)};
    if (box.buttons == forms::buttons_of_box::abort_retry_ignore) {
        window.SetYesNoCancelLabels("&Abort", "&Retry", "&Ignore");
    }
    if (box.buttons == forms::buttons_of_box::retry_cancel) window.SetOKCancelLabels("&Retry", "&Cancel");
    return answer_of(window.ShowModal(), box.buttons);
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
