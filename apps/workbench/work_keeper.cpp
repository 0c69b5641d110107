#include "workbench/work_keeper.h"

#include "workbench/text.h"

#include <chrono>
#include <exception>
#include <filesystem>
#include <utility>

#include <wx/datetime.h>
#include <wx/msgdlg.h>

namespace tamrix::workbench {

namespace {

constexpr int usual_interval_ms = 500, busy_interval_ms = 15;

editing::wall_time now() { return std::chrono::system_clock::now(); }

wxString description_of(const editing::abandoned_copy& copy)
{
    const wxDateTime time{std::chrono::system_clock::to_time_t(copy.time)};
    const wxString file = copy.state.file.empty() ? wxString{"a buffer that was never saved"} : to_wx(copy.state.file);
    return file + ", device " + to_wx(copy.state.device) + ", as it was on " + time.Format("%Y-%m-%d at %H:%M:%S");
}

}  // namespace

work_keeper::work_keeper(wxWindow& window, editing::document& document, std::string folder)
    : window_{window}, document_{document}, folder_{std::move(folder)}, copy_{folder_, document}
{
    timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { work(); });
    timer_.StartOnce(usual_interval_ms);
}

/// A slice at a time, so that the window answers between two of them.
void work_keeper::work()
{
    const bool more = !document_.is_watching() && copy_.work(now());
    if (const std::string error = copy_.take_error(); !error.empty())
        on_trouble("There is no emergency copy of what is not saved: " + error);
    if (restored_ && (copy_.has_state() || !document_.changed())) {
        editing::discard(*restored_);
        restored_.reset();
    }
    timer_.StartOnce(more ? busy_interval_ms : usual_interval_ms);
}

void work_keeper::flush()
{
    if (document_.is_watching()) return;
    while (copy_.work(now() + editing::emergency_copy::delay)) continue;
}

void work_keeper::end()
{
    timer_.Stop();
    copy_.withdraw();
    if (restored_) editing::discard(*restored_);
    restored_.reset();
}

void work_keeper::offer()
{
    for (editing::abandoned_copy& copy : editing::abandoned_copies(folder_)) {
        const bool whole = copy.fault.empty();
        wxMessageDialog question{&window_,
                                 whole ? "The workbench ended without saving this:\n" + description_of(copy)
                                       : "Unsaved work cannot be restored: " + to_wx(copy.fault),
                                 "Unsaved Work", (whole ? wxYES_NO | wxCANCEL : wxYES_NO) | wxICON_WARNING};
        if (whole) {
            question.SetYesNoCancelLabels("&Restore", "&Discard", "&Later");
        } else {
            question.SetYesNoLabels("&Discard", "&Keep");
        }
        const int answer = question.ShowModal();
        if (answer == (whole ? wxID_NO : wxID_YES)) {
            on_remark("Unsaved work discarded: " + copy.path);
            editing::discard(copy);
        }
        if (whole && answer == wxID_YES && restore(std::move(copy))) return;
    }
}

bool work_keeper::restore(editing::abandoned_copy copy)
{
    try {
        document_.restore(copy.state.device, copy.state.file, editing::recover(copy));
    } catch (const std::exception& error) {
        on_trouble("Unsaved work cannot be restored: " + std::string{error.what()} + " It stays in " + copy.path + ".");
        return false;
    }
    on_remark("Restored: " + to_utf8(description_of(copy)));
    restored_.emplace(std::move(copy));
    return true;
}

}  // namespace tamrix::workbench
