#include "self_test_forms.h"

#include "channel/model.h"
#include "selftest/pinnote.h"
#include "selftest/pinnote204.h"
#include "selftest/pinnote4.h"
#include "selftest/pinnoteISP.h"
#include "selftest/pinnote_sepm.h"

#include <algorithm>
#include <stdexcept>

namespace tamrix::tests {

namespace {

template <class Dialog>
void show(sim_bench& b, const std::function<void(selftest_frame&)>& steps)
{
    Dialog dialog{b.session, b.variables.selftest};
    b.shell.during(dialog, [&] { steps(dialog); });
}

constexpr form_of_test forms[] = {
    {.name = "pinnote", .output_option = 6, .show = &show<pinnote>},
    {.name = "pinnote204", .output_option = 6, .show = &show<pinnote204>},
    {.name = "pinnote4", .output_option = 6, .show = &show<pinnote4>},
    {.name = "pinnoteISP", .output_option = 4, .show = &show<pinnoteISP>},
    {.name = "pinnote_sepm", .output_option = 4, .show = &show<pinnote_sepm>},
};

}  // namespace

const form_of_test* form_named(std::string_view name)
{
    const auto* const found = std::ranges::find(forms, name, &form_of_test::name);
    return found == std::ranges::end(forms) ? nullptr : found;
}

const form_of_test& form_of(std::int16_t model)
{
    const form_of_test* const found = form_named(hw::model_of(model).self_test_form);
    if (found == nullptr) throw std::logic_error{"no such form yet"};
    return *found;
}

}  // namespace tamrix::tests
