#include "ttl/run/prepare.h"

#include "channel/model.h"
#include "session/session.h"

#include <utility>

namespace tamrix {

bool is_cmos_name(std::string_view name)
{
    const std::string_view family = name.substr(0, 2);
    return family == "45" || family == "40" || family == "NP";
}

void select_family_board(session& plug_in, bool cmos) { plug_in.hardware.device().boardsel2(3, cmos ? 45 : 0); }

void select_board(session& plug_in, std::string_view name)
{
    if (hw::model_of(plug_in.blocks.modeltype(0)).selects_two_boards) select_family_board(plug_in, is_cmos_name(name));
}

bool reset_hardware(session& plug_in, ttl_variables& ttl)
{
    if (plug_in.hardware.device().hwreset() != 1) return true;
    plug_in.hardware.device().hwfault();
    ttl.outcome = {.what = run_outcome::kind::no_answer};
    return false;
}

void keep_test(ttl_variables& ttl, std::string device)
{
    ttl.tests.push_back({std::move(device), ttl.ttlpin, ttl.outcome});
}

bool prepare_supply(session& plug_in, ttl_variables& ttl, std::string_view name)
{
    if (!reset_hardware(plug_in, ttl)) return false;
    select_board(plug_in, name);
    plug_in.hardware.device().busmode(0);
    plug_in.hardware.device().setvcc(logic_millivolts);
    return true;
}

}  // namespace tamrix
