#include "selftest/port_reset.h"

#include "channel/ports.h"
#include "selftest/socket_frame.h"
#include "session/session.h"

namespace tamrix {

stage_end reset_ports(socket_frame& form, const pin_access& access)
{
    form.select_common_board();
    form.device().busmode(0);
    if (!form.by_usb()) return stage_end::passed;
    for (const std::uint8_t masks : {0, 0, 255}) {
        if (!send_pins(form, access, all_ports(255), all_ports(masks))) return form.communication_error();
        form.device().delayms(500);
    }
    return stage_end::passed;
}

}  // namespace tamrix
