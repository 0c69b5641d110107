#include "ttl/run/engines.h"

#include "channel/ports.h"
#include "session/session.h"
#include "ttl/run/as_script.h"
#include "ttl/run/socket40.h"

namespace tamrix {

namespace {

constexpr std::uint8_t supply_beside_the_tied_position = 107;

/// 40 positions: one byte for each port.
class script40 final : public queued_pins {
public:
    explicit script40(const vector_run& run) : plug_in_{run.plug_in}, ttlmap_{run.ttl.ttlmap} {}

    void queue_power_on(const supply_pins& supply) override
    {
        queue_ground(plug_in_, supply);
        device().busmode(0);
        queue_vcc(plug_in_, supply);
        device().vecdelay2(10);
        device().vecstart();
    }

    void queue_row(std::string_view row, const supply_pins& supply) override
    {
        ttlmap_ = tosocket40(row);
        const row_bytes bytes = bytes_of_socket_row(ttlmap_, supply.vcode == supply_beside_the_tied_position
                                                                 ? forced_position::from_the_start
                                                                 : forced_position::none);
        hw::port_bytes data{};
        for (std::size_t b = 0; b < hw::port_count; ++b)
            data[b] = static_cast<std::uint8_t>(bytes.drvdata[b] | bytes.drvmask[b]);
        queue_data(device(), data);
        queue_clocks(device(), bytes, data);
        queue_reads(device());
    }

    void queue_release() override { queue_data(device(), hw::released_ports); }

    std::int32_t run_ms() const override { return 100; }
    int attempts_to_fetch() const override { return 1; }

    bool compare(std::string_view row, const hw::port_bytes& readback, std::string& result) override
    {
        ttlmap_ = tosocket40(row);
        return mark_socket_failures(ttlmap_, expected_bits(ttlmap_, hw::span_of_40), readback, result);
    }

private:
    hw::devobj& device() { return plug_in_.hardware.device(); }

    session& plug_in_;
    std::string& ttlmap_;
};

}  // namespace

run_outcome runbatch40(session& plug_in, ttl_variables& ttl, std::int16_t rows, std::int16_t pins,
                       std::int16_t stopfirst, std::uint8_t logmode)
{
    return run_as_script<script40>({plug_in, ttl, rows, pins, stopfirst, logmode});
}

}  // namespace tamrix
