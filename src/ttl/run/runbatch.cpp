#include "ttl/run/engines.h"

#include "channel/ports.h"
#include "session/session.h"
#include "ttl/run/as_script.h"

namespace tamrix {

namespace {

/// 48 positions: a data and a mask byte for each port.
class script48 final : public queued_pins {
public:
    explicit script48(const vector_run& run) : run_{run}, plug_in_{run.plug_in} {}

    void queue_power_on(const supply_pins& supply) override
    {
        queue_ground(plug_in_, supply);
        queue_vcc(plug_in_, supply);
        device().vecdelay2(10);
    }

    void queue_row(std::string_view row, const supply_pins&) override
    {
        const row_bytes bytes = bytes_of_row(row, run_.pins);
        for (std::size_t b = 0; b < hw::port_count; ++b) {
            device().vecout(bytes.drvdata[b], hw::data_register(b));
            device().vecout(bytes.drvmask[b], hw::mask_register(b));
        }
        queue_clocks(device(), bytes, bytes.drvdata);
        device().vecdelay(20);
        queue_reads(device());
    }

    void queue_release() override
    {
        for (std::size_t b = 0; b < hw::port_count; ++b) {
            device().vecout(255, hw::mask_register(b));
            device().vecout(255, hw::data_register(b));
        }
    }

    std::int32_t run_ms() const override { return 200; }
    int attempts_to_fetch() const override { return 3; }

    bool compare(std::string_view row, const hw::port_bytes& readback, std::string& result) override
    {
        const hw::row_span span = hw::span_of_48(run_.pins);
        return mark_failures(row, span, expected_bits(row, span), readback, result);
    }

    std::string_view report_indent() const override
    {
        constexpr std::int32_t second_english = 15000;
        return plug_in_.blocks.Language(0) == second_english ? "   " : "";
    }

private:
    hw::devobj& device() { return plug_in_.hardware.device(); }

    const vector_run& run_;
    session& plug_in_;
};

}  // namespace

run_outcome runbatch(session& plug_in, ttl_variables& ttl, std::int16_t rows, std::int16_t pins, std::int16_t stopfirst,
                     std::uint8_t logmode)
{
    return run_as_script<script48>({plug_in, ttl, rows, pins, stopfirst, logmode});
}

}  // namespace tamrix
