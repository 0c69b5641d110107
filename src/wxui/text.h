// Texts to and from wxWidgets.
#pragma once

#include <string>
#include <string_view>

#include <wx/string.h>

namespace tamrix::wxui {

/// A text that is not UTF-8, as a file's name may be, is shown byte by byte rather than not at all.
inline wxString to_wx(std::string_view text)
{
    const wxString converted = wxString::FromUTF8(text.data(), text.size());
    return converted.empty() ? wxString::From8BitData(text.data(), text.size()) : converted;
}

inline std::string to_utf8(const wxString& text) { return text.utf8_string(); }

/// A caption as it is shown: without blanks at the ends, which once aligned it; an "&" that no letter follows is just
/// an
/// "&".
inline wxString shown_caption(std::string_view caption)
{
    const wxString trimmed = to_wx(caption).Trim(true).Trim(false);
    wxString shown;
    for (std::size_t i = 0; i < trimmed.length(); ++i) {
        shown += trimmed[i];
        const bool before_letter = i + 1 < trimmed.length() && trimmed[i + 1] != ' ';
        if (trimmed[i] == '&' && !before_letter) shown += '&';
        if (trimmed[i] == '&' && before_letter) shown += trimmed[++i];
    }
    return shown;
}

}  // namespace tamrix::wxui
