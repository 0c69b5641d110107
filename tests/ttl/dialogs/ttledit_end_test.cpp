// What the vector editor does with its rows: it saves, drops or tests them.
#include "ttl/dialogs/ttledit_fixture.h"

#include <string>

namespace tamrix {
namespace {

using tests::key;
using tests::lines;
using tests::ttledit_dialog;

TEST_F(ttledit_dialog, drops_a_device_with_an_open_letter_without_a_word)
{
    const std::string before = library();
    device("7499", 4, {"GHLV", "0.00"});
    edit([](ttledit& d) {
        d.OKButton.click();
        EXPECT_FALSE(d.is_open());
    });
    EXPECT_EQ(library(), before);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ttledit_dialog, saves_an_edited_device_to_the_library)
{
    device("4011", 14, {"HHHHHHXHHHHHHV"});
    edit([](ttledit& d) {
        type(d, "L");
        press(d, key::enter);
        type(d, "01");
        d.OKButton.click();
        EXPECT_FALSE(d.is_open());
    });
    EXPECT_NE(library().find("$4011        03\x02"
                             "14\x0ELHHHHHXHHHHHHV\x0E"
                             "01XXXXXXXXXXXX*\r\n"),
              std::string::npos);
}

TEST_F(ttledit_dialog, adds_a_new_name_to_the_list_and_leaves_a_known_one_where_it_is)
{
    struct holder final : forms::form {
        forms::list_box list{*this};
        forms::layout arrangement() override { return list; }
    } shown;
    shown.list.items({"74PASS", "74FAIL", "4011"});
    shown.list.index(1);
    for (const char* name : {"7499", "4011"}) {
        device(name, 4, {"GHLV"});
        ttledit dialog{session, variables.ttl, variables.pld, &shown.list};
        shell.during(dialog, [&] { dialog.OKButton.click(); });
        EXPECT_EQ(shown.list.items(), (lines{"74PASS", "74FAIL", "4011", "7499"}));
        EXPECT_EQ(shown.list.index(), 1);
    }
}

TEST_F(ttledit_dialog, saves_the_vectors_of_a_programmable_device_for_the_host)
{
    const std::string before = library();
    programmable_device(4, {"01HL"});
    edit([](ttledit& d) {
        type(d, "ZN");
        press(d, key::enter);
        type(d, "CK");
        d.OKButton.click();
        EXPECT_FALSE(d.is_open());
    });
    EXPECT_EQ(variables.pld.pldvectcnt, 3);
    EXPECT_EQ(variables.pld.pldvect(0).substr(0, 5), "ZNHL ");
    EXPECT_EQ(variables.pld.pldvect(1).substr(0, 5), "CKNN ");
    EXPECT_EQ(library(), before);
}

TEST_F(ttledit_dialog, writes_nothing_on_exit_or_escape)
{
    const std::string before = library();
    for (const bool escape : {false, true}) {
        programmable_device(4, {"01HL"});
        edit([&](ttledit& d) {
            type(d, "ZZZZ");
            d.Command2.click();
            escape ? d.ask_to_leave() : d.CancelButton.click();
            EXPECT_FALSE(d.is_open());
        });
        EXPECT_EQ(variables.pld.pldvectcnt, 2);
        EXPECT_EQ(variables.pld.pldvect(0).substr(0, 4), "01HL");
        device("7499", 4, {"GHLV"});
        edit([&](ttledit& d) { escape ? d.ask_to_leave() : d.CancelButton.click(); });
    }
    EXPECT_EQ(library(), before);
}

TEST_F(ttledit_dialog, tests_the_rows_as_they_stand)
{
    device("74PASS", 14, {failing.rows});
    edit([this](ttledit& d) {
        type(d, "H");  // which mends the row
        d.Command1.click();
        EXPECT_TRUE(d.is_open());
        EXPECT_EQ(calls(), (lines{"hwreset", "boardsel2 3 0", "busmode 0", "setvcc 5000", "hwrelease"}));
    });
    EXPECT_EQ(shell.boxes(), lines{"Vector Test OK!"});
    EXPECT_EQ(variables.ttl.ttlvect(0).substr(0, 14), "HHHHHHXHHHHHHV");
}

TEST_F(ttledit_dialog, keeps_all_its_rows_over_a_test_that_plays_a_hundred)
{
    device("74PASS", 14, lines(150, passing.rows[0]));
    edit([this](ttledit& d) {
        d.Command1.click();
        EXPECT_EQ(variables.ttl.ttlcnt, 151);
        d.Command2.click();
        EXPECT_EQ(variables.ttl.ttlcnt, 152);
        EXPECT_EQ(d.Text1.text().substr(150 * 21, 5), "V0151");
    });
}

TEST_F(ttledit_dialog, is_deaf_to_keys_and_buttons_while_a_test_runs)
{
    device("74PASS", 14, failing.rows);
    edit([this](ttledit& d) {
        const std::string before = d.Text1.text();
        int boxes_seen = 0;
        shell.on_box = [&](const forms::message_box&) {
            ++boxes_seen;
            type(d, "1");
            press(d, key::remove);
            for (forms::button* one : {&d.Command1, &d.Command2, &d.Command4, &d.OKButton, &d.CancelButton})
                one->click();
            EXPECT_TRUE(d.is_open());
        };
        d.Command1.click();
        EXPECT_EQ(boxes_seen, 1);
        EXPECT_EQ(d.Text1.text(), before);
        shell.on_box = nullptr;
        d.CancelButton.click();
        EXPECT_FALSE(d.is_open());
    });
}

TEST_F(ttledit_dialog, tests_nothing_without_hardware)
{
    variables.ttl.ok = bool16_false;
    device("74PASS", 14, passing.rows);
    edit([this](ttledit& d) {
        d.Command1.click();
        EXPECT_EQ(calls(), lines{});
    });
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ttledit_dialog, saves_no_device_without_rows)
{
    const std::string before = library();
    device("7499", 4, {});
    edit([](ttledit& d) {
        EXPECT_EQ(d.Text1.text(), "");
        d.OKButton.click();
        EXPECT_FALSE(d.is_open());
    });
    EXPECT_EQ(library(), before);
}

}  // namespace
}  // namespace tamrix
