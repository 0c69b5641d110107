// Auto find: plays every device of the library on the chip in the socket.
#pragma once

#include "ttl/ttl_variables.h"

#include <functional>
#include <string>
#include <vector>

namespace tamrix {

class session;

/// `show_hits` is called with the devices whose vectors all passed, in the order in which they were tried, if there are
/// any; a box says that there are none. The walk of a damaged library ends without either. A communication error is
/// shown in a box first, once for the whole walk.
void ttlscan(session& plug_in, ttl_variables& ttl,
             const std::function<void(const std::vector<std::string>&)>& show_hits);

}  // namespace tamrix
