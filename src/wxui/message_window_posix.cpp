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
        outer->Add(buttons(answers_of(box.buttons), texts),
                   wxSizerFlags{}.Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(margin)));
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
        switch (box.lines) {
        case forms::lines_of_box::free: break;
        case forms::lines_of_box::letters: return rows_of_letters(text_of(box));
        case forms::lines_of_box::cells: return table(text_of(box));
        }
        return text(text_of(box));
    }

    /// What stands before the colon of a line is its label; what stands behind it has letters of one width.
    wxSizer* rows_of_letters(const wxString& shown)
    {
        auto* lines = new wxBoxSizer{wxVERTICAL};
        auto* grid = new wxFlexGridSizer{2, wxSize{FromDIP(label_gap), FromDIP(line_gap)}};
        lines->Add(grid);
        for (const wxString& line : wxSplit(shown, '\n', '\0')) {
            if (line.Find(':') == wxNOT_FOUND) {
                lines->Add(words(line));
                continue;
            }
            add_label(*grid, line);
            wxStaticText* row = words(behind_label(line));
            row->SetFont(letters_of_one_width());
            grid->Add(row, wxSizerFlags{}.CenterVertical());
        }
        return lines;
    }

    wxSizer* table(const wxString& shown)
    {
        auto* grid = new wxFlexGridSizer{3, wxSize{FromDIP(cell_gap), FromDIP(margin)}};
        for (const wxString& line : wxSplit(shown, '\n', '\0')) {
            if (wxString{line}.Trim().empty()) continue;
            add_label(*grid, line);
            const wxString cells = behind_label(line);
            const int gap = cells.Find("  ");
            grid->Add(words(gap == wxNOT_FOUND ? cells : cells.Left(gap)));
            grid->Add(words(gap == wxNOT_FOUND ? wxString{} : wxString{cells.Mid(gap)}.Trim(false)));
        }
        return grid;
    }

    void add_label(wxSizer& into, const wxString& line)
    {
        into.Add(words(wxString{line.Left(line.Find(':') + 1)}.Trim(false)), wxSizerFlags{}.Right().CenterVertical());
    }

    /// A heading has no label, only blanks in its place.
    static wxString behind_label(const wxString& line)
    {
        const int colon = line.Find(':');
        if (colon == wxNOT_FOUND) return wxString{line}.Trim(false);
        const wxString rest = line.Mid(colon + 1);
        return rest.StartsWith("  ") ? rest : wxString{rest}.Trim(false);
    }

    wxSizer* buttons(std::span<const forms::answer> answers, const answer_texts& texts)
    {
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
        made.front()->SetDefault();
        made.front()->SetFocus();
        // The one of the Enter key stands at the right here.
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
