#include "ttl/run/engines.h"

#include "channel/ports.h"
#include "channel/usb_route.h"
#include "session/session.h"
#include "ttl/run/row_by_row.h"

namespace tamrix {

namespace {

hw::port_bytes with_clocks(const row_bytes& bytes)
{
    hw::port_bytes data = bytes.drvdata;
    for (std::size_t b = 0; b < hw::port_count; ++b) data[b] = static_cast<std::uint8_t>(data[b] | bytes.clkmask[b]);
    return data;
}

/// 48 positions, by the register of each port or by frames.
class pins48 final : public immediate_pins {
public:
    explicit pins48(const vector_run& run)
        : run_{run},
          ports_{run.plug_in,
                 hw::usb_is_true(run.plug_in.blocks.usbable(0)) ? hw::ports::route::frames
                                                                : hw::ports::route::registers,
                 hw::frame_length::logic_pins}
    {}

    bool drive(std::string_view row, const supply_pins&) override
    {
        bytes_ = bytes_of_row(row, run_.pins);
        const hw::port_bytes plain = bytes_.drvdata, clocked = with_clocks(bytes_);
        if (ports_.by_frames()) run_.plug_in.hardware.device().regout(254, 15);
        if (!ports_.drive(plain, bytes_.drvmask)) return false;
        if (bytes_.hasc && !(ports_.drive_data(clocked) && ports_.drive_data(plain))) return false;
        // K leaves its pin high until the next row's first frame pulls it low. Intentional: registers do not clock it.
        if (!bytes_.hask || !ports_.by_frames()) return true;
        return ports_.drive_data(plain) && ports_.drive_data(clocked);
    }

    bool read() override { return ports_.read(readback_); }

    bool compare(std::string_view row, std::string& result) const override
    {
        return mark_failures(row, hw::span_of_48(run_.pins), bytes_.expect, readback_, result);
    }

    bool release() override { return ports_.release(); }

private:
    const vector_run& run_;
    hw::ports ports_;
    row_bytes bytes_;
    hw::port_bytes readback_{};
};

}  // namespace

run_outcome runport(session& plug_in, ttl_variables& ttl, std::int16_t rows, std::int16_t pins, std::int16_t stopfirst,
                    std::uint8_t logmode)
{
    return run_row_by_row<pins48>({plug_in, ttl, rows, pins, stopfirst, logmode});
}

}  // namespace tamrix
