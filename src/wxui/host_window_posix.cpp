#include "wxui/host_window.h"

namespace tamrix::wxui {

host_window::host_window() = default;

host_window::~host_window() = default;

void host_window::put_behind(wxWindow&) const {}

void serve_host_messages() {}

}  // namespace tamrix::wxui
