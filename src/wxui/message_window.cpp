#include "wxui/message_window.h"

#include "wxui/text.h"

#include <array>
#include <cstddef>

#include <wx/app.h>

namespace tamrix::wxui {

namespace {

using forms::answer;

constexpr std::array only_ok{answer::ok};
constexpr std::array ok_or_cancel{answer::ok, answer::cancel};
constexpr std::array yes_or_no{answer::yes, answer::no};
constexpr std::array retry_or_cancel{answer::retry, answer::cancel};
constexpr std::array abort_or_go_on{answer::abort, answer::retry, answer::ignore};

}  // namespace

std::string english_text(forms::answer which)
{
    constexpr std::array texts{"OK", "&Cancel", "&Yes", "&No", "&Abort", "&Retry", "&Ignore"};
    return texts.at(static_cast<std::size_t>(which));
}

std::span<const forms::answer> answers_of(forms::buttons_of_box buttons)
{
    switch (buttons) {
    case forms::buttons_of_box::ok: break;
    case forms::buttons_of_box::ok_cancel: return ok_or_cancel;
    case forms::buttons_of_box::yes_no: return yes_or_no;
    case forms::buttons_of_box::retry_cancel: return retry_or_cancel;
    case forms::buttons_of_box::abort_retry_ignore: return abort_or_go_on;
    }
    return only_ok;
}

forms::answer answer_of_closing(forms::buttons_of_box buttons)
{
    return buttons == forms::buttons_of_box::abort_retry_ignore ? answer::abort : answers_of(buttons).back();
}

/// A title may have been a line of the host's log, with its end.
wxString title_of(const forms::message_box& box)
{
    return box.title.empty() ? wxTheApp->GetAppDisplayName() : to_wx(box.title).Trim();
}

/// Line ends after the last line would only make the box higher.
wxString text_of(const forms::message_box& box)
{
    wxString text = to_wx(box.text).Trim();
    text.Replace("\r\n", "\n");
    text.Replace("\r", "\n");
    return text;
}

}  // namespace tamrix::wxui
