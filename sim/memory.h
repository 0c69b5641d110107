// The programmer's memory, read and written through the bulk pipe: banks of 32768 bytes.
#pragma once

#include "sim/faults.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tamrix::sim {

class memory {
public:
    static constexpr std::size_t bank_bytes = 32768;

    memory(std::size_t bytes, const fault_set& faults) : bytes_(bytes, 0xFF), faults_{faults} {}

    std::size_t bytes() const { return bytes_.size(); }
    /// The last one may be shorter than the others.
    int banks() const { return static_cast<int>((bytes_.size() + bank_bytes - 1) / bank_bytes); }
    /// The next writes start at this bank.
    void seek(int bank) { next_ = static_cast<std::size_t>(bank) * bank_bytes; }
    /// False if it does not all fit.
    bool write(std::span<const std::uint8_t> data);
    /// Writes at this byte of it; what does not fit is dropped.
    void put(std::size_t at, std::span<const std::uint8_t> data);
    /// `count` bytes from the start of a bank on; FF where there is no memory. In a bad bank, bit 0 of the first byte
    /// is inverted.
    std::vector<std::uint8_t> read(int bank, std::size_t count) const;

private:
    std::vector<std::uint8_t> bytes_;
    const fault_set& faults_;
    std::size_t next_ = 0;
};

}  // namespace tamrix::sim
