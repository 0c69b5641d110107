#include "small_programmer.h"

#include <algorithm>
#include <cstddef>

namespace tamrix::tests {

namespace {

constexpr int contacts = 48;

/// Port and bit of a lamp, counted from the socket's bottom.
std::pair<std::size_t, int> place_of(int lamp)
{
    if (lamp < 24) return {static_cast<std::size_t>(5 - lamp / 4), lamp % 4};
    return {static_cast<std::size_t>((lamp - 24) / 4), 4 + (lamp - 24) % 4};
}

/// What the registers of the boards hold after ones were written; all others 255. Board, then register and value.
const std::map<int, std::map<int, int>> register_bits = {
    {1, {{3, 15}, {4, 15}}},
    {2, {{3, 0}, {4, 2}}},
    {4, {{4, 127}, {5, 1}}},
    {5, {{3, 15}, {4, 15}}},
    {6, {{1, 0}, {2, 0}, {3, 32}, {4, 0}}},
    {8, {{4, 31}, {5, 0}}},
    {9, {{4, 56}, {5, 0}}},
    {10, {{3, 4}, {4, 0}}},
    {11, {{1, 0}, {2, 0}, {3, 32}, {4, 0}}},
    {12, {{1, 0}, {2, 0}, {3, 127}, {4, 0}, {5, 0}}},
    {13, {{1, 0}, {2, 0}, {3, 127}, {4, 0}, {5, 0}}},
    {14, {{5, 0}}},
    {15, {{3, 0}, {4, 2}, {5, 2}}},
    {16, {{3, 63}, {4, 15}}},
};

int bits_of(int board, int reg)
{
    const auto found = register_bits.find(board);
    if (found == register_bits.end() || !found->second.contains(reg)) return 255;
    return found->second.at(reg);
}

class running final : public hw::programmer, private hw::lumbat, private hw::devobj {
public:
    running(small_programmer& state, const hw::reply_memory& replies) : s_{state}, replies_{replies} {}
    hw::lumbat& transport() override { return *this; }
    hw::devobj& device() override { return *this; }

private:
    bool refuses()
    {
        if (s_.writes_until_refused < 0) return false;
        return s_.writes_until_refused == 0 || s_.writes_until_refused-- == 0;
    }

    std::int32_t usbcomwrite(const std::uint8_t* frame, std::int32_t) override
    {
        if (refuses()) return 1;
        if (frame[0] == 5) {
            for (std::size_t port = 0; port < 6; ++port) {
                s_.outputs[port] = frame[1 + 2 * port];
                s_.masks[port] = frame[2 + 2 * port];
            }
        } else if (frame[0] == 10) {
            s_.write_at = std::size_t{32768} * frame[1];
        } else if (frame[0] == 9 && replies_.ibuf1 != nullptr) {
            large_ = s_.large_ram && frame[1] == 1;
        }
        return 0;
    }
    std::int32_t usbbulkwrite(const std::uint8_t* data, std::int32_t length) override
    {
        if (refuses()) return 1;
        std::copy_n(data, length, s_.ram.begin() + static_cast<std::ptrdiff_t>(s_.write_at));
        s_.write_at += static_cast<std::size_t>(length);
        return 0;
    }
    std::int32_t usbbulkread(std::uint8_t* buffer, std::int32_t length, std::uint8_t* status) override
    {
        if (!s_.reads_end) return 0;
        std::copy_n(s_.ram.begin() + static_cast<std::ptrdiff_t>(s_.write_at), length - 1, buffer);
        if (s_.bad_blocks.contains(static_cast<int>(s_.write_at / 32768))) buffer[0] ^= 1;
        *status = 2;
        buffer[length - 1] = 170;
        return 0;
    }

