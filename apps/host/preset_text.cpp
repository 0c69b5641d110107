#include "host/preset_text.h"

#include "base/ascii.h"
#include "files/file_io.h"
#include "files/replace_file.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <limits>
#include <optional>
#include <stdexcept>
#include <utility>
#include <variant>

namespace tamrix::host {

namespace {

using text_member = std::string device_preset::*;
using byte_member = std::uint8_t device_preset::*;
using short_member = std::int16_t device_preset::*;
using long_member = std::int32_t device_preset::*;

/// A key of a stanza and the member that it fills. `volts` values are written with two decimals.
struct key_line {
    std::string_view key;
    std::variant<text_member, byte_member, short_member, long_member> member;
    std::int32_t least = 0;
    bool volts = false;
};

constexpr std::array<key_line, 22> keys{{
    {"maker", &device_preset::maker},
    {"algorithm", &device_preset::algorithm},
    {"words", &device_preset::words},
    {"word-bytes", &device_preset::word_bytes, 1},
    {"spare-units", &device_preset::spare_units},
    {"buffer-bytes", &device_preset::buffer_bytes},
    {"pins", &device_preset::pins},
    {"vcc-pin", &device_preset::vcc_pin},
    {"gnd-pin", &device_preset::gnd_pin},
    {"vcc", &device_preset::vcc_centivolts, 0, true},
    {"vpp", &device_preset::vpp_centivolts, 0, true},
    {"page", &device_preset::page_length},
    {"pulse-us", &device_preset::pulse_us},
    {"retries", &device_preset::retries},
    {"mode", &device_preset::program_mode},
    {"family", &device_preset::family},
    {"note", &device_preset::note},
    {"vcc-high", &device_preset::vcc_high},
    {"option-0", &device_preset::option_0},
    {"option-1", &device_preset::option_1},
    {"option-2", &device_preset::option_2},
    {"option-3", &device_preset::option_3},
}};

constexpr std::array<std::string_view, 3> clear_names{"ff", "00", "none"};  // in the order of clear_choice

/// Decimal, or hexadecimal after "0x"; none if it is anything else.
std::optional<std::int64_t> number(std::string_view text)
{
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (hexadecimal) text.remove_prefix(2);
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, hexadecimal ? 16 : 10);
    if (error != std::errc{} || end != text.data() + text.size() || text.starts_with('-')) return std::nullopt;
    return value;
}

/// Hundredths of a number with at most two decimals.
std::optional<std::int64_t> hundredths(std::string_view text)
{
    const auto point = text.find('.');
    const auto whole = number(text.substr(0, point));
    if (point == std::string_view::npos) return whole ? std::optional{*whole * 100} : std::nullopt;
    const std::string_view decimals = text.substr(point + 1);
    const auto part = number(decimals);
    if (!whole || !part || decimals.size() > 2) return std::nullopt;
    return *whole * 100 + (decimals.size() == 1 ? *part * 10 : *part);
}

std::string volts_text(std::int64_t centivolts)
{
    std::array<char, 32> text{};
    const int length = std::snprintf(text.data(), text.size(), "%d.%02d", static_cast<int>(centivolts / 100),
                                     static_cast<int>(centivolts % 100));
    return {text.data(), static_cast<std::size_t>(length)};
}

class preset_parser {
public:
    explicit preset_parser(const std::string& file) : file_{file} {}

    void take_line(std::string_view line)
    {
        ++line_;
        line = ascii::trimmed(line.substr(0, line.find('#')));
        if (line.empty()) return;
        const auto blank = line.find_first_of(" \t");
        const std::string_view key = line.substr(0, blank);
        const std::string_view value = blank == std::string_view::npos ? "" : ascii::trimmed(line.substr(blank));
        if (key == "device") {
            start(value);
        } else if (devices_.empty()) {
            fail(line, "\"device NAME\"");
        } else if (key == "clear") {
            take_clear(value);
        } else {
            take(key, value);
        }
    }

