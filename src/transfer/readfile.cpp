#include "transfer/readfile.h"

#include "base/arith.h"
#include "base/ascii.h"
#include "formats/binary.h"
#include "formats/byte_selection.h"
#include "formats/fill.h"
#include "messages/message_numbers.h"
#include "session/captions.h"
#include "session/session.h"
#include "transfer/transfer_report.h"

namespace tamrix {

namespace {

constexpr int texas_instrument = 7;

}  // namespace

readfile::readfile(session& plug_in, transfer_variables& transfer) : plug_in_{plug_in}, transfer_{transfer}
{
    rfileText1.accepts = rfileText2.accepts = is_hex_key;
    rfileOption1.on_click = [this](int index) { plug_in_.blocks.typeformat(1) = static_cast<std::uint8_t>(index); };
    rfileOption2.on_click = [this](int index) { choose_format(index); };
    okcom.on_click = unless_busy([this] { confirm(); });
    exitcom.on_click = unless_busy([this] { close(); });
}

forms::layout readfile::arrangement()
{
    using namespace forms;
    std::vector<layout> formats_shown;
    for (int i = 0; i < rfileOption2.count(); ++i) formats_shown.emplace_back(rfileOption2(i));
    return column({
        fields({rfileLabel1, rfileLabel2}),
        row({stretched(fields({rfileLabel3, rfilecombo1, rfileLabel4, rfileCombo2, rfileLabel5, rfileText1, rfileLabel6,
                               rfileText2, rfileLabel7, rfileText3})),
             framed(rfileformatFrame2, {layout::kind::column, formats_shown})}),
        framed(rfilebufFrame1, row({rfileOption1(2), rfileOption1(1), rfileOption1(0)})),
        ProgressBar1,
        buttons({okcom, exitcom}),
    });
}

void readfile::on_load()
{
    std::vector<std::string> modes;
    for (const byte_selection& mode : byte_selections) modes.push_back(plug_in_.text(mode.message));
    rfilecombo1.items = modes;
    rfileCombo2.items = modes;
    rfilecombo1.index(0);
    rfileCombo2.index(0);
    rfileText3.text(arith::hex(plug_in_.devbytes()));
    rfileText1.text("0");
    rfileText2.text("0");
    load_captions();
    adjust_format_to_maker();
    rfileOption2(transfer_.rformat).select();
    rfileOption1(plug_in_.blocks.typeformat(1)).select();
}

void readfile::load_captions()
{
    caption(plug_in_.text(message::load_file_to_buffer));
    const caption_line captions[] = {
        {rfileLabel1.caption, message::file},
        {rfileLabel3.caption, message::from_file_mode},
        {rfileLabel4.caption, message::to_buffer_mode},
        {rfileLabel5.caption, message::to_buffer_address},
        {rfileLabel6.caption, message::from_file_address},
        {rfileLabel7.caption, message::file_size},
        {rfilebufFrame1.caption, message::clear_buffer_options},
        {rfileOption1(2).caption, message::disable},
        {rfileOption1(1).caption, message::clear_to_00},
        {rfileOption1(0).caption, message::clear_to_ff},
        {rfileformatFrame2.caption, message::auto_format_detected},
        {okcom.caption, message::ok},
        {exitcom.caption, message::cancel},
    };
    set_captions(plug_in_, captions);
    for (forms::text_box* const field : {&rfileText1, &rfileText2, &rfileText3})
        field->tip = plug_in_.text(hint::hexadecimal);
    for (int i = 0; const format& one : formats()) rfileOption2(i++).caption = caption_of(one, plug_in_);
}

/// The other vendor's format is not preselected on a device of these two makers.
void readfile::adjust_format_to_maker()
{
    constexpr int vendor_family = 2, holtek = 4, emc = 5;
    if (plug_in_.blocks.typeformat(0) != vendor_family) return;
    const std::string company = plug_in_.blocks.wcompany(0);
    const std::string_view maker = ascii::trimmed(company, " ");
    if (maker == "HOLTEK" && transfer_.rformat == emc) transfer_.rformat = 0;
    if (maker == "EMC" && transfer_.rformat == holtek) transfer_.rformat = 0;
}

void readfile::choose_format(int index)
{
    rfilecombo1.enabled = index != texas_instrument;
    rfileCombo2.enabled = index != texas_instrument;
}

void readfile::confirm()
{
    if (!take_addresses()) return;
    take_byte_selection();
    clear_buffer();
    const double started = plug_in_.screen.seconds();
    const status outcome = run_reader();
    report_transfer(plug_in_, transfer_.fname, outcome, message::load_file_ok, message::load_file_fail,
                    plug_in_.screen.seconds() - started);
    if (outcome != status::rejected) close();
}

/// False if a value was refused and the user saw a message; the dialog then stays open.
bool readfile::take_addresses()
{
    transfer_variables& at = transfer_;
    const auto refused = [this](int message, forms::text_box& wrong) {
        plug_in_.tell(message);
        focus(wrong);
        return false;
    };
    const auto bufstart = arith::parse_hex(rfileText1.text());
    if (!bufstart) return refused(message::invalid_input, rfileText1);
    at.bufstart = *bufstart;
    if (at.bufstart > plug_in_.blocks.buflength(0))
        return refused(message::to_buffer_address_beyond_buffer, rfileText1);
    const auto filestart = arith::parse_hex(rfileText2.text());
    const auto loadlength = arith::parse_hex(rfileText3.text());
    if (!filestart) return refused(message::invalid_input, rfileText2);
    if (!loadlength) return refused(message::invalid_input, rfileText3);
    at.filestart = *filestart;
    // The margin makes the limit harmless for a full-size file.
    at.loadlength = *loadlength < plug_in_.devbytes() ? *loadlength : plug_in_.devbytes() + 100;
    return true;
}

void readfile::take_byte_selection()
{
    transfer_variables& at = transfer_;
    const byte_selection& from = byte_selections.at(static_cast<std::size_t>(rfilecombo1.index()));
    const byte_selection& to = byte_selections.at(static_cast<std::size_t>(rfileCombo2.index()));
    transfer_.frommode = static_cast<std::int16_t>(rfilecombo1.index());
    at.filestep = from.step;
    at.filephase = from.phase;
    at.tomode = static_cast<std::int16_t>(rfileCombo2.index());
    at.bufstep = to.step;
    at.bufphase = to.phase;
}

void readfile::clear_buffer()
{
    if (plug_in_.devbytes() > large_image_bytes) return;  // the large-file load fills what it must
    const std::span<std::uint8_t> buffer = plug_in_.blocks.ibuffer.span();
    const std::int64_t length = plug_in_.blocks.buflength(0);
    if (rfileOption1(0).value()) fill(buffer, 0, length - 1, 0xFF);
    // One byte further than the 0xFF fill; the margin of the mapping holds it. A binary file that fills the buffer from
    // its start needs no clear: its read leaves 0 after the end of the file.
    const bool whole_binary = rfileOption2(0).value() && transfer_.bufstart == 0 && transfer_.filestart == 0;
    if (rfileOption1(1).value() && !whole_binary) fill(buffer, 0, length, 0x00);
}

status readfile::run_reader()
{
    const int chosen = rfileOption2.selected();
    if (chosen < 0) return static_cast<status>(transfer_.rformat);
    transfer_job job{.plug_in = plug_in_,
                     .transfer = transfer_,
                     .clear = static_cast<clear_option>(rfileOption1.selected()),
                     .progress = [this](double percent) { ProgressBar1.value = percent; }};
    const busy_time reading{*this};
    const status outcome = run_guarded(job, formats()[static_cast<std::size_t>(chosen)].read);
    met_ = job.met;
    transfer_.rformat = static_cast<std::int16_t>(outcome);
    return outcome;
}

}  // namespace tamrix
