#include "workbench/signal_panel.h"

#include "host/signal_examples.h"

#include <cstddef>
#include <iterator>

#include <wx/sizer.h>

namespace tamrix::workbench {

namespace {

constexpr entry_words words{"Signals at P21 to P28",
                            "P21 square 1000",
                            "Type a signal, or choose one and change its pins and numbers",
                            "Put O&n",
                            "&Change",
                            "Ta&ke Off",
                            nullptr};

/// Where the generator's lead can go: the meter counts at P23.
struct lead_end {
    const char *words, *pins;
};
constexpr lead_end lead_ends[] = {
    {"nowhere", ""}, {"P23, the meter", "P23"}, {"P21, the analyzer", "P21"}, {"P21 and P23, both", "P21 P23"}};

}  // namespace

signal_panel::signal_panel(wxWindow* parent, const host::simulator& programmer)
    : entry_panel{parent, words}, programmer_{programmer}
{
    auto* const row = new wxBoxSizer{wxHORIZONTAL};
    row->Add(new wxStaticText{box(), wxID_ANY, "&Generator's lead to:"}, wxSizerFlags{}.CenterVertical());
    lead_ = new wxChoice{box(), wxID_ANY};
    lead_->SetToolTip("Keeps the generator's wave at these pins while another instrument works");
    for (const lead_end& end : lead_ends) lead_->Append(end.words);
    lead_->Bind(wxEVT_CHOICE,
                [this](wxCommandEvent&) { on_lead(lead_ends[static_cast<std::size_t>(lead_->GetSelection())].pins); });
    row->Add(lead_, wxSizerFlags{1}.CenterVertical().Border(wxLEFT, FromDIP(6)));
    add_row(row);
    refresh();
}

void signal_panel::refresh()
{
    entry_panel::refresh(programmer_.signals(), host::signal_examples(programmer_.signals()));
    for (std::size_t i = 0; i < std::size(lead_ends); ++i) {
        if (programmer_.lead() == lead_ends[i].pins) lead_->SetSelection(static_cast<int>(i));
    }
}

}  // namespace tamrix::workbench
