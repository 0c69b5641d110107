#include "workbench/value_panel.h"

#include "editing/numbers.h"
#include "workbench/text.h"

#include <wx/settings.h>
#include <wx/sizer.h>

namespace tamrix::workbench {

value_panel::value_panel(wxWindow* parent) : wxPanel{parent}
{
    // As wide as the longest number of each width, so that nothing moves with the cursor.
    constexpr std::array<const char*, 4> longest{"255 (-128)", "65535 (-32768)", "4294967295 (-2147483648)",
                                                 "18446744073709551615"};
    auto* grid = new wxFlexGridSizer{static_cast<int>(widths.size()) + 1, FromDIP(wxSize{12, 2})};
    grid->AddGrowableCol(static_cast<std::size_t>(widths.size()));
    const wxColour pale = wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT);
    const auto head = [&](const wxString& words) {
        auto* text = new wxStaticText{this, wxID_ANY, words};
        text->SetForegroundColour(pale);
        grid->Add(text, wxSizerFlags{}.CenterVertical());
    };
    head("");
    for (const int bits : widths) head(wxString::Format("%d bits", bits));
    for (std::size_t order = 0; order < numbers_.size(); ++order) {
        head(order == 0 ? "Little-endian" : "Big-endian");
        for (std::size_t i = 0; i < widths.size(); ++i) {
            auto* number = new wxStaticText{
                this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END};
            const bool last = i + 1 == widths.size();
            number->SetMinSize({last ? FromDIP(40) : number->GetTextExtent(longest[i]).x, -1});
            grid->Add(number, wxSizerFlags{}.Expand());
            numbers_[order][i] = number;
        }
    }
    notice_ =
        new wxStaticText{this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END};
    notice_->SetFont(notice_->GetFont().Bold());
    auto* rows = new wxBoxSizer{wxVERTICAL};
    rows->Add(grid, wxSizerFlags{}.Expand());
    rows->Add(notice_, wxSizerFlags{}.Expand().Border(wxTOP, FromDIP(4)));
    SetSizer(rows);
}

void value_panel::show(std::span<const std::uint8_t> bytes, std::size_t address)
{
    for (std::size_t order = 0; order < numbers_.size(); ++order) {
        for (std::size_t i = 0; i < widths.size(); ++i) {
            std::uint64_t number = 0;
            const auto kind = order == 0 ? editing::byte_order::little_endian : editing::byte_order::big_endian;
            const bool there = editing::number_at(bytes, address, widths[i], kind, number);
            const wxString text = there ? to_wx(editing::decimal_text(number, widths[i])) : wxString{};
            numbers_[order][i]->SetLabelText(text);
            numbers_[order][i]->SetToolTip(there ? text + " = " + to_wx(editing::hexadecimal_number(number, widths[i]))
                                                 : wxString{});
        }
    }
}

void value_panel::notice(const wxString& words)
{
    notice_->SetLabelText(words);
    notice_->SetToolTip(words);
}

}  // namespace tamrix::workbench
