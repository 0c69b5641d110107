#include "sim/journal.h"

#include <cstdio>
#include <utility>

namespace tamrix::sim {

void journal::line(std::string text)
{
    if (recording_) lines_.push_back({time_->now(), std::move(text)});
}

void journal::hazard(std::string text)
{
    line("hazard: " + text);
    hazards_.push_back({time_->now(), std::move(text)});
}

void journal::note(std::string text)
{
    line("note: " + text);
    notes_.push_back({time_->now(), std::move(text)});
}

std::string journal::transcript(bool with_times) const
{
    std::string text;
    for (const event& one : lines_) {
        if (with_times) {
            char time[32];
            std::snprintf(time, sizeof time, "%.3f ms  ", static_cast<double>(one.time.count()) / 1000);
            text += time;
        }
        text += one.text;
        text += '\n';
    }
    return text;
}

std::string hex_text(std::span<const std::uint8_t> bytes, std::size_t most)
{
    const bool cut = bytes.size() > most;
    std::string text;
    char two[4];
    for (const std::uint8_t byte : bytes.first(cut ? most : bytes.size())) {
        std::snprintf(two, sizeof two, "%02X", unsigned{byte});
        if (!text.empty()) text += ' ';
        text += two;
    }
    if (!cut) return text;
    std::uint32_t crc = 0xFFFFFFFF;
    for (const std::uint8_t byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB88320u : 0u);
    }
    char end[32];
    std::snprintf(end, sizeof end, " .. (crc %08X)", ~crc);
    return text + end;
}

}  // namespace tamrix::sim
