// The font of letters in columns.
#pragma once

#include <wx/font.h>

namespace tamrix::wxui {

inline wxFont letters_of_one_width()
{
    constexpr int points = 10;
    return wxFontInfo{points}.FaceName("Courier New").Family(wxFONTFAMILY_TELETYPE);
}

}  // namespace tamrix::wxui
