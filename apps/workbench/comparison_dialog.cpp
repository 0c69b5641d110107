#include "workbench/comparison_dialog.h"

#include "workbench/difference_words.h"
#include "workbench/text.h"

#include <algorithm>

#include <wx/button.h>
#include <wx/display.h>
#include <wx/sizer.h>

namespace tamrix::workbench {

namespace {

wxStaticText* add_line(wxWindow* parent, wxSizer* column, const wxString& words)
{
    constexpr long style = wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END;
    auto* made = new wxStaticText{parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, style};
    made->SetLabelText(words);
    made->SetToolTip(words);
    made->SetMinSize({0, -1});
    column->Add(made, wxSizerFlags{}.Expand().Border(wxTOP, parent->FromDIP(6)));
    return made;
}

}  // namespace

comparison_dialog::comparison_dialog(wxWindow* parent, const std::string& file_name,
                                     std::span<const std::uint8_t> buffer, const memory_image& file,
                                     const editing::comparison& compared)
    : wxDialog{parent,
               wxID_ANY,
               "Buffer and " + to_wx(file_name),
               wxDefaultPosition,
               wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX},
      compared_{compared}
{
    auto* sides = new wxBoxSizer{wxHORIZONTAL};
    buffer_view_ = add_view(sides, "Buffer");
    sides->AddSpacer(FromDIP(9));
    file_view_ = add_view(sides, wxControl::EscapeMnemonics(to_wx(file_name)));
    auto* column = new wxBoxSizer{wxVERTICAL};
    column->Add(sides, wxSizerFlags{1}.Expand());
    add_line(this, column, to_wx(difference_words(compared.counts())));
    place_ = add_line(this, column, "");
    column->Add(buttons(), wxSizerFlags{}.Expand().Border(wxTOP, FromDIP(9)));
    auto* outer = new wxBoxSizer{wxVERTICAL};
    outer->Add(column, wxSizerFlags{1}.Expand().Border(wxALL, FromDIP(9)));
    SetSizer(outer);
    SetEscapeId(wxID_CLOSE);
    const wxSize room = wxDisplay{parent}.GetClientArea().GetSize() - FromDIP(wxSize{20, 60});  // for the frame
    const wxSize wanted = FromDIP(wxSize{1280, 640});
    SetSize(std::min(wanted.x, room.x), std::min(wanted.y, room.y));
    CentreOnParent();

    show_bytes(buffer, file);
    link(*buffer_view_, *file_view_);
    link(*file_view_, *buffer_view_);
    Bind(wxEVT_CHAR_HOOK, &comparison_dialog::on_key, this);
    buffer_view_->SetFocus();
    if (const auto first = compared_.first()) go_to(first);
}

hexview::hex_view* comparison_dialog::add_view(wxSizer* sides, const wxString& label)
{
    auto* column = new wxBoxSizer{wxVERTICAL};
    auto* name = new wxStaticText{this, wxID_ANY, label, wxDefaultPosition, wxDefaultSize, wxST_ELLIPSIZE_MIDDLE};
    name->SetMinSize({0, -1});
    column->Add(name, wxSizerFlags{}.Expand().Border(wxBOTTOM, FromDIP(3)));
    auto* view = new hexview::hex_view{this};
    column->Add(view, wxSizerFlags{1}.Expand());
    sides->Add(column, wxSizerFlags{1}.Expand());
    return view;
}

wxSizer* comparison_dialog::buttons()
{
    auto* row = new wxBoxSizer{wxHORIZONTAL};
    const auto add = [&](int id, const wxString& label, const wxString& help, void (comparison_dialog::*step)()) {
        auto* made = new wxButton{this, id, label};
        made->SetToolTip(help);
        if (step != nullptr) made->Bind(wxEVT_BUTTON, [this, step](wxCommandEvent&) { (this->*step)(); });
        row->Add(made, wxSizerFlags{}.Border(wxRIGHT, FromDIP(6)));
    };
    add(wxID_ANY, "&Next Difference", "Alt+Down", &comparison_dialog::next);
    add(wxID_ANY, "&Previous Difference", "Alt+Up", &comparison_dialog::previous);
    row->AddStretchSpacer();
    add(wxID_CLOSE, "&Close", "Escape", nullptr);
    return row;
}

/// Both views have all addresses; where one has no byte it is blank.
void comparison_dialog::show_bytes(std::span<const std::uint8_t> buffer, const memory_image& file)
{
    for (auto* view : {buffer_view_, file_view_}) {
        view->different = [this](std::size_t address) { return differing_in_row(address); };
    }
    buffer_view_->present = [buffer](std::size_t address) {
        const std::size_t there = editing::within({address, editing::bytes_in_row}, buffer.size()).length;
        return static_cast<hexview::row_bits>((1U << there) - 1);
    };
    file_view_->present = [&file](std::size_t address) {
        unsigned bits = 0;
        file.visit({address, editing::bytes_in_row}, [&](std::uint64_t at, std::span<const std::uint8_t> bytes) {
            bits |= ((1U << bytes.size()) - 1) << (at - address);
        });
        return static_cast<hexview::row_bits>(bits);
    };
    buffer_view_->show(compared_.length(), [buffer](std::size_t address, std::span<std::uint8_t> row) {
        const editing::byte_range there = editing::within({address, row.size()}, buffer.size());
        std::ranges::copy(buffer.subspan(there.first, there.length), row.begin());
    });
    file_view_->show(compared_.length(), [&file](std::size_t address, std::span<std::uint8_t> row) {
        file.visit({address, row.size()}, [&](std::uint64_t at, std::span<const std::uint8_t> bytes) {
            std::ranges::copy(bytes, row.subspan(static_cast<std::size_t>(at) - address).begin());
        });
    });
}

void comparison_dialog::link(hexview::hex_view& leading, hexview::hex_view& following)
{
    leading.on_scrolled = [&] { following.follow(leading); };
    leading.on_move = [this, &leading, &following] {
        following.follow(leading);
        place_->SetLabelText(wxString::Format("Address: %08zX", leading.cursor().address()));
    };
}

hexview::row_bits comparison_dialog::differing_in_row(std::size_t address) const
{
    unsigned bits = 0;
    const editing::byte_range row = editing::within({address, editing::bytes_in_row}, compared_.length());
    for (std::size_t i = 0; i < row.length; ++i) {
        if (compared_.at(address + i) == editing::difference::bytes_differ) bits |= 1U << i;
    }
    return static_cast<hexview::row_bits>(bits);
}

void comparison_dialog::go_to(const std::optional<editing::different_place>& place)
{
    if (place) {
        auto* const view = file_view_->HasFocus() ? file_view_ : buffer_view_;
        view->select(place->where);
    }
    const wxString words = to_wx(place_words(place));
    place_->SetLabelText(words);
    place_->SetToolTip(words);
}

void comparison_dialog::next() { go_to(compared_.next(buffer_view_->cursor().address())); }

void comparison_dialog::previous() { go_to(compared_.previous(buffer_view_->cursor().address())); }

void comparison_dialog::on_key(wxKeyEvent& event)
{
    const bool alone = event.GetModifiers() == wxMOD_ALT;
    if (alone && event.GetKeyCode() == WXK_DOWN) return next();
    if (alone && event.GetKeyCode() == WXK_UP) return previous();
    event.Skip();
}

}  // namespace tamrix::workbench
