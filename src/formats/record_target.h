// Where the bytes of a record land: the address mapping that the Motorola S, Tektronix and Texas Instrument readers
// share.
#pragma once

#include "formats/transfer_job.h"
#include "session/session.h"

#include <cstdint>
#include <span>

namespace tamrix {

/// The mapping of one load. Addresses are file addresses; items are the selected bytes of a record, counted from 0.
class record_target {
public:
    explicit record_target(const transfer_job& job)
        : ibuffer_{job.plug_in.blocks.ibuffer},
          reachable_{ibuffer_.span()},
          at_{job.transfer},
          devbytes_{job.plug_in.devbytes()},
          // That of a true quotient: half an address above the device is already beyond it.
          last_address_{(devbytes_ - at_.bufstart + at_.filestart) * at_.filestep}
    {}

    /// False if a record that starts at `address` is skipped: below the file start, or beyond the device.
    bool takes(std::int64_t address) const { return address >= at_.filestart && address <= last_address_; }
    /// Bytes of the record from one item to the next.
    std::int64_t step() const { return at_.filestep; }
    /// Whole items in a record of `length` bytes.
    std::int64_t items(std::int64_t length) const { return length / at_.filestep; }
    /// The byte of the record that is item `item`.
    std::int64_t byte_of(std::int64_t item) const { return at_.filephase + at_.filestep * item; }
    /// The buffer position, counted from the start address, of an item of a record at `address`.
    std::int64_t position(std::int64_t address, std::int64_t item) const
    {
        return at_.bufphase + at_.bufstep * (item + (address - at_.filestart) / at_.filestep);
    }
    /// True if a position is beyond the device; the rest of the record is then dropped.
    bool beyond(std::int64_t position) const { return position > devbytes_; }
    /// Stores one item; false if more than `loadlength` bytes are then stored, which ends the load. Throws
    /// subscript_error outside the buffer.
    bool store(std::int64_t position, std::uint8_t value)
    {
        ibuffer_(at_.bufstart + position) = value;
        return ++stored_ <= at_.loadlength;
    }

    /// Where a run of `count` items of consecutive bytes lands in one piece; null if it does not, or if the limit of
    /// the load is inside it.
    std::uint8_t* run(std::int64_t address, std::int64_t count)
    {
        if (at_.filestep != 1 || at_.bufstep != 1) return nullptr;
        const std::int64_t first = at_.bufphase + address - at_.filestart;
        const auto size = static_cast<std::int64_t>(reachable_.size());
        const bool whole = first + count - 1 <= devbytes_ && at_.bufstart + first + count <= size;
        return whole && stored_ + count <= at_.loadlength ? reachable_.data() + at_.bufstart + first : nullptr;
    }
    /// Counts a run that was stored.
    void stored(std::int64_t count) { stored_ += count; }

private:
    block<std::uint8_t>& ibuffer_;
    const std::span<std::uint8_t> reachable_;
    const transfer_variables at_;
    const std::int64_t devbytes_;
    const std::int64_t last_address_;  // that a record may start at
    std::int64_t stored_ = 0;
};

}  // namespace tamrix
