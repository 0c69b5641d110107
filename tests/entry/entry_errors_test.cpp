// What no dialog handles reaches the host as a failed reply.
#include "entry/plug_in_with_dialogs.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tamrix {
namespace {

using tests::names;
using tests::plug_in_with_dialogs;

TEST(languages, whose_text_is_missing_fail_the_call_with_the_number_of_the_text)
{
    plug_in_with_dialogs f;
    f.session.blocks.Language(0) = 33000;
    int base = 1003;  // no language has it
    f.on_dialog = [&](std::string_view) { f.session.tell(base); };
    const reply missing = f.class_of_host.analyzer0();
    EXPECT_FALSE(missing.ok());
    EXPECT_EQ(missing.error, "no text with number 34003");
    EXPECT_TRUE(std::holds_alternative<std::monostate>(missing.value));

    f.session.blocks.Language(0) = 0;
    base = 1135;
    EXPECT_TRUE(f.class_of_host.analyzer0().ok()) << "at the next opening the text is looked up afresh";
    EXPECT_EQ(f.shell.boxes(), names{">>Load File Fail!"});
}

TEST(languages, are_asked_afresh_at_each_opening_of_a_dialog)
{
    plug_in_with_dialogs f;
    names captions;
    const auto open = [&] {
        f.shell.on_next_dialog([&](forms::form& dialog) { captions.push_back(dialog.caption()); });
        return f.class_of_host.readfile0(f.file, f.format, f.system_folder);
    };
    EXPECT_TRUE(open().ok());
    f.session.blocks.Language(0) = 15000;
    EXPECT_TRUE(open().ok());
    EXPECT_EQ(captions, (names{"Load A File To Buffer", "Load A File To Buffer"}));

    f.session.blocks.Language(0) = 33001;  // no block begins here, whatever languages there are
    const reply missing = f.class_of_host.readfile0(f.file, f.format, f.system_folder);
    EXPECT_FALSE(missing.ok());
    EXPECT_TRUE(missing.error.starts_with("no text with number 34")) << missing.error;
    EXPECT_EQ(f.shell.dialogs_shown(), 2) << "a dialog without its texts is not shown";
}

TEST(errors_of_a_handler, become_a_failed_reply_with_their_text)
{
    plug_in_with_dialogs f;
    const std::vector<std::pair<std::function<void()>, std::string>> faults{
        {[] { throw std::runtime_error{"division by zero"}; }, "division by zero"},
        {[] { throw 42; }, "unknown error"},
        {[] { throw std::bad_alloc{}; }, std::bad_alloc{}.what()},
        {[] { throw std::runtime_error{""}; }, "unknown error"},
        {[&] { f.session.blocks.tlength(4) = 1; }, "subscript out of range: tlength(4)"},
    };
    for (const auto& [fault, text] : faults) {
        f.on_dialog = [&](std::string_view) { fault(); };
        for (const reply& failed :
             {f.class_of_host.algoparameter0(), f.class_of_host.analyzer0(), f.class_of_host.recetwave0(f.ok),
              f.class_of_host.mnutesttestksm(), f.class_of_host.mnutestttltest0(f.icsum, f.ok, f.system_folder),
              f.class_of_host.mnuEditeditvector0(f.icsum, f.ok, f.system_folder),
              f.class_of_host.mnutesteditttllib0(f.icsum, f.ok, f.system_folder)}) {
            EXPECT_FALSE(failed.ok());
            EXPECT_EQ(failed.error, text);
            EXPECT_TRUE(std::holds_alternative<std::monostate>(failed.value));
        }
    }
}

TEST(errors_of_a_handler, leave_the_load_and_save_calls_as_failed_replies)
{
    plug_in_with_dialogs f;
    const auto fail = [](forms::form&) { throw std::runtime_error{"out of order"}; };
    f.shell.on_next_dialog(fail);
    EXPECT_EQ(f.class_of_host.readfile0(f.file, f.format, f.system_folder).error, "out of order");
    f.shell.on_next_dialog(fail);
    EXPECT_EQ(f.class_of_host.wfile(f.file, f.system_folder).error, "out of order");
    f.format = 8;  // there is no such option
    EXPECT_EQ(f.class_of_host.readfile0(f.file, f.format, f.system_folder).error, "no option 8");
}

TEST(errors_of_a_handler, in_the_pin_map_stop_the_method_before_its_own_dialog)
{
    plug_in_with_dialogs f;
    f.session.blocks.modeltype(0) = 29;
    f.on_dialog = [](std::string_view) { throw std::runtime_error{"no reply"}; };
    EXPECT_EQ(f.class_of_host.mnutestttltest0(f.icsum, f.ok, f.system_folder).error, "no reply");
    EXPECT_EQ(f.class_of_host.mnutestautofind0(f.system_folder).error, "no reply");
    EXPECT_EQ(f.shown, (names{"pinnote4", "pinnote4"}));
    EXPECT_EQ(f.session.syspath, "");
}

TEST(errors_of_a_handler, do_not_hinder_the_next_call)
{
    plug_in_with_dialogs f;
    f.on_dialog = [](std::string_view) { throw std::runtime_error{"once"}; };
    EXPECT_FALSE(f.class_of_host.analyzer0().ok());
    f.on_dialog = nullptr;
    EXPECT_TRUE(f.class_of_host.analyzer0().ok());
    EXPECT_EQ(f.shell.dialogs_shown(), 1) << "the first one failed while it was loaded";
}

}  // namespace
}  // namespace tamrix
