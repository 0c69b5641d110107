// The buffer and a file side by side, to look at.
#pragma once

#include "editing/comparison.h"
#include "hexview/hex_view.h"

#include <optional>
#include <span>
#include <string>

#include <wx/dialog.h>
#include <wx/stattext.h>

namespace tamrix::workbench {

class comparison_dialog final : public wxDialog {
public:
    /// What is compared must live, and stay as it is, while the dialog is shown; all of it was looked at.
    comparison_dialog(wxWindow* parent, const std::string& file_name, std::span<const std::uint8_t> buffer,
                      const memory_image& file, const editing::comparison& compared);

private:
    hexview::hex_view* add_view(wxSizer* sides, const wxString& label);
    wxSizer* buttons();
    void show_bytes(std::span<const std::uint8_t> buffer, const memory_image& file);
    void link(hexview::hex_view& leading, hexview::hex_view& following);
    hexview::row_bits differing_in_row(std::size_t address) const;
    void go_to(const std::optional<editing::different_place>& place);
    void next();
    void previous();
    void on_key(wxKeyEvent& event);

    const editing::comparison& compared_;
    hexview::hex_view *buffer_view_ = nullptr, *file_view_ = nullptr;
    wxStaticText* place_ = nullptr;
};

}  // namespace tamrix::workbench
