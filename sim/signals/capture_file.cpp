#include "sim/signals/capture_file.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <string>

namespace tamrix::sim {

glimpse capture::look(nanoseconds when) const
{
    // A long rest is given in pieces, so that no look takes long.
    constexpr std::int64_t farthest = 4096;
    const auto count = static_cast<std::int64_t>(samples_.size());
    const std::int64_t played = when / period_;
    const auto sample = [&](std::int64_t index) {
        return static_cast<std::uint8_t>(samples_[static_cast<std::size_t>(index)] & pins_);
    };
    if (!again_ && played >= count) return {{pins_, sample(count - 1)}, for_ever};
    const std::int64_t first = played % count, last = std::min(count, first + farthest);
    std::int64_t next = first + 1;
    while (next < last && sample(next) == sample(first)) ++next;
    if (!again_ && next == count) return {{pins_, sample(first)}, for_ever};
    return {{pins_, sample(first)}, (played + next - first) * period_};
}

std::vector<std::uint8_t> samples_of_file(const std::filesystem::path& file)
{
    std::ifstream in{file, std::ios::binary};
    std::vector<std::uint8_t> samples;
    char block[65536];
    while (in && samples.size() <= most_capture_bytes) {
        in.read(block, sizeof block);
        samples.insert(samples.end(), block, block + in.gcount());
    }
    const std::string name = file.string() + ": the file ";
    if (!in.is_open() || in.bad()) throw std::invalid_argument{name + "cannot be read"};
    if (samples.empty()) throw std::invalid_argument{name + "is empty"};
    if (samples.size() > most_capture_bytes) throw std::invalid_argument{name + "is too long"};
    return samples;
}

}  // namespace tamrix::sim
