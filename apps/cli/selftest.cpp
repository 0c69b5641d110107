#include "cli/selftest.h"

#include "cli/selftest_words.h"
#include "cli/transcript_file.h"

#include <charconv>
#include <cmath>
#include <iostream>

namespace tamrix::cli {

namespace {

std::string without_blanks_around(const std::string& text)
{
    constexpr const char* blanks = " \t\r";
    const auto first = text.find_first_not_of(blanks);
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::optional<double> number_in(const std::string& text)
{
    constexpr double highest_volts = 1000;  // of any meter's reading here
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    const bool number = error == std::errc{} && end == text.data() + text.size();
    return number && std::abs(value) <= highest_volts ? std::optional{value} : std::nullopt;
}

/// What passes on a programmer that did not answer to its reset was not tested.
selftest_result result_of(const selftest_variables& variables)
{
    const selftest_result result = variables.last.result;
    const bool untested = result == selftest_result::passed || result == selftest_result::none;
    return untested && !variables.answered ? selftest_result::not_answered : result;
}

/// The person at the dialog.
class person_at_dialog {
public:
    person_at_dialog(const selftest_options& options, attached_plug_in& plug_in, simulated_socket& socket, console& con)
        : options_{options}, plug_in_{plug_in}, socket_{socket}, con_{con}, out_{options, con}
    {}

    void work(selftest_frame& form)
    {
        if (options_.list) return print_items(form, options_, con_);
        if (refused(form)) return;
        name_ = form.Option1(options_.item).caption();
        const option_plan& plan = form.plan()[static_cast<std::size_t>(options_.item)];
        if (options_.test_board.value_or(plan.does == option_action::output_test)) socket_.insert_test_board();
        watch(form);
        if (plan.does == option_action::calibration) return calibrate(form, plan.calibration);
        form.testbutton.click();
        ran_ = true;
    }

    /// Why the item cannot be chosen; empty where it can.
    const std::string& refusal() const { return refusal_; }
    /// Prints what a run came to.
    void report()
    {
        selftest_report last = plug_in_.variables.selftest.last;
        last.result = result_of(plug_in_.variables.selftest);
        if (ran_) out_.run(last, name_);
    }

private:
    bool refused(selftest_frame& form)
    {
        const std::string item = "--item " + std::to_string(options_.item) + ": ";
        const std::string model = std::to_string(options_.socket.model);
        const std::string remedy = "; tamrix selftest --list --model " + model + " shows them";
        const int last = form.Option1.count() - 1;
        if (options_.item > last) {
            refusal_ = item + "model " + model + " has the items 0 to " + std::to_string(last) + remedy;
        } else if (!form.Option1(options_.item).enabled()) {
            refusal_ = item + "on model " + model + " this item cannot be chosen" + remedy;
        }
        return !refusal_.empty();
    }

    /// From here on the texts are printed. The dialog has chosen the first item itself, and has said what to heed.
    void watch(selftest_frame& form)
    {
        plug_in_.variables.selftest.on_event = [this](const selftest_event& event) { notice(event); };
        const auto let_time_pass = plug_in_.screen.on_doevents;
        plug_in_.screen.on_doevents = [this, &form, let_time_pass] {
            let_time_pass();
            if (waited_for_) decide(form);
        };
        if (form.testsel() == options_.item) {
            out_.status(form.StatusBar1.text(1));
        } else {
            form.Option1(options_.item).click();
        }
    }

    void notice(const selftest_event& event)
    {
        using enum selftest_event::kind;
        if (event.what == status) out_.status(event.text);
        if (event.what == box) out_.status(without_blanks_around(event.title + event.text));
        if (event.what == wait) waited_for_ = true;
    }

    /// A wait without a new fault is for something to be done at the socket, which is not what --on-fault is about.
    void decide(selftest_frame& form)
    {
        waited_for_ = false;
        const std::size_t faults = plug_in_.variables.selftest.last.faults.size();
        const bool after_fault = faults != faults_before_;
        faults_before_ = faults;
        if (after_fault && options_.stop_at_fault) {
            form.teststop.click();
        } else {
            form.testbutton.click();
        }
    }

    void calibrate(selftest_frame& form, const calibration_plan& plan)
    {
        form.testbutton.click();
        if (!plug_in_.variables.selftest.answered) return out_.silent_calibration(name_);
        out_.ask(words_of_voltage(form, plan));
        out_.ask("measure it, type the reading in volts and press Enter; Enter alone ends without a reading");
        const std::optional<double> reading = typed_reading();
        out_.calibration(form, name_, plan, reading);
        form.teststop.click();
    }

    /// The end of the input counts as Enter.
    std::optional<double> typed_reading()
    {
        std::string line;
        while (std::getline(std::cin, line)) {
            line = without_blanks_around(line);
            if (line.empty()) break;
            if (const std::optional<double> reading = number_in(line)) return reading;
            out_.error("\"" + line + "\" where a reading in volts was expected, for instance 3.021");
        }
        return std::nullopt;
    }

    const selftest_options& options_;
    attached_plug_in& plug_in_;
    simulated_socket& socket_;
    console& con_;
    selftest_output out_;
    std::string name_, refusal_;
    std::size_t faults_before_ = 0;
    bool waited_for_ = false, ran_ = false;
};

/// A failed run has said all there is to say.
void end_command(selftest_result result)
{
    switch (result) {
    case selftest_result::none:
    case selftest_result::passed: return;
    case selftest_result::failed:
    case selftest_result::stopped: throw command_error{exit_failed, ""};
    case selftest_result::no_test_board:
        throw command_error{exit_not_carried_out, "put the test board into the socket, then test again"};
    default:
        throw command_error{exit_not_carried_out, "check the cable and the supply of the programmer, then test again"};
    }
}

}  // namespace

void selftest(const selftest_options& options, std::int32_t language, console& con)
{
    transcript_file transcript{options.transcript};
    attached_plug_in plug_in{language};
    simulated_socket socket{plug_in, options.socket};
    socket.log().record(transcript.wanted());
    person_at_dialog person{options, plug_in, socket, con};
    plug_in.screen.person = [&](forms::form& shown) { person.work(dynamic_cast<selftest_frame&>(shown)); };
    const reply outcome = plug_in.methods.mnutesttestksm();
    if (!person.refusal().empty()) refuse(person.refusal());
    person.report();
    socket.tell_hazards(con);
    transcript.write(socket.log());
    if (!outcome.ok()) throw command_error{exit_not_carried_out, outcome.error};
    end_command(result_of(plug_in.variables.selftest));
}

}  // namespace tamrix::cli
