#include "ttl/dialogs/ttledit.h"

#include "ttl/dialogs/ttledit_fixture.h"

#include <random>

namespace tamrix {
namespace {

using tests::key;
using tests::lines;
using tests::ttledit_dialog;

TEST_F(ttledit_dialog, has_its_captions_for_a_device_of_the_library)
{
    device_of(1);
    edit([](ttledit& d) {
        EXPECT_EQ(d.caption(), "7400 Test Vector Edit");
        EXPECT_EQ(d.Frame1.caption(), "Edit Key");
        EXPECT_EQ(d.Label1.caption(), "1: VIH");
        EXPECT_EQ(d.Label2.caption(), "0: VIL");
        EXPECT_EQ(d.Label3.caption(), "H: VOH");
        EXPECT_EQ(d.Label4.caption(), "L: VOL");
        EXPECT_EQ(d.Label5.caption(), "C: Clock_010");
        EXPECT_EQ(d.Label7.caption(), "K: Clock_101");
        EXPECT_EQ(d.Label6.caption(), "X: Unused");
        EXPECT_EQ(d.Label11.caption(), "V: VCC pin");
        EXPECT_EQ(d.Label12.caption(), "G: GND pin");
        EXPECT_EQ(d.Command1.caption(), "Test");
        EXPECT_EQ(d.Command2.caption(), "&Insert");
        EXPECT_EQ(d.Command3.caption(), "&Copy");
        EXPECT_EQ(d.Command4.caption(), "Cu&t");
        EXPECT_EQ(d.OKButton.caption(), "&Done");
        EXPECT_EQ(d.CancelButton.caption(), "&Exit");
    });
}

TEST_F(ttledit_dialog, has_its_captions_for_a_programmable_device)
{
    programmable_device(4, {"NNNN"});
    edit([](ttledit& d) {
        EXPECT_EQ(d.caption(), "PLD Test Vector Edit");
        EXPECT_EQ(d.Label11.caption(), "N: No Test");
        EXPECT_EQ(d.Label12.caption(), "Z: H_Imp.");
    });
}

TEST_F(ttledit_dialog, shows_the_rows_with_their_numbers_and_begins_at_the_first_letter)
{
    device("7400", 6, {"01HLGV", "  KC X"});
    edit([](ttledit& d) {
        EXPECT_EQ(d.Text1.text(), "V0001 01HLGV\nV0002 KC X..\n") << "blanks at the ends go, what is missing is open";
        EXPECT_EQ(d.Text1.selection_start(), 6);
        EXPECT_EQ(d.Text1.selection_length(), 0);
        EXPECT_EQ(d.focused(), &d.Text1);
    });
}

TEST_F(ttledit_dialog, has_coloured_fields_that_only_its_keys_change)
{
    device_of(1);
    edit([](ttledit& d) {
        EXPECT_EQ(d.Text1.background(), 0xFF80FFU);
        EXPECT_EQ(d.Text2.background(), 0x8080FFU);
        EXPECT_TRUE(d.Text1.locked());
        EXPECT_TRUE(d.Text2.locked());
        EXPECT_FALSE(d.Text2.takes_keys());
    });
}

TEST_F(ttledit_dialog, has_a_ruler_with_tens_over_units)
{
    device("7400", 14, {std::string(14, 'X')});
    edit([](ttledit& d) {
        EXPECT_EQ(d.Text2.text(), "      00000000011111\n"
                                  "      12345678901234");
    });
    device("big", 40, {std::string(40, 'X')});
    edit([](ttledit& d) {
        EXPECT_EQ(d.Text2.text(), "      0000000001111111111222222222233333333334\n"
                                  "      1234567890123456789012345678901234567890");
    });
}

TEST_F(ttledit_dialog, takes_the_vectors_of_a_programmable_device)
{
    programmable_device(4, {"01HL", "NNZZ", "CKXX"});
    edit([this](ttledit& d) {
        EXPECT_EQ(d.Text1.text(), "V0001 01HL\nV0002 NNZZ\nV0003 CKXX\n");
        EXPECT_EQ(variables.ttl.ttlpin, 4);
        EXPECT_EQ(variables.ttl.ttlcnt, 4);
    });
    EXPECT_EQ(variables.ttl.ttlvect(1).substr(0, 5), "NNZZ ");
}

TEST_F(ttledit_dialog, makes_one_row_for_a_programmable_device_without_vectors)
{
    for (const std::int32_t count : {-1, 0, 1}) {
        programmable_device(6, {});
        variables.pld.pldvectcnt = count;
        edit([this](ttledit& d) {
            EXPECT_EQ(d.Text1.text(), "V0001 NNNNNN\n");
            EXPECT_EQ(variables.ttl.ttlcnt, 2);
        });
    }
}

TEST_F(ttledit_dialog, shows_40_pins_of_a_programmable_device_at_most)
{
    programmable_device(44, {std::string(44, '1')});
    edit([this](ttledit& d) {
        EXPECT_EQ(d.Text1.text(), "V0001 " + std::string(40, '1') + "\n");
        EXPECT_EQ(variables.ttl.ttlpin, 40);
    });
}

TEST_F(ttledit_dialog, fills_short_rows_of_a_programmable_device_so_that_they_can_be_saved)
{
    programmable_device(6, {"01HLZC", "01", "", " KX "});
    variables.pld.pldvectcnt = 6;  // the last row was never stored
    edit([](ttledit& d) {
        EXPECT_EQ(d.Text1.text(), "V0001 01HLZC\nV0002 01NNNN\nV0003 NNNNNN\nV0004 KXNNNN\nV0005 NNNNNN\n");
        put_caret(d, 1, 8);
        type(d, "H");
        d.OKButton.click();
    });
    EXPECT_EQ(variables.pld.pldvectcnt, 6);
    EXPECT_EQ(variables.pld.pldvect(1), "01HNNN" + std::string(42, ' '));
    EXPECT_EQ(variables.pld.pldvect(4), "NNNNNN" + std::string(42, ' '));
}

TEST_F(ttledit_dialog, gives_the_device_in_work_its_pins_and_rows_back_however_it_is_left)
{
    using way_out = void (*)(ttledit&);
    const way_out ways[] = {[](ttledit& d) { d.OKButton.click(); }, [](ttledit& d) { d.CancelButton.click(); },
                            [](ttledit& d) { d.ask_to_leave(); }, [](ttledit&) {}};
    for (const way_out leave : ways) {
        programmable_device(4, {"01HL", "NNZZ", "CKXX"});
        variables.ttl.ttlpin = 14;
        variables.ttl.ttlcnt = 9;
        edit([&](ttledit& d) {
            d.Command2.click();
            leave(d);
        });
        EXPECT_EQ(variables.ttl.ttlpin, 14);
        EXPECT_EQ(variables.ttl.ttlcnt, 9);
        device("7400", 4, {"GHLV", "GLHV"});
        edit([&](ttledit& d) {
            d.Command4.click();
            leave(d);
        });
        EXPECT_EQ(variables.ttl.ttlcnt, 3);
    }
}

TEST_F(ttledit_dialog, gives_the_device_in_work_its_rows_back_when_it_cannot_be_saved)
{
    device("THIRTEENCHARS", 4, {"GHLV"});
    const auto insert_and_save = [](ttledit& d) {
        d.Command2.click();
        d.OKButton.click();
    };
    EXPECT_THROW(edit(insert_and_save), std::runtime_error);
    EXPECT_EQ(variables.ttl.ttlcnt, 2);
}

TEST_F(ttledit_dialog, holds_the_most_vectors_that_a_file_can_have)
{
    programmable_device(2, {"01"});
    variables.pld.pldvectcnt = 3002;
    edit([this](ttledit& d) {
        EXPECT_EQ(d.Text1.text().size(), 3001U * 9);
        d.Command2.click();  // one more than there is room for
        EXPECT_EQ(d.Text1.text().size(), 3001U * 9);
        EXPECT_EQ(shell.beeps(), 1);
    });
}

TEST_F(ttledit_dialog, inserts_before_the_caret_by_its_button)
{
    device_of(2);
    edit([](ttledit& d) {
        d.Command2.click();
        EXPECT_EQ(d.Text1.text(), "V0001 XXXX\nV0002 0000\nV0003 1111\n");
        EXPECT_EQ(d.focused(), &d.Text1);
    });
    programmable_device(4, {"0000", "1111"});
    edit([](ttledit& d) {
        d.Command2.click();
        EXPECT_EQ(d.Text1.text(), "V0001 NNNN\nV0002 0000\nV0003 1111\n");
    });
}

TEST_F(ttledit_dialog, copies_the_row_of_the_caret_for_the_next_insert)
{
    device_of(3);
    edit([](ttledit& d) {
        put_caret(d, 1, 8);
        d.Command3.click();
        EXPECT_EQ(d.Text1.selected(), "1111");
        EXPECT_EQ(row_of(d), 1);
        press(d, key::enter);
        press(d, key::enter);
        EXPECT_EQ(d.Text1.text(), "V0001 0000\nV0002 1111\nV0003 1111\nV0004 1111\nV0005 HHHH\n");
    });
}

TEST_F(ttledit_dialog, inserts_an_empty_row_again_when_it_is_opened_anew)
{
    device_of(2);
    edit([](ttledit& d) { d.Command3.click(); });
    edit([](ttledit& d) {
        d.Command2.click();
        EXPECT_EQ(d.Text1.text().substr(0, 11), "V0001 XXXX\n");
    });
}

TEST_F(ttledit_dialog, deletes_the_last_row_and_goes_one_up)
{
    device_of(3);
    edit([this](ttledit& d) {
        put_caret(d, 2, 8);
        d.Command4.click();
        EXPECT_EQ(d.Text1.text(), "V0001 0000\nV0002 1111\n");
        EXPECT_EQ(row_of(d), 1);
        EXPECT_EQ(column_of(d), 6);
        EXPECT_EQ(variables.ttl.ttlcnt, 3);
    });
}

TEST_F(ttledit_dialog, leaves_dots_in_place_of_the_only_row_and_saves_nothing_then)
{
    const std::string before = library();
    device_of(1);
    edit([this](ttledit& d) {
        d.Command4.click();
        EXPECT_EQ(d.Text1.text(), "V0001 ....\n");
        EXPECT_EQ(variables.ttl.ttlcnt, 2);
        EXPECT_EQ(d.Text1.selection_start(), 6);
        d.OKButton.click();
        EXPECT_FALSE(d.is_open());
    });
    EXPECT_EQ(library(), before);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ttledit_dialog, has_its_rows_back_after_insert_and_cut)
{
    for (const int row : {0, 1, 2}) {
        device_of(3);
        edit([&](ttledit& d) {
            const std::string before = d.Text1.text();
            put_caret(d, row, 6);
            d.Command2.click();
            EXPECT_EQ(variables.ttl.ttlcnt, 5);
            d.Command4.click();
            EXPECT_EQ(d.Text1.text(), before);
            EXPECT_EQ(variables.ttl.ttlcnt, 4);
        });
    }
}

TEST_F(ttledit_dialog, keeps_its_row_numbers_consecutive_whatever_is_done)
{
    device_of(5);
    std::mt19937 random{5};
    edit([&](ttledit& d) {
        int rows = 5;
        for (int turn = 0; turn < 2000; ++turn) {
            put_caret(d, static_cast<int>(random() % static_cast<unsigned>(rows)), 6);
            const auto act = random() % 4;
            if (act == 0) press(d, key::insert);
            if (act == 1) press(d, key::enter);
            if (act < 2) ++rows;
            if (act == 2) d.Command3.click();
            if (act == 3) press(d, key::remove, 1);
            if (act == 3 && rows > 1) --rows;
            ASSERT_EQ(variables.ttl.ttlcnt, rows + 1);
            ASSERT_EQ(d.Text1.text().size(), static_cast<std::size_t>(rows) * 11);
        }
        for (int row = 0; row < rows; ++row) {
            const std::string number = std::to_string(row + 1);
            ASSERT_EQ(d.Text1.text().substr(static_cast<std::size_t>(row) * 11, 6),
                      "V" + std::string(4 - number.size(), '0') + number + " ");
        }
    });
}

TEST_F(ttledit_dialog, renumbers_across_a_hundred_rows)
{
    device_of(120);
    edit([](ttledit& d) {
        d.Command2.click();
        EXPECT_EQ(d.Text1.text().substr(120 * 11, 5), "V0121");
        d.Command4.click();
        EXPECT_EQ(d.Text1.text().substr(119 * 11), "V0120 XXXX\n");
    });
}

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

TEST_F(ttledit_dialog, survives_every_key_without_rows_or_pins)
{
    for (const int count : {-5, 0, 1, 2}) {
        for (const int pins : {-9, 0, 1, 4}) {
            for (const std::uint8_t wnote : {0, 1, 2}) {
                session.blocks.chippin(0) = static_cast<std::int16_t>(pins);
                variables.ttl.ttlpin = static_cast<std::int16_t>(pins);
                variables.ttl.ttlcnt = static_cast<std::int16_t>(count);
                variables.ttl.wnote = wnote;
                edit([](ttledit& d) {
                    for (int round = 0; round < 2; ++round) {
                        for (int i = 0; i <= static_cast<int>(key::enter); ++i) {
                            press(d, static_cast<key>(i));
                            type(d, "1XNV");
                        }
                        d.Text1.press({-5, 100000}, 100000);
                        for (forms::button* one : {&d.Command1, &d.Command2, &d.Command3, &d.Command4}) one->click();
                    }
                    EXPECT_TRUE(d.Text1.text().starts_with("V0001 "));
                });
            }
        }
    }
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
