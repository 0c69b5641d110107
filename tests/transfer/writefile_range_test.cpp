// The three boxes of the save dialog: how they follow each other, and which ranges are refused.
#include "save_fixture.h"

namespace tamrix::tests {
namespace {

using strings = std::vector<std::string>;

/// A person types into a box and leaves it.
void fill(forms::text_box& box, const std::string& text)
{
    box.enter(text);
    box.leave();
}

TEST(writefile, leaving_start_or_end_sets_the_size)
{
    save_fixture f;
    f.save("out", [](writefile& d) {
        fill(d.wfileText1, "100");
        EXPECT_EQ(d.wfileText2.text(), "F00");
        fill(d.wfileText3, "1ff");
        EXPECT_EQ(d.wfileText2.text(), "100");
        EXPECT_EQ(d.wfileText3.text(), "1FF");
    });
}

TEST(writefile, leaving_the_size_sets_the_end)
{
    save_fixture f;
    f.save("out", [](writefile& d) {
        fill(d.wfileText1, "100");
        fill(d.wfileText2, "10");
        EXPECT_EQ(d.wfileText3.text(), "10F");
    });
}

TEST(writefile, a_value_beyond_the_device_is_pulled_back_to_its_limit)
{
    save_fixture f{{.buflength = 0x2000, .tlength = 0x1000}};
    f.save("out", [](writefile& d) {
        fill(d.wfileText2, "5000");
        EXPECT_EQ(d.wfileText2.text(), "1000");
        EXPECT_EQ(d.wfileText3.text(), "FFF");
        fill(d.wfileText3, "FFFFFFFF");
        EXPECT_EQ(d.wfileText3.text(), "FFF");
        fill(d.wfileText1, "9999");
        EXPECT_EQ(d.wfileText1.text(), "1000");
        EXPECT_EQ(d.wfileText2.text(), "0");
    });
}

TEST(writefile, a_value_beyond_the_buffer_is_pulled_back_to_its_limit)
{
    save_fixture f{{.buflength = 0x800, .tlength = 0x1000}};
    f.save("out", [](writefile& d) {
        fill(d.wfileText2, "1000");
        EXPECT_EQ(d.wfileText2.text(), "800");
    });
}

TEST(writefile, empty_boxes_are_left_as_they_are)
{
    save_fixture f;
    f.save("out", [](writefile& d) {
        fill(d.wfileText1, "");
        EXPECT_EQ(d.wfileText1.text(), "");
        EXPECT_EQ(d.wfileText2.text(), "1000");
        fill(d.wfileText2, "");
        EXPECT_EQ(d.wfileText3.text(), "FFF");
    });
}

TEST(writefile, an_empty_range_stays_empty_when_its_boxes_are_left)
{
    save_fixture f;
    f.save("out", [](writefile& d) {
        fill(d.wfileText2, "0");
        EXPECT_EQ(d.wfileText3.text(), "");
        d.wfileText3.leave();
        EXPECT_EQ(d.wfileText2.text(), "0");
        fill(d.wfileText1, "20");
        d.wfileText2.leave();
        EXPECT_EQ(d.wfileText3.text(), "1F");
        d.wfileText3.leave();
        EXPECT_EQ(d.wfileText2.text(), "0");
    });
}

TEST(writefile, an_end_before_the_start_is_an_empty_range)
{
    save_fixture f;
    f.save("out", [](writefile& d) {
        d.wfileText1.enter("200");
        fill(d.wfileText3, "100");
        EXPECT_EQ(d.wfileText2.text(), "0");
    });
}

TEST(writefile, a_start_behind_the_device_is_refused)
{
    save_fixture f;
    f.save_range("1001", "0");
    EXPECT_EQ(f.shell.boxes(), strings{"<To Buffer Address> > Buffer Size!"});
    EXPECT_TRUE(f.stayed_open);
    EXPECT_FALSE(f.written());
    f.save_range("1000", "0");
    EXPECT_TRUE(f.written());
}

TEST(writefile, a_start_after_the_main_area_is_refused_though_units_follow)
{
    save_fixture f{{.tlength = 0x400, .spare_units = 2}};
    f.save_range("401", "1");
    EXPECT_EQ(f.shell.boxes(), strings{"<To Buffer Address> > Buffer Size!"});
    EXPECT_TRUE(f.stayed_open);
    EXPECT_FALSE(f.written());
    f.save_range("400", "20");
    EXPECT_EQ(std::filesystem::file_size(f.files.path("out")), 0x20u);
}

TEST(writefile, a_range_that_ends_at_the_limit_passes_and_one_byte_more_does_not)
{
    save_fixture f{{.tlength = 0x1000, .spare_units = 1}};
    f.save_range("10", "1001");
    EXPECT_EQ(f.shell.boxes(), strings{"<From Buffer Address> + <Buffer Size> > Buffer Size!"});
    EXPECT_FALSE(f.written());
    f.save_range("10", "1000");
    EXPECT_EQ(std::filesystem::file_size(f.files.path("out")), 0x1000u);
}

TEST(writefile, tektronix_takes_64_KiB_and_not_one_byte_more)
{
    save_fixture f{{.buflength = 0x20000, .tlength = 0x20000}};
    f.save_range("0", "10001", 3);
    EXPECT_EQ(f.shell.boxes(), strings{"<Buffer Size>  > 64K(Tektronix Format Max Size)!"});
    EXPECT_TRUE(f.stayed_open);
    EXPECT_FALSE(f.written());
    f.save_range("0", "10000", 3);
    EXPECT_TRUE(f.written());
}

TEST(writefile, the_checks_come_in_order_start_range_format)
{
    save_fixture f;
    f.save_range("FFFFF", "FFFFF", 3);
    EXPECT_EQ(f.shell.boxes(), strings{"<To Buffer Address> > Buffer Size!"});
    f.save_range("0", "FFFFF", 3);
    EXPECT_EQ(f.shell.boxes().back(), "<From Buffer Address> + <Buffer Size> > Buffer Size!");
}

TEST(writefile, a_start_outside_the_device_is_told_before_a_size_that_is_no_number)
{
    save_fixture f;
    const auto save = [&](const char* start) {
        f.save(f.files.path("out"), [&](writefile& d) {
            d.wfileText1.text(start);
            d.wfileText2.text("12 kB");
            d.okcom.click();
        });
    };
    save("1001");
    save("1000");
    EXPECT_EQ(f.shell.boxes(), (strings{"<To Buffer Address> > Buffer Size!", "Invalid Input!"}));
    EXPECT_TRUE(f.stayed_open);
    EXPECT_FALSE(f.written());
}

TEST(writefile, a_refused_value_gets_the_keyboard_and_every_box_says_what_it_takes)
{
    save_fixture f{{.buflength = 0x20000, .tlength = 0x20000}};
    const auto wrong_box = [&](const char* start, const char* size, int format) {
        const char* found = "none";
        f.save(f.files.path("out"), [&](writefile& d) {
            d.wfileOption2(format).select();
            d.wfileText1.text(start);
            d.wfileText2.text(size);
            d.okcom.click();
            found = d.focused() == &d.wfileText1 ? "start" : d.focused() == &d.wfileText2 ? "size" : "none";
            for (const auto* box : {&d.wfileText1, &d.wfileText2, &d.wfileText3})
                EXPECT_EQ(box->tip, "A hexadecimal number: digits 0 to 9 and A to F");
        });
        return std::string{found};
    };
    EXPECT_EQ(wrong_box("G", "1", 0), "start");
    EXPECT_EQ(wrong_box("20001", "1", 0), "start");
    EXPECT_EQ(wrong_box("0", "12 kB", 0), "size");
    EXPECT_EQ(wrong_box("10", "20000", 0), "size");
    EXPECT_EQ(wrong_box("0", "10001", 3), "size");
    EXPECT_EQ(f.shell.boxes().size(), 5u);
}

TEST(writefile, empty_boxes_count_as_0)
{
    save_fixture f;
    f.save_range("", "");
    EXPECT_EQ(std::filesystem::file_size(f.files.path("out")), 0u);
}

}  // namespace
}  // namespace tamrix::tests
