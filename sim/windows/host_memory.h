// The memory of the host that a Windows transport finds by itself.
#pragma once

#include "sim/reply_pipe.h"

#include <optional>

namespace tamrix::sim {

/// The block `ibuf1` of the host's instance: the one told, else the first one that there is. It is looked for anew at
/// each reply, since a host may attach others meanwhile; where there is none, the reply is dropped.
reply_place place_at_host(std::optional<int> instance);

}  // namespace tamrix::sim