    std::vector<device_preset> finish()
    {
        check_last();
        return std::move(devices_);
    }

private:
    [[noreturn]] void fail(std::string_view found, const std::string& expected) const
    {
        throw std::runtime_error{file_ + ":" + std::to_string(line_) + ": " + std::string{found} + " where " +
                                 expected + " was expected"};
    }

    void start(std::string_view name)
    {
        check_last();
        if (name.empty()) fail("device", "\"device NAME\"");
        if (find_preset(devices_, name) != nullptr) fail("a second device " + std::string{name}, "another name");
        devices_.emplace_back().name = name;
        device_line_ = line_;
    }

    void take_clear(std::string_view value)
    {
        for (std::size_t i = 0; i < clear_names.size(); ++i) {
            if (clear_names[i] != value) continue;
            devices_.back().clear = static_cast<clear_choice>(i);
            return;
        }
        fail("clear " + std::string{value}, "ff, 00 or none");
    }

    void take(std::string_view key, std::string_view value)
    {
        for (const key_line& line : keys) {
            if (line.key != key) continue;
            std::visit([&](auto member) { assign(line, value, devices_.back().*member); }, line.member);
            return;
        }
        fail(key, "a key such as words or maker");
    }

    void assign(const key_line&, std::string_view value, std::string& target) const { target = value; }

    template <class T>
    void assign(const key_line& line, std::string_view value, T& target) const
    {
        const auto parsed = line.volts ? hundredths(value) : number(value);
        constexpr std::int64_t most = std::numeric_limits<T>::max();
        if (!parsed || *parsed < line.least || *parsed > most) {
            const auto shown = [&](std::int64_t limit) {
                return line.volts ? volts_text(limit) : std::to_string(limit);
            };
            fail(std::string{line.key} + " " + std::string{value},
                 "a number from " + shown(line.least) + " to " + shown(most));
        }
        target = static_cast<T>(*parsed);
    }

    /// A stanza is complete when the next one starts.
    void check_last()
    {
        if (devices_.empty()) return;
        device_preset& last = devices_.back();
        const std::int64_t needed = image_bytes(last);
        if (needed > std::numeric_limits<std::int32_t>::max() - 2200) {
            line_ = device_line_;
            fail("a device of " + std::to_string(needed) + " bytes", "less than 2 GiB");
        }
        if (last.buffer_bytes == 0) last.buffer_bytes = static_cast<std::int32_t>(needed);
        if (last.buffer_bytes < needed) {
            line_ = device_line_;
            fail("buffer-bytes " + std::to_string(last.buffer_bytes), "at least " + std::to_string(needed));
        }
    }

    const std::string& file_;
    std::vector<device_preset> devices_;
    int line_ = 0;
    int device_line_ = 0;
};

std::string value_text(const key_line&, const std::string& value) { return value; }

template <class T>
std::string value_text(const key_line& line, T value)
{
    return line.volts ? volts_text(value) : std::to_string(value);
}

}  // namespace

std::vector<device_preset> parse_presets(std::string_view text, const std::string& file)
{
    preset_parser parser{file};
    while (!text.empty()) {
        const auto end = text.find('\n');
        parser.take_line(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return parser.finish();
}

std::string print_presets(std::span<const device_preset> devices)
{
    static const device_preset standard;
    std::string text;
    for (const device_preset& device : devices) {
        text += (text.empty() ? "device " : "\ndevice ") + device.name + "\n";
        for (const key_line& line : keys) {
            std::visit(
                [&](auto member) {
                    if (device.*member == standard.*member) return;
                    text += "    " + std::string{line.key} + " " + value_text(line, device.*member) + "\n";
                },
                line.member);
        }
        if (device.clear != standard.clear) {
            text += "    clear " + std::string{clear_names[static_cast<std::size_t>(device.clear)]} + "\n";
        }
    }
    return text;
}

std::vector<device_preset> read_presets(const std::string& path)
{
    const file_image file{path};
    return parse_presets({reinterpret_cast<const char*>(file.bytes().data()), file.bytes().size()}, path);
}

void write_presets(const std::string& path, std::span<const device_preset> devices)
{
    replace_file(path, print_presets(devices));
}

}  // namespace tamrix::host
