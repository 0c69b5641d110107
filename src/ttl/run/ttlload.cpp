#include "ttl/run/ttlload.h"

#include "session/session.h"
#include "ttl/library/library.h"
#include "ttl/run/engines.h"

namespace tamrix {

run_outcome ttlload(session& plug_in, ttl_variables& ttl, const std::string& name, std::int16_t stopfirst,
                    std::int16_t loadonly)
{
    plug_in.blocks.prgresult(0) = 0;
    if (!fetch_device(plug_in, ttl, name) || loadonly == -1) return {};
    return run_library_vectors(plug_in, ttl, ttl.ttlcnt, ttl.ttlpin, stopfirst, 0);
}

}  // namespace tamrix
