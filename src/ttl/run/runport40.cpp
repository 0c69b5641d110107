#include "ttl/run/engines.h"

#include "channel/ports.h"
#include "ttl/run/row_by_row.h"
#include "ttl/run/socket40.h"

namespace tamrix {

namespace {

constexpr std::uint8_t supply_at_the_tied_position = 108;

/// 40 positions: one byte a group, which is twice in a frame.
class pins40 final : public immediate_pins {
public:
    explicit pins40(const vector_run& run)
        : ttlmap_{run.ttl.ttlmap}, ports_{run.plug_in, hw::ports::route::frames, hw::frame_length::logic_pins}
    {}

    bool drive(std::string_view row, const supply_pins& supply) override
    {
        ttlmap_ = tosocket40(row);
        bytes_ = bytes_of_socket_row(ttlmap_, supply.vcode == supply_at_the_tied_position ? forced_position::with_the_v
                                                                                          : forced_position::none);
        hw::port_bytes plain{}, clocked{};
        for (std::size_t b = 0; b < hw::port_count; ++b) {
            plain[b] = static_cast<std::uint8_t>(bytes_.drvdata[b] | bytes_.drvmask[b]);
            clocked[b] = static_cast<std::uint8_t>(plain[b] | bytes_.clkmask[b]);
        }
        if (!ports_.drive(plain, plain)) return false;
        if (bytes_.hasc && !(ports_.drive(clocked, clocked) && ports_.drive(plain, plain))) return false;
        return !bytes_.hask || (ports_.drive(plain, plain) && ports_.drive(clocked, plain));
    }

    bool read() override { return ports_.read(readback_); }

    bool compare(std::string_view, std::string& result) const override
    {
        return mark_socket_failures(ttlmap_, bytes_.expect, readback_, result);
    }

    bool release() override { return ports_.release(); }

private:
    std::string& ttlmap_;
    hw::ports ports_;
    row_bytes bytes_;
    hw::port_bytes readback_{};
};

}  // namespace

run_outcome runport40(session& plug_in, ttl_variables& ttl, std::int16_t rows, std::int16_t pins,
                      std::int16_t stopfirst, std::uint8_t logmode)
{
    return run_row_by_row<pins40>({plug_in, ttl, rows, pins, stopfirst, logmode});
}

}  // namespace tamrix
