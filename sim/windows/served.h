// The programmer behind a transport library and a device object, which are two ways to one and the same.
#pragma once

#include "programmer/devobj.h"
#include "programmer/lumbat.h"

#include <functional>

namespace tamrix::sim {

/// Runs `act` on it, one call at a time, from whichever half it comes. What `act` throws goes through; so does the
/// reason, std::exception, where there is no programmer. Defined by each module that has one of the halves.
void serve(const std::function<void(hw::lumbat&, hw::devobj&)>& act);

}  // namespace tamrix::sim
