#include "forms/form.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tamrix::tests {
namespace {

struct working_form final : forms::form {
    forms::layout arrangement() override { return forms::row({work, other}); }

    forms::button work{*this}, other{*this};
    int clicks = 0;

    working_form()
    {
        other.on_click = unless_busy([this] { ++clicks; });
        work.on_click = [this] {
            const busy_time working{*this};
            other.click();
            throw std::runtime_error{"the work failed"};
        };
    }
};

TEST(busy_form, does_nothing_else_until_its_work_ends_even_by_an_error)
{
    working_form form;
    form.load();
    EXPECT_THROW(form.work.click(), std::runtime_error);
    EXPECT_EQ(form.clicks, 0);
    form.other.click();
    EXPECT_EQ(form.clicks, 1);
}

}  // namespace
}  // namespace tamrix::tests
