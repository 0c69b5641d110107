#include "scenes.h"

#include "device/algoparameter.h"
#include "device/warnno.h"
#include "instrument_scenes.h"
#include "logic_library.h"
#include "over_host.h"
#include "selftest_scenes.h"
#include "support/plug_in_fixture.h"
#include "transfer/readfile.h"
#include "transfer/writefile.h"
#include "ttl/dialogs/ttladd.h"
#include "ttl/dialogs/ttlautotest.h"
#include "ttl/dialogs/ttledit.h"
#include "ttl/dialogs/ttltest.h"
#include "ttl/run/row_report.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace tamrix::tests {

namespace {

/// A row of a real device, cut or repeated to the pins there are.
std::string row_of(int pins, int number)
{
    constexpr std::string_view pattern = "01H10LG01HC1LXV";
    std::string row;
    for (int i = 0; i < pins; ++i) row += pattern[static_cast<std::size_t>(i + number) % pattern.size()];
    return row;
}

void with_vectors(ttl_variables& ttl, std::string name, int pins, int rows)
{
    ttl.ttlname = std::move(name);
    ttl.ttlpin = static_cast<std::int16_t>(pins);
    ttl.ttlcnt = static_cast<std::int16_t>(rows + 1);
    for (int i = 0; i < rows; ++i) ttl.ttlvect.store(static_cast<std::size_t>(i), row_of(pins, i));
}

void load_file(stage& on)
{
    readfile load{on.session, on.variables.transfer};
    load.rfileLabel2.caption = on.variables.transfer.fname;
    on.show(load, [&] { load.ProgressBar1.value = 62; });
}

void save_file(stage& on)
{
    writefile save{on.session, on.variables.transfer};
    save.wfileLabel2.caption = on.variables.transfer.fname;
    save.wfileText2.text("800000");
    save.wfileText3.text("7FFFFF");
    on.show(save, [&] { save.ProgressBar1.value = 62; });
}

void logic_test(stage& on)
{
    ttltest test{on.session, on.variables.ttl, on.variables.pld};
    on.show(test, [&] { test.Text1.enter("7404"); });
}

void library(stage& on)
{
    on.variables.ttl.ttleditlib = 1;
    ttltest test{on.session, on.variables.ttl, on.variables.pld};
    on.show(test, [&] { test.Text1.enter("7404"); });
}

void new_device(stage& on)
{
    ttladd ask{on.session, on.variables.ttl};
    on.show(ask, [&] {
        ask.Text1.enter("74HCT4060");
        ask.Text2.enter("16");
    });
}

void edit_logic(stage& on)
{
    with_vectors(on.variables.ttl, "74LS138", 16, 9);
    ttledit editor{on.session, on.variables.ttl, on.variables.pld};
    on.show(editor);
}

void edit_device(stage& on)
{
    on.variables.ttl.wnote = 1;
    on.session.blocks.chippin(0) = 40;
    ttledit editor{on.session, on.variables.ttl, on.variables.pld};
    on.show(editor, [&] { editor.Command2.click(); });
}

void auto_find(stage& on)
{
    on.variables.ttl.hits = {"7400", "7403", "74132", "7426", "7437", "7438"};
    ttlautotest result{on.session, on.variables.ttl};
    on.show(result, [&] { result.List1.pick(2); });
}

void failed_row(stage& on)
{
    on.ask([&] {
        report_failed_row(on.session, 0,
                          {.number = 17, .row = row_of(40, 0), .result = "  L               H                     "});
    });
}

void passed(stage& on)
{
    const auto& plug_in = on.session;
    on.ask([&] {
        on.screen.box({.text = plug_in.text(1165),
                       .title = plug_in.text(1019),
                       .picture = forms::icon::information,
                       .buttons = forms::buttons_of_box::retry_cancel});
    });
}

/// Enter on a name that no library has.
void search_for_unknown(stage& on, std::uint8_t edits_library)
{
    on.variables.ttl.ttleditlib = edits_library;
    ttltest test{on.session, on.variables.ttl, on.variables.pld};
    test.load();
    test.Text1.enter("749999");
    on.ask([&] { test.Text1.press_enter(); });
    test.unload();
}

void not_found(stage& on) { search_for_unknown(on, 0); }

void add_new(stage& on) { search_for_unknown(on, 1); }

void delete_old(stage& on)
{
    on.variables.ttl.ttleditlib = 1;
    ttltest test{on.session, on.variables.ttl, on.variables.pld};
    test.load();
    test.Text1.enter("7404");
    on.ask([&] { test.del.click(); });
    test.unload();
}

/// The longest text that refuses a value.
void refused(stage& on)
{
    const std::array<int, 4> numbers{1136, 1137, 1146, 1147};
    const auto length = [&](int number) { return on.session.text(number).size(); };
    on.ask([&] { on.session.tell(*std::ranges::max_element(numbers, {}, length)); });
}

void show_parameters(stage& on)
{
    algoparameter parameters{on.session};
    on.show(parameters);
}

void parameters(stage& on)
{
    auto& blocks = on.session.blocks;
    blocks.bvcc(0) = 650;
    blocks.bvpp(0) = 1300;
    blocks.pwte(0) = 100;
    blocks.wretry(0) = 25;
    show_parameters(on);
}

/// The page length in place of VPP, a pulse in milliseconds.
void parameters_of_pages(stage& on)
{
    auto& blocks = on.session.blocks;
    blocks.bvcc(0) = 500;
    blocks.pagelength(0) = 128;
    blocks.pwte(0) = 1500;
    blocks.wretry(0) = 3;
    show_parameters(on);
}

/// A serial memory, which has an address.
void parameters_of_serial_memory(stage& on)
{
    auto& blocks = on.session.blocks;
    blocks.algo(0) = "WSEPM";
    blocks.prgmode(0) = 1;
    blocks.bvcc(0) = 500;
    blocks.bvpp(0) = 5;
    blocks.pwte(0) = 10000;
    show_parameters(on);
}

void note(stage& on, std::uint8_t number)
{
    on.session.blocks.tlength(0) = 0x4210;
    on.ask([&] { warn(on.session, bool16_false, number, bool16_false); });
}

/// All the memories that a device can have.
void note_of_memories(stage& on) { note(on, 6); }

/// The longest label.
void note_of_auxiliary_memory(stage& on) { note(on, 23); }

constexpr scene others[] = {
    {"load_file", load_file},
    {"save_file", save_file},
    {"logic_test", logic_test},
    {"library", library},
    {"new_device", new_device},
    {"edit_logic", edit_logic},
    {"edit_device", edit_device},
    {"auto_find", auto_find},
    {"parameters", parameters},
    {"parameters_page", parameters_of_pages},
    {"parameters_address", parameters_of_serial_memory},
    {"note_memories", note_of_memories},
    {"note_auxiliary", note_of_auxiliary_memory},
    {"failed_row", failed_row},
    {"passed", passed},
    {"not_found", not_found},
    {"add_new", add_new},
    {"delete_old", delete_old},
    {"refused", refused},
};

}  // namespace

stage::stage(int language) : session{screen, fresh_name_space()}
{
    constexpr std::int16_t with_40_pins = 40;
    screen.name_answers([this](forms::answer which) { return session.text(which); });
    session.blocks.attachsmall(1);
    session.blocks.Language(0) = language;
    session.blocks.modeltype(0) = with_40_pins;
    session.blocks.tlength(0) = session.blocks.buflength(0) = 0x400000;
    session.blocks.wordmode(0) = 2;
    variables.transfer.fname = "/home/anna/projects/controller/release/firmware-2.4.1.hex";
    session.syspath = folder.path("");
    write_logic_library(folder);
}

void stage::show(forms::form& shown, const std::function<void()>& fill)
{
    over_host(screen, shown, [&] {
        fill();
        look();
    });
}

void stage::ask(const std::function<void()>& asks) { box_over_host(screen, asks, look); }

std::vector<scene> scenes()
{
    std::vector<scene> all{std::begin(others), std::end(others)};
    for (const auto more : {selftest_scenes(), instrument_scenes()}) all.insert(all.end(), more.begin(), more.end());
    return all;
}

}  // namespace tamrix::tests
