// The main window's device: chosen from the list, its note, its test vectors.
#include "workbench/main_frame.h"
#include "workbench/seen_notes.h"
#include "workbench/text.h"

#include <wx/dialog.h>
#include <wx/menu.h>

namespace tamrix::workbench {

namespace {

constexpr int at_rest_milliseconds = 400;

bool a_dialog_is_shown()
{
    for (auto node = wxTopLevelWindows.GetFirst(); node != nullptr; node = node->GetNext()) {
        const auto* dialog = dynamic_cast<const wxDialog*>(node->GetData());
        if (dialog != nullptr && dialog->IsShown() && dialog->IsModal()) return true;
    }
    return false;
}

}  // namespace

/// A person who walks through the list with the arrow keys is not stopped by the notes of every device on the way: a
/// note waits until the choice rests, and comes by itself once for each device, unless that is turned off.
void main_frame::choose_device(const host::device_preset& device)
{
    select_device(device);
    note_timer_.Stop();
    if (device.note != 0 && note_is_due(device.name)) note_timer_.StartOnce(at_rest_milliseconds);
}

/// The plug-in takes one call at a time, so a note does not come while it or a dialog is at work.
void main_frame::note_when_idle()
{
    if (!IsEnabled() || a_dialog_is_shown()) {
        note_timer_.StartOnce(at_rest_milliseconds);
        return;
    }
    note_came(session_.device().name);
    show_note();
}

void main_frame::add_notes_switch(wxMenu* menu)
{
    wxMenuItem* const item = menu->AppendCheckItem(wxID_ANY, "Show Notes A&utomatically",
                                                   "Show the note of each device once, when it is chosen first");
    item->Check(notes_come_by_themselves());
    Bind(
        wxEVT_MENU,
        [this](wxCommandEvent& event) {
            let_notes_come_by_themselves(event.IsChecked());
            note_timer_.Stop();
        },
        item->GetId());
}

void main_frame::show_note()
{
    const wxString what = "Device Note failed";
    attempt(what, [&] { tell(what, session_.show_note()); });
}

void main_frame::test_vectors()
{
    const int count = session_.vector_count();
    if (count == 0) {
        log_->remark("Vector Test: the device has no vectors; load a JEDEC file with some, or edit them");
        return;
    }
    const wxString what = "Vector Test failed";
    attempt(what, [&] {
        recall_failed_selftest();
        tell(what, session_.vector_test(has_programmer_));
        tell_logic_tests();
        if (count > 100) log_->remark("The first 100 of " + std::to_string(count) + " vectors were played");
        tell_hazards();
        buffer_changed();
    });
}

}  // namespace tamrix::workbench
