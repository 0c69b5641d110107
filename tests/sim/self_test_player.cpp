#include "sim/self_test_player.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

namespace {

/// Pin of 48, from 1, that a bit of a port belongs to.
int pin_of(int port, int bit) { return 21 + bit + 4 * port * (2 * (bit / 4) - 1); }

constexpr std::uint8_t vpp = 135, vcc = 137, ground = 138;

int last_board(int model, bool usb)
{
    if (model == 1 || (model == 2 && !usb)) return 14;
    for (const int one : {0, 2, 3, 4, 9, 10, 13, 14}) {
        if (model == one) return 16;
    }
    return (model >= 5 && model <= 8) || (model >= 15 && model <= 18) ? 7 : 0;
}

int registers_of(int board)
{
    constexpr int counts[] = {4, 0, 4, 2, 0, 0, 2, 5, 5, 3, 2, 2, 2, 2, 0, 5, 0};
    return counts[board];
}

std::uint8_t expected(int board, int number)
{
    constexpr int all = 255;
    constexpr int table[17][5] = {{all, all, all, all, all}, {all, all, 15, 15, all},   {all, all, 0, 2, all},
                                  {all, all, all, all, all}, {all, all, all, 127, 1},   {all, all, 15, 15, all},
                                  {0, 0, 32, 0, all},        {all, all, all, all, all}, {all, all, all, 31, 0},
                                  {all, all, all, 56, 0},    {all, all, 4, 0, all},     {0, 0, 32, 0, all},
                                  {0, 0, 127, 0, 0},         {0, 0, 127, 0, 0},         {all, all, all, all, 0},
                                  {all, all, 0, 2, 2},       {all, all, 63, 15, all}};
    return static_cast<std::uint8_t>(table[board][number - 1]);
}

}  // namespace

self_test_player::self_test_player(int its_model, bool by_usb, int generation)
    : bench{its_model, 0, generation}, usb_route{by_usb}, full{generation == 17}
{}

void self_test_player::send(std::int32_t length)
{
    ibuf1.fill(0x5A);
    EXPECT_EQ(usb.usbcomwrite(sent.data(), length), 0);
}

void self_test_player::fill(std::uint8_t outputs, std::uint8_t companions)
{
    sent[0] = 5;
    for (std::size_t i = 1; i <= 12; ++i) sent[i] = i % 2 != 0 ? outputs : companions;
}

ports self_test_player::answer()
{
    ports levels{};
    EXPECT_TRUE(device.replywait(3, 0, 0));
    for (std::size_t port = 0; port < 6; ++port) levels[port] = ibuf1[port];
    return levels;
}

ports self_test_player::read_after_switch()
{
    if (usb_route) return answer();
    ports levels{};
    for (std::uint8_t port = 0; port < 6; ++port)
        levels[port] = static_cast<std::uint8_t>(device.regin(static_cast<std::uint8_t>(2 * port)));
    return levels;
}

std::vector<int> self_test_player::unlike(const ports& levels, int level, int pin, int partner, int count) const
{
    std::vector<int> found;
    for (int port = 0; port < count; ++port) {
        for (int bit = 0; bit < 8; ++bit) {
            const int here = pin_of(port, bit);
            const int wanted = here == pin || here == partner ? 1 - level : level;
            if ((levels[static_cast<std::size_t>(port)] >> bit & 1) != wanted) found.push_back(here);
        }
    }
    return found;
}

void self_test_player::select(std::uint8_t function)
{
    if (model >= 40) {
        device.boardsel2(function == 7 ? 7 : 0, 3);
    } else {
        EXPECT_EQ(device.boardsel(function), 0);
    }
}

void self_test_player::begin()
{
    if (!usb_route) device.hwinit();
    EXPECT_EQ(device.hwreset(), 0);
    select(3);
    device.delayms(100);
}

void self_test_player::read_inputs(int level)
{
    device.regout(1 - level, 50);
    ports levels{};
    if (usb_route) {
        fill(level != 0 ? 255 : 0, 255);
        send(15);
        levels = answer();
    } else {
        device.delayms(100);
        for (std::uint8_t port = 0; port < 6; ++port) device.regout(255, static_cast<std::uint8_t>(2 * port + 1));
        levels = read_after_switch();
    }
    for (const int pin : unlike(levels, level, 0, 0, full ? 6 : 5))
        wrong.push_back("pin " + std::to_string(pin) + " is not " + std::to_string(level));
}

void self_test_player::input_stage()
{
    if (forty()) {
        fill(255, 0);
        sent[13] = 10;
        send(15);
        device.delayms(500);
        device.delayms(500);
        fill(255, 255);
        send(15);
    }
    read_inputs(1);
    select(7);
    read_inputs(0);
    device.regout(1, 50);
}

std::vector<int> self_test_player::pins_of(std::uint8_t code) const
{
    const bool all = model == 9 || model == 10 || model == 13 || model == 14 || (model >= 40 && model != 57);
    std::vector<int> pins;
    for (int pin = 1; all && pin <= 48; ++pin) pins.push_back(pin);
    if (model != 15 && model != 57) return pins;
    if (code == ground) return {13, 14, 17, 18, 19, 20, 21, 23, 24, 26, 27, 28, 30, 31, 33, 34};
    if (code == vcc) return {11, 13, 15, 16, 17, 20, 24, 25, 26, 27, 28, 29, 30, 33, 34, 35, 36, 37, 39, 43, 45};
    if (model == 57) return {};
    return {4, 8, 10, 11, 12, 13, 14, 15, 16, 17, 18, 20, 23, 31, 32, 33, 34, 37, 38};
}

