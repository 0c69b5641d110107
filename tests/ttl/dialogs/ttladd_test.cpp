#include "ttl/dialogs/ttladd.h"

#include "ttl/dialogs/dialog_fixture.h"

#include <functional>

namespace tamrix {
namespace {

class ttladd_dialog : public tests::logic_dialog_fixture {
protected:
    void open(const std::function<void(ttladd&)>& steps)
    {
        ttladd dialog{session, variables.ttl};
        shell.during(dialog, [&] { steps(dialog); });
    }
    /// True where the dialog took the two values.
    bool takes(const std::string& name, const std::string& pins)
    {
        bool taken = false;
        open([&](ttladd& d) {
            d.Text1.enter(name);
            d.Text2.enter(pins);
            d.OKButton.click();
            taken = !d.is_open();
        });
        return taken;
    }
};

TEST_F(ttladd_dialog, has_its_captions_and_begins_with_the_name_in_work)
{
    variables.ttl.ttlname = "7400";
    open([](ttladd& d) {
        EXPECT_EQ(d.caption(), "New Pattern:");
        EXPECT_EQ(d.Label1.caption(), "IC Type:");
        EXPECT_EQ(d.Label2.caption(), "Pin Numbers(Max 40):");
        EXPECT_EQ(d.OKButton.caption(), "OK");
        EXPECT_EQ(d.Text1.text(), "7400");
        EXPECT_EQ(d.Text2.text(), "");
    });
}

TEST_F(ttladd_dialog, makes_one_row_of_dots_for_a_valid_entry)
{
    EXPECT_TRUE(takes("7400", "14"));
    EXPECT_EQ(variables.ttl.ttlname, "7400");
    EXPECT_EQ(variables.ttl.ttlpin, 14);
    EXPECT_EQ(variables.ttl.ttlcnt, 2);
    EXPECT_EQ(variables.ttl.ttlvect(0), std::string(14, '.') + std::string(34, ' '));
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ttladd_dialog, takes_every_even_count_from_2_to_40_and_no_other)
{
    for (int pins = -4; pins <= 60; ++pins) {
        EXPECT_EQ(takes("x", std::to_string(pins)), pins >= 2 && pins <= 40 && pins % 2 == 0) << pins;
    }
}

TEST_F(ttladd_dialog, takes_blanks_around_the_count)
{
    EXPECT_TRUE(takes("x", " 16 "));
    EXPECT_EQ(variables.ttl.ttlpin, 16);
}

TEST_F(ttladd_dialog, refuses_a_name_that_the_library_has_no_room_for_and_keeps_what_was_typed)
{
    EXPECT_TRUE(takes("TWELVECHARS0", "14"));
    EXPECT_TRUE(takes(" TWELVECHARS0 ", "14")) << "the blanks are not stored";
    EXPECT_TRUE(boxes().empty());
    variables.ttl.ttlname = "before";
    for (const char* name : {"THIRTEENCHARS", "ÄÄÄÄÄÄÄ"}) {  // the second one has 14 bytes
        open([&](ttladd& d) {
            d.Text1.enter(name);
            d.Text2.enter("14");
            d.OKButton.click();
            EXPECT_TRUE(d.is_open());
            EXPECT_EQ(d.Text1.text(), name);
            EXPECT_EQ(d.Text2.text(), "14");
            ASSERT_FALSE(boxes().empty());
            EXPECT_EQ(boxes().back(), (forms::message_box{"Invalid Input!", "New Pattern:", forms::icon::warning,
                                                          forms::buttons_of_box::ok}));
            EXPECT_FALSE(d.accepted());
        });
    }
    EXPECT_EQ(boxes().size(), 2u);
    EXPECT_EQ(variables.ttl.ttlname, "before");
}

TEST_F(ttladd_dialog, refuses_what_is_no_count)
{
    for (const char* pins : {"", " ", "x", "14 pins", "1 4", "0x10", "14.0", "99999999999999999999", "é"}) {
        EXPECT_FALSE(takes("x", pins)) << pins;
    }
}

TEST_F(ttladd_dialog, refuses_an_empty_name) { EXPECT_FALSE(takes("", "14")); }

TEST_F(ttladd_dialog, tells_that_an_entry_is_invalid_and_changes_nothing)
{
    variables.ttl.ttlname = "before";
    variables.ttl.ttlpin = 20;
    variables.ttl.ttlcnt = 7;
    open([this](ttladd& d) {
        d.Text1.enter("7400");
        d.Text2.enter("13");
        d.OKButton.click();
        EXPECT_TRUE(d.is_open());
        EXPECT_EQ(d.Text2.text(), "13");
        ASSERT_EQ(boxes().size(), 1U);
        EXPECT_EQ(boxes()[0], (forms::message_box{"Invalid Input!", "New Pattern:", forms::icon::warning,
                                                  forms::buttons_of_box::ok}));
    });
    EXPECT_EQ(variables.ttl.ttlname, "before");
    EXPECT_EQ(variables.ttl.ttlpin, 20);
    EXPECT_EQ(variables.ttl.ttlcnt, 7);
}

TEST_F(ttladd_dialog, says_what_its_fields_take)
{
    open([](ttladd& d) {
        EXPECT_EQ(d.Text1.tip, "1 to 12 letters and digits");
        EXPECT_EQ(d.Text2.tip, "An even number from 2 to 40");
    });
}

TEST_F(ttladd_dialog, hands_the_keyboard_to_the_first_field_that_is_wrong)
{
    const auto after_refusal_of = [this](const std::string& name, const std::string& pins) {
        std::string field;
        open([&](ttladd& d) {
            d.Text1.enter(name);
            d.Text2.enter(pins);
            d.OKButton.click();
            field = d.focused() == &d.Text1 ? "name" : d.focused() == &d.Text2 ? "pins" : "none";
        });
        return field;
    };
    EXPECT_EQ(after_refusal_of("", "14"), "name");
    EXPECT_EQ(after_refusal_of("THIRTEENCHARS", "14"), "name");
    EXPECT_EQ(after_refusal_of("", "13"), "name");
    for (const char* pins : {"", "13", "0", "42", "-2", "x"}) EXPECT_EQ(after_refusal_of("7400", pins), "pins") << pins;
    EXPECT_EQ(after_refusal_of("7400", "14"), "none");
}

TEST_F(ttladd_dialog, is_left_by_escape_without_an_entry)
{
    variables.ttl.ttlname = "before";
    variables.ttl.ttlpin = 20;
    open([](ttladd& d) {
        d.Text1.enter("7400");
        d.Text2.enter("14");
        d.ask_to_leave();
        EXPECT_FALSE(d.is_open());
        EXPECT_FALSE(d.accepted());
    });
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(variables.ttl.ttlname, "before");
    EXPECT_EQ(variables.ttl.ttlpin, 20);
}

TEST_F(ttladd_dialog, takes_the_entry_on_enter)
{
    open([](ttladd& d) {
        d.Text1.enter("7400");
        d.Text2.enter("14");
        d.accept();
        EXPECT_FALSE(d.is_open());
        EXPECT_TRUE(d.accepted());
    });
}

}  // namespace
}  // namespace tamrix
