// A plug-in with a load dialog that a test fills in as a person would.
#pragma once

#include "support/plug_in_fixture.h"
#include "support/temp_files.h"
#include "transfer/readfile.h"

#include <functional>
#include <string>

namespace tamrix::tests {

/// What a person enters in the load dialog before OK; what is left out stays as the dialog opened.
struct load_entries {
    std::string to_buffer{};
    std::string from_file{};
    std::string size{};
    int format = -1;
    int from_mode = 0;
    int to_mode = 0;
    int clear = -1;
};

struct load_fixture : plug_in_fixture {
    using plug_in_fixture::plug_in_fixture;

    /// Opens the dialog on `file`, enters, presses OK once and yields the status. `then` runs after OK, the dialog
    /// perhaps still open.
    status load(const std::string& file, const load_entries& entries = {}, std::function<void(readfile&)> then = {})
    {
        shell.on_next_dialog([&](forms::form& shown) {
            auto& dialog = dynamic_cast<readfile&>(shown);
            if (entries.format >= 0) dialog.rfileOption2(entries.format).click();
            if (entries.clear >= 0) dialog.rfileOption1(entries.clear).click();
            dialog.rfilecombo1.pick(entries.from_mode);
            dialog.rfileCombo2.pick(entries.to_mode);
            if (!entries.to_buffer.empty()) dialog.rfileText1.enter(entries.to_buffer);
            if (!entries.from_file.empty()) dialog.rfileText2.enter(entries.from_file);
            if (!entries.size.empty()) dialog.rfileText3.enter(entries.size);
            dialog.okcom.click();
            stayed_open = dialog.is_open();
            if (then) then(dialog);
        });
        std::string name = file, folder = syspath;
        std::int16_t format = preselected;
        last_reply = methods.readfile0(name, format, folder);
        return static_cast<status>(session.rformat);
    }

    std::string syspath;
    std::int16_t preselected = 0;
    reply last_reply;
    bool stayed_open = false;
};

}  // namespace tamrix::tests
