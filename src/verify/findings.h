// What a verifier has found so far: remarks, and the data on their way to whoever takes them.
#pragma once

#include "verify/occupancy.h"
#include "verify/verification.h"

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
    findings(const std::string& name, data_taker& data) : name_{name}, data_{data}, run_(run_bytes) {}

    void remark(file_place where, std::string found, std::string expected = {});

    /// Where to put up to `count` bytes, at most 1024, for `address`; null if some of the addresses are filled. What
    /// was put there counts after keep().
    std::uint8_t* room(std::uint64_t address, std::size_t count)
    {
        const std::uint64_t end = address + count;
        if (address != run_end_ || used_ + count > run_bytes || end > free_until_) return new_room(address, count);
        return run_.data() + used_;
    }
    void keep(std::size_t count)
    {
        used_ += count;
        run_end_ += count;
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

    std::uint8_t* new_room(std::uint64_t address, std::size_t count);
    void flush();

    const std::string& name_;
    data_taker& data_;
    verification found_;
    occupancy filled_;
    std::vector<std::uint8_t> run_;  // data that follow one another and wait
    std::size_t used_ = 0;           // of run_
    std::uint64_t run_end_ = 0;      // address after the last
    std::uint64_t free_until_ = 0;   // the run may go on up to here
};

}  // namespace tamrix
