#include "support/plug_in_fixture.h"
#include "support/temp_files.h"
#include "transfer/writefile.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using strings = std::vector<std::string>;

struct save_fixture : plug_in_fixture {
    using plug_in_fixture::plug_in_fixture;

    /// Calls the entry method, and runs `steps` in the dialog.
    void save(const std::string& name, std::function<void(writefile&)> steps)
    {
        shell.on_next_dialog([&](forms::form& shown) {
            steps(dynamic_cast<writefile&>(shown));
            stayed_open = shown.is_open();
        });
        std::string file = name, folder = files.path("");
        EXPECT_TRUE(methods.wfile(file, folder).ok());
    }
    /// Start and size entered, OK pressed.
    void save_range(const std::string& start, const std::string& size, int format = 0)
    {
        save(files.path("out"), [&](writefile& dialog) {
            dialog.wfileOption2(format).click();
            dialog.wfileText1.enter(start);
            dialog.wfileText2.enter(size);
            dialog.okcom.click();
        });
    }
    bool written() const { return std::filesystem::exists(files.path("out")); }

    temp_folder files;
    bool stayed_open = false;
};

TEST(writefile, opens_with_the_range_of_the_device)
{
    save_fixture f{{.buflength = 0x20000, .tlength = 0x8000, .wordmode = 2}};
    f.save("/somewhere/out.bin", [](writefile& d) {
        EXPECT_EQ(d.caption(), "Save Buffer To A File");
        EXPECT_EQ(d.wfileLabel2.caption(), "/somewhere/out.bin");
        EXPECT_EQ(d.wfileText1.text(), "0");
        EXPECT_EQ(d.wfileText2.text(), "10000");
        EXPECT_EQ(d.wfileText3.text(), "FFFF");
        EXPECT_EQ(d.wfileOption2.selected(), 0);
        d.exitcom.click();
        EXPECT_FALSE(d.is_open());
    });
}

TEST(writefile, shows_every_caption_from_the_catalogue)
{
    save_fixture f;
    f.save("out", [](writefile& d) {
        const strings captions{d.wfileLabel1.caption, d.wfileformatFrame2.caption, d.wfileLabel5.caption,
                               d.wfileLabel6.caption, d.wfileLabel7.caption,       d.okcom.caption,
                               d.exitcom.caption};
        EXPECT_EQ(captions, (strings{"File:", "File Format:", "From Buffer Addr.(HEX):", "      Buffer Size(HEX):",
                                     "  To Buffer Addr.(HEX):", "OK", "Cancel"}));
        strings formats;
        for (int i = 0; i < d.wfileOption2.count(); ++i) formats.push_back(d.wfileOption2(i).caption);
        EXPECT_EQ(formats, (strings{"Binary", "Intel", "Motorola S", "Tektronix"}));
    });
}

TEST(writefile, the_units_behind_the_main_area_count_to_the_range)
{
    save_fixture f{{.tlength = 0x400, .spare_units = 2}};
    f.save("out", [](writefile& d) { EXPECT_EQ(d.wfileText2.text(), "420"); });
}

TEST(writefile, 8400000_words_leave_all_formats_and_one_more_leaves_binary_only)
{
    save_fixture f;
    f.session.blocks.tlength(0) = 8400000;
    f.save("out", [](writefile& d) {
        for (int i = 0; i < 4; ++i) EXPECT_TRUE(d.wfileOption2(i).enabled()) << i;
    });
    f.session.blocks.tlength(0) = 8400001;
    f.save("out", [](writefile& d) {
        EXPECT_TRUE(d.wfileOption2(0).enabled());
        for (int i = 1; i < 4; ++i) EXPECT_FALSE(d.wfileOption2(i).enabled()) << i;
        d.wfileOption2(1).click();
        EXPECT_EQ(d.wfileOption2.selected(), 0);
    });
}

TEST(writefile, the_extension_of_the_file_preselects_the_format)
{
    const std::pair<const char*, int> names[] = {{"a.bin", 0}, {"a.HEX", 1},  {"a.s19", 2}, {"a.tek", 3},
                                                 {"a.cds", 0}, {"a.text", 0}, {"a", 0},     {"a.hex/b", 0}};
    for (const auto& [name, format] : names) {
        save_fixture f;
        f.save(name, [format = format](writefile& d) { EXPECT_EQ(d.wfileOption2.selected(), format); });
    }
    save_fixture large;
    large.session.blocks.tlength(0) = 8400001;
    large.save("a.hex", [](writefile& d) { EXPECT_EQ(d.wfileOption2.selected(), 0); });
}

TEST(writefile, only_hexadecimal_keys_reach_the_boxes_the_others_beep)
{
    save_fixture f;
    f.save("out", [](writefile& d) {
        for (auto* box : {&d.wfileText1, &d.wfileText2, &d.wfileText3}) {
            box->enter("");
            box->type("1G2");
            EXPECT_EQ(box->text(), "12");
            EXPECT_TRUE(box->accepts(U'\b'));
        }
    });
    EXPECT_EQ(f.shell.beeps(), 3);
}

