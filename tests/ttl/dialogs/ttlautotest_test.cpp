#include "ttl/dialogs/ttlautotest.h"

#include "entry/all_dialogs.h"
#include "ttl/dialogs/dialog_fixture.h"
#include "ttl/dialogs/ttledit.h"
#include "ttl/dialogs/ttltest.h"

#include <algorithm>

namespace tamrix {
namespace {

using tests::lines;

class ttlautotest_dialog : public tests::logic_dialog_fixture {
protected:
    std::uint8_t icsum = 0;
};

class dialogs_of_the_logic_test : public ttlautotest_dialog {};

TEST_F(ttlautotest_dialog, shows_the_hits_beside_the_families)
{
    variables.ttl.hits = {"7400", "74132"};
    ttlautotest dialog{session, variables.ttl};
    shell.during(dialog, [&] {
        EXPECT_EQ(dialog.caption(), "Auto Find Device Result");
        EXPECT_EQ(dialog.Label2.caption(), "Device Could Be:");
        EXPECT_EQ(dialog.List1.items(), (lines{"7400", "74132"}));
        EXPECT_EQ(dialog.Label1.caption(), "74 Series  include:");
        EXPECT_EQ(dialog.Text1.text(), "54/74XXX\n54/74FXXX\n54/74SXXX\n54/74ASXXX\n54/74HCXXX\n54/74LSXXX\n"
                                       "54/74ALSXXX\n54/74HCTXXX\n54/74HCUXXX");
        EXPECT_TRUE(dialog.Text1.locked());
        EXPECT_EQ(dialog.OKButton.caption(), "OK");
    });
}

TEST_F(ttlautotest_dialog, is_closed_by_ok_by_enter_and_by_escape)
{
    using way_out = void (*)(ttlautotest&);
    for (const way_out leave :
         {way_out{[](ttlautotest& d) { d.OKButton.click(); }}, way_out{[](ttlautotest& d) { d.accept(); }},
          way_out{[](ttlautotest& d) { d.ask_to_leave(); }}}) {
        ttlautotest dialog{session, variables.ttl};
        shell.during(dialog, [&] {
            leave(dialog);
            EXPECT_FALSE(dialog.is_open());
        });
    }
}

TEST_F(ttlautotest_dialog, is_shown_with_every_device_that_passed)
{
    write_library({passing, failing, cmos});
    entry_methods methods{session, variables, all_dialogs()};
    std::string folder_of_library = session.syspath;
    lines shown;
    shell.on_next_dialog([&](forms::form& dialog) { shown = dynamic_cast<ttlautotest&>(dialog).List1.items(); });
    const reply answer = methods.mnutestautofind0(folder_of_library);
    EXPECT_TRUE(answer.ok()) << answer.error;
    for (std::string& name : shown) name.erase(name.find_last_not_of(' ') + 1);
    EXPECT_EQ(shown, (lines{"74PASS", "4011"}));
    EXPECT_EQ(shell.beeps(), 1);
}

TEST_F(ttlautotest_dialog, stays_away_where_no_device_passed)
{
    write_library({failing, failing});
    entry_methods methods{session, variables, all_dialogs()};
    std::string folder_of_library = session.syspath;
    EXPECT_TRUE(methods.mnutestautofind0(folder_of_library).ok());
    EXPECT_EQ(shell.dialogs_shown(), 0);
    EXPECT_EQ(shell.boxes(), lines{"Device Not Found!"});
}

TEST_F(dialogs_of_the_logic_test, stand_behind_the_methods_of_the_host)
{
    write_library({passing, failing});
    entry_methods methods{session, variables, all_dialogs()};
    for (const char* method : {"mnutestttltest0", "mnutesteditttllib0", "mnuEditeditvector0"}) {
        EXPECT_TRUE(methods.offers(method)) << method;
    }
    std::string where = session.syspath;
    bool16 ok = bool16_true;
    const auto title_of_next = [this](std::string& title) {
        shell.on_next_dialog([&title](forms::form& shown) { title = shown.caption(); });
    };
    std::string test, edit, vectors;
    title_of_next(test);
    EXPECT_TRUE(methods.mnutestttltest0(icsum, ok, where).ok());
    title_of_next(edit);
    EXPECT_TRUE(methods.mnutesteditttllib0(icsum, ok, where).ok());
    title_of_next(vectors);
    EXPECT_TRUE(methods.mnuEditeditvector0(icsum, ok, where).ok());
    EXPECT_EQ(test, "TTL & CMOS Test");
    EXPECT_EQ(edit, "Edit Pattern");
    EXPECT_EQ(vectors, "PLD Test Vector Edit");
    EXPECT_EQ(variables.ttl.wnote, 1);
}

TEST_F(dialogs_of_the_logic_test, show_their_texts_in_the_language_of_the_host)
{
    session.blocks.Language(0) = 15000;
    ttlautotest dialog{session, variables.ttl};
    shell.during(dialog, [&] { EXPECT_EQ(dialog.caption(), session.text(1183)); });
}

}  // namespace
}  // namespace tamrix
