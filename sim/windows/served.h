// The one programmer that a transport library and a device object share.
#pragma once

#include "programmer/devobj.h"
#include "programmer/lumbat.h"

#include <functional>

namespace tamrix::sim {

/// Runs `act` on it, one call at a time, from either half. Exceptions of `act` pass through; if there is no programmer,
/// throws a std::exception with the reason. Each module that has one of the halves defines it.
void serve(const std::function<void(hw::lumbat&, hw::devobj&)>& act);

}  // namespace tamrix::sim