    void setvcc(std::int32_t) override { s_.powered = true; }
    void setvpp(std::int32_t millivolts, std::uint8_t channel) override { s_.vpp[channel] = millivolts; }
    void gndpin(std::uint8_t, std::uint8_t) override { s_.powered = true; }
    void vccpin(std::uint8_t, std::uint8_t) override { s_.powered = true; }
    void vpppin(std::uint8_t, std::uint8_t) override { s_.powered = true; }
    void busmode(std::int32_t mode) override { s_.mode = mode; }
    void hwinit() override {}
    std::int32_t hwreset() override
    {
        s_.powered = false;
        s_.mode = 0;
        s_.driver_pin = 0;
        s_.masks.fill(255);
        s_.vpp.clear();
        return s_.hwreset_result;
    }
    std::int32_t ctlout(std::int32_t value, std::uint8_t address) override
    {
        const int pin = value - 128;
        s_.driver_pin = s_.driver_pin == pin ? 0 : pin;
        s_.driver = address;
        return s_.ctlout_result;
    }
    std::int32_t ctlin(std::uint8_t) override { return 0; }
    void regout(std::int32_t value, std::uint8_t address) override
    {
        if (address == 50) s_.level_switch = value;
        if (address >= 12) return;
        (address % 2 == 0 ? s_.outputs : s_.masks)[address / 2U] = static_cast<std::uint8_t>(value);
    }
    std::int32_t regin(std::uint8_t address) override { return address < 12 ? s_.read_ports()[address / 2U] : 0; }
    void delayms(std::int32_t) override {}
    void delayus(std::int32_t) override {}
    bool replywait(std::uint8_t, std::uint8_t, std::int32_t) override
    {
        if (s_.replies_until_lost == 0) return false;
        if (s_.replies_until_lost > 0) --s_.replies_until_lost;
        std::ranges::copy(s_.read_ports(), replies_.ibuf1);
        return true;
    }
    void replycheck(std::int32_t) override { replies_.ibuf1[0] = large_ ? 1 : 0; }

    void vecout(std::int32_t, std::uint8_t) override {}
    void vecstart() override {}
    void vecbyte(std::uint8_t) override {}
    void vecdelay(std::int32_t) override {}
    void vecdelay2(std::int32_t) override {}
    void vecgnd(std::uint8_t, std::uint8_t) override {}
    void vecvcc(std::uint8_t, std::uint8_t) override {}
    void vecvpp(std::uint8_t, std::uint8_t) override {}
    void hwrelease() override {}
    void hwfault() override {}
    std::int32_t boardsel(std::uint8_t code) override
    {
        s_.board = code;
        return 0;
    }
    void boardsel2(std::uint8_t first, std::uint8_t) override { s_.board = first; }

    small_programmer& s_;
    hw::reply_memory replies_;
    bool large_ = false;
};

}  // namespace

std::array<std::uint8_t, 6> small_programmer::read_ports()
{
    std::array<std::uint8_t, 6> read{};
    if (board >= 0 && mode == 1) {
        for (int reg = 1; reg < 6; ++reg) {
            const auto port = static_cast<std::size_t>(reg);
            const int value = outputs[port] & bits_of(board, reg);
            read[port] = static_cast<std::uint8_t>(spoil_register ? spoil_register(board, reg, value) : value);
        }
        return read;
    }
    const auto driven = [&](int lamp) {
        const auto [port, bit] = place_of(lamp);
        return (masks[port] >> bit & 1) == 0;
    };
    const auto output = [&](int lamp) {
        const auto [port, bit] = place_of(lamp);
        return (outputs[port] >> bit & 1) != 0;
    };
    std::vector<bool> levels(contacts, !(board == 7 && level_switch == 1));
    for (int lamp = 0; lamp < contacts; ++lamp) {
        const bool linked = test_board && lamp != open_line && contacts - 1 - lamp != open_line;
        if (linked && driven(contacts - 1 - lamp)) levels[static_cast<std::size_t>(lamp)] = output(contacts - 1 - lamp);
        if (driven(lamp)) levels[static_cast<std::size_t>(lamp)] = output(lamp);
        if (driver_pin == lamp + 1) levels[static_cast<std::size_t>(lamp)] = driver != 138;
    }
    if (spoil) spoil(levels);
    for (int lamp = 0; lamp < contacts; ++lamp) {
        const auto [port, bit] = place_of(lamp);
        if (levels[static_cast<std::size_t>(lamp)]) read[port] = static_cast<std::uint8_t>(read[port] | 1U << bit);
    }
    return read;
}

hw::programmer_source small_programmer::source()
{
    return [this](const hw::reply_memory& replies) { return std::make_unique<running>(*this, replies); };
}

}  // namespace tamrix::tests
