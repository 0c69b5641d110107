// What to look for, where, and what to put in its place.
#pragma once

#include "editing/byte_range.h"

#include <functional>
#include <string>

#include <wx/checkbox.h>
#include <wx/dialog.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace tamrix::workbench {

/// What was typed last, for the next time.
struct search_words {
    wxString sought{}, replacement{};
    bool in_selection = false;
};

class find_dialog final : public wxDialog {
public:
    /// `selected` may be empty. With `replacing` the dialog stays until the person closes it.
    find_dialog(wxWindow* parent, const search_words& before, editing::byte_range selected, bool replacing);

    search_words words() const;
    /// Says in the dialog how it went.
    void say(const wxString& words);

    // The buttons of a dialog that replaces.
    std::function<void()> on_find, on_replace, on_replace_all;

private:
    wxTextCtrl* add_field(wxSizer* column, const wxString& label, const wxString& text);

    wxTextCtrl* sought_;
    wxTextCtrl* replacement_ = nullptr;
    wxCheckBox* in_selection_;
    wxStaticText* said_;
};

}  // namespace tamrix::workbench
