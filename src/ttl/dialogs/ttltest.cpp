#include "ttl/dialogs/ttltest.h"

#include "channel/model.h"
#include "messages/message_numbers.h"
#include "session/captions.h"
#include "session/session.h"
#include "ttl/dialogs/ttladd.h"
#include "ttl/dialogs/ttledit.h"
#include "ttl/library/library.h"
#include "ttl/run/prepare.h"
#include "ttl/run/row_report.h"
#include "ttl/run/ttlload.h"

#include <algorithm>
#include <utility>

namespace tamrix {

ttltest::ttltest(session& plug_in, ttl_variables& ttl, pld_variables& pld) : plug_in_{plug_in}, ttl_{ttl}, pld_{pld}
{
    Text1.on_change = [this] { select_typed(); };
    Text1.on_enter_key = unless_busy([this] { search(); });
    List1.on_click = [this] {
        if (!List1.text().empty()) Text1.text(List1.text());
    };
    OKButton.on_click = unless_busy([this] {
        if (edits_library()) {
            edit_selected();
        } else {
            test_in_loop();
        }
    });
    add.on_click = [this] {
        if (!asks_to_add()) return;
        edit_new_device({}, 0);
    };
    del.on_click = [this] { delete_selected(); };
    CancelButton.on_click = unless_busy([this] { close(); });
}

forms::layout ttltest::arrangement()
{
    using namespace forms;
    return column({
        fields({Label1, Text1}),
        stretched(column({Label2, stretched(List1), Label3})),
        buttons({add, del, CancelButton, OKButton}),
    });
}

void ttltest::on_load()
{
    load_captions();
    if (is_true(ttl_.ok)) power_up();
    fill_list();
    if (!edits_library() && std::ranges::find(List1.items(), ttl_.proposed) != List1.items().end())
        Text1.text(ttl_.proposed);
    focus(Text1);
}

void ttltest::load_captions()
{
    const bool library = edits_library();
    caption(plug_in_.text(library ? message::edit_pattern : message::ttl_and_cmos_test));
    const caption_line captions[] = {
        {Label1.caption, message::search},
        {Label2.caption, message::type},
        {OKButton.caption, library ? message::edit : message::test},
        {CancelButton.caption, message::cancel},
        {add.caption, message::add},
        {del.caption, message::del},
    };
    set_captions(plug_in_, captions);
    add.visible = library;
    del.visible = library;
}

/// No device is chosen yet, so the board is the common one. What the reset yields is not looked at.
void ttltest::power_up()
{
    hw::devobj& device = plug_in_.hardware.device();
    device.hwreset();
    if (hw::model_of(plug_in_.blocks.modeltype(0)).selects_two_boards) select_family_board(plug_in_, false);
    device.setvcc(logic_millivolts);
}

/// The total is what the library says of itself, even where it names fewer devices. Only the next opening shows what
/// Add and Del made of it.
void ttltest::fill_list()
{
    library_directory directory = read_directory(plug_in_);
    List1.items(std::move(directory.names));
    Label3.caption = plug_in_.text(message::total) + std::to_string(directory.count);
}

/// The entry that is exactly the text in the search field; -1 where there is none.
int ttltest::listed() const
{
    const std::vector<std::string>& names = List1.items();
    const auto found = std::ranges::find(names, Text1.text());
    return found != names.end() ? static_cast<int>(found - names.begin()) : -1;
}

void ttltest::select_typed() { List1.index(listed()); }

/// Enter on a name that is listed does nothing: typing it has selected it.
void ttltest::search()
{
    if (listed() >= 0) return;
    if (!edits_library()) {
        plug_in_.screen.box({.text = plug_in_.text(message::device_not_found),
                             .title = plug_in_.text(message::warning) + plug_in_.text(message::ttl_and_cmos_test),
                             .picture = forms::icon::error});
        List1.index(-1);
        return;
    }
    if (!asks_to_add()) return;
    edit_new_device(Text1.text(), ttl_.wnote);  // the Add button would clear wnote
}

bool ttltest::asks_to_add()
{
    return plug_in_.screen.box({.text = plug_in_.text(message::add_new_device),
                                .title = plug_in_.text(message::edit_pattern),
                                .picture = forms::icon::question,
                                .buttons = forms::buttons_of_box::yes_no}) == forms::answer::yes;
}

void ttltest::edit_new_device(std::string proposed_name, std::uint8_t wnote)
{
    const std::string name_before = std::exchange(ttl_.ttlname, std::move(proposed_name));
    ttladd name_and_pins{plug_in_, ttl_};
    plug_in_.screen.show_modal(name_and_pins);
    if (!name_and_pins.accepted()) {
        ttl_.ttlname = name_before;
        return;
    }
    ttl_.wnote = wnote;
    ttledit editor{plug_in_, ttl_, pld_, &List1};
    plug_in_.screen.show_modal(editor);
}

void ttltest::edit_selected()
{
    if (List1.index() < 0) return;
    const std::string name = List1.text();
    if (!name_fits(name)) {  // of a library that was made elsewhere; the editor could not save it
        plug_in_.screen.box({.text = plug_in_.text(message::invalid_input),
                             .title = plug_in_.text(message::edit_pattern),
                             .picture = forms::icon::warning});
        return focus(List1);
    }
    ttl_.wnote = 0;
    ttlload(plug_in_, ttl_, name, 0, -1);
    ttl_.ttlname = name;
    if (is_true(ttl_.ok)) select_board(plug_in_, name);
    ttledit editor{plug_in_, ttl_, pld_, &List1};
    plug_in_.screen.show_modal(editor);
}

void ttltest::test_in_loop()
{
    if (List1.index() < 0 || !is_true(ttl_.ok)) return;
    const busy_time testing{*this};
    const std::string name = List1.text();
    do {
        if (!prepare_supply(plug_in_, ttl_, name)) return keep_test(ttl_, name);
    } while (passes(name) && wants_repetition());
    plug_in_.hardware.device().hwrelease();
}

/// A name without a record runs nothing, and that counts as a pass. A failed row was reported while the vectors ran.
bool ttltest::passes(const std::string& name)
{
    run_outcome& outcome = ttl_.outcome;
    outcome = ttlload(plug_in_, ttl_, name, 0, 0);
    keep_test(ttl_, name);
    if (outcome.communication_failed()) tell_communication_error(plug_in_, message::ttl_and_cmos_test);
    return !outcome.ended_in_failure();
}

bool ttltest::wants_repetition()
{
    return plug_in_.screen.box({.text = plug_in_.text(message::vector_test_ok),
                                .title = plug_in_.text(message::ttl_and_cmos_test),
                                .picture = forms::icon::information,
                                .buttons = forms::buttons_of_box::retry_cancel}) == forms::answer::retry;
}

/// The entry goes out of the list wherever the user did not refuse, also where the library kept its last device. The
/// total stays.
void ttltest::delete_selected()
{
    const int entry = List1.index();
    if (Text1.text().empty() || entry < 0) return;
    const bool refused = ttldelete(plug_in_, List1.text(), 0);
    if (!refused) List1.remove(entry);
}

}  // namespace tamrix
