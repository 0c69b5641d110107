#include "support/transcript_programmer.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <utility>

namespace tamrix::tests {

namespace {

constexpr auto crc_table = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < table.size(); ++i) {
        std::uint32_t crc = i;
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xEDB88320 : 0);
        table[i] = crc;
    }
    return table;
}();

/// As zlib has it.
std::uint32_t crc32_of(const std::uint8_t* bytes, std::int32_t length)
{
    const std::uint32_t* const table = crc_table.data();
    std::uint32_t crc = 0xFFFFFFFF;
    for (std::int32_t i = 0; i < length; ++i) crc = (crc >> 8) ^ table[(crc ^ bytes[i]) & 0xFF];
    return ~crc;
}

std::string hex(unsigned value, int digits)
{
    char text[16];
    std::snprintf(text, sizeof text, "%0*X", digits, value);
    return text;
}

class transcript final : public hw::programmer, private hw::lumbat, private hw::devobj {
public:
    transcript(std::unique_ptr<hw::programmer> inner, std::vector<std::string>& lines)
        : inner_{std::move(inner)}, lines_{lines}
    {}
    hw::lumbat& transport() override { return *this; }
    hw::devobj& device() override { return *this; }

private:
    /// Called with the arguments of an operation.
    auto line(std::string name)
    {
        return [this, name = std::move(name)](auto... arguments) mutable {
            ((name += " " + std::to_string(static_cast<long>(arguments))), ...);
            lines_.push_back(name);
        };
    }

    std::int32_t usbcomwrite(const std::uint8_t* buffer, std::int32_t length) override
    {
        std::string text = "usbcomwrite " + std::to_string(length) + ":";
        for (std::int32_t i = 0; i < length; ++i) text += " " + hex(buffer[i], 2);
        lines_.push_back(text);
        return inner_->transport().usbcomwrite(buffer, length);
    }
    std::int32_t usbbulkwrite(const std::uint8_t* buffer, std::int32_t length) override
    {
        lines_.push_back("usbbulkwrite " + std::to_string(length) + ": crc " + hex(crc32_of(buffer, length), 8));
        return inner_->transport().usbbulkwrite(buffer, length);
    }
    std::int32_t usbbulkread(std::uint8_t* buffer, std::int32_t length, std::uint8_t* status) override
    {
        lines_.push_back("usbbulkread " + std::to_string(length));
        return inner_->transport().usbbulkread(buffer, length, status);
    }

#define TAMRIX_TRANSCRIBED(result, name, parameters, arguments)                                                        \
    result name parameters override                                                                                    \
    {                                                                                                                  \
        line(#name) arguments;                                                                                         \
        return inner_->device().name arguments;                                                                        \
    }
    TAMRIX_DEVICE_OPERATIONS(TAMRIX_TRANSCRIBED)
#undef TAMRIX_TRANSCRIBED

    std::unique_ptr<hw::programmer> inner_;
    std::vector<std::string>& lines_;
};

}  // namespace

hw::programmer_source with_transcript(hw::programmer_source source, std::vector<std::string>& lines)
{
    return [source = std::move(source), &lines](const hw::reply_memory& replies) -> std::unique_ptr<hw::programmer> {
        return std::make_unique<transcript>(source(replies), lines);
    };
}

std::string line_of(const selftest_event& event)
{
    using enum selftest_event::kind;
    switch (event.what) {
    case status: {
        const std::string name = event.panel == 1 ? "status" : "status" + std::to_string(event.panel);
        return event.text.empty() ? name : name + " " + event.text;
    }
    case beep: return "beep";
    case box: return "box " + event.title + " | " + event.text;
    case wait: return "runstp";
    case go_on: return "continue";
    default: return "stop";
    }
}

}  // namespace tamrix::tests
