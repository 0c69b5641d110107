// Colours of the window that a theme does not name.
#pragma once

#include <wx/colour.h>
#include <wx/settings.h>

namespace tamrix::workbench {

/// Of what is wrong, on the ground of a window or a text box.
inline wxColour trouble_colour()
{
    return wxSystemSettings::GetAppearance().IsDark() ? wxColour{255, 128, 128} : wxColour{176, 0, 0};
}

}  // namespace tamrix::workbench
