// Runs work on files and turns its faults into a diagnostic.
#pragma once

#include "base/diagnostic.h"

#include <functional>
#include <string>

namespace tamrix {

/// Runs `work` on the file `fname`. Returns false if it threw; `why_it_failed` then says why, else it is empty unless
/// `work` set it.
bool guard_file(diagnostic& why_it_failed, const std::string& fname, const std::function<void()>& work);

}  // namespace tamrix
