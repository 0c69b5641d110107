// The two entry methods of files: what they store, preset and yield.
#include "entry/plug_in_with_dialogs.h"
#include "transfer/readfile.h"
#include "transfer/writefile.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <variant>

namespace tamrix {
namespace {

using tests::plug_in_with_dialogs;

TEST(readfile0, yields_nothing_when_the_first_load_is_cancelled)
{
    plug_in_with_dialogs f;
    f.shell.on_next_dialog([](forms::form& dialog) { dynamic_cast<readfile&>(dialog).exitcom.click(); });
    const reply result = f.class_of_host.readfile0(f.file, f.format, f.system_folder);
    EXPECT_TRUE(result.ok());
    EXPECT_TRUE(std::holds_alternative<std::monostate>(result.value));
    EXPECT_EQ(f.shell.dialogs_shown(), 1);
}

TEST(readfile0, yields_the_file_mode_of_the_last_load_also_after_a_cancelled_one)
{
    plug_in_with_dialogs f;
    f.shell.on_next_dialog([](forms::form& shown) {
        auto& dialog = dynamic_cast<readfile&>(shown);
        dialog.rfilecombo1.pick(2);
        dialog.okcom.click();
    });
    EXPECT_EQ(f.class_of_host.readfile0(f.file, f.format, f.system_folder).value, variant{std::int16_t{2}});
    EXPECT_EQ(f.class_of_host.readfile0(f.file, f.format, f.system_folder).value, variant{std::int16_t{2}});
}

TEST(readfile0, stores_its_arguments_and_shows_the_file)
{
    plug_in_with_dialogs f;
    f.shell.on_next_dialog([&](forms::form& shown) {
        auto& dialog = dynamic_cast<readfile&>(shown);
        EXPECT_EQ(f.variables.transfer.fname, "/dev/null");
        EXPECT_EQ(f.variables.transfer.rformat, 1);
        EXPECT_EQ(f.session.syspath, f.system_folder);
        EXPECT_EQ(dialog.rfileLabel2.caption(), "/dev/null");
        EXPECT_EQ(dialog.rfileOption2.selected(), 1);
    });
    EXPECT_TRUE(f.class_of_host.readfile0(f.file, f.format, f.system_folder).ok());
    EXPECT_EQ(f.shell.dialogs_shown(), 1);
}

TEST(wfile, presets_10000_and_FFFF_on_a_device_of_0x8000_words_of_two_bytes)
{
    plug_in_with_dialogs f{{.buflength = 0x20000, .tlength = 0x8000, .wordmode = 2}};
    f.shell.on_next_dialog([&](forms::form& shown) {
        auto& dialog = dynamic_cast<writefile&>(shown);
        EXPECT_EQ(dialog.wfileText2.text(), "10000");
        EXPECT_EQ(dialog.wfileText3.text(), "FFFF");
        EXPECT_EQ(dialog.wfileLabel2.caption(), "/dev/null");
        EXPECT_EQ(f.variables.transfer.fname, "/dev/null");
        EXPECT_EQ(f.session.syspath, f.system_folder);
    });
    const reply result = f.class_of_host.wfile(f.file, f.system_folder);
    EXPECT_TRUE(result.ok());
    EXPECT_TRUE(std::holds_alternative<std::monostate>(result.value));
    EXPECT_EQ(f.shell.dialogs_shown(), 1);
}

TEST(wfile, counts_the_units_behind_the_main_area)
{
    plug_in_with_dialogs f{{.tlength = 0x400, .wordmode = 1, .spare_units = 3}};
    f.shell.on_next_dialog([&](forms::form& shown) {
        auto& dialog = dynamic_cast<writefile&>(shown);
        EXPECT_EQ(dialog.wfileText2.text(), "430");
        EXPECT_EQ(dialog.wfileText3.text(), "42F");
    });
    f.class_of_host.wfile(f.file, f.system_folder);
    EXPECT_EQ(f.shell.dialogs_shown(), 1);
}

}  // namespace
}  // namespace tamrix
