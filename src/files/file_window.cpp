#include "files/file_window.h"

#include <algorithm>
#include <cstring>

namespace tamrix {

void file_window::move_to(std::int64_t offset)
{
    start_ = offset;
    held_ = static_cast<std::int64_t>(file_.read_at(offset, {bytes_.get(), window_bytes_}));
    at_end_ = held_ < static_cast<std::int64_t>(window_bytes_);
}

std::int64_t file_window::find_far(std::uint8_t byte, std::int64_t offset)
{
    while (offset < length()) {
        const auto bytes = from(offset, 1);
        if (bytes.empty()) break;  // the file became shorter
        const void* found = std::memchr(bytes.data(), byte, bytes.size());
        if (found != nullptr) return offset + (static_cast<const std::uint8_t*>(found) - bytes.data());
        offset += static_cast<std::int64_t>(bytes.size());
    }
    return length();
}

std::uint64_t file_window::line_at(std::int64_t offset)
{
    std::uint64_t line = 1;
    std::uint8_t before = 0;
    for (std::int64_t at = 0; at < offset;) {
        const auto bytes = from(at, 1);
        if (bytes.empty()) break;
        const auto count = std::min(offset - at, static_cast<std::int64_t>(bytes.size()));
        for (const std::uint8_t byte : bytes.first(static_cast<std::size_t>(count))) {
            if (byte == '\r' || (byte == '\n' && before != '\r')) ++line;
            before = byte;
        }
        at += count;
    }
    return line;
}

}  // namespace tamrix
