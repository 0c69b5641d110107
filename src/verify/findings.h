// What a verifier has found so far: remarks, and the data on their way to whoever takes them.
#pragma once

#include "verify/occupancy.h"
#include "verify/verification.h"

#include "files/hex_record_digits.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tamrix {

/// Where in a file: a line of a text, from 1, or an offset in bytes.
struct file_place {
    std::optional<std::uint64_t> line{}, offset{};
};

inline file_place in_line(std::uint64_t line) { return {.line = line}; }
inline file_place at_offset(std::uint64_t offset) { return {.offset = offset}; }

/// Hands records that follow one another on as one piece.
class findings {
public:
    /// Both have to outlive it.
    findings(const std::string& name, data_taker& data) : name_{name}, data_{data} {}

    void remark(file_place where, std::string found, std::string expected = {});

    /// Where the data that were taken last go on.
    struct run_tail {
        std::uint8_t* next;     // room_after_data is there, too
        std::uint64_t address;  // of the next byte
        std::size_t left;       // bytes that may be put there

        void grow(std::size_t count)
        {
            next += count;
            address += count;
            left -= count;
        }
    };
    run_tail tail()
    {
        const std::uint64_t free = free_until_ - run_end_;
        const std::size_t left = run_bytes - used_;
        return {run_.data() + used_, run_end_, free < left ? static_cast<std::size_t>(free) : left};
    }
    /// What was put to the tail counts after this.
    void keep(const run_tail& grown)
    {
        used_ += static_cast<std::size_t>(grown.address - run_end_);
        run_end_ = grown.address;
    }

    /// Any number of bytes; a remark where an address is filled.
    void take(file_place where, std::uint64_t address, std::span<const std::uint8_t> bytes);
    /// Data at `address` of a room with the addresses from `first` to `first` + `size` - 1. A remark where they pass
    /// its end; they go on at its begin.
    void take_in(memory_segment room, file_place where, std::uint64_t address, std::span<const std::uint8_t> bytes);

    std::optional<std::uint64_t>& start_address() { return found_.start_address; }
    std::string& header() { return found_.header; }

    /// To be called once, at the end.
    verification result();

private:
    static constexpr std::size_t run_bytes = 0x10000;

    bool joins_run(memory_segment added);
    void flush();

    const std::string& name_;
    data_taker& data_;
    verification found_;
    occupancy filled_;
    // Data that follow one another and wait: `used_` bytes up to the address `run_end_`. More may come up to
    // `free_until_`.
    std::vector<std::uint8_t> run_ = std::vector<std::uint8_t>(run_bytes + hex_digits::room_after_data);
    std::size_t used_ = 0;
    std::uint64_t run_end_ = 0, free_until_ = 0;
};

}  // namespace tamrix
