#include "selftest/selftest_fault.h"

#include "base/arith.h"

#include <algorithm>

namespace tamrix {

namespace {

std::string level_name(int level) { return level != 0 ? "high" : "low"; }

std::string place_of(const selftest_fault& fault)
{
    const std::string number = std::to_string(fault.place);
    if (fault.stage == selftest_stage::ram) return "RAM block " + number;
    if (fault.stage == selftest_stage::registers) return "board " + std::to_string(fault.board) + " register " + number;
    const std::string pin = fault.pin != 0 ? "pin " + std::to_string(fault.pin) : "a line without a pin";
    return pin + " (port " + std::to_string(fault.port) + " bit " + std::to_string(fault.bit) + ")";
}

/// What was switched on while the pin was read.
std::string cause_of(const selftest_fault& fault)
{
    const std::string stage = ": " + name_of(fault.stage);
    const bool elsewhere = fault.driven_pin != 0 && fault.driven_pin != fault.pin;
    return elsewhere ? stage + " of pin " + std::to_string(fault.driven_pin) : stage;
}

}  // namespace

std::string name_of(selftest_stage stage)
{
    switch (stage) {
    case selftest_stage::ram: return "RAM";
    case selftest_stage::fpga: return "FPGA";
    case selftest_stage::input: return "input";
    case selftest_stage::vpp: return "VPP driver";
    case selftest_stage::vcc: return "VCC driver";
    case selftest_stage::ground: return "GND driver";
    case selftest_stage::registers: return "register";
    default: return "output";
    }
}

std::string words_of(const selftest_fault& fault)
{
    const std::string module = fault.slot != 0 ? "module " + std::to_string(fault.slot) + " " : "";
    if (fault.stage == selftest_stage::fpga) return module + name_of(fault.stage) + ": not loaded";
    const std::string place = module + place_of(fault);
    const bool compared = fault.expected != fault.read;
    if (fault.stage == selftest_stage::ram && !compared) return place + ": could not be tested";
    if (fault.stage == selftest_stage::ram || fault.stage == selftest_stage::registers)
        return place + ": expected " + arith::hex(fault.expected) + ", read " + arith::hex(fault.read);
    return place + cause_of(fault) + ": expected " + level_name(fault.expected) + ", read " + level_name(fault.read);
}

std::string words_of(const untested_pins& pins)
{
    const std::string count = std::to_string(pins.count) + (pins.count == 1 ? " pin " : " pins ");
    return name_of(pins.stage) + ": " + (pins.count == 0 ? "" : count) + "not tested (" + pins.reason + ")";
}

std::string short_words_of(const std::vector<untested_pins>& all)
{
    std::vector<untested_pins> sums;
    for (const untested_pins& pins : all) {
        const auto same = std::ranges::find(sums, pins.stage, &untested_pins::stage);
        if (same == sums.end()) {
            sums.push_back(pins);
        } else {
            same->count += pins.count;
        }
    }
    std::string text = "not tested:";
    for (const untested_pins& pins : sums) {
        text += &pins == sums.data() ? " " : ", ";
        if (pins.count != 0) text += std::to_string(pins.count) + " ";
        text += name_of(pins.stage);
    }
    return text;
}

}  // namespace tamrix
