// Bytes that come one after the other: from a file, a pipe or memory.
#pragma once

#include "files/file_io.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace tamrix {

class byte_source {
public:
    virtual ~byte_source() = default;
    /// The next bytes, at most as many as `target` takes; none only where the source ends. Files, memory and standard
    /// input give fewer only there. Throws file_error.
    virtual std::size_t read(std::span<std::uint8_t> target) = 0;
    /// The next bytes where the source has them, or in `room`, until the next call of this source: one at least, none
    /// only where the source ends. Throws file_error.
    virtual std::span<const std::uint8_t> lend(std::span<std::uint8_t> room) { return room.first(read(room)); }
};

class file_source final : public byte_source {
public:
    /// Throws file_error.
    explicit file_source(const std::string& path) : file_{path} {}
    std::size_t read(std::span<std::uint8_t> target) override
    {
        const std::size_t count = file_.read_at(at_, target);
        at_ += static_cast<std::int64_t>(count);
        return count;
    }

private:
    input_file file_;
    std::int64_t at_ = 0;
};

class memory_source final : public byte_source {
public:
    /// The bytes have to outlive it.
    explicit memory_source(std::span<const std::uint8_t> bytes) : rest_{bytes} {}
    std::size_t read(std::span<std::uint8_t> target) override
    {
        const std::size_t count = std::min(target.size(), rest_.size());
        std::copy_n(rest_.begin(), count, target.begin());
        rest_ = rest_.subspan(count);
        return count;
    }

private:
    std::span<const std::uint8_t> rest_;
};

}  // namespace tamrix
