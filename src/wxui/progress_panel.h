// A progress bar that paints at once. The toolkit's own bar waits for the message pump, which does not run while a
// handler works.
#pragma once

#include <wx/window.h>

namespace tamrix::wxui {

class progress_panel final : public wxWindow {
public:
    explicit progress_panel(wxWindow* parent);

    /// From 0 to 100; a value outside is shown as the nearest end.
    void show(double percent);
    bool AcceptsFocus() const override { return false; }
    wxSize DoGetBestClientSize() const override;

private:
    void paint();
    int filled_pixels() const;

    double percent_ = 0;
};

}  // namespace tamrix::wxui
