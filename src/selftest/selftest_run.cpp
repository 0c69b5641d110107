// A run, a calibration and how both end: what the buttons do.
#include "selftest/selftest_frame.h"

#include "messages/message_numbers.h"
#include "session/session.h"

#include <exception>

namespace tamrix {

namespace {

constexpr std::int32_t safe_vpp_millivolts = 5000;

void set_supply(hw::devobj& device, const calibration_plan& plan)
{
    switch (plan.supply) {
    case generator::vcc:
        device.setvcc(plan.millivolts);
        device.vccpin(plan.driver, 1);
        break;
    case generator::vpp0:
        device.setvpp(plan.millivolts, 0);
        device.vpppin(plan.driver, 1);
        break;
    case generator::vpp1: device.setvpp(plan.millivolts, 1); device.vpppin(plan.driver, 1);
    }
}

selftest_result result_of(stage_end end)
{
    switch (end) {
    case stage_end::passed: return selftest_result::passed;
    case stage_end::failed: return selftest_result::failed;
    case stage_end::stopped: return selftest_result::stopped;
    case stage_end::not_answered: return selftest_result::not_answered;
    case stage_end::communication_error: return selftest_result::communication_error;
    default: return selftest_result::no_test_board;
    }
}

}  // namespace

/// The same button starts and, while runstp() waits, goes on.
void selftest_frame::testbutton_Click()
{
    OKButton.enabled = false;
    offer_frame(false);
    if (option().does == option_action::calibration) {
        start_calibration();
    } else if (teststep_ != 0) {
        tell({.what = selftest_event::kind::go_on});
        teststep_ = 0;
    } else if (option().does == option_action::system_test) {
        run([this] { return system_test(); });
    } else {
        run([this] { return output_test(); });
    }
}

/// The voltage stays on until Stop.
void selftest_frame::start_calibration()
{
    testbutton.enabled = false;
    teststop.enabled = true;
    focus(teststop);
    in_use_ = true;
    reset_is_answered();
    if (model().selects_board_for_calibration) device().boardsel2(0, 3);
    device().gndpin(1, 1);
    set_supply(device(), option().calibration);
}

void selftest_frame::teststop_Click()
{
    tell({.what = selftest_event::kind::stop});
    OKButton.enabled = true;
    stop_steps();
    device().hwreset();
    if (option().does == option_action::calibration) in_use_ = false;
}

void selftest_frame::stop_steps()
{
    if (option().does != option_action::calibration) teststopped_ = 1;
    if (option().does == option_action::system_test) return;
    testbutton.enabled = true;
    focus(testbutton);
    teststop.enabled = false;
    offer_frame(true);
    make_vpp_safe();
}

/// A second press of the button during a run is excluded by its being off.
void selftest_frame::run(const std::function<stage_end()>& body)
{
    report() = {.model = plug_in_.blocks.modeltype(0), .item = testsel_};
    fault_words.caption = "";
    testbutton.enabled = false;
    teststop.enabled = false;
    teststopped_ = 0;
    variables_.answered = true;
    random_.reset();
    in_use_ = true;
    finish(body());
}

void selftest_frame::show_end(stage_end end)
{
    if (end == stage_end::not_answered || end == stage_end::communication_error) return;
    if (end == stage_end::no_test_board) return status(plug_in_.text(message::no_test_board));
    const bool system = option().does == option_action::system_test;
    const std::string name = plug_in_.text(system ? message::system_test : message::output_test);
    status(name + (end == stage_end::passed ? " OK!" : plug_in_.text(message::fail)));
}

/// A run that had to ask is a failed one, whatever the person answered.
void selftest_frame::finish(stage_end end)
{
    if (end == stage_end::passed && testbusy_ == 1) end = stage_end::failed;
    report().result = result_of(end);
    show_end(end);
    say_not_tested();
    testbutton.caption = plug_in_.text(message::test);
    testbutton.enabled = true;
    focus(testbutton);
    teststop.enabled = false;
    offer_frame(true);
    teststep_ = 0;
    testbusy_ = 0;
    OKButton.enabled = true;
    if (end != stage_end::not_answered) signal_end();
    if (is_open()) in_use_ = false;
}

void selftest_frame::say_not_tested()
{
    if (report().not_tested.empty()) return;
    fault_words.caption =
        fault_words.caption() + (fault_words.caption().empty() ? "" : "; ") + short_words_of(report().not_tested);
}

/// Stop goes first, since closing the form ends the step too.
decision selftest_frame::await_decision()
{
    for (;;) {
        pump();
        if (closed() || teststopped_ != 0) {
            teststopped_ = 0;
            return decision::stop;
        }
        if (teststep_ == 0) return decision::go_on;
    }
}

decision selftest_frame::runstp()
{
    OKButton.enabled = false;
    testbusy_ = 1;
    teststep_ = 1;
    testbutton.caption = plug_in_.text(message::go_on);
    testbutton.enabled = true;
    focus(testbutton);
    teststop.enabled = true;
    beep();
    tell({.what = selftest_event::kind::wait});
    const decision made = await_decision();
    testbutton.enabled = false;
    teststop.enabled = false;
    OKButton.enabled = true;
    return made;
}

decision selftest_frame::await_person()
{
    const decision made = runstp();
    if (made == decision::go_on) testbusy_ = 0;
    return made;
}

void selftest_frame::make_vpp_safe()
{
    device().setvpp(safe_vpp_millivolts, 0);
    device().setvpp(safe_vpp_millivolts, 1);
}

/// Closing the form during a run or a calibration leaves the programmer as every exit does. An idle form has only its
/// own steps. A programmer that is gone can do nothing more; why it went was said where it happened.
void selftest_frame::on_unload()
{
    const bool was_in_use = in_use_;
    in_use_ = false;
    teststep_ = 0;
    try {
        stop_steps();
        if (!was_in_use) return;
        if (option().does == option_action::system_test) make_vpp_safe();
        device().hwreset();
    } catch (const std::exception&) {
    }
}

}  // namespace tamrix
