// Which notes of devices came by themselves, and whether any may; kept in the settings.
#pragma once

#include <string>

namespace tamrix::workbench {

/// Whether the note of that device is to come by itself: it did not yet, and notes may.
bool note_is_due(const std::string& device);
void note_came(const std::string& device);

bool notes_come_by_themselves();
void let_notes_come_by_themselves(bool on);

}  // namespace tamrix::workbench
