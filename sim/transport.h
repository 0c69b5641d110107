// The USB side of a simulated programmer: command frames and bulk transfers.
#pragma once

#include "programmer/lumbat.h"
#include "sim/bulk_pipe.h"
#include "sim/instruments.h"
#include "sim/machine.h"
#include "sim/memory.h"
#include "sim/modules.h"
#include "sim/reply_pipe.h"
#include "sim/script.h"

#include <memory>
#include <optional>
#include <span>

namespace tamrix::sim {

/// What transport and device object of one programmer share.
struct parts_of_programmer {
    int model;
    std::shared_ptr<clock> time;
    std::shared_ptr<journal> log;
    fault_set faults{};
    machine hardware;
    memory ram;
    reply_pipe replies;
    modules slots;  // none on most models
    instruments tools;
    script vectors{};
    microseconds script_done{0};  // when the hardware has played the script

    /// `memory_bytes` is the size of its memory, `chips` are those for signals.
    parts_of_programmer(int its_model, int generation, std::size_t memory_bytes, std::shared_ptr<clock> its_time,
                        std::shared_ptr<journal> its_log, reply_place place_of_replies, part_shelf chips);
    parts_of_programmer(const parts_of_programmer&) = delete;
    parts_of_programmer& operator=(const parts_of_programmer&) = delete;

    /// The drivers that registers and pin codes switch now: those of the module that was named, else the unit's own.
    /// Null while that module does not answer.
    machine* reached() { return slots.named() == 0 ? &hardware : slots.reachable(); }
    /// Time passes.
    void settle_down();
    /// A fault was added or removed.
    void update();
};

class transport final : public hw::lumbat {
public:
    explicit transport(parts_of_programmer& shared) : shared_{shared}, pipe_{shared.time} {}

    std::int32_t usbcomwrite(const std::uint8_t* buffer, std::int32_t length) override;
    std::int32_t usbbulkwrite(const std::uint8_t* buffer, std::int32_t length) override;
    std::int32_t usbbulkread(std::uint8_t* buffer, std::int32_t length, std::uint8_t* status) override;
    /// Ends all transfers.
    void reset();

private:
    enum class bulk_mode : std::uint8_t { none, write, read, script };
    void take_frame(std::span<const std::uint8_t> frame);
    void pin_frame(std::span<const std::uint8_t> frame);
    void memory_frame(std::span<const std::uint8_t> frame);
    void bulk_frame(std::span<const std::uint8_t> frame);
    void low_voltage_memory_frame(std::span<const std::uint8_t> frame);
    bool long_enough(std::span<const std::uint8_t> frame, std::size_t needed, const char* what);

    parts_of_programmer& shared_;
    bulk_pipe pipe_;
    bulk_mode mode_ = bulk_mode::none;
    int bank_ = 0;
};

}  // namespace tamrix::sim
