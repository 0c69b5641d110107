#include "wxui/own_module_win32.h"
#include "wxui/toolkit.h"

#include <wx/init.h>

namespace tamrix::wxui {

/// The window classes are the library's, not the program's: they go with it.
bool start_wxwidgets() { return wxEntryStart(own_module()); }

}  // namespace tamrix::wxui
