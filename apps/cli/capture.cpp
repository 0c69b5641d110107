#include "cli/capture.h"

#include "files/file_io.h"
#include "instruments/analyzer/analyzer_capture.h"

#include <cstddef>

namespace tamrix::cli {

std::vector<std::uint8_t> samples_of(const std::string& path, console& con)
{
    constexpr int most_banks = 16;
    constexpr std::int64_t most_samples = std::int64_t{most_banks} * bank_samples;
    input_file file{path};
    const std::string count = path + ": " + std::to_string(file.length()) + " samples";
    if (file.length() == 0) fail(path + ": empty where samples were expected");
    if (file.length() > most_samples) {
        fail(count + " where at most " + std::to_string(most_samples) + ", " + std::to_string(most_banks) +
             " banks, were expected");
    }
    if (const std::int64_t rest = file.length() % bank_samples; rest != 0) {
        con.note(count + ", which ends " + std::to_string(bank_samples - rest) + " before the end of a bank of " +
                 std::to_string(bank_samples));
    }
    const file_image image{file};
    return {image.bytes().begin(), image.bytes().end()};
}

channel_facts facts_of(std::span<const std::uint8_t> samples, int bit)
{
    const auto is_high = [&](std::size_t at) { return (samples[at] >> bit & 1U) != 0; };
    channel_facts facts{.begins_high = is_high(0)};
    std::optional<std::size_t> first_rise;
    std::size_t last_rise = 0, rises = 0, high = is_high(0) ? 1 : 0;
    std::size_t high_before_first = 0, high_before_last = 0;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        if (is_high(i) != is_high(i - 1)) {
            ++facts.edges;
            if (is_high(i)) {
                if (!first_rise) high_before_first = high;
                if (!first_rise) first_rise = i;
                high_before_last = high;
                last_rise = i;
                ++rises;
            }
        }
        high += is_high(i) ? 1 : 0;
    }
    facts.high_part = static_cast<double>(high) / static_cast<double>(samples.size());
    if (rises < 2) return facts;
    const auto length = static_cast<double>(last_rise - *first_rise);
    facts.samples_a_period = length / static_cast<double>(rises - 1);
    facts.duty = static_cast<double>(high_before_last - high_before_first) / length;
    return facts;
}

}  // namespace tamrix::cli
