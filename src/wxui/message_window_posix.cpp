// A box of our own: the toolkit's one makes no room for its title, shows no picture, and its letters differ in width.
#include "wxui/message_window.h"

#include "wxui/letters.h"
#include "wxui/text.h"

#include <algorithm>
#include <vector>

#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

namespace tamrix::wxui {

namespace {

constexpr int margin = 12, line_gap = 6, label_gap = 9, cell_gap = 18, least_button = 88;
constexpr int beside_title = 120;  // the buttons of a title bar
constexpr int longest_line = 100;  // in letters

wxString art_of(forms::icon picture)
{
    switch (picture) {
    case forms::icon::none: break;
    case forms::icon::information: return wxART_INFORMATION;
    case forms::icon::warning: return wxART_WARNING;
    case forms::icon::error: return wxART_ERROR;
    case forms::icon::question: return wxART_QUESTION;
    }
    return {};
}

class message_window final : public wxDialog {
public:
    message_window(wxWindow* parent, const forms::message_box& box, const answer_texts& texts)
        : wxDialog{parent,        wxID_ANY,
                   title_of(box), wxDefaultPosition,
                   wxDefaultSize, wxCAPTION | wxSYSTEM_MENU | wxCLOSE_BOX},
          answer_{answer_of_closing(box.buttons)}
    {
        auto* content_row = new wxBoxSizer{wxHORIZONTAL};
        add_picture(*content_row, box.picture);
        content_row->Add(content(box), wxSizerFlags{1}.CenterVertical());
        auto* outer = new wxBoxSizer{wxVERTICAL};
        outer->Add(content_row, wxSizerFlags{1}.Expand().Border(wxALL, FromDIP(margin)));
        outer->Add(buttons(box, texts), wxSizerFlags{}.Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(margin)));
        SetSizer(outer);
        SetEscapeId(wxID_NONE);
        Bind(wxEVT_CHAR_HOOK, &message_window::on_key, this);
        wxSize room = outer->ComputeFittingWindowSize(this);
        room.IncTo({GetTextExtent(GetTitle()).x + FromDIP(beside_title), 0});
        SetSizeHints(room);
        SetSize(room);
        CentreOnParent();
    }

    forms::answer ask()
    {
        ShowModal();
        return answer_;
    }

private:
    void add_picture(wxSizer& into, forms::icon picture)
    {
        if (picture == forms::icon::none) return;
        const wxBitmap bitmap = wxArtProvider::GetBitmap(art_of(picture), wxART_MESSAGE_BOX);
        if (bitmap.IsOk()) {
            into.Add(new wxStaticBitmap{this, wxID_ANY, bitmap},
                     wxSizerFlags{}.CenterVertical().Border(wxRIGHT, FromDIP(margin)));
        }
    }

    wxStaticText* words(const wxString& shown)
    {
        return new wxStaticText{this, wxID_ANY, wxControl::EscapeMnemonics(shown)};
    }

    wxSizer* text(const wxString& shown)
    {
        auto* around = new wxBoxSizer{wxVERTICAL};
        wxStaticText* made = words(shown);
        made->Wrap(longest_line * GetCharWidth());
        around->Add(made);
        return around;
    }

    wxSizer* content(const forms::message_box& box)
    {
        return box.table.rows.empty() ? text(text_of(box)) : table(box.table);
    }

    wxSizer* table(const forms::box_table& shown)
    {
        std::size_t columns = 0;
        for (const forms::box_row& row : shown.rows) columns = std::max(columns, row.cells.size() + 1);
        const wxSize gaps = shown.letters ? wxSize{label_gap, line_gap} : wxSize{cell_gap, margin};
        auto* grid = new wxFlexGridSizer{static_cast<int>(columns), FromDIP(gaps)};
        for (const forms::box_row& row : shown.rows) {
            grid->Add(words(to_wx(row.label.words)), wxSizerFlags{}.Right().CenterVertical());
            for (std::size_t i = 0; i + 1 < columns; ++i) {
                wxStaticText* cell = words(i < row.cells.size() ? to_wx(row.cells[i].words) : wxString{});
                if (shown.letters) cell->SetFont(letters_of_one_width());
                grid->Add(cell, wxSizerFlags{}.CenterVertical());
            }
        }
        if (shown.closing.empty()) return grid;
        auto* lines = new wxBoxSizer{wxVERTICAL};
        lines->Add(grid);
        lines->AddSpacer(GetCharHeight());
        lines->Add(words(to_wx(shown.closing).Trim()));
        return lines;
    }

    wxSizer* buttons(const forms::message_box& box, const answer_texts& texts)
    {
        const auto answers = answers_of(box.buttons);
        const forms::answer of_enter = box.enter_refuses ? answer_of_closing(box.buttons) : answers.front();
        auto* row = new wxBoxSizer{wxHORIZONTAL};
        std::vector<wxButton*> made;
        int width = FromDIP(least_button);
        for (const forms::answer one : answers) {
            auto* button = new wxButton{this, wxID_ANY, to_wx(texts(one))};
            button->Bind(wxEVT_BUTTON, [this, one](wxCommandEvent&) { end(one); });
            width = std::max(width, button->GetBestSize().x);
            made.push_back(button);
        }
        for (wxButton* button : made) button->SetMinSize({width, -1});
        wxButton* const standard =
            made.at(static_cast<std::size_t>(std::ranges::find(answers, of_enter) - answers.begin()));
        standard->SetDefault();
        standard->SetFocus();
        // The first one is at the right here.
        for (auto button = made.rbegin(); button != made.rend(); ++button) {
            row->Add(*button, wxSizerFlags{}.Border(wxLEFT, button == made.rbegin() ? 0 : FromDIP(line_gap)));
        }
        return row;
    }

    void on_key(wxKeyEvent& event)
    {
        if (event.GetKeyCode() == WXK_ESCAPE && !event.HasAnyModifiers()) return end(answer_);
        event.Skip();
    }

    void end(forms::answer chosen)
    {
        answer_ = chosen;
        EndModal(wxID_CLOSE);
    }

    forms::answer answer_;  // until a button is pressed, what closing the box means
};

}  // namespace

forms::answer ask(wxWindow* parent, const forms::message_box& box, const answer_texts& texts)
{
    return message_window{parent, box, texts}.ask();
}

}  // namespace tamrix::wxui
