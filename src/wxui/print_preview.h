// The page of a job as it will be printed, before the system asks for a printer.
#pragma once

#include "forms/page.h"

class wxWindow;

namespace tamrix::wxui {

/// True if the person wants the page printed. `parent` may be null. What the job throws comes out.
bool preview(wxWindow* parent, const forms::print_job& job);

}  // namespace tamrix::wxui
