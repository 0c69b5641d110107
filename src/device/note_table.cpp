#include "device/note_table.h"

#include "messages/message_numbers.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace tamrix::notes {

namespace {

constexpr figure T{total_length}, page{page_length}, vcch{vcc_high}, s{auxiliary};

constexpr memory program(const figure& length, int bytes_an_address)
{
    return {message::program_memory, range("000", length - 1), range("000", bytes_an_address * length - 1)};
}

constexpr memory config(const place& device, const place& buffer) { return {message::config_word, device, buffer}; }

/// `length` addresses of the device, from `device` on, lie in the buffer with two bytes each.
constexpr memory ids(const figure& device, int length)
{
    return {message::id_locations, range(device, device + length - 1), range(2 * device, 2 * (device + length) - 1)};
}

constexpr memory data(const char* first, const figure& length, const figure& buffer)
{
    return {message::data_memory, range(first, 2 * length - 1), range(2 * buffer, 2 * (length + buffer) - 1)};
}

constexpr memory auxiliary_block(const place& device, const place& buffer)
{
    return {message::auxiliary_program_memory, device, buffer};
}

constexpr memory plain(const figure& length)
{
    return {message::memory_from_0, range("000", length - 1), range("000", length - 1), {}, true};
}

constexpr memory named(std::string_view name, const place& device, const place& buffer)
{
    return {0, device, buffer, name};
}

constexpr note make(std::uint8_t number, std::initializer_list<memory> rows)
{
    note made{.number = number, .count = rows.size()};
    std::copy(rows.begin(), rows.end(), made.memories.begin());
    return made;
}

constexpr note widened(std::uint8_t number, std::initializer_list<memory> rows)
{
    note made = make(number, rows);
    made.long_rows = true;
    return made;
}

/// 12-bit devices: configuration after the memory.
constexpr note with_config_behind(std::uint8_t number, const char* config_address)
{
    constexpr figure t = T - 0x10;
    return make(number, {program(t, 2), ids(t, 4), config(at(config_address), range(2 * (t + 7), 2 * (t + 7) + 1))});
}

constexpr note with_data_memory(std::uint8_t number, const char* first, const figure& g)
{
    constexpr figure t = T - 0x10;
    return make(number, {program(t, 2), data(first, g, t), config(nowhere, at(2 * (g + t)))});
}

constexpr note plain_with_config(std::uint8_t number)
{
    constexpr figure t = T - 0x10;
    return make(number, {plain(t), config(nowhere, at(t))});
}

constexpr note with_option_rom(std::uint8_t number)
{
    constexpr figure t = T - 0x20;
    return make(number, {program(t, 2),
                         named("    Option ROM: ", as_text("000H---01FH    "), range(2 * t, 2 * (t + 0x20) - 1))});
}

/// Configuration bytes with names of their own.
constexpr note with_named_config(std::uint8_t number, const char* names)
{
    constexpr figure t = T - 0x10;
    return make(number, {program(t, 1), config(as_text(names), range(t, t + 1))});
}

constexpr figure p = 0x100 * figure{option_3};         // addresses of program memory, note 2
constexpr figure d = 0x40 * (figure{option_0} + 1);    // addresses of data memory, note 2
constexpr figure first_used = 0x10000 - 0x800 * page;  // note 12

constexpr note table[] = {
    with_config_behind(1, "FFF"),
    make(2, {program(p, 2),
             {message::data_memory, range("000", d - 1), range(0x4200, 2 * d + 0x4200 - 1)},
             {message::id_locations, range(0x2000, 0x2003), range(0x4000, 0x4007)},
             config(at(0x2007), range(0x400E, 0x400F))}),
    with_named_config(3, "FIGO---FIG1   "),
    with_config_behind(4, "2007"),
    with_named_config(5, "SByte, BVector  "),
    make(6, {program(T - 0x30, 1),
             {message::user_parameter, nowhere, range(T - 0x30, T - 0x30 + 0x1F)},
             config(at(0xFD00), at(T - 0x30 + 0x20))}),
    with_data_memory(7, "00", page),
    make(8, {program(T - 0x10, 2), config(nowhere, range(2 * (T - 0x10), 2 * (T - 0x10) + 1))}),
    plain_with_config(9),
    plain_with_config(10),
    plain_with_config(11),
    widened(12, {{message::program_memory, range(first_used, 0xFFFF), range(first_used, 0xFFFF)},
                 {message::id_locations, as_text(" F50H,F60H,F70H,F80H,F90H,FA0H,FB0H,FC0H,FD0H,FE0H"), nowhere}}),
    with_option_rom(13),
    with_option_rom(14),
    with_option_rom(15),
    with_data_memory(16, "000", vcch),
    widened(17, {program(T - 0x1000, 1), auxiliary_block(range("000", "0FFF"), range(T - 0x1000, T - 1))}),
    widened(18, {program(T - s, 2), auxiliary_block(range("0000", s - 1), range(2 * (T - s), 2 * T - 1))}),
    make(21, {program(T - 0x10, 2), ids(T - 0x10, 8),
              config(nowhere, range(2 * (T - 0x10 + 15), 2 * (T - 0x10 + 15) + 1))}),
    make(22, {program(T, 1), config(nowhere, range(T, T + 0x10 * (vcch + 1)))}),
    widened(23, {program(T - 0x1010, 1), auxiliary_block(range("000", "0FFF"), range(T - 0x1010, T - 0x1010 + 0xFFF))}),
    make(24, {named("    BLOCK0: ", range("000", T - 0x2000 - 1), range("000", T - 0x2000 - 1)),
              named("    BLOCK1: ", as_text("000H---01FFFH  "), range(T - 0x2000, T - 0x2000 + 0x1FFF))}),
    widened(25, {program(T - s, 1), auxiliary_block(range("0000", s - 1), range(T - s, T - 1))}),
};

}  // namespace

const note* find_note(std::uint8_t number)
{
    const auto* const found = std::ranges::find(table, number, &note::number);
    return found != std::end(table) ? found : nullptr;
}

}  // namespace tamrix::notes
