#include "sim/function_board.h"

namespace tamrix::sim {

namespace {

constexpr int pin_test = 3, input_test = 7;

struct partial_register {
    int board, number;
    std::uint8_t bits;
};

/// Registers of which a board has fewer than eight bits; all others are complete.
constexpr partial_register partial_registers[] = {
    {1, 3, 15}, {1, 4, 15}, {2, 3, 0},    {2, 4, 2},  {4, 4, 127}, {4, 5, 1},  {5, 3, 15},  {5, 4, 15},
    {6, 1, 0},  {6, 2, 0},  {6, 3, 32},   {6, 4, 0},  {7, 0, 0},   {8, 4, 31}, {8, 5, 0},   {9, 0, 127},
    {9, 4, 56}, {9, 5, 0},  {10, 3, 4},   {10, 4, 0}, {11, 1, 0},  {11, 2, 0}, {11, 3, 32}, {11, 4, 0},
    {12, 1, 0}, {12, 2, 0}, {12, 3, 127}, {12, 4, 0}, {12, 5, 0},  {13, 1, 0}, {13, 2, 0},  {13, 3, 127},
    {13, 4, 0}, {13, 5, 0}, {14, 5, 0},   {15, 3, 0}, {15, 4, 2},  {15, 5, 2}, {16, 3, 63}, {16, 4, 15}};

}  // namespace

void function_board::select(int code)
{
    code_ = code;
    driver_test_ = code == pin_test || code == input_test;
}

void function_board::select(int first, int second)
{
    code_ = first;
    driver_test_ = second == pin_test && (first == 0 || first == input_test);
}

void function_board::reset()
{
    code_.reset();
    driver_test_ = false;
    mode_ = 0;
}

std::uint8_t function_board::read_back(int number, std::uint8_t written) const
{
    for (const partial_register& one : partial_registers) {
        if (code_ == one.board && number == one.number) return written & one.bits;
    }
    return written;
}

std::uint8_t function_board::wrong_bits(int number) const
{
    return handed_over_ && code_ && faults_.bad_registers.contains({*code_, number}) ? 1 : 0;
}

}  // namespace tamrix::sim
