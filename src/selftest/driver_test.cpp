#include "selftest/driver_test.h"

#include "messages/message_numbers.h"
#include "selftest/socket_frame.h"
#include "session/session.h"

namespace tamrix {

const driver_kind vpp_drivers{.stage = selftest_stage::vpp,
                              .code = 135,
                              .idle_level = 0,
                              .prefix = "VPP ",
                              .not_switched = message::output_is_high,
                              .switched_elsewhere = message::output_is_low,
                              .ink = lamps::cyan};
const driver_kind vcc_drivers{.stage = selftest_stage::vcc,
                              .code = 137,
                              .idle_level = 0,
                              .prefix = "VCC ",
                              .not_switched = message::output_is_low,
                              .switched_elsewhere = message::output_is_high,
                              .ink = lamps::red};
const driver_kind ground_drivers{.stage = selftest_stage::ground,
                                 .code = 138,
                                 .idle_level = 1,
                                 .prefix = "GND ",
                                 .not_switched = message::output_is_high,
                                 .switched_elsewhere = message::output_is_low,
                                 .ink = lamps::green};

namespace {

constexpr int driver_base = 128;
constexpr std::int32_t no_reply = 1;  // of ctlout

/// One stage of one form.
struct driver_stage {
    socket_frame& form;
    const pin_access& access;
    const driver_kind& kind;
    on_fault then;
    driver_timing timing;

    stage_end test(int pin) const;
    std::int32_t toggle(int pin) const;
    stage_end compare(int pin, const hw::port_bytes& read) const;
    stage_end fault(int pin, int line, int read) const;
    void say_untested(const driver_pins& pins) const;
};

/// The same call switches a driver on and off.
std::int32_t driver_stage::toggle(int pin) const { return form.device().ctlout(pin + driver_base, kind.code); }

stage_end driver_stage::test(int pin) const
{
    const std::int32_t answer = toggle(pin);
    form.device().delayms(timing.settle_ms);
    if (answer == no_reply) return form.communication_error();
    if (!form.by_usb()) form.device().delayms(50);
    hw::port_bytes read{};
    if (!read_pins(form, checked_ports(form), read)) return form.communication_error();
    if (const stage_end end = compare(pin, read); end != stage_end::passed) return end;
    toggle(pin);
    form.device().delayms(50);
    return stage_end::passed;
}

/// The pin whose driver is on reads unlike all others.
stage_end driver_stage::compare(int pin, const hw::port_bytes& read) const
{
    for (int port = 0; port < checked_ports(form); ++port) {
        for (int bit = 0; bit < 8; ++bit) {
            const int line = lamps::of_bit(port, bit);
            const int level = read[static_cast<std::size_t>(port)] >> bit & 1;
            if ((level != kind.idle_level) == (line + 1 == pin)) continue;
            if (const stage_end end = fault(pin, line, level); end != stage_end::passed) return end;
        }
    }
    return stage_end::passed;
}

stage_end driver_stage::fault(int pin, int line, int read) const
{
    selftest_fault found = fault_at(form, access, kind.stage, line);
    found.driven_pin = fault_at(form, access, kind.stage, pin - 1).pin;
    found.expected = 1 - read;
    found.read = read;
    if (then == on_fault::keep_quiet) {
        form.report().kept_quiet.push_back(found);
        return stage_end::passed;
    }
    form.socket.paint_lamp(lamp_of(access, pin - 1), lamps::yellow);
    form.socket.paint_lamp(lamp_of(access, line), kind.ink);
    form.socket.paint_mark(lamp_of(access, line), kind.ink);
    form.add(found);
    const int number = line + 1 == pin ? kind.not_switched : kind.switched_elsewhere;
    form.status(std::string{kind.prefix} + form.plug_in().text(number));
    return form.runstp() == decision::stop ? stage_end::stopped : stage_end::passed;
}

void driver_stage::say_untested(const driver_pins& pins) const
{
    int unread = 0;
    for (const int pin : pins.pins) unread += lamps::bit_of(pin - 1).port >= checked_ports(form) ? 1 : 0;
    if (unread > 0) form.add(untested_pins{.stage = kind.stage, .count = unread, .reason = not_read_by_generation});
    if (pins.unknown == 0) return;
    form.add(untested_pins{.stage = kind.stage, .count = pins.unknown, .reason = "not known on this model"});
}

}  // namespace

stage_end test_drivers(socket_frame& form, const pin_access& access, const driver_kind& kind, const driver_pins& pins,
                       on_fault then, driver_timing timing)
{
    const driver_stage stage{form, access, kind, then, timing};
    stage.say_untested(pins);
    stage_end end = stage_end::passed;
    for (const int pin : pins.pins) {
        end = form.closed() ? stage_end::stopped : stage.test(pin);
        if (end == stage_end::communication_error) return end;
        if (end != stage_end::passed) break;
    }
    form.status("");
    return end;
}

}  // namespace tamrix
