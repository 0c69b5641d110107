// Below the bytes: the numbers that begin at the cursor, and what the last step on the bytes has to say.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include <wx/panel.h>
#include <wx/stattext.h>

namespace tamrix::workbench {

class value_panel final : public wxPanel {
public:
    explicit value_panel(wxWindow* parent);

    /// The numbers of 8, 16, 32 and 64 bits at `address`, in both orders of their bytes.
    void show(std::span<const std::uint8_t> bytes, std::size_t address);
    void notice(const wxString& words);

private:
    static constexpr std::array widths{8, 16, 32, 64};

    std::array<std::array<wxStaticText*, widths.size()>, 2> numbers_{};  // little-endian first
    wxStaticText* notice_;
};

}  // namespace tamrix::workbench
