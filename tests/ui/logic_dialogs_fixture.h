// A dialog of the logic IC test over the window of a host, and its parts.
#pragma once

#include "logic_library.h"
#include "over_host.h"
#include "session/session.h"
#include "support/plug_in_fixture.h"
#include "wxui/grid_panel.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <wx/listbox.h>

namespace tamrix::tests {

template <class Window>
Window& find(wxWindow& parent, int which)
{
    std::function<Window*(wxWindow&)> below = [&](wxWindow& window) -> Window* {
        for (wxWindow* child : window.GetChildren()) {
            auto* const found = dynamic_cast<Window*>(child);
            if (found != nullptr && which-- == 0) return found;
            if (Window* deeper = below(*child)) return deeper;
        }
        return nullptr;
    };
    Window* found = below(parent);
    if (found == nullptr) throw std::runtime_error{"no such window"};
    return *found;
}

class logic_dialogs : public testing::Test {
protected:
    wxui::wx_shell screen;
    tamrix::session session{screen, fresh_name_space()};
    module_variables variables;
    temp_folder folder;

    logic_dialogs()
    {
        session.blocks.attachsmall(1);
        session.blocks.modeltype(0) = 40;
        session.syspath = folder.path("");
        write_logic_library(folder);
    }

    /// Shows a dialog of the plug-in and runs `script` meanwhile.
    void with(forms::form& shown, const std::function<void()>& script) { over_host(screen, shown, script); }
    static wxui::grid_panel& ruler() { return find<wxui::grid_panel>(dialog(), 0); }
    static wxui::grid_panel& grid() { return find<wxui::grid_panel>(dialog(), 1); }
    static wxListBox& list() { return find<wxListBox>(dialog(), 0); }

    void device(int pins, const std::vector<std::string>& rows)
    {
        variables.ttl.ttlname = "7400";
        variables.ttl.ttlpin = static_cast<std::int16_t>(pins);
        variables.ttl.ttlcnt = static_cast<std::int16_t>(rows.size() + 1);
        for (std::size_t i = 0; i < rows.size(); ++i) variables.ttl.ttlvect.store(i, rows[i]);
    }
};

}  // namespace tamrix::tests
