// Texts between the session, which uses UTF-8, and the window.
#pragma once

#include <string>
#include <string_view>

#include <wx/string.h>

namespace tamrix::workbench {

/// A text that is not UTF-8, as a file's name may be, is shown byte by byte rather than not at all.
inline wxString to_wx(std::string_view text)
{
    const wxString converted = wxString::FromUTF8(text.data(), text.size());
    return converted.empty() ? wxString::From8BitData(text.data(), text.size()) : converted;
}

inline std::string to_utf8(const wxString& text) { return text.utf8_string(); }

/// A file's text without the control characters that frame it; line feeds stay.
inline std::string printable(std::string text)
{
    std::erase_if(text, [](unsigned char letter) { return letter < ' ' && letter != '\n'; });
    return text;
}

}  // namespace tamrix::workbench
