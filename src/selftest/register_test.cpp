#include "selftest/register_test.h"

#include "base/arith.h"
#include "base/other_side.h"
#include "channel/ports.h"
#include "messages/message_numbers.h"
#include "selftest/socket_frame.h"
#include "session/session.h"

#include <array>
#include <optional>

namespace tamrix {

namespace {

constexpr std::uint8_t function_switch = 11;  // a register
constexpr int last_register = 8, boards = 17;

using board_registers = std::array<std::uint8_t, last_register + 1>;

/// What each register holds after ones were written: not every bit is there.
constexpr auto expected_ones = [] {
    std::array<board_registers, boards> table{};
    for (board_registers& board : table) board.fill(255);
    struct entry {
        std::size_t board, reg;
        std::uint8_t value;
    };
    constexpr entry exceptions[] = {
        {1, 3, 15},   {1, 4, 15}, {2, 3, 0},  {2, 4, 2},  {4, 4, 127}, {4, 5, 1},    {5, 3, 15}, {5, 4, 15},
        {6, 1, 0},    {6, 2, 0},  {6, 3, 32}, {6, 4, 0},  {8, 4, 31},  {8, 5, 0},    {9, 4, 56}, {9, 5, 0},
        {10, 3, 4},   {10, 4, 0}, {11, 1, 0}, {11, 2, 0}, {11, 3, 32}, {11, 4, 0},   {12, 1, 0}, {12, 2, 0},
        {12, 3, 127}, {12, 4, 0}, {12, 5, 0}, {13, 1, 0}, {13, 2, 0},  {13, 3, 127}, {13, 4, 0}, {13, 5, 0},
        {14, 5, 0},   {15, 3, 0}, {15, 4, 2}, {15, 5, 2}, {16, 3, 63}, {16, 4, 15},
    };
    for (const entry& one : exceptions) table[one.board][one.reg] = one.value;
    return table;
}();

/// How many registers are tested, from register 1 on. Intentional: boards with 0 still get their frames.
constexpr std::array<std::uint8_t, boards> register_counts{4, 0, 4, 2, 0, 0, 2, 5, 5, 3, 2, 2, 2, 2, 0, 5, 0};

struct mismatch {
    int reg = 0, shown = 0;  // the number that the status shows
    int expected = 0, read = 0;
};

/// One pass over a board. False where no reply came.
class register_pass {
public:
    register_pass(const socket_frame& form, int registers) : form_{form}, registers_{registers} {}

    bool write_and_read(std::uint8_t data)
    {
        if (form_.by_usb()) return by_frame(data);
        hw::devobj& device = form_.device();
        for (int reg = 1; reg <= registers_; ++reg) {
            device.regout(0, hw::mask_register(static_cast<std::size_t>(reg)));
            device.regout(data, hw::data_register(static_cast<std::size_t>(reg)));
        }
        for (int reg = 1; reg <= registers_; ++reg)
            read_[static_cast<std::size_t>(reg)] =
                static_cast<std::uint8_t>(device.regin(hw::data_register(static_cast<std::size_t>(reg))));
        return true;
    }
    int read(int reg) const { return read_[static_cast<std::size_t>(reg)]; }

private:
    bool by_frame(std::uint8_t data)
    {
        if (!hw::send_pin_frame(form_.plug_in(), all_ports(data), all_ports(0), hw::frame_length::self_test_pins))
            return false;
        form_.device().delayms(1);
        if (!form_.device().replywait(3, 0, 0)) return false;
        for (int reg = 1; reg <= registers_; ++reg)
            read_[static_cast<std::size_t>(reg)] = hw::read_other_side(form_.plug_in().blocks.ibuf1(reg));
        return true;
    }

    const socket_frame& form_;
    int registers_;
    board_registers read_{};
};

/// False where a reply did not come; `found` holds the first mismatch.
bool test_board(const socket_frame& form, int board, std::optional<mismatch>& found)
{
    const auto at = static_cast<std::size_t>(board);
    const int registers = register_counts[at];
    hw::devobj& device = form.device();
    device.boardsel(static_cast<std::uint8_t>(board));
    device.busmode(0);
    register_pass pass{form, registers};
    if (form.by_usb()) form.plug_in().blocks.ubuf1(13) = 0;
    if (!pass.write_and_read(0)) return false;
    for (int reg = 1; reg <= registers; ++reg) {
        if (pass.read(reg) == 0) continue;
        found = mismatch{.reg = reg, .shown = reg, .expected = 0, .read = pass.read(reg)};
        return true;
    }
    device.busmode(1);
    if (!pass.write_and_read(255)) return false;
    for (int reg = 1; reg <= registers && !found; ++reg) {
        const int expected = expected_ones[at][static_cast<std::size_t>(reg)];
        if (pass.read(reg) != expected)
            found = mismatch{.reg = reg, .shown = reg + 10, .expected = expected, .read = pass.read(reg)};
    }
    return true;
}

bool is_tested(const socket_frame& form, const selftest_model& model, int board)
{
    const bool newer_generation = (form.plug_in().blocks.wfig(1) & 0xF0) == 0x10;
    if (board == 7) return !newer_generation;
    return (board != 3 && board != 4) || model.has_boards_3_and_4;
}

decision ask_about(socket_frame& form, int board, const mismatch& found)
{
    form.add(selftest_fault{.stage = selftest_stage::registers,
                            .board = board,
                            .place = found.reg,
                            .expected = found.expected,
                            .read = found.read});
    form.status(form.plug_in().text(message::register_fault) + std::to_string(board) + std::to_string(found.shown) +
                arith::hex(found.read));
    return form.runstp();
}

}  // namespace

stage_end test3030(socket_frame& form, const selftest_model& model)
{
    form.device().regout(0, function_switch);
    form.device().hwreset();
    const int last = form.by_usb() ? model.last_board_by_usb : model.last_board_by_registers;
    stage_end end = stage_end::passed;
    for (int board = 0; board <= last && end == stage_end::passed && !form.closed(); ++board) {
        if (!is_tested(form, model, board)) continue;
        std::optional<mismatch> found;
        if (!test_board(form, board, found)) return form.communication_error();
        if (found && ask_about(form, board, *found) == decision::stop) end = stage_end::stopped;
    }
    form.device().hwrelease();
    form.status("");
    return end;
}

}  // namespace tamrix
