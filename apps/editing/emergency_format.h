// The file of an emergency copy: a mark, then records one after the other. A commit closes what is before it with a
// checksum; whatever follows the last whole commit was not finished and does not count.
#pragma once

#include "image/crc32.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::editing {

using wall_time = std::chrono::system_clock::time_point;

/// What the bytes of a commit are.
struct copy_state {
    std::string device{};
    std::string file{};      // as document::file() says
    std::size_t shown = 0;   // bytes in the buffer of the device
    std::size_t length = 0;  // of all bytes, those that are not shown included
    bool operator==(const copy_state&) const = default;
};

constexpr std::string_view copy_mark = "tamrix copy 1\r\n\x1A";
/// More than any buffer has.
constexpr std::size_t longest_copy_bytes = std::size_t{1} << 30;
/// Of a device's or a file's name.
constexpr std::size_t most_name_bytes = 65536;

/// Makes records; the caller writes them out.
class copy_records {
public:
    copy_records() { put(copy_mark.data(), copy_mark.size()); }

    void add_bytes(std::size_t address, std::span<const std::uint8_t> bytes);
    void add_value(std::size_t address, std::size_t length, std::uint8_t value);
    /// Longer names are cut off.
    void commit(const copy_state& state, wall_time time);
    /// What was added since the last call; the sum goes on.
    std::vector<std::uint8_t> take();

private:
    template <class T>
    void number(T value)
    {
        put(&value, sizeof value);
    }
    void text(std::string_view text);
    void put(const void* bytes, std::size_t length);
    void add_to_sum();

    std::vector<std::uint8_t> bytes_{};
    std::size_t summed_ = 0;  // of bytes_
    crc32 sum_{};
};

struct last_commit {
    copy_state state{};
    wall_time time{};
    std::size_t end = 0;  // in the file
};

/// None if there is no whole commit.
std::optional<last_commit> find_commit(std::span<const std::uint8_t> file);

/// All bytes of the commit, which is one of this file.
std::vector<std::uint8_t> bytes_of(const last_commit& commit, std::span<const std::uint8_t> file);

}  // namespace tamrix::editing
