#include "forms/scroll_bar.h"

#include "forms/form.h"
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace tamrix::forms {
namespace {

struct scrolling_form final : form {
    scroll_bar HScroll1{*this};
    layout arrangement() override { return HScroll1; }
};

struct a_scroll_bar : testing::Test {
    scrolling_form dialog;
    scroll_bar& bar = dialog.HScroll1;
    std::vector<int> values;

    a_scroll_bar()
    {
        bar.max(100);
        bar.large_change = 10;
        bar.on_change = [this] { values.push_back(bar.value()); };
    }
};

using seen = std::vector<int>;

TEST_F(a_scroll_bar, raises_its_change_whoever_moves_it)
{
    bar.value(40);
    bar.value(40);
    bar.drag(41);
    bar.step(scroll_step::small_on);
    EXPECT_EQ(values, (seen{40, 41, 42}));
}

TEST_F(a_scroll_bar, moves_by_its_changes_and_to_its_ends)
{
    bar.value(50);
    values.clear();
    for (const auto how : {scroll_step::small_on, scroll_step::large_on, scroll_step::large_back,
                           scroll_step::small_back, scroll_step::to_max, scroll_step::to_min})
        bar.step(how);
    EXPECT_EQ(values, (seen{51, 61, 51, 50, 100, 0}));
}

TEST_F(a_scroll_bar, stays_between_its_ends)
{
    bar.value(101);
    bar.step(scroll_step::large_on);
    bar.value(-1);
    bar.step(scroll_step::small_back);
    EXPECT_EQ(values, (seen{100, 0}));
}

TEST_F(a_scroll_bar, takes_its_value_along_when_an_end_passes_it)
{
    bar.value(90);
    bar.max(60);
    bar.max(80);
    bar.min(70);
    EXPECT_EQ(values, (seen{90, 60, 70}));
}

TEST_F(a_scroll_bar, whose_max_lies_below_its_min_has_one_value)
{
    bar.max(-1);
    EXPECT_EQ(bar.max(), 0);
    bar.drag(5);
    EXPECT_EQ(values, seen{});
}

TEST_F(a_scroll_bar, reaches_every_value_of_32_bits)
{
    using limits = std::numeric_limits<std::int32_t>;
    bar.min(limits::min());
    bar.max(limits::max());
    bar.large_change = limits::max();
    bar.value(1);
    bar.step(scroll_step::large_on);
    bar.step(scroll_step::to_min);
    bar.step(scroll_step::large_back);
    EXPECT_EQ(values, (seen{1, limits::max(), limits::min()}));
}

TEST_F(a_scroll_bar, obeys_only_the_program_while_it_is_disabled)
{
    bar.enabled = false;
    bar.drag(5);
    bar.step(scroll_step::to_max);
    bar.value(7);
    EXPECT_EQ(values, seen{7});
}

TEST_F(a_scroll_bar, tells_the_renderer_of_its_ends_before_it_raises_its_change)
{
    tests::scripted_shell shell;
    bar.value(90);
    shell.during(dialog, [&] {
        bar.on_change = [&] { EXPECT_EQ(shell.changes(bar), 1); };
        bar.max(60);
        bar.on_change = {};
        bar.max(60);
        EXPECT_EQ(shell.changes(bar), 1);
    });
}

}  // namespace
}  // namespace tamrix::forms
