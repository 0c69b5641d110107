// Runs of the self-test dialogs, named by programmer and option, and what has to hold after each.
#pragma once

#include "self_test_forms.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tamrix::tests {

/// An option of a dialog; 0 is the System Test.
struct planned_run {
    situation where;
    int option = 0;
};

inline std::string name_of(const planned_run& plan)
{
    return name_of(plan.where) + (plan.option == 0 ? " System Test" : " option " + std::to_string(plan.option));
}

inline bool has_modules(const planned_run& plan) { return plan.where.model == 39; }

/// The System Test and, but for programmers with a connector, the Output Test; with modules both of these.
inline std::vector<planned_run> runs_of(const std::vector<situation>& programmers)
{
    std::vector<planned_run> all;
    for (situation where : programmers) {
        where.transcript = false;
        all.push_back({where, 0});
        if (where.model == 11) continue;
        where.test_board = true;
        const int output = form_of(where.model).output_option;
        all.push_back({where, output});
        if (where.model == 39) all.push_back({where, output + 1});
    }
    return all;
}

/// Another run can begin.
inline void expect_ready(selftest_frame& dialog)
{
    EXPECT_TRUE(dialog.testbutton.usable() && dialog.OKButton.usable() && dialog.Option1(0).usable());
    EXPECT_EQ(dialog.testbutton.caption(), "Test");
    EXPECT_FALSE(dialog.teststop.usable());
    EXPECT_EQ(dialog.testbusy() + dialog.teststep() + dialog.teststopped(), 0);
}

}  // namespace tamrix::tests
