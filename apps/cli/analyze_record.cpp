// A recording: the dialog of the logic analyzer, worked as a person would.
#include "cli/analyze.h"

#include "cli/folders.h"
#include "cli/temporary_folder.h"
#include "cli/transcript_file.h"
#include "files/file_io.h"
#include "files/replace_file.h"
#include "instruments/analyzer/analyzer.h"
#include "messages/message_numbers.h"

#include <algorithm>
#include <cstdio>

namespace tamrix::cli {

namespace {

constexpr std::int32_t largest_memory = 16 * bank_samples;
constexpr std::int32_t samples_by_registers = 131073;
/// Over USB the programmer says nothing while it waits for the trigger, nor while it records.
constexpr double longest_recording_seconds = largest_memory * 4.7e-6;

class recording {
public:
    recording(const record_options& options, attached_plug_in& plug_in, simulated_socket& socket)
        : options_{options}, plug_in_{plug_in}, socket_{socket}
    {
        plug_in.blocks.value<std::uint8_t>("rambknum") = static_cast<std::uint8_t>(options.banks);
        plug_in.screen.person = [this](forms::form& shown) {
            if (auto* const dialog = dynamic_cast<analyzer*>(&shown)) work(*dialog);
        };
        analyzer_settings& settings = plug_in.variables.analyzer;
        settings.trigmode = options.waits ? -1 : 0;
        settings.triglevel = options.high ? -1 : 0;
        settings.trigpin = options.pin;
        settings.on_event = [this](const std::string& event) {
            socket_.log().line("dialog ", event);
            constexpr std::string_view status_of_run = "status1 ";
            if (event.starts_with(status_of_run)) statuses_.push_back(event.substr(status_of_run.size()));
        };
    }

    /// Ends the command where nothing was recorded.
    void check() const
    {
        const std::string not_written = "; " + options_.out + " was not written";
        if (shown(message::record_error))
            fail(plug_in_.state.text(message::record_error) + " The samples did not come" + not_written);
        if (statuses_.empty()) throw command_error{exit_not_carried_out, programmer_is_silent};
        if (!shown(message::record_ok)) throw command_error{exit_not_carried_out, missing_trigger() + not_written};
        if (shown(message::save_file_ok)) return;
        const std::string why = plug_in_.variables.transfer.why_it_failed.text();
        fail((why.empty() ? plug_in_.state.text(message::save_file_fail) : why) + not_written);
    }

    void save() const
    {
        const file_image saved{*plug_in_.screen.file_to_save};
        replace_file(options_.out, {reinterpret_cast<const char*>(saved.bytes().data()), saved.bytes().size()});
    }

private:
    void work(analyzer& dialog)
    {
        statuses_.clear();
        const double end =
            plug_in_.screen.seconds() + options_.wait_seconds + (options_.socket.usb ? longest_recording_seconds : 0);
        const auto let_time_pass = plug_in_.screen.on_doevents;
        plug_in_.screen.on_doevents = [this, let_time_pass, end, &dialog] {
            let_time_pass();
            if (plug_in_.screen.seconds() > end) dialog.Command4.click();
        };
        dialog.Command3.click();
        plug_in_.screen.on_doevents = let_time_pass;
        if (!shown(message::record_ok)) return;
        plug_in_.screen.file_to_save = folder_.emplace().path() + "samples.bin";
        dialog.analyzerSave.click();
    }

    /// Looks at all texts, since the end of a recording by registers replaces its error.
    bool shown(int message) const
    {
        const std::string wanted = plug_in_.state.text(message::record_status) + plug_in_.state.text(message);
        return std::ranges::find(statuses_, wanted) != statuses_.end();
    }

    std::string missing_trigger() const
    {
        const std::string in_time = " within " + std::to_string(options_.wait_seconds) + " s";
        if (!options_.waits) return "the programmer did not say" + in_time + " that it has recorded";
        return "P" + std::to_string(21 + options_.pin) + " was not " + (options_.high ? "high" : "low") + in_time;
    }

    const record_options& options_;
    attached_plug_in& plug_in_;
    simulated_socket& socket_;
    std::optional<temporary_folder> folder_{};  // no sooner than needed: a person may end the command before
    std::vector<std::string> statuses_;         // since Record was pressed
};

/// A bank that the programmer does not have can be read all the same.
void tell_missing_banks(const sim::journal& log, console& con)
{
    constexpr std::string_view start = "there is no memory bank";
    for (const sim::event& note : log.notes())
        if (note.text.starts_with(start)) return con.note(note.text + "; from there on all samples are FF");
}

void print_end(const record_options& options, double period_us, console& con)
{
    const std::int32_t samples = options.banks * bank_samples;
    char text[96];
    std::snprintf(text, sizeof text, ": %d samples, %.3f ms at %.6g us a sample", samples, samples * period_us / 1000,
                  period_us);
    con.status(options.out + text);
    if (!options.socket.usb && samples > samples_by_registers)
        con.note("this route records " + std::to_string(samples_by_registers) + " samples; those after them are 0");
}

}  // namespace

void analyze_record(const record_options& options, std::int32_t language, console& con)
{
    check_folder_of(options.out);
    transcript_file transcript{options.transcript};
    attached_plug_in plug_in{language};
    plug_in.blocks.value<std::int32_t>("tlength") = largest_memory;
    plug_in.blocks.value<std::uint8_t>("wordmode") = 1;
    plug_in.attach_buffer(largest_memory);
    simulated_socket socket{plug_in, options.socket};
    socket.log().record(transcript.wanted());
    recording run{options, plug_in, socket};
    const reply outcome = plug_in.methods.analyzer0();
    socket.tell_hazards(con);
    transcript.write(socket.log());
    if (!outcome.ok()) throw command_error{exit_not_carried_out, outcome.error};
    run.check();
    run.save();
    tell_missing_banks(socket.log(), con);
    print_end(options, plug_in.variables.analyzer.sampleus, con);
}

}  // namespace tamrix::cli
