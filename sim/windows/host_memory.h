// The memory of the host that a Windows transport finds by itself.
#pragma once

#include "sim/reply_pipe.h"

#include <optional>

namespace tamrix::sim {

/// The blocks `ibuf1`, `usbpip0readresult` and `ubuf1` of the host's instance: the one that was named, else the first
/// one that there is. They are looked for anew each time, since a host may attach others meanwhile; where there is
/// none, a reply is dropped and `ubuf1` reads 0.
reply_place place_at_host(std::optional<int> instance);

}  // namespace tamrix::sim
