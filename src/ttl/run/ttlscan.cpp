#include "ttl/run/ttlscan.h"

#include "channel/model.h"
#include "channel/usb_route.h"
#include "messages/message_numbers.h"
#include "session/session.h"
#include "ttl/library/library.h"
#include "ttl/library/library_file.h"
#include "ttl/run/engines.h"
#include "ttl/run/prepare.h"
#include "ttl/run/row_report.h"

#include <optional>
#include <utility>

namespace tamrix {

namespace {

/// The board of the family last tried; intentional: switched on a change only, and over USB only.
class family_board {
public:
    explicit family_board(session& plug_in)
        : plug_in_{plug_in},
          switched_{hw::model_of(plug_in.blocks.modeltype(0)).selects_two_boards &&
                    hw::usb_is_true(plug_in.blocks.usbable(0))}
    {}
    void need(bool cmos)
    {
        if (!switched_ || cmos == cmos_) return;
        select_family_board(plug_in_, cmos);
        cmos_ = cmos;
    }

private:
    session& plug_in_;
    bool switched_;
    bool cmos_ = true;
};

std::optional<library_record> next_record(library_lines& lines)
{
    while (const auto line = lines.next()) {
        if (contains(in_line_buffer(*line), "$")) return library_record{*line};
        if (is_end_line(*line)) break;
    }
    return std::nullopt;
}

run_outcome play(session& plug_in, ttl_variables& ttl, const library_record& record)
{
    const std::int16_t n = record.n();
    for (int i = 0; i <= n - 2; ++i) ttl.ttlvect.store(static_cast<std::size_t>(i), record.row(i));
    return run_library_vectors(plug_in, ttl, n, record.pins(), -1, 0);
}

/// In percent, the fraction cut off: below 100 up to the last device.
std::uint8_t progress(std::int32_t i, std::int32_t count)
{
    return static_cast<std::uint8_t>(100 * std::int64_t{i} / count);
}

/// Plays record after record, and yields the names of those that passed; nothing where the library ends too early. The
/// outcome names the first communication error.
std::optional<std::vector<std::string>> walk(session& plug_in, ttl_variables& ttl, library_lines& lines,
                                             std::int32_t count)
{
    family_board board{plug_in};
    std::vector<std::string> found;
    for (std::int32_t i = 0; i < count; ++i) {
        const auto record = next_record(lines);
        if (!record) return std::nullopt;
        board.need(is_cmos_name(record->name()));
        run_outcome outcome = play(plug_in, ttl, *record);
        if (!outcome.ended_in_failure()) found.emplace_back(record->name());
        if (outcome.communication_failed() && !ttl.outcome.communication_failed()) ttl.outcome = std::move(outcome);
        plug_in.blocks.prgmode(1) = progress(i, count);
        plug_in.screen.doevents();
    }
    return found;
}

void tell_not_found(session& plug_in)
{
    plug_in.screen.box({.text = plug_in.text(message::device_not_found),
                        .title = plug_in.text(message::auto_find_device_result),
                        .picture = forms::icon::error});
}

}  // namespace

void ttlscan(session& plug_in, ttl_variables& ttl,
             const std::function<void(const std::vector<std::string>&)>& show_hits)
{
    plug_in.blocks.prgmode(1) = 0;
    ttl.outcome = {};
    const std::string content = library_content(library_path(plug_in));
    library_lines lines{content};
    const auto header = find_header(lines);
    if (!header || !reset_hardware(plug_in, ttl)) return;
    if (hw::model_of(plug_in.blocks.modeltype(0)).selects_two_boards) select_family_board(plug_in, true);
    plug_in.hardware.device().busmode(0);
    plug_in.hardware.device().setvcc(logic_millivolts);
    // Cleared this once: after a lost read no later device is played any more, and all of them count as found.
    // Intentional: a list of them shows the failure too.
    plug_in.blocks.prgresult(0) = 0;

    run_outcome& outcome = ttl.outcome;
    const auto found = walk(plug_in, ttl, lines, device_count(in_line_buffer(*header)));
    if (outcome.communication_failed()) tell_communication_error(plug_in, message::auto_find_device_result);
    if (!found) return;
    if (!outcome.communication_failed())
        outcome.what = found->empty() ? run_outcome::kind::failed : run_outcome::kind::passed;
    if (found->empty()) return tell_not_found(plug_in);
    plug_in.screen.beep();
    show_hits(*found);
}

}  // namespace tamrix
