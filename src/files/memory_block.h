// Much memory at once, straight from the system.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

namespace tamrix {

/// All bytes are 0. Large blocks come in huge pages where the system gives them: what takes a hundred megabytes page by
/// page waits as long for the pages as for the bytes that fill them.
class memory_block {
public:
    memory_block() = default;
    /// Throws std::bad_alloc.
    explicit memory_block(std::uint64_t bytes);
    memory_block(memory_block&& other) noexcept
        : bytes_{std::exchange(other.bytes_, nullptr)}, mapped_{std::exchange(other.mapped_, 0)}
    {}
    memory_block& operator=(memory_block&& other) noexcept
    {
        std::swap(bytes_, other.bytes_);
        std::swap(mapped_, other.mapped_);
        return *this;
    }
    ~memory_block();

    std::uint8_t* data() const { return bytes_; }

private:
    std::uint8_t* bytes_ = nullptr;
    std::size_t mapped_ = 0;
};

}  // namespace tamrix
