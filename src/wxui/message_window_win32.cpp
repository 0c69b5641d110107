// The system's own box.
#include "wxui/message_window.h"

#include "wxui/text.h"

#include <array>
#include <cstddef>

#include <wx/msgdlg.h>

namespace tamrix::wxui {

namespace {

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
    case forms::buttons_of_box::ok_cancel:
    case forms::buttons_of_box::retry_cancel:
        return style | wxOK | wxCANCEL | (box.enter_refuses ? wxCANCEL_DEFAULT : wxOK_DEFAULT);
    case forms::buttons_of_box::yes_no: return style | wxYES_NO | (box.enter_refuses ? wxNO_DEFAULT : wxYES_DEFAULT);
    case forms::buttons_of_box::abort_retry_ignore: return style | wxYES_NO | wxCANCEL | wxCANCEL_DEFAULT;
    }
    return style;
}

/// The system's button for an answer, by its place in answers_of(). Abort is the system's Cancel, because Escape and
/// the close button give that one; a box of the system with Abort, Retry and Ignore would not hear them at all.
int button_of(std::size_t place, forms::buttons_of_box buttons)
{
    constexpr std::array yes_or_no{wxID_YES, wxID_NO}, ok_or_cancel{wxID_OK, wxID_CANCEL};
    constexpr std::array abort_or_go_on{wxID_CANCEL, wxID_YES, wxID_NO};
    switch (buttons) {
    case forms::buttons_of_box::yes_no: return yes_or_no.at(place);
    case forms::buttons_of_box::abort_retry_ignore: return abort_or_go_on.at(place);
    default: return ok_or_cancel.at(place);
    }
}

}  // namespace

forms::answer ask(wxWindow* parent, const forms::message_box& box, const answer_texts& texts)
{
    wxMessageDialog window{parent, text_of(box), title_of(box), style_of(box)};
    const auto answers = answers_of(box.buttons);
    const auto label = [&](std::size_t place) { return to_wx(texts(answers[place])); };
    switch (box.buttons) {
    case forms::buttons_of_box::ok: window.SetOKLabel(label(0)); break;
    case forms::buttons_of_box::ok_cancel:
    case forms::buttons_of_box::retry_cancel: window.SetOKCancelLabels(label(0), label(1)); break;
    case forms::buttons_of_box::yes_no: window.SetYesNoLabels(label(0), label(1)); break;
    case forms::buttons_of_box::abort_retry_ignore: window.SetYesNoCancelLabels(label(1), label(2), label(0)); break;
    }
    const int result = window.ShowModal();
    for (std::size_t place = 0; place < answers.size(); ++place) {
        if (button_of(place, box.buttons) == result) return answers[place];
    }
    return answer_of_closing(box.buttons);
}

}  // namespace tamrix::wxui
