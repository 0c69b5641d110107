#include "seen_faults.h"
#include "tested_model.h"

#include <algorithm>

namespace tamrix::tests {

namespace {

std::string why_modules_hide(const single_fault& fault)
{
    using enum fault_kind;
    if (fault.kind == fpga_idle_once || fault.kind == fpga_idle_twice) return "the image is sent up to four times";
    if (fault.kind == board_missing) return "only an Output Test uses the board";
    return fault.module == 0 && fault.kind < bad_register ? "the unit's own socket is not tested" : "";
}

std::string why_sweeps_hide(const single_fault& fault)
{
    using enum fault_kind;
    switch (fault.kind) {
    case vpp_dead:
    case vcc_dead:
    case ground_dead: return "the sweeps switch no supply and no ground";
    case vpp_on:
    case vcc_on: return "its rail has no voltage while the sweeps run";
    case high_dead: return "a released pin is pulled up as well";
    case high_on: return "a port that drives low is stronger, and others are pulled up";
    case low_dead: return "a released pin is pulled down as well";
    case pull_down_dead: return "the pins are driven through the board";
    case bridge: return "the board joins these pins as well";
    default: return "";
    }
}

}  // namespace

std::string why_invisible(const situation& where, const single_fault& fault)
{
    using enum fault_kind;
    const tested_model model = tested_model_of(where.model);
    if (model.modules != 0)
        if (std::string why = why_modules_hide(fault); !why.empty()) return why;
    if (model.memory_alone && (fault.kind != bad_bank || fault.at < model.banks))
        return fault.kind == bad_bank ? "only tested by USB" : "the model tests its memory alone";
    if (where.test_board)
        if (std::string why = why_sweeps_hide(fault); !why.empty()) return why;
    switch (fault.kind) {
    case bad_bank: return "the model does not have this bank";
    case bad_register: return "the model does not test this register";
    case ground_dead:
        if (model.vpp.empty() && model.vcc.empty()) return "the model does not switch this driver";
        return "the ground stage shows nothing and asks nothing";
    case high_dead: return "a released pin is pulled up as well";
    case low_dead: return "no register test of its port drives this pin low";
    case line_open: return "only an Output Test uses the board";
    case vpp_dead:
    case vcc_dead: {
        const auto list = fault.kind == vpp_dead ? model.vpp : model.vcc;
        if (std::ranges::count(list, fault.at) == 0) return "the model does not switch this driver";
        break;
    }
    case bridge:
        if (model.vpp.empty() && model.vcc.empty()) return "no stage drives one pin alone";
        if (where.model == 15 || where.model == 57) return "the model switches no driver at either pin";
        break;
    default: break;
    }
    return "only generation 17 reads this pin";
}

}  // namespace tamrix::tests
