// Keeps an emergency copy of what is not saved, and offers what a crash left at the next start.
#pragma once

#include "editing/document.h"
#include "editing/emergency_copy.h"

#include <functional>
#include <optional>
#include <string>

#include <wx/timer.h>
#include <wx/window.h>

namespace tamrix::workbench {

class work_keeper {
public:
    /// Window and document must outlive it. `folder` need not exist.
    work_keeper(wxWindow& window, editing::document& document, std::string folder);

    /// Lines for the log.
    std::function<void(const std::string&)> on_remark, on_trouble;

    /// For document::on_bytes.
    void note(std::size_t address, std::size_t length) { copy_.note(address, length); }
    /// Offers the copies of workbenches that ended without saving, the newest first, until one is restored.
    void offer();
    /// Writes down all that is not written yet; before something that may take long.
    void flush();
    /// At a clean end: nothing is left.
    void end();

private:
    void work();
    bool restore(editing::abandoned_copy copy);

    wxWindow& window_;
    editing::document& document_;
    std::string folder_;
    editing::emergency_copy copy_;
    std::optional<editing::abandoned_copy> restored_{};  // until the copy of this workbench has it
    wxTimer timer_;
};

}  // namespace tamrix::workbench
