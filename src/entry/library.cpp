// The functions that libtamrix.so exports: the plug-in with its dialogs on the real screen.
#include "entry/all_dialogs.h"
#include "entry/entry_methods.h"
#include "formats/formats.h"
#include "messages/catalogue.h"
#include "pld/detect.h"
#include "programmer/loaded_programmer.h"
#include "selftest/verdict.h"
#include "session/session.h"
#include "tamrix/clstamrix.h"
#include "tamrix/formats.h"
#include "wxui/wx_shell.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <string>
#include <utility>

namespace tamrix {

namespace {

std::string text_or_empty(const char* text) { return text != nullptr ? text : ""; }

std::string name_space_of_environment() { return text_or_empty(std::getenv("TAMRIX_NAMESPACE")); }

struct screen_and_state {
    screen_and_state()
    {
        screen.name_answers([this](forms::answer which) { return state.text(which); });
    }

    wxui::wx_shell screen;
    session state{screen, name_space_of_environment()};
    module_variables variables;
    std::string text_for_host;
};

/// What a host's pointer refers to. The screen and the session are made first, and go last.
class loaded_plug_in final : private screen_and_state, public entry_methods {
public:
    loaded_plug_in() : entry_methods{state, variables, all_dialogs()} { use_programmer({}, {}); }

    void use_programmer(std::string path, std::string options)
    {
        if (path.empty()) path = text_or_empty(std::getenv("TAMRIX_PROGRAMMER"));
        state.hardware.forget();
        state.hardware.source = nullptr;
        if (!path.empty()) state.hardware.source = hw::library_source(std::move(path), std::move(options));
    }
    const char* keep(std::string text)
    {
        text_for_host = std::move(text);
        return text_for_host.c_str();
    }
    using screen_and_state::state, screen_and_state::variables;
};

loaded_plug_in& loaded(Clstamrix* plug_in) { return static_cast<loaded_plug_in&>(*plug_in); }

template <class Text>
const char* text_of(Clstamrix* plug_in, Text text) noexcept
{
    try {
        return plug_in != nullptr ? loaded(plug_in).keep(text(loaded(plug_in))) : "";
    } catch (const std::exception&) {
        return "";
    }
}

tamrix_logic_result result_of(run_outcome::kind what)
{
    switch (what) {
    case run_outcome::kind::passed: return TAMRIX_LOGIC_PASSED;
    case run_outcome::kind::failed: return TAMRIX_LOGIC_FAILED;
    case run_outcome::kind::not_played: return TAMRIX_LOGIC_NOTHING_PLAYED;
    default: return TAMRIX_LOGIC_NOT_CARRIED_OUT;
    }
}

}  // namespace

}  // namespace tamrix

using tamrix::loaded;
using tamrix::loaded_plug_in;

tamrix::Clstamrix* tamrix_create() noexcept
{
    try {
        return new tamrix::loaded_plug_in;
    } catch (...) {
        return nullptr;
    }
}

void tamrix_destroy(tamrix::Clstamrix* plug_in) noexcept { delete plug_in; }

int tamrix_use_programmer(tamrix::Clstamrix* plug_in, const char* library_path, const char* options) noexcept
{
    try {
        if (plug_in == nullptr) return 0;
        loaded(plug_in).use_programmer(tamrix::text_or_empty(library_path), tamrix::text_or_empty(options));
        return 1;
    } catch (const std::exception&) {
        return 0;
    }
}

const char* tamrix_diagnostic(tamrix::Clstamrix* plug_in) noexcept
{
    return tamrix::text_of(plug_in,
                           [](const loaded_plug_in& it) { return it.variables.transfer.why_it_failed.text(); });
}

const char* tamrix_jedec_note(tamrix::Clstamrix* plug_in) noexcept
{
    return tamrix::text_of(plug_in, [](const loaded_plug_in& it) { return it.variables.pld.note; });
}

