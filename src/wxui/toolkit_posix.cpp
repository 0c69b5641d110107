#include "wxui/toolkit.h"

#include <array>

#include <wx/init.h>

namespace tamrix::wxui {

bool start_wxwidgets()
{
    // wxWidgets keeps them as long as it runs.
    static std::array name{'t', 'a', 'm', 'r', 'i', 'x', '\0'};
    static std::array<char*, 2> arguments{name.data(), nullptr};
    static int count = 1;
    return wxEntryStart(count, arguments.data());
}

}  // namespace tamrix::wxui
