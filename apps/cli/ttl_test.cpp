// The commands that play vectors on the chip in the socket.
#include "cli/logic_test.h"
#include "messages/message_numbers.h"
#include "ttl/dialogs/ttlautotest.h"
#include "ttl/dialogs/ttltest.h"
#include "ttl/library/library.h"
#include "ttl/run/row_report.h"

#include "base/native_path.h"
#include "cli/folders.h"

#include <filesystem>

namespace tamrix::cli {

namespace {

/// A plug-in with its simulated programmer.
struct bench {
    bench(const ttl_options& options) : plug_in{options.language}, socket{plug_in, options.socket}
    {
        plug_in.state.syspath = options.syspath;
        const std::string path = native_path(library_path(plug_in.state));
        check_folder_of(path);
        if (!std::filesystem::is_regular_file(path)) fail(path + ": no such library");
    }
    void check(const reply& outcome)
    {
        if (!outcome.ok()) fail(outcome.error);
    }

    attached_plug_in plug_in;
    simulated_socket socket;
};

}  // namespace

void ttl_test(const ttl_options& options, const std::string& name, console& con)
{
    bench b{options};
    bool known = false;
    b.plug_in.screen.failing_rows = forms::answer::ignore;  // so that all of them are reported
    b.plug_in.screen.person = [&](forms::form& shown) {
        auto* const dialog = dynamic_cast<ttltest*>(&shown);
        if (dialog == nullptr) return;  // the pin map: no line has to be laid on a simulated socket
        dialog->Text1.enter(name);
        known = dialog->List1.index() >= 0;
        if (known) dialog->OKButton.click();
    };
    std::uint8_t icsum = 0;
    bool16 ok = bool16_true;
    std::string folder = options.syspath;
    b.check(b.plug_in.methods.mnutestttltest0(icsum, ok, folder));
    if (!known) fail(name + ": not in the library; tamrix ttl list shows the names");
    const session& state = b.plug_in.state;
    for (const failed_row& row : b.plug_in.variables.ttl.outcome.rows) {
        const auto [expected, result] = lines_of(state, row);
        con.line(expected);
        con.line(result);
    }
    b.socket.tell_hazards(con);
    check_carried_out(name, b.plug_in,
                      "no record in the library (a name of 12 letters is never found); add it under a shorter name");
    if (!b.plug_in.variables.ttl.outcome.rows.empty())
        fail(name + ": " + state.text(message::ttl_and_cmos_test) + state.text(message::fail));
    con.status(name + ": " + state.text(message::vector_test_ok));
}

void ttl_find(const ttl_options& options, console& con)
{
    bench b{options};
    std::vector<std::string> hits;
    b.plug_in.screen.person = [&](forms::form& shown) {
        if (auto* const dialog = dynamic_cast<ttlautotest*>(&shown)) hits = dialog->List1.items();
    };
    std::string folder = options.syspath;
    b.check(b.plug_in.methods.mnutestautofind0(folder));
    check_carried_out("auto find", b.plug_in, "the library is damaged; name a sound one with --syspath");
    // Hazards are not reported: the vectors of other devices drive the outputs of this one, which is how auto find
    // works.
    for (const std::string& name : hits) con.line(name);
    if (hits.empty()) fail(b.plug_in.state.text(message::device_not_found));
}

}  // namespace tamrix::cli
