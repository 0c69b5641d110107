#include "sim/memory.h"

#include <algorithm>

namespace tamrix::sim {

bool memory::write(std::span<const std::uint8_t> data)
{
    const std::size_t room = next_ < bytes_.size() ? bytes_.size() - next_ : 0;
    const auto taken = data.first(std::min(room, data.size()));
    // By pointers, which become one move of memory.
    std::copy_n(taken.data(), taken.size(), bytes_.data() + std::min(next_, bytes_.size()));
    next_ += data.size();
    return taken.size() == data.size();
}

void memory::put(std::size_t at, std::span<const std::uint8_t> data)
{
    const std::size_t first = std::min(at, bytes_.size());
    std::ranges::copy(data.first(std::min(data.size(), bytes_.size() - first)),
                      bytes_.begin() + static_cast<std::ptrdiff_t>(first));
}

std::vector<std::uint8_t> memory::read(int bank, std::size_t count) const
{
    std::vector<std::uint8_t> data(count, 0xFF);
    const std::size_t first = static_cast<std::size_t>(bank) * bank_bytes;
    if (first < bytes_.size()) std::copy_n(bytes_.data() + first, std::min(count, bytes_.size() - first), data.data());
    for (const int bad : faults_.bad_banks) {
        const std::size_t at = static_cast<std::size_t>(bad) * bank_bytes;
        if (at >= first && at - first < count) data[at - first] ^= 1;
    }
    return data;
}

}  // namespace tamrix::sim
