#include "ttl/dialogs/ttledit.h"

#include "ttl/dialogs/ttledit_fixture.h"

namespace tamrix {
namespace {

using tests::key;
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

}  // namespace
}  // namespace tamrix
