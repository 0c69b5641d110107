// The self-test dialogs that whole runs are played on: a new one is added to this table.
#pragma once

#include "selftest/selftest_frame.h"
#include "sim_bench.h"

#include <functional>
#include <string_view>

namespace tamrix::tests {

struct form_of_test {
    std::string_view name;
    int output_option;  // calibrations are before it
    /// Shows the dialog while `steps` run.
    void (*show)(sim_bench& b, const std::function<void(selftest_frame&)>& steps);
};

/// Null where there is none.
const form_of_test* form_named(std::string_view name);
/// That of a model.
const form_of_test& form_of(std::int16_t model);

}  // namespace tamrix::tests
