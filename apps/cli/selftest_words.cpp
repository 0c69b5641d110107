#include "cli/selftest_words.h"

#include "cli/json.h"
#include "cli/number_text.h"
#include "selftest/socket_frame.h"
#include "selftest/verdict.h"

#include <cmath>

namespace tamrix::cli {

namespace {

constexpr double millivolts_per_volt = 1000;

/// A reading to a tenth of a millivolt, so that one that is right deviates by nothing.
double millivolts_of(double volts) { return std::round(volts * millivolts_per_volt * 10) / 10; }

std::string volts(double millivolts) { return formatted("%.3f V", millivolts / millivolts_per_volt); }

struct place {
    int pin;
    std::string_view where;
};

/// A dialog without a socket shows the connector, whose lamp 0 is pin 1.
place place_of(const selftest_frame& form, int lamp)
{
    const auto* const with_socket = dynamic_cast<const socket_frame*>(&form);
    if (with_socket == nullptr) return {lamp + 1, "connector"};
    return {with_socket->socket.drawn().pin_of(lamp), "socket"};
}

std::string object_of(const selftest_fault& fault)
{
    const auto number = [](int value) { return std::to_string(value); };
    const auto unless_0 = [](int value) { return value != 0 ? std::to_string(value) : std::string{}; };
    const bool block = fault.stage == selftest_stage::ram, board = fault.stage == selftest_stage::registers;
    const bool at_pin = !block && !board;
    return json::object({{"text", json::string(words_of(fault))},
                         {"stage", json::string(name_of(fault.stage))},
                         {"module", unless_0(fault.slot)},
                         {"pin", at_pin ? number(fault.pin) : ""},
                         {"port", at_pin ? number(fault.port) : ""},
                         {"bit", at_pin ? number(fault.bit) : ""},
                         {"driven_pin", unless_0(fault.driven_pin)},
                         {"block", block ? number(fault.place) : ""},
                         {"board", board ? number(fault.board) : ""},
                         {"register", board ? number(fault.place) : ""},
                         {"expected", number(fault.expected)},
                         {"read", number(fault.read)}});
}

std::string object_of(const untested_pins& pins)
{
    return json::object({{"text", json::string(words_of(pins))},
                         {"stage", json::string(name_of(pins.stage))},
                         {"pins", std::to_string(pins.count)},
                         {"reason", json::string(pins.reason)}});
}

template <class T>
std::string array_of(const std::vector<T>& values)
{
    std::vector<std::string> objects;
    for (const T& value : values) objects.push_back(object_of(value));
    return json::array(objects);
}

std::string name_of(selftest_result result)
{
    switch (result) {
    case selftest_result::passed: return "passed";
    case selftest_result::failed: return "failed";
    case selftest_result::stopped: return "stopped";
    case selftest_result::not_answered: return "not answered";
    case selftest_result::communication_error: return "communication error";
    case selftest_result::no_test_board: return "no test board";
    default: return "none";
    }
}

std::string words_of_item(selftest_frame& form, int item)
{
    const option_plan& plan = form.plan()[static_cast<std::size_t>(item)];
    if (!plan.offered) return "this model does not have it";
    switch (plan.does) {
    case option_action::system_test: return "tests the programmer itself, with nothing in the socket";
    case option_action::output_test: return "drives each line and reads it back, with the test board in the socket";
    default: return words_of_voltage(form, plan.calibration);
    }
}

}  // namespace

std::string words_of_voltage(const selftest_frame& form, const calibration_plan& plan)
{
    const place at = place_of(form, plan.lamp);
    return volts(plan.millivolts) + " at pin " + std::to_string(at.pin) + " of the " + std::string{at.where} +
           ", ground at pin " + std::to_string(place_of(form, plan.ground_lamp).pin);
}

void print_items(selftest_frame& form, const selftest_options& options, console& con)
{
    std::vector<std::string> items;
    for (int item = 0; item < form.Option1.count(); ++item) {
        const std::string name = form.Option1(item).caption(), what = words_of_item(form, item);
        items.push_back(json::object({{"item", std::to_string(item)},
                                      {"name", json::string(name)},
                                      {"what", json::string(what)},
                                      {"offered", form.Option1(item).enabled() ? "true" : "false"}}));
        if (!options.json) con.line(std::to_string(item) + "  " + name + ": " + what);
    }
    if (options.json)
        con.line(json::object({{"model", std::to_string(options.socket.model)}, {"items", json::array(items)}}));
}

void selftest_output::status(const std::string& text)
{
    if (text.empty()) return;
    statuses_.push_back(json::string(text));
    if (!options_.json && !options_.brief) con_.status(text);
}

void selftest_output::ask(const std::string& text)
{
    if (options_.json) return con_.note(text);
    con_.line(text);
    con_.finish();
}

void selftest_output::calibration(const selftest_frame& form, const std::string& name, const calibration_plan& plan,
                                  std::optional<double> reading_volts)
{
    const double set = plan.millivolts, read = millivolts_of(reading_volts.value_or(0));
    const std::string deviation = formatted("%+.1f", read - set),
                      percent = formatted("%+.2f", (read - set) / set * 100);
    if (!options_.json) {
        const std::string compared =
            ", reading " + volts(read) + ", deviation " + deviation + " mV (" + percent + " %)";
        return con_.line(name + ": set value " + volts(set) + (reading_volts ? compared : ", no reading"));
    }
    const auto if_read = [&](double value, const char* format) {
        return reading_volts ? formatted(format, value) : std::string{};
    };
    con_.line(json::object({{"model", std::to_string(options_.socket.model)},
                            {"item", std::to_string(options_.item)},
                            {"name", json::string(name)},
                            {"status", json::array(statuses_)},
                            {"pin", std::to_string(place_of(form, plan.lamp).pin)},
                            {"ground_pin", std::to_string(place_of(form, plan.ground_lamp).pin)},
                            {"set_millivolts", std::to_string(plan.millivolts)},
                            {"reading_millivolts", if_read(read, "%.1f")},
                            {"deviation_millivolts", if_read(read - set, "%.1f")},
                            {"deviation_percent", if_read((read - set) / set * 100, "%.2f")}}));
}

void selftest_output::silent_calibration(const std::string& name)
{
    const selftest_report silent{.model = static_cast<std::int16_t>(options_.socket.model),
                                 .item = options_.item,
                                 .result = selftest_result::not_answered};
    run(silent, name);
}

void selftest_output::run(const selftest_report& report, const std::string& name)
{
    if (options_.json) {
        return con_.line(json::object({{"model", std::to_string(report.model)},
                                       {"route", json::string(options_.socket.usb ? "usb" : "devobj")},
                                       {"wfig", std::to_string(options_.socket.generation)},
                                       {"item", std::to_string(report.item)},
                                       {"name", json::string(name)},
                                       {"result", json::string(name_of(report.result))},
                                       {"status", json::array(statuses_)},
                                       {"faults", array_of(report.faults)},
                                       {"not_shown", array_of(report.kept_quiet)},
                                       {"not_tested", array_of(report.not_tested)}}));
    }
    for (const selftest_fault& fault : report.faults) con_.line("fault: " + words_of(fault));
    if (!options_.brief) {
        for (const selftest_fault& fault : report.kept_quiet) con_.line("seen, does not count: " + words_of(fault));
    }
    con_.line(name + ": " + verdict_of(report));
    if (options_.brief) return;
    for (const untested_pins& pins : report.not_tested) con_.line(words_of(pins));
}

}  // namespace tamrix::cli
