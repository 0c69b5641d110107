#include "ttl/run/engines.h"

#include "channel/model.h"
#include "channel/usb_route.h"
#include "session/session.h"

namespace tamrix {

run_outcome run_library_vectors(session& plug_in, ttl_variables& ttl, std::int16_t rows, std::int16_t pins,
                                std::int16_t stopfirst, std::uint8_t logmode)
{
    if (!hw::usb_is_true(plug_in.blocks.usbable(0))) return runport(plug_in, ttl, rows, pins, stopfirst, logmode);
    if (hw::model_of(plug_in.blocks.modeltype(0)).vector_positions == 40)
        return runbatch40(plug_in, ttl, rows, pins, stopfirst, logmode);
    return runbatch(plug_in, ttl, rows, pins, stopfirst, logmode);
}

}  // namespace tamrix
