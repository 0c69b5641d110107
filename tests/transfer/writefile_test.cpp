#include "save_fixture.h"

namespace tamrix::tests {
namespace {

using strings = std::vector<std::string>;

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

TEST(writefile, has_an_option_for_each_format_that_can_be_saved_and_for_no_other)
{
    save_fixture f;
    f.save("out", [&f](writefile& d) {
        for (const format& one : formats()) {
            if (one.write != nullptr) {
                EXPECT_EQ(d.option_of(one).caption(), caption_of(one, f.session));
            } else {
                EXPECT_THROW(d.option_of(one), subscript_error) << one.name;
            }
        }
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
    const std::pair<const char*, int> names[] = {{"a.bin", 0}, {"a.HEX", 1},   {"a.s19", 2},
                                                 {"a.tek", 3}, {"a.cds", 0},   {"a.text", 0},
                                                 {"a", 0},     {"a.hex/b", 0}, {"a/hex", 0}};
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

TEST(writefile, a_good_save_reports_time_and_seconds_and_closes)
{
    save_fixture f;
    f.save_range("0", "10");
    EXPECT_FALSE(f.stayed_open);
    const std::string date = date_and_time_of(f.files.path("out"));
    EXPECT_EQ(f.status_text(), ">>Save File OK! Time:" + date + "\n>> 0.00Sec\n");
    EXPECT_EQ(f.variables.transfer.rformat, 0);
}

TEST(writefile, a_failed_save_reports_and_closes_too)
{
    save_fixture f;
    f.save(f.files.path("missing/out"), [](writefile& d) { d.okcom.click(); });
    EXPECT_FALSE(f.stayed_open);
    EXPECT_EQ(f.status_text(), ">>Save File Fail!\n>> 0.00Sec\n");
    EXPECT_EQ(f.variables.transfer.rformat, 1);
    EXPECT_EQ(f.variables.transfer.why_it_failed.text(), f.files.path("missing/out") + ": no such file");
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
