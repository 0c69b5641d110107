// The panels of a status bar. They paint at once, since a handler at work says in them how far it is.
#include "forms/status_bar.h"

#include "wxui/text.h"
#include "wxui/widgets.h"

#include <algorithm>
#include <vector>

#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

namespace tamrix::wxui {

namespace {

constexpr int least_letters = 12, most_letters = 80;  // of a panel that the window makes room for
constexpr int gap = 6, pad = 3;

/// Neither the Tab key nor a click gives it the keyboard.
class text_panel final : public wxPanel {
public:
    using wxPanel::wxPanel;
    bool AcceptsFocus() const override { return false; }
    bool AcceptsFocusFromKeyboard() const override { return false; }
};

class status_bar_widget final : public widget {
public:
    status_bar_widget(forms::status_bar& control, wxWindow* parent)
        : control_{control}, bar_{new text_panel{parent, wxID_ANY}}
    {
        auto* rows = new wxBoxSizer{wxVERTICAL};
        rows->Add(row(0, control_.in_first_row()), wxSizerFlags{}.Expand());
        if (control_.in_first_row() < control_.panels()) {
            rows->Add(row(control_.in_first_row(), control_.panels()),
                      wxSizerFlags{}.Expand().Border(wxTOP, bar_->FromDIP(gap)));
        }
        bar_->SetSizer(rows);
    }

    bool update() override
    {
        bar_->Enable(control_.enabled());
        bool other_room = bar_->Show(control_.visible());
        for (int i = 0; i < control_.panels(); ++i) other_room |= show(*texts_[static_cast<std::size_t>(i)], i + 1);
        return other_room;
    }
    wxWindow* window() const override { return bar_; }

private:
    wxSizer* row(int first, int end)
    {
        auto* made = new wxBoxSizer{wxHORIZONTAL};
        for (int i = first; i < end; ++i) {
            auto* panel = new text_panel{bar_, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_SUNKEN};
            auto* text = new wxStaticText{
                panel, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END};
            text->SetMinSize({least_letters * text->GetCharWidth(), text->GetCharHeight()});
            auto* inside = new wxBoxSizer{wxVERTICAL};
            inside->Add(text, wxSizerFlags{1}.Expand().Border(wxALL, panel->FromDIP(pad)));
            panel->SetSizer(inside);
            made->Add(panel, wxSizerFlags{1}.Expand().Border(wxLEFT, i == first ? 0 : panel->FromDIP(gap)));
            texts_.push_back(text);
        }
        return made;
    }

    /// A panel gets wider for a longer text and stays so, lest the window shrink and grow while somebody reads.
    bool show(wxStaticText& text, int panel)
    {
        const wxString words = to_wx(control_.text(panel));
        if (words == text.GetLabelText()) return false;
        text.SetLabelText(words);
        text.SetToolTip(words);
        text.Update();
        const int letter = text.GetCharWidth();
        const int wanted = std::min(text.GetTextExtent(words).x + letter, most_letters * letter);
        if (wanted <= text.GetMinSize().x) return false;
        text.SetMinSize({wanted, text.GetMinSize().y});
        return true;
    }

    forms::status_bar& control_;
    wxPanel* bar_;
    std::vector<wxStaticText*> texts_;
};

}  // namespace

widget_ptr make_status_bar(forms::status_bar& control, wxWindow* parent)
{
    return std::make_unique<status_bar_widget>(control, parent);
}

}  // namespace tamrix::wxui
