// The walk over a file of ":" records that the Intel HEX and the Intel Hex16 reader share.
#pragma once

#include "files/file_window.h"
#include "formats/intel_record.h"
#include "formats/transfer_job.h"

#include <cstdint>
#include <span>
#include <string>

namespace tamrix {

/// Text around records is skipped. The derived class handles data records.
class intel_walk {
public:
    virtual ~intel_walk() = default;
    status walk();

protected:
    using text_view = std::span<const std::uint8_t>;
    enum class step { go_on, end, failed };

    /// Characters from the ":" to the first data digit.
    static constexpr std::size_t digits_at = 9;

    /// `longest_record`: characters, in this grammar. `extension_stride`: how far the walk moves after an extended
    /// address record.
    intel_walk(transfer_job& job, std::size_t longest_record, std::int64_t extension_stride);

    /// Takes the data record at p_ and moves p_ past it.
    virtual step take_data(const intel_head& head, text_view record) = 0;
    /// The status at the end of the walk.
    virtual status outcome() { return status::done; }
    /// Up to here the walk may go on without reporting progress.
    std::int64_t next_mark() const { return next_mark_; }
    /// Leaves a diagnostic for the record at p_.
    step fail(std::string found, std::string expected);

    transfer_job& job_;
    file_window file_;
    const transfer_variables at_;
    const std::int64_t buflength_, devbytes_;
    std::int64_t p_ = 0;  // the position of the walk
    std::int64_t extension_ = 0;

private:
    std::int64_t find_colon(std::int64_t from);
    void visit(std::int64_t from, std::int64_t to);
    step take_record(const intel_head& head, text_view record);
    step take_extension(text_view record, unsigned paragraph_bytes);

    const std::size_t longest_record_;
    const std::int64_t extension_stride_;
    const std::int64_t pace_;
    std::int64_t next_mark_;
};

/// How a record's data meets the byte selection.
struct intel_selection {
    std::int64_t skip;      // bytes of the record before the first selected one
    std::int64_t position;  // of the first selected byte, counted from the start address
};

/// `relative` is the record's address from the file start on, in bytes, not below 0.
intel_selection select_in_record(const transfer_variables& at, std::int64_t relative);

}  // namespace tamrix
