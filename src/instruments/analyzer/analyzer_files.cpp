// Load, save and print of the analyzer.
#include "instruments/analyzer/analyzer.h"

#include "formats/binary.h"
#include "instruments/analyzer/analyzer_page.h"
#include "messages/message_numbers.h"
#include "session/session.h"

#include <exception>
#include <utility>

namespace tamrix {

namespace {

constexpr const char* heading = "Oscillogram";  // in every language

/// Whether the host's detection, which the load begins with, can look at the file.
bool can_be_opened(const std::string& path)
{
    try {
        (void)detect_format(path);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

/// The load is attempted even if the file cannot be opened.
void analyzer::analyzerOpen_Click()
{
    const auto name = plug_in_.screen.open_file(question(message::load_file));
    if (!name) return;
    lastfile_ = *name;
    if (!can_be_opened(lastfile_)) {
        const std::string words = plug_in_.text(message::file_cannot_be_opened);
        say("box " + lastfile_ + " | " + words);
        plug_in_.screen.box({.text = words, .title = lastfile_, .picture = forms::icon::error});
    }
    transfer_.bufstart = transfer_.filestart = 0;
    transfer_.filephase = 0;
    transfer_.bufphase = 0;
    transfer_.filestep = transfer_.bufstep = 1;
    const status outcome = run_on(lastfile_, read_binary);
    transfer_.rformat = static_cast<std::int16_t>(outcome);
    show_end_of_file_work(outcome == status::done ? message::load_file_ok : message::load_file_fail);
}

void analyzer::analyzerSave_Click()
{
    const auto name = plug_in_.screen.save_file(question(message::save_buffer_to_file));
    if (!name) return;
    lastfile_ = *name;
    transfer_.bufstart = 0;
    transfer_.savelength = samples_of_banks();
    const status outcome = run_on(lastfile_, write_binary);
    show_end_of_file_work(outcome == status::done ? message::save_file_ok : message::save_file_fail);
}

forms::file_question analyzer::question(int title) const
{
    return {.title = plug_in_.text(title), .filter = plug_in_.text(message::binary_file_filter), .name = lastfile_};
}

/// The host's current file keeps its name.
status analyzer::run_on(const std::string& path, transfer_routine routine)
{
    const std::string current = std::exchange(transfer_.fname, path);
    transfer_job job{.plug_in = plug_in_,
                     .transfer = transfer_,
                     .clear = static_cast<clear_option>(plug_in_.blocks.typeformat(1)),
                     .progress = [](double) {}};
    const status outcome = run_guarded(job, routine);
    transfer_.fname = current;
    return outcome;
}

void analyzer::show_end_of_file_work(int message)
{
    show_status(1, plug_in_.text(message::record_status) + plug_in_.text(message));
    draw_again();
}

/// A printer that fails says so itself.
void analyzer::analyzerprint_Click()
{
    const auto draw_page = [this](forms::page& paper) {
        Text1.text(heading);
        Text2.text("\r" + Label1.caption());
        print_page(paper, plug_in_.blocks.ibuffer.span(), view_,
                   {.first = Text2.text(),
                    .others = {Label2.caption(), Label3.caption(), Label4.caption()},
                    .heading = Text1.text()});
    };
    plug_in_.screen.print({.title = caption(),
                           .captions = {.print = plug_in_.text(message::printer),
                                        .zoom_in = Command1.caption(),
                                        .zoom_out = Command2.caption(),
                                        .leave = plug_in_.text(message::cancel)},
                           .draw = draw_page});
}

}  // namespace tamrix
