// Message boxes on a real screen.
#include "over_host.h"
#include "scenes.h"

#include "device/warnno.h"
#include "ttl/run/row_report.h"

#include <gtest/gtest.h>

#include <wx/dialog.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

constexpr int english = 0, korean = 9000, russian = 33000;

int left_of(const std::string& words) { return shown_as(words).GetScreenPosition().x; }

}  // namespace

TEST(message_boxes, show_the_marks_of_a_failed_row_below_its_letters)
{
    stage on{korean};
    on.look = [] {
        const wxWindow &expected = shown_as("V0017:01HL"), &result = shown_as("V0017:  L ");
        EXPECT_EQ(expected.GetScreenPosition().x, result.GetScreenPosition().x);
        EXPECT_EQ(expected.GetFont(), result.GetFont());
        EXPECT_TRUE(expected.GetFont().IsFixedWidth());
        EXPECT_EQ(expected.GetTextExtent("1"), expected.GetTextExtent(" "));
        shown_as("기대값:");
    };
    on.ask([&] { report_failed_row(on.session, 0, {.number = 17, .row = "01HL", .result = "  L "}); });
}

TEST(message_boxes, line_up_the_memories_of_a_note)
{
    stage on{english};
    on.session.blocks.tlength(0) = 0x4210;
    on.look = [] {
        EXPECT_EQ(left_of("FCE0H--FCFFH"), left_of("Device"));
        EXPECT_EQ(left_of("FD00H"), left_of("Device"));
        EXPECT_EQ(left_of("41E0H---41FFH"), left_of("Buffer"));
        EXPECT_EQ(left_of("4200H"), left_of("Buffer"));
        EXPECT_EQ(shown_as("Program Memory:").GetScreenRect().GetRight(),
                  shown_as("Config. Word:").GetScreenRect().GetRight());
    };
    std::uint8_t number = 6;
    on.ask([&] { warn(on.session, bool16_false, number, bool16_false); });
}

TEST(message_boxes, leave_the_place_of_the_device_empty_where_a_memory_lies_in_the_buffer_alone)
{
    stage on{english};
    on.session.blocks.tlength(0) = 0x4210;
    on.look = [] { EXPECT_EQ(left_of("4210H---4220H"), left_of("Buffer")); };
    std::uint8_t number = 22;
    on.ask([&] { warn(on.session, bool16_false, number, bool16_false); });
}

TEST(message_boxes, have_answers_in_the_language_that_stands_in_the_block_when_they_are_shown)
{
    stage on{english};
    for (const auto& [language, words] : {std::pair{english, "Ignore"}, std::pair{russian, "Пропустить"}}) {
        on.session.blocks.Language(0) = language;
        on.look = [words = words] { shown_as(words); };
        forms::answer given = forms::answer::ok;
        on.ask([&] { given = on.screen.box({.text = "?", .buttons = forms::buttons_of_box::abort_retry_ignore}); });
        EXPECT_EQ(given, forms::answer::abort) << "what Escape gives";
    }
}

TEST(message_boxes, take_enter_for_a_refusal_where_they_ask_before_a_loss)
{
    using forms::answer;
    stage on{english};
    on.look = [] { press("Return"); };
    const auto given = [&](forms::buttons_of_box buttons, bool enter_refuses) {
        auto answered = answer::retry;
        on.ask([&] { answered = on.screen.box({.text = "?", .buttons = buttons, .enter_refuses = enter_refuses}); });
        return answered;
    };
    EXPECT_EQ(given(forms::buttons_of_box::yes_no, false), answer::yes);
    EXPECT_EQ(given(forms::buttons_of_box::yes_no, true), answer::no);
    EXPECT_EQ(given(forms::buttons_of_box::ok_cancel, true), answer::cancel);
}

TEST(message_boxes, that_are_left_without_an_answer_change_the_least)
{
    using forms::answer;
    using enum forms::buttons_of_box;
    stage on{english};
    const std::function<void()> by_escape = [] {}, by_close_button = [] {
        auto& box = dynamic_cast<wxDialog&>(dialog());
        box.Close();
        EXPECT_FALSE(box.IsModal());
    };
    for (const auto& [buttons, expected] :
         {std::pair{ok, answer::ok}, std::pair{ok_cancel, answer::cancel}, std::pair{yes_no, answer::no},
          std::pair{retry_cancel, answer::cancel}, std::pair{abort_retry_ignore, answer::abort}}) {
        for (const auto& leave : {by_escape, by_close_button}) {
            on.look = leave;
            auto given = answer::retry;
            on.ask([&] { given = on.screen.box({.text = "?", .buttons = buttons}); });
            EXPECT_EQ(given, expected) << static_cast<int>(buttons);
        }
    }
}
