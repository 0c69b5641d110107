#include "sim/faults.h"

#include "sim/fault_sentence.h"

#include <optional>
#include <utility>
#include <vector>

namespace tamrix::sim {

namespace {

constexpr int most_pins = 48, highest_left_code = 24, lowest_right_code = 101, highest_code = 124, most_banks = 16,
              highest_board = 16, highest_register = 5, modules = 4, most_times = 1'000'000;

pin_fault pin_fault_of(sentence& rest)
{
    if (rest.starts("open")) return pin_fault::open;
    if (rest.starts("stuck")) return rest.number(0, 1) == 0 ? pin_fault::stuck_low : pin_fault::stuck_high;
    rest.fail("\"open\" or \"stuck\"");
}

fault_count count_of(sentence& rest, int times_without_number)
{
    return fault_count{rest.ended() ? times_without_number : rest.number(1, most_times)};
}

int socket_pin_of(sentence& rest) { return rest.number(1, most_pins); }

void expect_word(sentence& rest, const char* word)
{
    if (!rest.starts(word)) rest.fail('"' + std::string{word} + '"');
}

void add_driver_fault(fault_set& faults, driver_kind kind, sentence& rest)
{
    const int pin = socket_pin_of(rest);
    if (rest.starts("dead")) {
        faults.drivers[{kind, pin}] = driver_fault::dead;
    } else if (rest.starts("always on")) {
        faults.drivers[{kind, pin}] = driver_fault::always_on;
    } else {
        rest.fail("\"dead\" or \"always on\"");
    }
}

void add_dead_code(fault_set& faults, sentence& rest, std::string_view text)
{
    const int code = rest.number(1, highest_code);
    if (code > highest_left_code && code < lowest_right_code)
        throw fault_error{"fault \"" + std::string{text} + "\": pin codes are 1 to 24 and 101 to 124"};
    faults.dead_drivers.insert(code);
}

void add_bridge(fault_set& faults, sentence& rest)
{
    const int one = socket_pin_of(rest);
    expect_word(rest, "and");
    faults.bridges.emplace(one, socket_pin_of(rest));
    expect_word(rest, "bridged");
}

void add_dead_pull_down(fault_set& faults, sentence& rest)
{
    if (rest.starts("dead")) {
        faults.no_pull_down = true;
        return;
    }
    faults.dead_pull_downs.insert(socket_pin_of(rest));
    expect_word(rest, "dead");
}

void add_board_fault(fault_set& faults, sentence& rest)
{
    if (rest.starts("missing")) {
        faults.no_test_board = true;
        return;
    }
    if (!rest.starts("line")) rest.fail("\"missing\" or \"line\"");
    faults.open_board_lines.insert(socket_pin_of(rest));
    expect_word(rest, "open");
}

void add_bad_register(fault_set& faults, sentence& rest)
{
    const int number = rest.number(0, highest_register);
    expect_word(rest, "of board");
    faults.bad_registers.emplace(rest.number(0, highest_board), number);
}

/// Faults of the programmer's pin electronics, its boards and the test board; false if the text begins with none.
bool add_electronics_fault(fault_set& faults, sentence& rest)
{
    constexpr std::pair<const char*, driver_kind> kinds[] = {{"vpp driver", driver_kind::vpp},
                                                             {"vcc driver", driver_kind::vcc},
                                                             {"ground driver", driver_kind::ground},
                                                             {"high driver", driver_kind::high},
                                                             {"low driver", driver_kind::low}};
    for (const auto& [words, kind] : kinds) {
        if (rest.starts(words)) return add_driver_fault(faults, kind, rest), true;
    }
    if (rest.starts("input")) {
        const int pin = socket_pin_of(rest);
        expect_word(rest, "stuck");
        faults.stuck_inputs[pin] = rest.number(0, 1) == 1;
        return true;
    }
    if (rest.starts("pins")) return add_bridge(faults, rest), true;
    if (rest.starts("pull-down")) return add_dead_pull_down(faults, rest), true;
    if (rest.starts("test board")) return add_board_fault(faults, rest), true;
    if (rest.starts("bad register")) return add_bad_register(faults, rest), true;
    return false;
}

/// Faults of the connection to the host and of the memory; false if the text begins with none.
bool add_traffic_fault(fault_set& faults, sentence& rest)
{
    if (rest.starts("lost reply")) {
        faults.lost_replies = count_of(rest, 1);
    } else if (rest.starts("read never ends")) {
        faults.reads_without_end = count_of(rest, fault_count::always);
    } else if (rest.starts("marker never comes")) {
        faults.lost_markers = count_of(rest, fault_count::always);
    } else if (rest.starts("no answer")) {
        faults.no_answer = true;
    } else if (rest.starts("bad ram bank")) {
        faults.bad_banks.insert(rest.number(0, most_banks - 1));
    } else {
        return false;
    }
    return true;
}

/// Faults of the instruments; false if the text begins with none.
bool add_instrument_fault(fault_set& faults, sentence& rest)
{
    if (rest.starts("no trigger")) {
        faults.no_trigger = true;
    } else if (rest.starts("no signal at the counter")) {
        faults.no_count = true;
    } else if (rest.starts("generator dead")) {
        faults.dead_generator = true;
    } else if (rest.starts("wrong reply")) {
        faults.wrong_reply = static_cast<std::uint8_t>(rest.number(0, 255));
    } else if (rest.starts("early reply")) {
        faults.early_reply = static_cast<std::uint8_t>(rest.number(0, 255));
    } else if (rest.starts("bank")) {
        faults.silent_banks.insert(rest.number(0, most_banks - 1));
        expect_word(rest, "never comes");
    } else {
        return false;
    }
    return true;
}

void add_module_fault(fault_set& wanted, sentence& rest)
{
    const int number = rest.number(1, modules);
    if (!rest.starts("missing")) rest.fail("\"missing\"");
    wanted.missing_modules.insert(number);
}

void add_missing_board(fault_set& wanted, sentence& rest)
{
    const int number = rest.number(1, modules);
    if (!rest.starts("missing")) rest.fail("\"missing\"");
    wanted.modules.resize(modules);
    wanted.modules[static_cast<std::size_t>(number - 1)].no_test_board = true;
}

void add_fpga_fault(fault_set& wanted, sentence& rest)
{
    const int number = rest.number(1, modules);
    if (!rest.starts("does not start")) rest.fail("\"does not start\"");
    const bool once = rest.starts("once"), twice = !once && rest.starts("twice");
    wanted.idle_fpgas[number] = once || twice ? fault_count{once ? 1 : 2} : count_of(rest, fault_count::always);
}

void add_named(fault_set& wanted, sentence& rest, const std::string& text)
{
    if (rest.starts("pin")) {
        const int pin = rest.number(1, most_pins);
        wanted.pins[pin] = pin_fault_of(rest);
    } else if (rest.starts("dead driver")) {
        add_dead_code(wanted, rest, text);
    } else if (rest.starts("module")) {
        add_module_fault(wanted, rest);
    } else if (rest.starts("test board of module")) {
        add_missing_board(wanted, rest);
    } else if (rest.starts("fpga")) {
        add_fpga_fault(wanted, rest);
    } else if (!add_electronics_fault(wanted, rest) && !add_traffic_fault(wanted, rest) &&
               !add_instrument_fault(wanted, rest)) {
        rest.fail(
            "\"pin\", \"dead driver\", \"vpp driver\", \"vcc driver\", \"ground driver\", \"high driver\", \"low "
            "driver\", \"input\", \"pins\", \"pull-down\", \"test board\", \"bad register\", \"lost reply\", \"read "
            "never ends\", \"marker never comes\", \"no answer\", \"bad ram bank\", \"bank\", \"no trigger\", \"wrong "
            "reply\", \"early reply\", \"no signal at the counter\", \"generator dead\", \"module\" or \"fpga\"");
    }
    rest.end();
}

/// The set of one module, where only what it has itself can go wrong.
fault_set& set_of_module(fault_set& wanted, int number, const sentence& rest)
{
    sentence tried{rest};
    for (const char* const of_all : {"lost", "read", "marker", "no", "module", "test board of module", "fpga", "bank",
                                     "wrong", "early", "generator"}) {
        if (tried.starts(of_all)) rest.fail("a fault of a pin, a driver or the memory");
    }
    wanted.modules.resize(modules);
    return wanted.modules[static_cast<std::size_t>(number - 1)];
}

}  // namespace

void add_fault(fault_set& faults, std::string_view text)
{
    sentence rest{text};
    fault_set wanted = faults;  // nothing changes where the text is wrong
    const auto module = rest.ends("of module", modules);
    add_named(module ? set_of_module(wanted, *module, rest) : wanted, rest, std::string{text});
    faults = std::move(wanted);
}

}  // namespace tamrix::sim
