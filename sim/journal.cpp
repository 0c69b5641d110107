#include "sim/journal.h"

#include <cstdio>
#include <utility>

namespace tamrix::sim {

void journal::add_line(std::string text) { lines_.push_back({time_->now(), std::move(text)}); }

void journal::hazard(std::string text)
{
    line("hazard: ", text);
    hazards_.push_back({time_->now(), std::move(text)});
}

void journal::note(std::string text)
{
    line("note: ", text);
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

void journal::append(std::string& text, const hex_word& word)
{
    const bool cut = word.bytes.size() > word.most;
    char letters[32];
    const char* between = "";
    for (const std::uint8_t byte : word.bytes.first(cut ? word.most : word.bytes.size())) {
        std::snprintf(letters, sizeof letters, "%s%02X", std::exchange(between, " "), unsigned{byte});
        text += letters;
    }
    if (!cut) return;
    std::uint32_t crc = 0xFFFFFFFF;
    for (const std::uint8_t byte : word.bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB88320u : 0u);
    }
    std::snprintf(letters, sizeof letters, " .. (crc %08X)", ~crc);
    text += letters;
}

}  // namespace tamrix::sim
