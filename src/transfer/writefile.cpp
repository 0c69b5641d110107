#include "transfer/writefile.h"

#include "base/arith.h"
#include "messages/message_numbers.h"
#include "session/captions.h"
#include "session/session.h"
#include "transfer/transfer_report.h"

#include <algorithm>

namespace tamrix {

namespace {

constexpr std::int32_t largest_text_device = 8400000;  // in words; above it only "Binary" can be chosen
constexpr std::int64_t largest_tektronix = 0x10000;
constexpr int tektronix = 3;

}  // namespace

writefile::writefile(session& plug_in, transfer_variables& transfer) : plug_in_{plug_in}, transfer_{transfer}
{
    wfileText1.accepts = wfileText2.accepts = wfileText3.accepts = is_hex_key;
    wfileText1.on_leave = wfileText3.on_leave = [this] { derive_size(); };
    wfileText2.on_leave = [this] { derive_end(); };
    okcom.on_click = unless_busy([this] { confirm(); });
    exitcom.on_click = unless_busy([this] { close(); });
}

forms::layout writefile::arrangement()
{
    using namespace forms;
    std::vector<layout> formats_shown;
    for (int i = 0; i < wfileOption2.count(); ++i) formats_shown.emplace_back(wfileOption2(i));
    return column({
        fields({wfileLabel1, wfileLabel2}),
        row({stretched(fields({wfileLabel5, wfileText1, wfileLabel6, wfileText2, wfileLabel7, wfileText3})),
             framed(wfileformatFrame2, {layout::kind::column, formats_shown})}),
        ProgressBar1,
        buttons({okcom, exitcom}),
    });
}

void writefile::on_load()
{
    caption(plug_in_.text(message::save_buffer_to_file));
    for (int i = 0; const format* one : save_formats()) {
        wfileOption2(i).caption = caption_of(*one, plug_in_);
        wfileOption2(i).enabled = i == 0 || plug_in_.blocks.tlength(0) <= largest_text_device;
        ++i;
    }
    wfileOption2(format_of_name()).select();
    const caption_line captions[] = {
        {wfileLabel1.caption, message::file},
        {wfileformatFrame2.caption, message::file_format},
        {wfileLabel5.caption, message::from_buffer_address},
        {wfileLabel6.caption, message::buffer_size},
        {wfileLabel7.caption, message::to_buffer_address_of_save},
        {okcom.caption, message::ok},
        {exitcom.caption, message::cancel},
    };
    set_captions(plug_in_, captions);
    for (forms::text_box* const field : {&wfileText1, &wfileText2, &wfileText3})
        field->tip = plug_in_.text(hint::hexadecimal);
    wfileText1.text("0");
}

/// The format that the file's extension names, where it can be chosen; else "Binary".
int writefile::format_of_name()
{
    for (int i = 0; const format* one : save_formats()) {
        if (wfileOption2(i).enabled() && has_extension(*one, transfer_.fname)) return i;
        ++i;
    }
    return 0;
}

forms::option& writefile::option_of(const format& which)
{
    const auto saved = save_formats();
    return wfileOption2(static_cast<int>(std::ranges::find(saved, &which) - saved.begin()));
}

std::int64_t writefile::savelimit() const
{
    return plug_in_.devbytes() + 16 * std::int64_t{plug_in_.blocks.wordmode(1)};
}

std::int64_t writefile::limit() const { return std::min<std::int64_t>(plug_in_.blocks.buflength(0), savelimit()); }

/// After start or end: the size follows. An end before the start leaves an empty range.
void writefile::derive_size()
{
    if (wfileText1.text().empty() || wfileText3.text().empty()) return;
    const std::int64_t start = std::min(arith::parse_hex(wfileText1.text()).value_or(0), limit());
    const std::int64_t last = std::min(arith::parse_hex(wfileText3.text()).value_or(0), limit() - 1);
    wfileText1.text(arith::hex(start));
    wfileText3.text(arith::hex(last));
    wfileText2.text(arith::hex(std::max<std::int64_t>(last - start + 1, 0)));
}

/// After the size: the end follows. An empty range at address 0 has no last address, so the box is emptied.
void writefile::derive_end()
{
    if (wfileText1.text().empty() || wfileText2.text().empty()) return;
    const std::int64_t start = std::min(arith::parse_hex(wfileText1.text()).value_or(0), limit());
    const std::int64_t size = std::min(arith::parse_hex(wfileText2.text()).value_or(0), limit() - start);
    wfileText1.text(arith::hex(start));
    wfileText2.text(arith::hex(size));
    wfileText3.text(start + size == 0 ? std::string{} : arith::hex(start + size - 1));
}

void writefile::confirm()
{
    if (!take_range()) return;
    const double started = plug_in_.screen.seconds();
    const status outcome = run_writer();
    report_transfer(plug_in_, transfer_.fname, outcome, message::save_file_ok, message::save_file_fail,
                    plug_in_.screen.seconds() - started);
    close();
}

/// False if a value was refused and the user saw a message; the dialog then stays open.
bool writefile::take_range()
{
    transfer_variables& at = transfer_;
    const auto refused = [this](int message, forms::text_box& wrong) {
        plug_in_.tell(message);
        focus(wrong);
        return false;
    };
    const auto bufstart = arith::parse_hex(wfileText1.text());
    if (!bufstart) return refused(message::invalid_input, wfileText1);
    at.bufstart = *bufstart;
    if (at.bufstart > plug_in_.devbytes()) return refused(message::to_buffer_address_beyond_buffer, wfileText1);
    const auto savelength = arith::parse_hex(wfileText2.text());
    if (!savelength) return refused(message::invalid_input, wfileText2);
    at.savelength = *savelength;
    if (at.bufstart + at.savelength > savelimit()) return refused(message::range_beyond_buffer, wfileText2);
    if (wfileOption2(tektronix).value() && at.savelength > largest_tektronix)

        return refused(message::beyond_64k_of_tektronix, wfileText2);
    return true;
}

status writefile::run_writer()
{
    transfer_job job{.plug_in = plug_in_, .transfer = transfer_, .progress = [this](double percent) {
                         ProgressBar1.value = percent;
                     }};
    const auto chosen = static_cast<std::size_t>(wfileOption2.selected());
    const busy_time writing{*this};
    const status outcome = run_guarded(job, save_formats()[chosen]->write);
    transfer_.rformat = static_cast<std::int16_t>(outcome);
    return outcome;
}

}  // namespace tamrix
