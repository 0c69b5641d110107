#include "entry/entry_methods.h"

#include "channel/model.h"
#include "entry/plug_in_with_dialogs.h"
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace tamrix {
namespace {

using tests::names;
using tests::plug_in_fixture;
using tests::plug_in_with_dialogs;

TEST(mnutesttestksm, shows_the_common_dialog_on_model_40_and_the_204_pin_one_on_39)
{
    plug_in_with_dialogs f;
    f.session.blocks.modeltype(0) = 40;
    EXPECT_TRUE(f.class_of_host.mnutesttestksm().ok());
    f.session.blocks.modeltype(0) = 39;
    EXPECT_TRUE(f.class_of_host.mnutesttestksm().ok());
    EXPECT_EQ(f.shown, (names{"pinnote", "pinnote204"}));
}

TEST(mnutesttestksm, shows_the_dialog_of_every_model_number_once)
{
    plug_in_with_dialogs f;
    for (std::int16_t model = 0; model <= 60; ++model) {
        f.shown.clear();
        f.session.blocks.modeltype(0) = model;
        EXPECT_TRUE(f.class_of_host.mnutesttestksm().ok());
        EXPECT_EQ(f.shown, names{std::string{hw::model_of(model).self_test_form}}) << "model " << model;
    }
}

TEST(mnutesttestksm, opens_the_pin_map_for_the_self_test)
{
    plug_in_with_dialogs f;
    f.variables.selftest.pinmapmode = 3;
    f.on_dialog = [&](std::string_view) { EXPECT_EQ(f.variables.selftest.pinmapmode, 0); };
    f.class_of_host.mnutesttestksm();
    EXPECT_EQ(f.shown.size(), 1u);
}

TEST(mnutesttestksm, forgets_the_run_of_an_earlier_call)
{
    plug_in_with_dialogs f;
    f.variables.selftest.last = {.model = 40, .result = selftest_result::failed, .faults = {{.pin = 7}}};
    f.class_of_host.mnutesttestksm();
    EXPECT_EQ(f.variables.selftest.last.result, selftest_result::none) << "its dialog ran nothing";
    EXPECT_TRUE(f.variables.selftest.last.faults.empty());
}

TEST(mnutesteditttllib0, on_model_24_shows_the_pin_map_first_and_the_library_after_it)
{
    plug_in_with_dialogs f;
    f.session.blocks.modeltype(0) = 24;
    f.on_dialog = [&](std::string_view name) {
        if (name == "pinnote4") {
            EXPECT_EQ(f.variables.selftest.pinmapmode, 4);
            EXPECT_EQ(f.session.syspath, "") << "the arguments are stored after it";
        } else {
            EXPECT_EQ(f.variables.ttl.ttleditlib, 1);
            EXPECT_EQ(f.session.syspath, f.system_folder);
        }
    };
    EXPECT_TRUE(f.class_of_host.mnutesteditttllib0(f.icsum, f.ok, f.system_folder).ok());
    EXPECT_EQ(f.shown, (names{"pinnote4", "ttltest"}));
    EXPECT_EQ(f.variables.ttl.ttleditlib, 1);
}

TEST(pin_map_before_a_logic_test, is_shown_on_models_23_24_28_and_29_alone)
{
    plug_in_with_dialogs f;
    for (std::int16_t model = 0; model <= 60; ++model) {
        f.session.blocks.modeltype(0) = model;
        const bool first = model == 23 || model == 24 || model == 28 || model == 29;
        SCOPED_TRACE("model " + std::to_string(model));

        f.shown.clear();
        f.variables.selftest.pinmapmode = 0;
        f.class_of_host.mnutestttltest0(f.icsum, f.ok, f.system_folder);
        EXPECT_EQ(f.shown, first ? (names{"pinnote4", "ttltest"}) : names{"ttltest"});
        EXPECT_EQ(f.variables.selftest.pinmapmode, first ? 4 : 0);
        EXPECT_EQ(f.variables.ttl.ttleditlib, 0);

        f.shown.clear();
        f.class_of_host.mnutesteditttllib0(f.icsum, f.ok, f.system_folder);
        EXPECT_EQ(f.shown, first ? (names{"pinnote4", "ttltest"}) : names{"ttltest"});
        EXPECT_EQ(f.variables.ttl.ttleditlib, 1);

        f.shown.clear();
        f.class_of_host.mnutestautofind0(f.system_folder);
        EXPECT_EQ(f.shown, first ? names{"pinnote4"} : names{});

        f.shown.clear();
        f.class_of_host.mnuEditeditvector0(f.icsum, f.ok, f.system_folder);
        EXPECT_EQ(f.shown, names{"ttledit"}) << "the editor never shows it";
    }
}

TEST(methods_of_a_dialog, show_their_dialog_once_and_yield_nothing)
{
    plug_in_with_dialogs f;
    const variant nothing;
    const auto expect_nothing = [&](const reply& result) {
        EXPECT_TRUE(result.ok());
        EXPECT_EQ(result.value, nothing);
    };
    expect_nothing(f.class_of_host.algoparameter0());
    expect_nothing(f.class_of_host.analyzer0());
    expect_nothing(f.class_of_host.recetwave0(f.ok));
    expect_nothing(f.class_of_host.mnutesttestksm());
    expect_nothing(f.class_of_host.mnutestttltest0(f.icsum, f.ok, f.system_folder));
    expect_nothing(f.class_of_host.mnuEditeditvector0(f.icsum, f.ok, f.system_folder));
    expect_nothing(f.class_of_host.mnutesteditttllib0(f.icsum, f.ok, f.system_folder));
    EXPECT_EQ(f.shown, (names{"algoparameter", "analyzer", "recetwave", "pinnote", "ttltest", "ttledit", "ttltest"}));
}

TEST(recetwave0, stores_its_argument_before_the_dialog)
{
    plug_in_with_dialogs f;
    std::vector<bool16> seen;
    f.on_dialog = [&](std::string_view) { seen.push_back(f.variables.wave.fwave); };
    f.class_of_host.recetwave0(f.ok);
    f.ok = bool16_false;
    f.class_of_host.recetwave0(f.ok);
    EXPECT_EQ(seen, (std::vector{bool16_true, bool16_false}));
    EXPECT_EQ(f.shown, (names{"recetwave", "recetwave"}));
}

TEST(mnutestttltest0, stores_its_arguments_before_the_dialog)
{
    plug_in_with_dialogs f;
    f.variables.ttl.ttleditlib = 9;
    f.on_dialog = [&](std::string_view) {
        EXPECT_EQ(f.variables.ttl.icsum, 7);
        EXPECT_EQ(f.variables.ttl.ok, bool16_true);
        EXPECT_EQ(f.session.syspath, f.system_folder);
        EXPECT_EQ(f.variables.ttl.ttleditlib, 0);
    };
    f.class_of_host.mnutestttltest0(f.icsum, f.ok, f.system_folder);
    EXPECT_EQ(f.shown.size(), 1u);
}

TEST(mnuEditeditvector0, stores_its_arguments_and_sets_the_note)
{
    plug_in_with_dialogs f;
    f.variables.ttl.ttleditlib = 9;
    f.on_dialog = [&](std::string_view) {
        EXPECT_EQ(f.variables.ttl.wnote, 1);
        EXPECT_EQ(f.variables.ttl.icsum, 7);
        EXPECT_EQ(f.variables.ttl.ok, bool16_true);
        EXPECT_EQ(f.session.syspath, f.system_folder);
    };
    f.class_of_host.mnuEditeditvector0(f.icsum, f.ok, f.system_folder);
    EXPECT_EQ(f.shown.size(), 1u);
    EXPECT_EQ(f.variables.ttl.ttleditlib, 9) << "the editor is not the library";
}

TEST(mnutestautofind0, stores_the_system_folder)
{
    plug_in_with_dialogs f;
    EXPECT_TRUE(f.class_of_host.mnutestautofind0(f.system_folder).ok());
    EXPECT_EQ(f.session.syspath, f.system_folder);
}

TEST(vecttest0, stores_a_count_above_127_as_it_is)
{
    plug_in_with_dialogs f;
    f.ok = bool16_false;  // without hardware the test ends here
    f.variables.ttl.ok = bool16_true;
    EXPECT_TRUE(f.class_of_host.vecttest0(f.mode, f.count, f.note, f.ok).ok());
    EXPECT_EQ(f.variables.ttl.ok, bool16_false);
    EXPECT_EQ(f.variables.ttl.ttlcnt, 200);
    EXPECT_EQ(f.variables.ttl.wnote, 3);
}

TEST(methods_that_take_a_file_or_a_note, store_nothing_of_it)
{
    plug_in_with_dialogs f;
    f.variables.transfer.fname = "kept";
    f.session.syspath = "kept too";
    EXPECT_TRUE(f.class_of_host.readpldfile(f.file).ok());
    EXPECT_TRUE(f.class_of_host.writepldfile(f.file).ok());
    EXPECT_TRUE(f.class_of_host.readsvffile(f.file, f.system_folder).ok());
    EXPECT_TRUE(f.class_of_host.warn(f.mode, f.ok).ok());
    EXPECT_EQ(f.variables.transfer.fname, "kept");
    EXPECT_EQ(f.session.syspath, "kept too");
    EXPECT_EQ(f.variables.ttl.ok, bool16_false);
}

TEST(methods, leave_the_hosts_arguments_as_they_are)
{
    plug_in_with_dialogs f{{.family = 2, .maker = "HOLTEK"}};
    f.format = 5;  // this maker's devices get format 0 instead
    f.class_of_host.readfile0(f.file, f.format, f.system_folder);
    f.class_of_host.wfile(f.file, f.system_folder);
    f.class_of_host.mnutestttltest0(f.icsum, f.ok, f.system_folder);
    f.class_of_host.vecttest0(f.mode, f.count, f.note, f.ok);
    f.class_of_host.bufcomopt(f.num);
    EXPECT_EQ(f.format, 5);
    EXPECT_EQ(f.variables.transfer.rformat, 0);
    EXPECT_EQ(f.file, "/dev/null");
    EXPECT_EQ(f.system_folder, "/usr/share/programmer/");
    EXPECT_EQ(f.icsum, 7);
    EXPECT_EQ(f.count, 200);
    EXPECT_EQ(f.ok, bool16_true);
    EXPECT_EQ(f.num, 1);
}

TEST(methods_without_their_dialog, return_at_once)
{
    plug_in_with_dialogs f;
    f.session.blocks.modeltype(0) = 24;
    entry_methods& bare = f.methods;  // made without any of these dialogs
    EXPECT_TRUE(bare.algoparameter0().ok());
    EXPECT_TRUE(bare.analyzer0().ok());
    EXPECT_TRUE(bare.recetwave0(f.ok).ok());
    EXPECT_TRUE(bare.mnutesttestksm().ok());
    EXPECT_TRUE(bare.mnutestttltest0(f.icsum, f.ok, f.system_folder).ok());
    EXPECT_TRUE(bare.mnuEditeditvector0(f.icsum, f.ok, f.system_folder).ok());
    EXPECT_TRUE(bare.mnutesteditttllib0(f.icsum, f.ok, f.system_folder).ok());
    EXPECT_TRUE(bare.mnutestautofind0(f.system_folder).ok());
    EXPECT_EQ(f.shell.dialogs_shown(), 0);
    EXPECT_EQ(f.shell.boxes(), names{});
}

TEST(dialogs, are_made_afresh_at_every_showing)
{
    plug_in_fixture f;
    int made = 0;
    struct empty final : forms::form {
        forms::layout arrangement() override { return forms::column({}); }
    };
    dialog_table table;
    table.add("analyzer", [&](session&, module_variables&) {
        ++made;
        return std::make_unique<empty>();
    });
    EXPECT_TRUE(table.has("analyzer"));
    EXPECT_FALSE(table.has("recetwave"));
    entry_methods methods{f.session, f.variables, table};
    methods.analyzer0();
    methods.analyzer0();
    EXPECT_EQ(made, 2);
    EXPECT_EQ(f.shell.dialogs_shown(), 2);
}

TEST(offers, names_the_methods_that_lead_somewhere)
{
    plug_in_with_dialogs f;
    for (const char* method :
         {"readfile0", "wfile", "bufcomopt", "buffercomopt", "freesharebufferopt", "mnutestautofind0", "vecttest0"}) {
        EXPECT_TRUE(f.methods.offers(method)) << method;
        EXPECT_TRUE(f.class_of_host.offers(method)) << method;
    }
    for (const char* method : {"algoparameter0", "analyzer0", "recetwave0", "mnutesttestksm", "mnutestttltest0",
                               "mnuEditeditvector0", "mnutesteditttllib0"}) {
        EXPECT_FALSE(f.methods.offers(method)) << method << " without its dialog";
        EXPECT_TRUE(f.class_of_host.offers(method)) << method << " with its dialog";
    }
    for (const char* method : {"", "readfile", "Readfile0", "no such method"}) {
        EXPECT_FALSE(f.class_of_host.offers(method)) << method;
    }
}

TEST(offers, the_self_test_only_on_models_whose_dialog_is_there)
{
    plug_in_fixture f;
    dialog_table table;
    table.add("pinnote204", [](session&, module_variables&) { return std::unique_ptr<forms::form>{}; });
    const entry_methods methods{f.session, f.variables, table};
    f.session.blocks.modeltype(0) = 39;
    EXPECT_TRUE(methods.offers("mnutesttestksm"));
    f.session.blocks.modeltype(0) = 40;
    EXPECT_FALSE(methods.offers("mnutesttestksm"));
}

}  // namespace
}  // namespace tamrix
