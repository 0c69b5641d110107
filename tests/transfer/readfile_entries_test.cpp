// The addresses and the size that are entered in the load dialog.
#include "formats/load_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using strings = std::vector<std::string>;

/// The address that the dialog makes of a text, as it leaves it in the transfer variables.
std::int64_t address_of(const std::string& text)
{
    temp_folder files;
    load_fixture f{{.buflength = 0x20000, .tlength = 0x20000}};
    f.load(files.write("a.bin", "x"), {.to_buffer = text});
    return f.variables.transfer.bufstart;
}

TEST(readfile, FFFF_is_65535_and_10000_is_65536)
{
    EXPECT_EQ(address_of("FFFF"), 65535);
    EXPECT_EQ(address_of("10000"), 65536);
    EXPECT_EQ(address_of("0000a"), 10);
}

TEST(readfile, an_address_above_7FFFFFFF_is_positive_and_lies_behind_the_buffer)
{
    temp_folder files;
    load_fixture f;
    f.load(files.write("a.bin", "x"), {.to_buffer = "FFFFFFFF"});
    EXPECT_EQ(f.variables.transfer.bufstart, 4294967295);
    EXPECT_EQ(f.shell.boxes(), strings{"<To Buffer Address> > Buffer Size!"});
    EXPECT_TRUE(f.stayed_open);
}

TEST(readfile, an_address_of_any_number_of_digits_is_refused_not_misread)
{
    temp_folder files;
    load_fixture f;
    f.load(files.write("a.bin", "x"), {.to_buffer = "100000000000000000000000000000000"});
    EXPECT_EQ(f.shell.boxes(), strings{"<To Buffer Address> > Buffer Size!"});
}

TEST(readfile, a_start_behind_the_buffer_is_refused_and_nothing_changes)
{
    temp_folder files;
    load_fixture f{{.clear = 0}};
    f.load(files.write("a.bin", "x"), {.to_buffer = "1001"});
    EXPECT_EQ(f.shell.boxes(), strings{"<To Buffer Address> > Buffer Size!"});
    EXPECT_TRUE(f.stayed_open);
    EXPECT_TRUE(f.buffer_untouched());
    EXPECT_EQ(f.status_text(), "");
}

TEST(readfile, a_start_equal_to_the_buffer_length_is_taken)
{
    temp_folder files;
    load_fixture f;
    EXPECT_EQ(f.load(files.write("a.bin", "x"), {.to_buffer = "1000"}), status::done);
    EXPECT_TRUE(f.shell.boxes().empty());
    EXPECT_TRUE(f.buffer_untouched());
}

TEST(readfile, empty_address_boxes_count_as_0)
{
    temp_folder files;
    load_fixture f;
    f.shell.on_next_dialog([](forms::form& shown) {
        auto& dialog = dynamic_cast<readfile&>(shown);
        dialog.rfileText1.enter("");
        dialog.rfileText2.enter("");
        dialog.okcom.click();
    });
    std::string name = files.write("b.bin", "xyz"), none;
    std::int16_t format = 0;
    EXPECT_TRUE(f.methods.readfile0(name, format, none).ok());
    EXPECT_EQ(f.bytes(0, 3), (std::vector<std::uint8_t>{'x', 'y', 'z'}));
}

TEST(readfile, a_size_that_is_no_number_is_told_and_nothing_changes)
{
    temp_folder files;
    load_fixture f{{.clear = 0}};
    f.load(files.write("a.bin", "x"), {.size = "12 kB"});
    EXPECT_EQ(f.shell.boxes(), strings{"Invalid Input!"});
    EXPECT_TRUE(f.stayed_open);
    EXPECT_TRUE(f.buffer_untouched());
}

TEST(readfile, a_refused_value_gets_the_keyboard_and_every_box_says_what_it_takes)
{
    temp_folder files;
    const std::string file = files.write("a.bin", "x");
    using box = forms::text_box readfile::*;
    for (const auto& [wrong, value] : {std::pair<box, const char*>{&readfile::rfileText1, "0x"},
                                       {&readfile::rfileText1, "1001"},
                                       {&readfile::rfileText2, "G"},
                                       {&readfile::rfileText3, "12 kB"}}) {
        load_fixture f;
        f.shell.on_next_dialog([&, wrong = wrong, value = value](forms::form& shown) {
            auto& dialog = dynamic_cast<readfile&>(shown);
            EXPECT_EQ((dialog.*wrong).tip, "A hexadecimal number: digits 0 to 9 and A to F");
            (dialog.*wrong).text(value);
            dialog.okcom.click();
            EXPECT_EQ(dialog.focused(), &(dialog.*wrong)) << value;
        });
        std::string name = file, none;
        std::int16_t format = 0;
        EXPECT_TRUE(f.methods.readfile0(name, format, none).ok());
        EXPECT_EQ(f.shell.boxes().size(), 1u);
    }
}

TEST(readfile, a_start_outside_the_buffer_is_told_before_a_size_that_is_no_number)
{
    temp_folder files;
    load_fixture f;
    f.load(files.write("a.bin", "x"), {.to_buffer = "1001", .size = "12 kB"});
    EXPECT_EQ(f.shell.boxes(), strings{"<To Buffer Address> > Buffer Size!"});
    EXPECT_TRUE(f.stayed_open);
}

TEST(readfile, a_size_below_the_device_limits_the_load)
{
    temp_folder files;
    load_fixture f;
    f.load(files.write("a.bin", std::string(0x1000, 'x')), {.size = "FFF"});
    EXPECT_EQ(f.variables.transfer.loadlength, 0xFFF);
    EXPECT_EQ(f.buffer(0xFFE), 'x');
    EXPECT_EQ(f.buffer(0xFFF), plug_in_fixture::untouched);
}

TEST(readfile, a_size_equal_to_the_device_gets_a_margin_of_100)
{
    temp_folder files;
    load_fixture f;
    f.load(files.write("a.bin", "x"), {.size = "1000"});
    EXPECT_EQ(f.variables.transfer.loadlength, 0x1000 + 100);
    f.load(files.write("a.bin", "x"), {.size = "FFFFFFFF"});
    EXPECT_EQ(f.variables.transfer.loadlength, 0x1000 + 100);
}

}  // namespace
}  // namespace tamrix::tests
