// The line on the external supply, and what else a note changes.
#include "notes_fixture.h"

namespace tamrix::tests {
namespace {

const std::string power_line = ">>Note! Need AC adaptor!\n";

TEST_F(device_notes, clear_bit_7_of_the_number_in_the_hosts_variable)
{
    EXPECT_EQ(call(0), 0);
    EXPECT_EQ(call(26), 26);
    EXPECT_EQ(call(127), 127);
    EXPECT_EQ(call(128), 0);
    EXPECT_EQ(call(129), 1);
    EXPECT_EQ(call(255), 127);
}

TEST_F(device_notes, with_bit_7_add_the_power_line_on_four_models_alone)
{
    for (std::int16_t model = 0; model <= 60; ++model) {
        session.blocks.modeltype(0) = model;
        const bool told = model == 23 || model == 24 || model == 28 || model == 29;
        for (const int number : {129, 128, 255}) {
            session.blocks.MainRtstr(0) = "";
            call(number);
            EXPECT_EQ(status_text(), told ? power_line : "") << "model " << model << " number " << number;
        }
    }
    session.blocks.modeltype(0) = 23;
    session.blocks.MainRtstr(0) = "";
    call(1);
    EXPECT_EQ(status_text(), "") << "without bit 7";
}

TEST_F(device_notes, of_number_129_show_note_1_with_the_power_line_on_model_23_and_without_it_on_25)
{
    session.blocks.modeltype(0) = 23;
    EXPECT_EQ(text_of(129), reviewed("note_01"));
    EXPECT_EQ(status_text(), power_line);
    EXPECT_EQ(shell.whole_boxes().back().title, "Note!") << "this line does not become the title";
    session.blocks.modeltype(0) = 25;
    session.blocks.MainRtstr(0) = "";
    EXPECT_EQ(text_of(129), reviewed("note_01"));
    EXPECT_EQ(status_text(), "");
}

TEST_F(device_notes, append_the_power_line_to_the_log_of_the_host)
{
    session.blocks.modeltype(0) = 23;
    session.blocks.MainRtstr(0) = "before\n";
    call(128);
    EXPECT_EQ(status_text(), "before\n" + power_line);
}

TEST_F(device_notes, with_the_external_supply_add_no_power_line_by_any_path)
{
    need_power();
    for (const std::int16_t model : {23, 24, 28, 29, 40}) {
        session.blocks.modeltype(0) = model;
        for (int number = 0; number <= 255; ++number) call(number, bool16_true);
    }
    EXPECT_EQ(status_text(), "");
    for (const forms::message_box& box : shell.whole_boxes()) EXPECT_EQ(box.title, "Note!");
}

TEST_F(device_notes, 19_20_and_21_add_the_power_line_where_all_four_conditions_hold)
{
    for (const int number : {19, 20, 21}) {
        need_power();
        call(number);
        EXPECT_EQ(status_text(), power_line) << number;
        session.blocks.MainRtstr(0) = "";

        call(number, bool16_true);
        variables.ttl.ok = bool16_false;
        call(number);
        need_power();
        session.blocks.wfig(1) = 16;
        call(number);
        need_power();
        session.blocks.usbable(0) = bool16_false;
        call(number);
        session.blocks.usbable(0) = 1;  // not the pattern of a boolean
        call(number);
        EXPECT_EQ(status_text(), "") << number;
    }
}

TEST_F(device_notes, other_than_these_three_add_no_power_line)
{
    need_power();
    for (int number = 0; number < 128; ++number) {
        if (number < 19 || number > 21) call(number);
    }
    EXPECT_EQ(status_text(), "");
}

TEST_F(device_notes, 19_and_20_show_no_box)
{
    need_power();
    call(19);
    call(20);
    EXPECT_EQ(boxes(), 0u);
}

TEST_F(device_notes, 21_has_the_power_line_as_its_title_once_it_added_one)
{
    EXPECT_EQ(title_of(21), "Note!");
    need_power();
    EXPECT_EQ(title_of(21), power_line);
    EXPECT_EQ(status_text(), power_line);
    EXPECT_EQ(shell.whole_boxes().back().text, reviewed("note_21"));
    EXPECT_EQ(title_of(1), "Note!") << "the next note has its own title again";
}

TEST_F(device_notes, 149_can_add_the_power_line_twice)
{
    need_power();
    session.blocks.modeltype(0) = 28;
    EXPECT_EQ(title_of(149), power_line);
    EXPECT_EQ(status_text(), power_line + power_line);
}

TEST_F(device_notes, 20_lowers_a_vcc_of_390_to_360_whatever_the_power_test_says)
{
    session.blocks.wfig(1) = 17;
    session.blocks.bvcc(0) = 390;
    call(20);
    EXPECT_EQ(session.blocks.bvcc(0), 360);
    EXPECT_EQ(status_text(), "");
    session.blocks.bvcc(0) = 390;
    call(20, bool16_true);
    EXPECT_EQ(session.blocks.bvcc(0), 360);
    need_power();
    session.blocks.bvcc(0) = 390;
    call(20);
    EXPECT_EQ(session.blocks.bvcc(0), 360);
    EXPECT_EQ(status_text(), power_line);
}

TEST_F(device_notes, 20_leaves_every_other_vcc_and_generation_alone)
{
    session.blocks.wfig(1) = 17;
    for (const std::int16_t vcc : {389, 391, 360, 0, 500}) {
        session.blocks.bvcc(0) = vcc;
        call(20);
        EXPECT_EQ(session.blocks.bvcc(0), vcc);
    }
    session.blocks.wfig(1) = 16;
    session.blocks.bvcc(0) = 390;
    call(20);
    EXPECT_EQ(session.blocks.bvcc(0), 390);
    session.blocks.wfig(1) = 17;
    for (int number = 0; number <= 26; ++number) {
        if (number == 20) continue;
        call(number);
        EXPECT_EQ(session.blocks.bvcc(0), 390) << "note " << number;
    }
}

TEST_F(device_notes, are_offered) { EXPECT_TRUE(methods.offers("warn")); }

}  // namespace
}  // namespace tamrix::tests
