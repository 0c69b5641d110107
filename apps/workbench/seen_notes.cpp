#include "workbench/seen_notes.h"

#include "workbench/text.h"

#include <wx/config.h>

namespace tamrix::workbench {

namespace {

constexpr const char* by_themselves_key = "/Notes/ByThemselves";

/// "/" would be a group of its own there.
wxString key_of(const std::string& device)
{
    wxString name = to_wx(device);
    name.Replace("|", "||");
    name.Replace("/", "|");
    return "/Notes/Came/" + name;
}

}  // namespace

bool note_is_due(const std::string& device)
{
    return notes_come_by_themselves() && !wxConfigBase::Get()->ReadBool(key_of(device), false);
}

void note_came(const std::string& device) { wxConfigBase::Get()->Write(key_of(device), true); }

bool notes_come_by_themselves() { return wxConfigBase::Get()->ReadBool(by_themselves_key, true); }

void let_notes_come_by_themselves(bool on) { wxConfigBase::Get()->Write(by_themselves_key, on); }

}  // namespace tamrix::workbench