TEST(writefile, leaving_start_or_end_sets_the_size)
{
    save_fixture f;
    f.save("out", [](writefile& d) {
        d.wfileText1.enter("100");
        d.wfileText1.leave();
        EXPECT_EQ(d.wfileText2.text(), "F00");
        d.wfileText3.enter("1ff");
        d.wfileText3.leave();
        EXPECT_EQ(d.wfileText2.text(), "100");
        EXPECT_EQ(d.wfileText3.text(), "1FF");
    });
}

TEST(writefile, leaving_the_size_sets_the_end)
{
    save_fixture f;
    f.save("out", [](writefile& d) {
        d.wfileText1.enter("100");
        d.wfileText1.leave();
        d.wfileText2.enter("10");
        d.wfileText2.leave();
        EXPECT_EQ(d.wfileText3.text(), "10F");
    });
}

TEST(writefile, a_value_beyond_the_device_is_pulled_back_to_its_limit)
{
    save_fixture f{{.buflength = 0x2000, .tlength = 0x1000}};
    f.save("out", [](writefile& d) {
        d.wfileText2.enter("5000");
        d.wfileText2.leave();
        EXPECT_EQ(d.wfileText2.text(), "1000");
        EXPECT_EQ(d.wfileText3.text(), "FFF");
        d.wfileText3.enter("FFFFFFFF");
        d.wfileText3.leave();
        EXPECT_EQ(d.wfileText3.text(), "FFF");
        d.wfileText1.enter("9999");
        d.wfileText1.leave();
        EXPECT_EQ(d.wfileText1.text(), "1000");
        EXPECT_EQ(d.wfileText2.text(), "0");
    });
}

TEST(writefile, a_value_beyond_the_buffer_is_pulled_back_to_its_limit)
{
    save_fixture f{{.buflength = 0x800, .tlength = 0x1000}};
    f.save("out", [](writefile& d) {
        d.wfileText2.enter("1000");
        d.wfileText2.leave();
        EXPECT_EQ(d.wfileText2.text(), "800");
    });
}

TEST(writefile, empty_boxes_are_left_as_they_are)
{
    save_fixture f;
    f.save("out", [](writefile& d) {
        d.wfileText1.enter("");
        d.wfileText1.leave();
        EXPECT_EQ(d.wfileText1.text(), "");
        EXPECT_EQ(d.wfileText2.text(), "1000");
        d.wfileText2.enter("");
        d.wfileText2.leave();
        EXPECT_EQ(d.wfileText3.text(), "FFF");
    });
}

TEST(writefile, an_empty_range_stays_empty_when_its_boxes_are_left)
{
    save_fixture f;
    f.save("out", [](writefile& d) {
        d.wfileText2.enter("0");
        d.wfileText2.leave();
        EXPECT_EQ(d.wfileText3.text(), "");
        d.wfileText3.leave();
        EXPECT_EQ(d.wfileText2.text(), "0");
        d.wfileText1.enter("20");
        d.wfileText1.leave();
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
        d.wfileText3.enter("100");
        d.wfileText3.leave();
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

TEST(writefile, empty_boxes_count_as_0)
{
    save_fixture f;
    f.save_range("", "");
    EXPECT_EQ(std::filesystem::file_size(f.files.path("out")), 0u);
}

TEST(writefile, a_good_save_reports_time_and_seconds_and_closes)
{
    save_fixture f;
    f.save_range("0", "10");
    EXPECT_FALSE(f.stayed_open);
    const std::string date = date_and_time_of(f.files.path("out"));
    EXPECT_EQ(f.status_text(), ">>Save File OK! Time:" + date + "\n>> 0.00Sec\n");
    EXPECT_EQ(f.session.rformat, 0);
}

TEST(writefile, a_failed_save_reports_and_closes_too)
{
    save_fixture f;
    f.save(f.files.path("missing/out"), [](writefile& d) { d.okcom.click(); });
    EXPECT_FALSE(f.stayed_open);
    EXPECT_EQ(f.status_text(), ">>Save File Fail!\n>> 0.00Sec\n");
    EXPECT_EQ(f.session.rformat, 1);
    EXPECT_EQ(f.session.why_it_failed.text(), f.files.path("missing/out") + ": no such file");
    EXPECT_TRUE(f.shell.boxes().empty());
}

TEST(writefile, cancel_is_dead_while_a_writer_runs)
{
    save_fixture f;
    bool open_meanwhile = false;
    f.save(f.files.path("out"), [&](writefile& d) {
        f.shell.on_doevents = [&] {
            d.ask_to_leave();
            d.okcom.click();
            open_meanwhile = d.is_open();
        };
        d.okcom.click();
    });
    EXPECT_TRUE(open_meanwhile);
    EXPECT_EQ(f.shell.pumps(), 7);  // in every third of 20 blocks
    EXPECT_EQ(std::filesystem::file_size(f.files.path("out")), 0x1000u);
}

}  // namespace
}  // namespace tamrix::tests
