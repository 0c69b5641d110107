// What a person does to the bytes of the main window: undo, clipboard, fill, find, replace, marks.
#pragma once

#include "editing/byte_search.h"
#include "editing/document.h"
#include "hexview/hex_view.h"
#include "workbench/find_dialog.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <wx/window.h>

namespace tamrix::workbench {

class byte_editor {
public:
    /// All three must outlive it.
    byte_editor(wxWindow& window, editing::document& document, hexview::hex_view& view);

    /// A line for the log.
    std::function<void(const std::string&)> on_remark;
    /// Something that is gone with the next step, such as a search that went on at the beginning; empty: nothing more.
    std::function<void(const wxString&)> on_notice;
    /// Whether unsaved changes may be lost; asked before the whole buffer is filled.
    std::function<bool(const wxString& reason)> may_lose_changes;

    /// Shows the document's bytes; those of a buffer that is not attached cannot be seen or changed.
    void show(bool attached);

    // Each works on the text that has the keyboard, if one has it, and on the bytes otherwise.
    void undo();
    void redo();
    void copy();
    void paste();
    void select_all();

    enum class form { hexadecimal, characters, c_array, intel_hex };
    void copy_as(form as);
    void fill();
    void find();
    void find_next(editing::direction way);
    void replace();
    void go_to();
    void toggle_mark();
    void next_mark();

private:
    bool can_edit() const { return attached_ && !document_.bytes().empty(); }
    void type(std::size_t address, std::uint8_t byte);
    void notice(const wxString& words);
    editing::byte_range search_range(const search_words& words) const;
    /// Selects the next place and says how it was found; empty where it was not.
    wxString look_for(const search_words& words, editing::direction way);
    std::optional<std::vector<std::uint8_t>> replacement(const search_words& words, wxString& trouble) const;
    wxString replace_here(const search_words& words);
    wxString replace_all(const search_words& words);

    wxWindow& window_;
    editing::document& document_;
    hexview::hex_view& view_;
    bool attached_ = true;
    search_words words_{};
    editing::byte_range searched_{};  // the selection in which the search goes on
    std::set<std::size_t> marks_{};
    std::uint8_t fill_value_ = 0xFF;
};

}  // namespace tamrix::workbench
