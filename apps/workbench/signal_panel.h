// The signals at the pins of the simulated programmer's instruments, and the lead from its generator to other pins.
#pragma once

#include "host/simulator.h"
#include "workbench/entry_panel.h"

#include <functional>
#include <string>

#include <wx/choice.h>

namespace tamrix::workbench {

class signal_panel final : public entry_panel {
public:
    signal_panel(wxWindow* parent, const host::simulator& programmer);

    /// Call this after the signals or the lead have changed, or a change was refused.
    void refresh();

    /// The person chose these pins for the lead; an empty text is no lead.
    std::function<void(const std::string&)> on_lead;

private:
    const host::simulator& programmer_;
    wxChoice* lead_;
};

}  // namespace tamrix::workbench
