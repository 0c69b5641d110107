#include "workbench/long_work.h"

#include <chrono>
#include <memory>

#include <wx/progdlg.h>

namespace tamrix::workbench {

bool work_in_steps(wxWindow* parent, const wxString& title, const wxString& words, const std::function<bool()>& step,
                   const std::function<int()>& percent)
{
    using clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds patience{200};
    std::unique_ptr<wxProgressDialog> progress;
    const auto begin = clock::now();
    while (!step()) {
        if (!progress && clock::now() - begin > patience) {
            progress = std::make_unique<wxProgressDialog>(title, words, 100, parent,
                                                          wxPD_APP_MODAL | wxPD_CAN_ABORT | wxPD_AUTO_HIDE);
        }
        if (progress && !progress->Update(percent())) return false;
    }
    return true;
}

}  // namespace tamrix::workbench
