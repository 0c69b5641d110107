#include "ttl/run/engines.h"

#include "channel/usb_route.h"
#include "session/session.h"
#include "ttl/run/row_by_row.h"

namespace tamrix {

namespace {

constexpr std::uint8_t data_port(std::size_t b) { return static_cast<std::uint8_t>(2 * b); }
constexpr std::uint8_t mask_port(std::size_t b) { return static_cast<std::uint8_t>(2 * b + 1); }

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
        : run_{run}, plug_in_{run.plug_in}, usb_{hw::usb_is_true(run.plug_in.blocks.usbable(0))}
    {}

    bool drive(std::string_view row, const supply_pins&) override
    {
        bytes_ = bytes_of_row(row, run_.pins);
        if (usb_) return drive_by_frames();
        drive_by_registers();
        return true;
    }

    bool read() override
    {
        if (usb_) return fetch_pin_reply(plug_in_, readback_);
        for (std::size_t b = 0; b < hw::port_count; ++b)
            readback_[b] = static_cast<std::uint8_t>(device().regin(data_port(b)));
        return true;
    }

    bool compare(std::string_view row, std::string& result) const override
    {
        return mark_failures(row, hw::span_of_48(run_.pins), bytes_.expect, readback_, result);
    }

    bool release() override
    {
        if (usb_) return send_release_frame(plug_in_);
        for (std::size_t b = 0; b < hw::port_count; ++b) {
            device().regout(255, mask_port(b));
            device().regout(255, data_port(b));
        }
        return true;
    }

private:
    hw::devobj& device() { return plug_in_.hardware.device(); }

    void write_data(const hw::port_bytes& data)
    {
        for (std::size_t b = 0; b < hw::port_count; ++b) device().regout(data[b], data_port(b));
    }

    /// K has no effect on this route: meant.
    void drive_by_registers()
    {
        for (std::size_t b = 0; b < hw::port_count; ++b) {
            device().regout(bytes_.drvdata[b], data_port(b));
            device().regout(bytes_.drvmask[b], mask_port(b));
        }
        if (bytes_.hasc) {
            write_data(with_clocks(bytes_));
            write_data(bytes_.drvdata);
        }
    }

    bool send_plain() { return send_pin_frame(plug_in_, bytes_.drvdata, bytes_.drvmask); }
    bool send_clocked() { return send_pin_frame(plug_in_, with_clocks(bytes_), bytes_.drvmask); }

    /// K leaves its pin high until the next row's first frame pulls it low.
    bool drive_by_frames()
    {
        device().regout(254, 15);
        if (!send_plain()) return false;
        if (bytes_.hasc && !(send_clocked() && send_plain())) return false;
        return !bytes_.hask || (send_plain() && send_clocked());
    }

    const vector_run& run_;
    session& plug_in_;
    bool usb_;
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
