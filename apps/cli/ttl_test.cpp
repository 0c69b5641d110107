// The commands that play vectors on the chip in the socket.
#include "cli/logic_test.h"
#include "ttl/library.h"
#include "ttl/ttlautotest.h"
#include "ttl/ttltest.h"

#include "base/native_path.h"

#include <filesystem>

namespace tamrix::cli {

namespace {

/// A plug-in with its simulated programmer.
struct bench {
    bench(const ttl_options& options) : plug_in{options.language}, socket{plug_in, options.socket}
    {
        plug_in.state.syspath = options.syspath;
        const std::string path = native_path(library_path(plug_in.state));
        if (!std::filesystem::is_regular_file(path)) fail(path + ": no such library");
    }
    void check(const reply& outcome)
    {
        if (!outcome.ok()) fail(outcome.error);
    }
    bool says(const forms::message_box& box, int message) const { return box.text == plug_in.state.text(message); }

    attached_plug_in plug_in;
    simulated_socket socket;
};

}  // namespace

void ttl_test(const ttl_options& options, const std::string& name, console& con)
{
    bench b{options};
    bool known = false;
    b.plug_in.screen.failing_rows = forms::answer::ignore;  // so that all of them are told
    b.plug_in.screen.person = [&](forms::form& shown) {
        auto& dialog = dynamic_cast<ttltest&>(shown);
        dialog.Text1.enter(name);
        known = dialog.List1.index() >= 0;
        if (known) dialog.OKButton.click();
    };
    std::uint8_t icsum = 0;
    bool16 ok = bool16_true;
    std::string folder = options.syspath;
    b.check(b.plug_in.methods.mnutestttltest0(icsum, ok, folder));
    if (!known) fail(name + ": not in the library; tamrix ttl list shows the names");
    bool passed = false, failed = false;
    std::string trouble = "the programmer does not answer";
    for (const forms::message_box& box : b.plug_in.screen.boxes()) {
        const bool row = box.buttons == forms::buttons_of_box::abort_retry_ignore;
        passed = b.says(box, 1165);
        failed |= row;
        if (row) con.line(box.text);
        if (b.says(box, 1075)) trouble = box.text;
    }
    b.socket.tell_hazards(con);
    if (failed) fail(name + ": " + b.plug_in.state.text(1019) + b.plug_in.state.text(1088));
    if (!passed) fail(name + ": " + trouble);
    con.line(name + ": " + b.plug_in.state.text(1165));
}

void ttl_find(const ttl_options& options, console& con)
{
    bench b{options};
    std::vector<std::string> hits;
    b.plug_in.screen.person = [&](forms::form& shown) { hits = dynamic_cast<ttlautotest&>(shown).List1.items(); };
    std::string folder = options.syspath;
    b.check(b.plug_in.methods.mnutestautofind0(folder));
    // Hazards are not told: the vectors of other devices drive the outputs of this one, which is how auto find works.
    for (const std::string& name : hits) con.line(name);
    if (hits.empty()) fail(b.plug_in.state.text(1164));
}

}  // namespace tamrix::cli
