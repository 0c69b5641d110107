// What all self-test dialogs share: the options, the buttons, the status panel, and the wait for a person after a
// fault.
#pragma once

#include "channel/model.h"
#include "forms/form.h"
#include "forms/status_bar.h"
#include "selftest/selftest_plan.h"
#include "selftest/selftest_variables.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <string>

namespace tamrix {

namespace hw {
class devobj;
}
class session;

/// How a stage of a run ended; all but `passed` end the run.
enum class stage_end : std::uint8_t { passed, failed, stopped, not_answered, communication_error, no_test_board };

/// The person's decision after a fault.
enum class decision : std::uint8_t { go_on = 0, stop = 1 };

class selftest_frame : public forms::form {
public:
    /// `plan` has to outlive the form, as both others.
    selftest_frame(session& plug_in, selftest_variables& variables, selftest_plan plan, int panels = 1);

    forms::frame Frame1{*this};  // around the options
    forms::option_group Option1;
    forms::button testbutton{*this}, teststop{*this}, OKButton{*this};
    forms::label fault_words{*this};  // the last fault, and at the end what was not tested
    forms::status_bar StatusBar1;

    selftest_plan plan() const { return plan_; }      // the options
    int testsel() const { return testsel_; }          // the selected option
    int teststep() const { return teststep_; }        // 1 while runstp() waits
    int teststopped() const { return teststopped_; }  // 1 after Stop, until the wait has seen it
    int testbusy() const { return testbusy_; }        // 1 from the first runstp() of a run to its end

    // For the stages of a run.
    session& plug_in() const { return plug_in_; }
    hw::devobj& device() const;
    hw::model model() const;
    /// What the host says, on programmers that have both routes.
    virtual bool by_usb() const;
    /// Programmers of this generation also read the outermost pins.
    bool generation_17() const;
    selftest_report& report() const { return variables_.last; }
    selftest_variables& variables() const { return variables_; }
    void status(const std::string& words, int panel = 1);
    void beep();
    /// Shows a warning that the person has to close.
    void warn(const std::string& words);
    /// The next random byte of this run.
    std::uint8_t random_byte();
    /// Keeps the fault for the caller, writes it into the log and shows its words.
    void add(const selftest_fault& fault);
    /// Keeps for the caller how many pins a stage could not look at, and writes it into the log.
    void add(const untested_pins& pins);
    /// Waits, without a limit, until the person presses Continue or Stop. Closing the form is Stop.
    decision runstp();
    /// As runstp(), for something that the person has to do: after Continue the run has asked nothing so far.
    decision await_person();
    /// True where the person closed the form while a run was going: the run ends at its next step, as after Stop.
    bool closed() const { return !is_open(); }
    void pump();
    /// Tells that a reply did not come or a frame was refused, and lets the programmer go.
    stage_end communication_error();
    /// The first step of a run: not_answered where the programmer gives no answer, which only registers show.
    stage_end reset_programmer();
    void select_common_board();
    /// Paints the map back to idle.
    virtual void clearpins() = 0;
    /// Enter starts a test and goes on after a fault. A map without tests it closes.
    forms::button* default_button() override { return testbutton.visible() ? &testbutton : &OKButton; }

protected:
    /// The options with the buttons that start and stop them.
    forms::layout controls_of_tests();
    /// The self-test's captions; selects the first option.
    void load_selftest();
    const option_plan& option() const { return plan_[static_cast<std::size_t>(testsel_)]; }

    virtual std::string caption_of(const option_plan& option) const;
    virtual void Option1_Click(int index);
    /// What the person has to heed before a run.
    virtual void hint(const std::string& words) { status(words); }
    /// Shows what belongs to an option, after the map was cleared and the empty socket asked for.
    virtual void show_option(const option_plan& option) = 0;
    virtual void testbutton_Click();
    virtual void teststop_Click();
    /// A whole run. What it returns is the report's result.
    virtual stage_end system_test() = 0;
    virtual stage_end output_test() = 0;
    /// The last status of a run. Where the programmer did not answer or reply it was said before.
    virtual void show_end(stage_end end);
    /// The beep after the last status.
    virtual void signal_end() { beep(); }

    /// "." with a catalogue text, what is tested, and dots.
    void announce(int number, const std::string& what);
    /// Runs the stages one by one until one ends the run, or the form is closed, in the last one too.
    template <class Form>
    static stage_end in_order(Form& form, std::span<stage_end (Form::*const)()> stages)
    {
        for (const auto stage : stages) {
            if (form.closed()) return stage_end::stopped;
            if (const stage_end end = (form.*stage)(); end != stage_end::passed) return end;
        }
        return form.closed() ? stage_end::stopped : stage_end::passed;
    }

    void on_unload() override;

private:
    void start_calibration();
    bool reset_is_answered();
    void run(const std::function<stage_end()>& body);
    void finish(stage_end end);
    void say_not_tested();
    void offer_frame(bool offered);
    void stop_steps();
    void make_vpp_safe();
    decision await_decision();
    void tell(const selftest_event& event) const;
    void log(const std::string& words);

    session& plug_in_;
    selftest_variables& variables_;
    selftest_plan plan_;
    /// std::mt19937 with words that are no longer than they need to be, which makes it quicker.
    using random_source = std::mersenne_twister_engine<std::uint32_t, 32, 624, 397, 31, 0x9908B0DF, 11, 0xFFFFFFFF, 7,
                                                       0x9D2C5680, 15, 0xEFC60000, 18, 1812433253>;
    std::optional<random_source> random_;  // from its first use in a run on
    int testsel_ = 0, teststep_ = 0, teststopped_ = 0, testbusy_ = 0;
    bool in_use_ = false;  // from the start of a run or a calibration until the programmer is safe again
};

}  // namespace tamrix
