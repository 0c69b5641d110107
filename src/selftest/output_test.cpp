#include "selftest/output_test.h"

#include "messages/message_numbers.h"
#include "selftest/output_sweep.h"
#include "selftest/socket_frame.h"
#include "session/session.h"

namespace tamrix {

namespace {

constexpr sweep_plan inner_pins[] = {
    {.first = 4, .limit = 24, .level = 1, .side = 0},
    {.first = 4, .limit = 24, .level = 0, .side = 0},
    {.first = 4, .limit = 24, .level = 0, .side = 1},
    {.first = 4, .limit = 24, .level = 1, .side = 1},
};
constexpr sweep_plan outermost_pins[] = {
    {.first = 0, .limit = 4, .level = 0, .side = 0},
    {.first = 0, .limit = 4, .level = 1, .side = 0},
    {.first = 0, .limit = 4, .level = 0, .side = 1},
    {.first = 0, .limit = 4, .level = 1, .side = 1},
};
constexpr sweep_plan whole_sides[] = {
    {.first = 0, .limit = 24, .level = 1, .side = 0},
    {.first = 0, .limit = 24, .level = 0, .side = 0},
    {.first = 0, .limit = 24, .level = 0, .side = 1},
    {.first = 0, .limit = 24, .level = 1, .side = 1},
};
constexpr int no_board_in_two_parts[] = {20}, no_board_of_whole_sides[] = {24, 552};

std::string announcement(const socket_frame& form)
{
    return form.plug_in().text(message::dot) + form.plug_in().text(message::output_test) + ".....";
}

/// By USB the inputs stay as they are.
stage_end sweep_pulled(socket_frame& form, const pin_access& access, const sweep_plan& plan)
{
    if (!form.by_usb()) form.device().regout(plan.level == 0 ? 1 : 0, level_switch);
    return sweep_outputs(form, access, no_board_in_two_parts, plan);
}

stage_end sweep_fed(socket_frame& form, const pin_access& access, const sweep_plan& plan)
{
    form.device().boardsel2(7, 0);
    form.device().setvcc(5000);
    form.device().delayms(100);
    return sweep_outputs(form, access, no_board_of_whole_sides, plan);
}

}  // namespace

stage_end test_outputs_in_two_parts(socket_frame& form, const pin_access& access)
{
    form.device().boardsel(0);
    form.clearpins();
    form.status(announcement(form));
    for (const sweep_plan& plan : inner_pins)
        if (const stage_end end = sweep_pulled(form, access, plan); end != stage_end::passed) return end;
    if (!form.generation_17()) {
        form.device().boardsel(7);
        form.device().delayms(500);
    }
    for (const sweep_plan& plan : outermost_pins)
        if (const stage_end end = sweep_pulled(form, access, plan); end != stage_end::passed) return end;
    return stage_end::passed;
}

stage_end test_outputs_of_whole_sides(socket_frame& form, const pin_access& access, output_pattern pattern)
{
    form.device().boardsel2(0, 3);
    form.clearpins();
    form.status(announcement(form));
    for (sweep_plan plan : whole_sides) {
        if (pattern == output_pattern::low_first) plan.level = 1 - plan.level;
        if (const stage_end end = sweep_fed(form, access, plan); end != stage_end::passed) return end;
    }
    return stage_end::passed;
}

}  // namespace tamrix
