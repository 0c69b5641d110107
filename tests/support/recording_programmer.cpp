#include "support/recording_programmer.h"

#include "support/next_of.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <sstream>

namespace tamrix::tests {

namespace {

std::string hex_bytes(const std::uint8_t* bytes, std::size_t count)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        char digits[4];
        std::snprintf(digits, sizeof digits, " %02X", bytes[i]);
        text += digits;
    }
    return text;
}

/// Notes every operation with its arguments. What has a result returns 0.
class noting_device : public hw::devobj {
protected:
    explicit noting_device(recording& log) : log_{log} {}

    recording& log_;

private:
    template <class Result>
    auto operation(const char* call)
    {
        return [this, call](auto... values) {
            std::ostringstream line;
            line << call;
            ((line << ' ' << static_cast<long>(values)), ...);
            log_.add(line.str());
            return Result();
        };
    }

public:
#define TAMRIX_OPERATION(result, name, parameters, arguments)                                                          \
    result name parameters override { return operation<result>(#name) arguments; }
    TAMRIX_DEVICE_OPERATIONS(TAMRIX_OPERATION)
#undef TAMRIX_OPERATION
};

class recorder final : public hw::programmer, private hw::lumbat, private noting_device {
public:
    recorder(recording& log, const hw::reply_memory& replies) : noting_device{log}, replies_{replies} {}
    hw::lumbat& transport() override { return *this; }
    hw::devobj& device() override { return *this; }

private:
    std::int32_t usbcomwrite(const std::uint8_t* buffer, std::int32_t length) override
    {
        log_.add("usbcomwrite " + std::to_string(length) + ":" + hex_bytes(buffer, static_cast<std::size_t>(length)));
        return next_of(log_.usbcomwrite_results, 0);
    }
    std::int32_t usbbulkwrite(const std::uint8_t*, std::int32_t length) override
    {
        log_.add("usbbulkwrite " + std::to_string(length));
        return 0;
    }
    std::int32_t usbbulkread(std::uint8_t* buffer, std::int32_t length, std::uint8_t* status) override
    {
        const bulk_end end = next_of(log_.bulk_ends, bulk_end::arrives);
        log_.add("usbbulkread " + std::to_string(length));
        if (end == bulk_end::fails) *status = 4;
        if (end != bulk_end::arrives) return 0;
        std::fill_n(buffer, length - 1, std::uint8_t{0xEE});
        std::string line = "->";
        for (std::int32_t at = 0; ports_queued_ >= 6; at += 6, ports_queued_ -= 6) {
            const six_bytes row = log_.next_row();
            std::copy(row.begin(), row.end(), buffer + at);
            line += hex_bytes(row.data(), row.size());
        }
        log_.add(line);
        buffer[length - 1] = 170;
        *status = 2;
        return 0;
    }

    std::int32_t hwreset() override
    {
        noting_device::hwreset();
        return next_of(log_.hwreset_results, 0);
    }
    std::int32_t regin(std::uint8_t address) override
    {
        if (address == 0) row_ = log_.next_row();
        const std::uint8_t value = address / 2 < 6 ? row_[address / 2] : 0;
        log_.add("regin " + std::to_string(address) + " ->" + hex_bytes(&value, 1));
        return value;
    }
    bool replywait(std::uint8_t count, std::uint8_t mode, std::int32_t extra) override
    {
        noting_device::replywait(count, mode, extra);
        if (!next_of(log_.replywait_results, true)) return false;
        const six_bytes row = log_.next_row();
        std::copy(row.begin(), row.end(), replies_.ibuf1);
        log_.add("->" + hex_bytes(row.data(), row.size()));
        return true;
    }
    void vecbyte(std::uint8_t address) override
    {
        noting_device::vecbyte(address);
        ++ports_queued_;
    }

    hw::reply_memory replies_;
    six_bytes row_{};
    int ports_queued_ = 0;
};

}  // namespace

six_bytes recording::next_row()
{
    if (read_socket) return read_socket();
    six_bytes pulled_up{};
    pulled_up.fill(0xFF);
    return next_of(socket, pulled_up);
}

int recording::count(std::string_view start) const
{
    return static_cast<int>(std::ranges::count_if(lines, [&](const auto& line) { return line.starts_with(start); }));
}

std::string recording::text() const
{
    std::string all;
    for (const std::string& line : lines) all += line + "\n";
    return all;
}

std::unique_ptr<hw::programmer> make_recorder(recording& log, const hw::reply_memory& replies)
{
    return std::make_unique<recorder>(log, replies);
}

}  // namespace tamrix::tests