const char* tamrix_help_file(tamrix::Clstamrix* plug_in) noexcept
{
    return tamrix::text_of(plug_in, [](const loaded_plug_in& it) { return it.state.help_file; });
}

int tamrix_vector_count(tamrix::Clstamrix* plug_in) noexcept
{
    if (plug_in == nullptr) return 0;
    return std::max(loaded(plug_in).variables.pld.pldvectcnt - 1, 0);
}

tamrix_selftest_result tamrix_last_selftest(tamrix::Clstamrix* plug_in) noexcept
{
    using tamrix::selftest_result;
    if (plug_in == nullptr) return TAMRIX_SELFTEST_NONE;
    switch (loaded(plug_in).variables.selftest.last.result) {
    case selftest_result::none: return TAMRIX_SELFTEST_NONE;
    case selftest_result::passed: return TAMRIX_SELFTEST_PASSED;
    case selftest_result::failed:
    case selftest_result::stopped: return TAMRIX_SELFTEST_FAILED;
    default: return TAMRIX_SELFTEST_NOT_CARRIED_OUT;
    }
}

const char* tamrix_selftest_report(tamrix::Clstamrix* plug_in) noexcept
{
    return tamrix::text_of(plug_in,
                           [](const loaded_plug_in& it) { return tamrix::report_text(it.variables.selftest.last); });
}

int tamrix_describe_logic_test(tamrix::Clstamrix* plug_in, int index, tamrix_logic_test* description) noexcept
{
    if (plug_in == nullptr || description == nullptr) return 0;
    const auto& tests = loaded(plug_in).variables.ttl.tests;
    if (index < 0 || index >= static_cast<int>(tests.size())) return 0;
    const tamrix::finished_test& one = tests[static_cast<std::size_t>(index)];
    *description = {tamrix::result_of(one.outcome.what),       one.device.c_str(),  one.pins,
                    static_cast<int>(one.outcome.rows.size()), one.outcome.ignored, one.outcome.failed_pins()};
    return 1;
}

void tamrix_propose_logic_device(tamrix::Clstamrix* plug_in, const char* name) noexcept
{
    try {
        if (plug_in != nullptr) loaded(plug_in).variables.ttl.proposed = tamrix::text_or_empty(name);
    } catch (const std::exception&) {
        return;  // without memory for a name none is proposed
    }
}

int tamrix_has_language(std::int32_t offset) noexcept { return tamrix::has_language(offset) ? 1 : 0; }

int tamrix_offers(tamrix::Clstamrix* plug_in, const char* method) noexcept
{
    try {
        return plug_in != nullptr && loaded(plug_in).offers(method) ? 1 : 0;
    } catch (const std::exception&) {
        return 0;
    }
}

int tamrix_describe_format(int index, tamrix_format* description) noexcept
{
    const auto table = tamrix::formats();
    if (index < 0 || index >= static_cast<int>(table.size()) || description == nullptr) return 0;
    const tamrix::format& one = table[static_cast<std::size_t>(index)];
    // The texts of the table are literals, so each is ended by a NUL.
    *description = {one.name.data(), one.caption.empty() ? "Binary" : one.caption.data(), one.extensions.data(),
                    one.read != nullptr, one.write != nullptr};
    return 1;
}

int tamrix_detect_format(const char* path, tamrix_certainty* certainty) noexcept
{
    try {
        const tamrix::detected_format found = tamrix::detect_format(path);
        if (certainty != nullptr) *certainty = static_cast<tamrix_certainty>(found.certainty);
        return found.index;
    } catch (const std::exception&) {
        return -1;
    }
}

tamrix_pld_format tamrix_detect_pld(const char* path) noexcept
{
    try {
        switch (tamrix::detect_pld_format(path)) {
        case tamrix::pld_format::jedec: return TAMRIX_JEDEC;
        case tamrix::pld_format::svf: return TAMRIX_SVF;
        case tamrix::pld_format::none: break;
        }
    } catch (const std::exception&) {
    }
    return TAMRIX_NO_PLD;
}
