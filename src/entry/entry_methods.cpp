#include "entry/entry_methods.h"

#include "base/arith.h"
#include "channel/model.h"
#include "device/warnno.h"
#include "pld/jedec.h"
#include "pld/svf.h"
#include "session/session.h"
#include "transfer/readfile.h"
#include "transfer/writefile.h"
#include "ttl/run/ttlscan.h"
#include "ttl/run/vecttest.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <string_view>
#include <utility>

namespace tamrix {

namespace {

constexpr const char* unknown_error = "unknown error";

/// Nothing throws across the boundary: an error that no dialog or routine handled becomes the call's failed reply.
template <class Body>
reply guarded(Body body)
{
    try {
        return {.value = body(), .error = {}};
    } catch (const std::exception& error) {
        // Without a text the reply would pass for a good one.
        const std::string text = error.what();
        return {.value = {}, .error = text.empty() ? unknown_error : text};
    } catch (...) {
        return {.value = {}, .error = unknown_error};
    }
}

std::string_view help_file_of(std::int32_t language)
{
    switch (language) {
    case 3000: return "readhelp.chm::readhelp.txt";
    case 6000: return "readhelpf.chm::readhelpf.txt";
    case 12000: return "plhelp.chm::help.txt";
    default: return "help.chm::help.txt";
    }
}

constexpr std::uint8_t pin_map_before_logic_test = 4;  // the pin map's task

}  // namespace

entry_methods::entry_methods(session& plug_in, module_variables& variables, dialog_table dialogs)
    : plug_in_{plug_in}, variables_{variables}, dialogs_{std::move(dialogs)}
{}

bool entry_methods::offers(std::string_view method) const
{
    if (method == "mnutesttestksm") {
        const auto& modeltype = plug_in_.blocks.modeltype;
        return dialogs_.has(hw::model_of(modeltype(0)).self_test_form);
    }
    struct line {
        std::string_view method, dialog;
    };
    static constexpr line behind[] = {{"algoparameter0", "algoparameter"}, {"analyzer0", "analyzer"},
                                      {"recetwave0", "recetwave"},         {"mnutestttltest0", "ttltest"},
                                      {"mnutesteditttllib0", "ttltest"},   {"mnuEditeditvector0", "ttledit"}};
    static constexpr std::string_view always[] = {"readfile0",          "wfile",       "bufcomopt",    "buffercomopt",
                                                  "freesharebufferopt", "readpldfile", "writepldfile", "readsvffile",
                                                  "mnutestautofind0",   "vecttest0",   "warn"};
    if (std::ranges::find(always, method) != std::end(always)) return true;
    const auto* found = std::ranges::find(behind, method, &line::method);
    return found != std::end(behind) && dialogs_.has(found->dialog);
}

reply entry_methods::readfile0(std::string& fname, std::int16_t& rformat, std::string& syspath0)
{
    return guarded([&] {
        transfer_variables& transfer = variables_.transfer;
        transfer.fname = fname;
        transfer.why_it_failed = {};
        transfer.rformat = rformat;
        plug_in_.syspath = syspath0;
        readfile dialog{plug_in_, transfer};
        dialog.rfileLabel2.caption = transfer.fname;
        plug_in_.screen.show_modal(dialog);
        return transfer.frommode;
    });
}

reply entry_methods::wfile(std::string& fname, std::string& syspath0)
{
    return guarded([&] {
        transfer_variables& transfer = variables_.transfer;
        transfer.fname = fname;
        transfer.why_it_failed = {};
        plug_in_.syspath = syspath0;
        writefile dialog{plug_in_, transfer};
        const std::int64_t length = plug_in_.devbytes() + 16 * std::int64_t{plug_in_.blocks.wordmode(1)};
        dialog.wfileText2.text(arith::hex(length));
        dialog.wfileText3.text(arith::hex(length - 1));
        dialog.wfileLabel2.caption = transfer.fname;
        plug_in_.screen.show_modal(dialog);
        return variant{};
    });
}

reply entry_methods::show(std::string_view dialog)
{
    return guarded([&] {
        dialogs_.show(dialog, plug_in_, variables_);
        return variant{};
    });
}

/// When that dialog closes, the method goes on as for every other model.
void entry_methods::show_pin_map_before_logic_test()
{
    if (!hw::model_of(plug_in_.blocks.modeltype(0)).pin_map_before_logic_test) return;
    variables_.selftest.pinmapmode = pin_map_before_logic_test;
    dialogs_.show("pinnote4", plug_in_, variables_);
}

void entry_methods::store(std::uint8_t icsum, bool16 ok, const std::string& syspath)
{
    variables_.ttl.tests.clear();
    variables_.ttl.icsum = icsum;
    variables_.ttl.ok = ok;
    plug_in_.syspath = syspath;
}

reply entry_methods::algoparameter0() { return show("algoparameter"); }

reply entry_methods::analyzer0() { return show("analyzer"); }

reply entry_methods::recetwave0(bool16& fwave)
{
    variables_.wave.fwave = fwave;
    return show("recetwave");
}

reply entry_methods::mnutesttestksm()
{
    return guarded([&] {
        variables_.selftest.pinmapmode = 0;
        variables_.selftest.last = {};
        dialogs_.show(hw::model_of(plug_in_.blocks.modeltype(0)).self_test_form, plug_in_, variables_);
        return variant{};
    });
}

reply entry_methods::mnutestttltest0(std::uint8_t& icsum0, bool16& ok0, std::string& syspath0)
{
    return guarded([&] {
        show_pin_map_before_logic_test();
        store(icsum0, ok0, syspath0);
        variables_.ttl.ttleditlib = 0;
        dialogs_.show("ttltest", plug_in_, variables_);
        return variant{};
    });
}

reply entry_methods::mnuEditeditvector0(std::uint8_t& icsum0, bool16& ok0, std::string& syspath0)
{
    variables_.ttl.wnote = 1;
    store(icsum0, ok0, syspath0);
    return show("ttledit");
}

reply entry_methods::mnutesteditttllib0(std::uint8_t& icsum0, bool16& ok0, std::string& syspath0)
{
    return guarded([&] {
        show_pin_map_before_logic_test();
        store(icsum0, ok0, syspath0);
        variables_.ttl.ttleditlib = 1;
        dialogs_.show("ttltest", plug_in_, variables_);
        return variant{};
    });
}

reply entry_methods::mnutestautofind0(std::string& syspath0)
{
    return guarded([&] {
        show_pin_map_before_logic_test();
        plug_in_.syspath = syspath0;
        variables_.ttl.tests.clear();
        ttlscan(plug_in_, variables_.ttl, [this](const std::vector<std::string>& hits) {
            variables_.ttl.hits = hits;
            dialogs_.show("ttlautotest", plug_in_, variables_);
        });
        return variant{};
    });
}

reply entry_methods::warn(std::uint8_t& no, bool16& extpower0)
{
    return guarded([&] {
        tamrix::warn(plug_in_, variables_.ttl.ok, no, extpower0);
        return variant{};
    });
}

reply entry_methods::vecttest0(std::uint8_t& mode, std::uint8_t& ttlcnt0, std::uint8_t& wnote0, bool16& ok0)
{
    return guarded([&] {
        variables_.ttl.tests.clear();
        variables_.ttl.ok = ok0;
        variables_.ttl.ttlcnt = ttlcnt0;
        variables_.ttl.wnote = wnote0;
        // The rows of an editor are handed over by its own Test button only.
        vecttest(plug_in_, variables_.ttl, variables_.pld, mode, {});
        return variant{};
    });
}

reply entry_methods::readpldfile(std::string& fname)
{
    return guarded([&] {
        read_jedec(plug_in_, variables_.pld, variables_.transfer.why_it_failed, fname);
        return variant{};
    });
}

reply entry_methods::writepldfile(std::string& fname)
{
    return guarded([&] {
        write_jedec(plug_in_, variables_.pld, variables_.transfer.why_it_failed, fname);
        return variant{};
    });
}

reply entry_methods::readsvffile(std::string& fname, std::string& syspath0)
{
    return guarded([&] { return variant{read_svf(variables_.transfer.why_it_failed, fname, syspath0)}; });
}

reply entry_methods::bufcomopt(std::int16_t& num)
{
    return guarded([&] {
        plug_in_.hardware.forget();  // it writes to blocks that are unmapped now
        plug_in_.blocks.attachsmall(num);
        // At a first call syspath is still empty, and the help file's name is alone.
        plug_in_.help_file = plug_in_.syspath + std::string{help_file_of(plug_in_.blocks.Language(0))};
        return variant{};
    });
}

reply entry_methods::buffercomopt(std::int16_t&)
{
    return guarded([&] {
        plug_in_.blocks.attachbig(ibuffer_bytes(plug_in_.blocks.buflength(0)));
        return variant{};
    });
}

reply entry_methods::freesharebufferopt()
{
    return guarded([&] {
        plug_in_.blocks.releasebig();
        return variant{};
    });
}

}  // namespace tamrix