void self_test_player::driver_stage(const char* name, std::uint8_t code, int level)
{
    for (const int tested : pins_of(code)) {
        ibuf1.fill(0x5A);
        EXPECT_EQ(device.ctlout(tested + 128, code), 0);
        device.delayms(20);
        for (const int pin : unlike(read_after_switch(), level, tested, tested, full ? 6 : 5)) {
            if (pin == tested || full || (tested > 4 && tested < 45)) {
                wrong.push_back(std::string{name} + " at pin " + std::to_string(tested) + ": pin " +
                                std::to_string(pin));
            }
        }
        device.ctlout(tested + 128, code);
        device.delayms(50);
    }
}

void self_test_player::reset_ports()
{
    select(3);
    device.busmode(0);
    if (!usb_route) return;
    for (const std::uint8_t companions : {0, 0, 255}) {
        fill(255, companions);
        send(15);
        device.delayms(500);
    }
}

std::vector<int> self_test_player::board_pass(int count, bool ones)
{
    std::vector<int> found;
    if (usb_route) {
        fill(ones ? 255 : 0, 0);
        if (!ones) sent[13] = 0;
        send(15);
        device.delayms(1);
        const ports levels = answer();
        for (int i = 1; i <= count; ++i) found.push_back(levels[static_cast<std::size_t>(i)]);
        return found;
    }
    for (int i = 1; i <= count; ++i) {
        device.regout(0, static_cast<std::uint8_t>(2 * i + 1));
        device.regout(ones ? 255 : 0, static_cast<std::uint8_t>(2 * i));
    }
    for (int i = 1; i <= count; ++i) found.push_back(device.regin(static_cast<std::uint8_t>(2 * i)));
    return found;
}

void self_test_player::register_stage()
{
    device.regout(0, 11);
    device.hwreset();
    for (int board = 0; board <= last_board(model, usb_route); ++board) {
        if ((full && board == 7) || (model < 9 && (board == 3 || board == 4))) continue;
        device.boardsel(static_cast<std::uint8_t>(board));
        for (const bool ones : {false, true}) {
            device.busmode(ones ? 1 : 0);
            const auto values = board_pass(registers_of(board), ones);
            for (std::size_t i = 0; i < values.size(); ++i) {
                const int number = static_cast<int>(i) + 1;
                if (values[i] == (ones ? expected(board, number) : 0)) continue;
                wrong.push_back("board " + std::to_string(board) + " register " + std::to_string(number) +
                                (ones ? " ones" : " zeroes"));
            }
        }
    }
    device.hwrelease();
}

const self_test_player::texts& self_test_player::system_test()
{
    begin();
    input_stage();
    driver_stage("VPP", vpp, 0);
    driver_stage("VCC", vcc, 0);
    reset_ports();
    driver_stage("GND", ground, 1);
    if (model < 40 && !(forty() && model != 22)) register_stage();
    return wrong;
}

int self_test_player::sweep(int first, int limit, int level, int side)
{
    if (model >= 40) {
        device.boardsel2(7, 0);
        device.setvcc(5000);
        device.delayms(100);
    } else if (!usb_route) {
        device.regout(1 - level, 50);
    }
    const std::uint8_t idle = level != 0 ? 255 : 0;
    fill(idle, side == 0 ? 240 : 15);
    for (int i = 0; i < 2; ++i) {
        send(15);
        device.delayms(500);
    }
    int count = 0, last_port = -1;
    for (int k = first; k < limit; ++k) {
        const int port = 5 - k / 4;
        if (last_port >= 0 && port != last_port) device.regout(idle, static_cast<std::uint8_t>(2 * last_port));
        last_port = port;
        const int bit = side == 0 ? 1 << k % 4 : 128 >> k % 4;
        device.regout(level != 0 ? 255 - bit : bit, static_cast<std::uint8_t>(2 * port));
        const auto found = unlike(read_after_switch(), level, k + 1, 48 - k, 6);
        count += static_cast<int>(found.size());
        for (const int pin : found)
            wrong.push_back("line " + std::to_string(k) + " level " + std::to_string(level) + ": pin " +
                            std::to_string(pin));
    }
    return count;
}

std::vector<int> self_test_player::output_test()
{
    if (forty()) {
        device.hwreset();
        device.regout(0, 50);
        for (const std::uint8_t address : {50, 2, 4, 6, 8}) device.regout(255, address);
    } else if (model >= 40) {
        device.boardsel2(0, 3);
    } else {
        device.boardsel(0);
    }
    std::vector<int> counts;
    const int first = model >= 40 ? 0 : 4;
    for (const auto& [level, side] : {std::pair{1, 0}, {0, 0}, {0, 1}, {1, 1}})
        counts.push_back(sweep(first, 24, level, side));
    if (model >= 40 || forty()) return counts;
    if (!full) {
        device.boardsel(7);
        device.delayms(500);
    }
    for (const auto& [level, side] : {std::pair{0, 0}, {1, 0}, {0, 1}, {1, 1}})
        counts.push_back(sweep(0, 4, level, side));
    return counts;
}

}  // namespace tamrix::tests
