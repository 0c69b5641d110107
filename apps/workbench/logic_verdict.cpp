#include "workbench/logic_verdict.h"

namespace tamrix::workbench {

namespace {

std::string rows_text(int count) { return std::to_string(count) + (count == 1 ? " row" : " rows"); }

std::string pins_text(const std::vector<int>& pins)
{
    if (pins.empty()) return {};
    std::string text = pins.size() == 1 ? " (pin " : " (pins ";
    for (const int pin : pins) text += (pin == pins.front() ? "" : ", ") + std::to_string(pin);
    return text + ")";
}

}  // namespace

logic_test taken_over(const tamrix_logic_test& described)
{
    logic_test test{described.result, described.device, described.pins, described.rows_failed, described.rows_ignored};
    for (int pin = 1; pin <= 64; ++pin)
        if ((described.failed_pins >> (pin - 1) & 1) != 0) test.failed_pins.push_back(pin);
    return test;
}

std::string words_of(const logic_test& test)
{
    switch (test.result) {
    case TAMRIX_LOGIC_NOTHING_PLAYED: return "no vectors were played";
    case TAMRIX_LOGIC_NOT_CARRIED_OUT: return "not carried out, the programmer was not reached";
    case TAMRIX_LOGIC_PASSED:
        if (test.rows_failed == 0) return "passed";
        return rows_text(test.rows_failed) + " failed, ignored" + pins_text(test.failed_pins);
    case TAMRIX_LOGIC_FAILED: break;
    }
    std::string text = "failed, " + rows_text(test.rows_failed);
    if (test.rows_ignored != 0) text += ", " + std::to_string(test.rows_ignored) + " ignored";
    return text + pins_text(test.failed_pins);
}

bool is_trouble(const logic_test& test) { return test.result != TAMRIX_LOGIC_PASSED || test.rows_failed != 0; }

}  // namespace tamrix::workbench
