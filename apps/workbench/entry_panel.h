// A line in which a person adds an entry, and the list of the entries that there are: faults, signals.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include <wx/button.h>
#include <wx/combobox.h>
#include <wx/listbox.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/stattext.h>

namespace tamrix::workbench {

/// What the panel says; a button without a caption is not there.
struct entry_words {
    const char *title, *hint, *tip, *add, *change, *remove, *remove_all;
};

class entry_panel : public wxPanel {
public:
    entry_panel(wxWindow* parent, const entry_words& words);

    /// Moves the focus to the line.
    void start_entry();
    /// Shows these entries, and offers `examples` to choose from. Call this after the entries have changed.
    void refresh(const std::vector<std::string>& entries, const std::vector<std::string>& examples);
    /// Shows why something was refused; an empty text takes it away.
    void say(const std::string& why);
    /// The parent of what add_row() takes.
    wxWindow* box() const { return framed_->GetStaticBox(); }
    /// Puts it below the list and its buttons.
    void add_row(wxSizer* row);
    void add_row(wxWindow* row);

    /// The person typed this; returns why it is refused, or an empty text.
    std::function<std::string(const std::string&)> on_add;
    /// The same, in the place of an entry of the list, from 0.
    std::function<std::string(std::size_t, const std::string&)> on_change;
    /// By its place in the list, from 0.
    std::function<void(std::size_t)> on_remove;
    std::function<void()> on_remove_all;
    /// The panel needs more room or less.
    std::function<void()> on_resize;

private:
    wxSizer* line_and_button(const entry_words& words);
    wxSizer* list_buttons(const entry_words& words);
    void listen();
    void add();
    void change();
    void remove();
    void choose();
    void update_buttons();

    wxStaticBoxSizer* framed_;
    wxComboBox* line_ = nullptr;
    wxStaticText* why_ = nullptr;  // the last line was refused
    wxListBox* list_ = nullptr;
    wxButton *add_ = nullptr, *change_ = nullptr, *remove_ = nullptr, *remove_all_ = nullptr;
};

}  // namespace tamrix::workbench
