// An emergency copy of bytes that may be records or not, with a sum that is right: what follows a sum is never looked
// at if it is wrong.
#pragma once

#include "editing/emergency_format.h"

#include <cstring>

namespace tamrix::tests {

inline std::vector<std::uint8_t> closed_copy(std::span<const std::uint8_t> records, const editing::copy_state& state)
{
    editing::copy_records empty;
    empty.commit(state, {});
    std::vector<std::uint8_t> file = empty.take();
    file.insert(file.begin() + static_cast<std::ptrdiff_t>(editing::copy_mark.size()), records.begin(), records.end());
    const std::size_t summed = file.size() - sizeof(std::uint32_t);
    crc32 sum;
    sum.add(std::span{file}.first(summed));
    const std::uint32_t value = sum.value();
    std::memcpy(file.data() + summed, &value, sizeof value);
    return file;
}

}  // namespace tamrix::tests
