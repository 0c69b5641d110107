// Work that is made in short steps while the window waits for it.
#pragma once

#include <functional>

#include <wx/window.h>

namespace tamrix::workbench {

/// Takes steps until one returns true. Work that takes longer shows `words` and how far it is, 0 to 100, and can be
/// stopped: then it returns false.
bool work_in_steps(wxWindow* parent, const wxString& title, const wxString& words, const std::function<bool()>& step,
                   const std::function<int()>& percent);

}  // namespace tamrix::workbench
