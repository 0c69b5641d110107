#include "selftest/selftest_frame.h"

#include "channel/usb_route.h"
#include "messages/message_numbers.h"
#include "session/captions.h"
#include "session/session.h"

#include <exception>

namespace tamrix {

namespace {

constexpr std::int32_t safe_vpp_millivolts = 5000;
constexpr std::uint8_t generation_that_reads_all_pins = 17;

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

selftest_frame::selftest_frame(session& plug_in, selftest_variables& variables, selftest_plan plan, int panels)
    : Option1{*this, static_cast<int>(plan.size())},
      StatusBar1{*this, panels},
      plug_in_{plug_in},
      variables_{variables},
      plan_{plan}
{
    Option1.on_click = [this](int index) { Option1_Click(index); };
    testbutton.on_click = [this] { testbutton_Click(); };
    teststop.on_click = [this] { teststop_Click(); };
    OKButton.on_click = [this] { close(); };
}

hw::devobj& selftest_frame::device() const { return plug_in_.hardware.device(); }

hw::model selftest_frame::model() const { return hw::model_of(plug_in_.blocks.modeltype(0)); }

bool selftest_frame::by_usb() const { return hw::usb_is_not_zero(plug_in_.blocks.usbable(0)); }

bool selftest_frame::generation_17() const { return plug_in_.blocks.wfig(1) == generation_that_reads_all_pins; }

void selftest_frame::tell(const selftest_event& event) const
{
    if (variables_.on_event) variables_.on_event(event);
}

/// One round of the pump lets the screen show it before the programmer's waits block.
void selftest_frame::status(const std::string& words, int panel)
{
    StatusBar1.text(panel, words);
    tell({.what = selftest_event::kind::status, .panel = panel, .text = words});
    if (in_use_) pump();
}

void selftest_frame::beep()
{
    plug_in_.screen.beep();
    tell({.what = selftest_event::kind::beep});
}

void selftest_frame::warn(const std::string& words)
{
    const std::string title = plug_in_.text(message::warning);
    tell({.what = selftest_event::kind::box, .text = words, .title = title});
    log(words);
    plug_in_.screen.box({.text = words, .title = title, .picture = forms::icon::warning});
}

std::uint8_t selftest_frame::random_byte()
{
    if (!random_) random_.emplace(variables_.seed());
    return static_cast<std::uint8_t>((*random_)() >> 24);
}

void selftest_frame::pump() { plug_in_.screen.doevents(); }

stage_end selftest_frame::communication_error()
{
    status(plug_in_.text(message::communication_error));
    device().hwrelease();
    return stage_end::communication_error;
}

stage_end selftest_frame::reset_programmer()
{
    if (by_usb()) {
        device().hwreset();
        return stage_end::passed;
    }
    device().hwinit();
    if (device().hwreset() != 1) return stage_end::passed;
    device().hwrelease();
    return stage_end::not_answered;
}

void selftest_frame::select_common_board()
{
    if (model().selects_two_boards) {
        device().boardsel2(0, 3);
    } else {
        device().boardsel(3);
    }
}

void selftest_frame::announce(int number, const std::string& what)
{
    status(plug_in_.text(message::dot) + plug_in_.text(number) + what + ".....");
}

void selftest_frame::log(const std::string& words)
{
    plug_in_.blocks.MainRtstr(0) += ">> " + plug_in_.text(message::self_test) + ": " + words + "\n";
}

void selftest_frame::add(const selftest_fault& fault)
{
    report().faults.push_back(fault);
    fault_words.caption = words_of(fault);
    log("fault: " + words_of(fault));
}

void selftest_frame::add(const untested_pins& pins)
{
    report().not_tested.push_back(pins);
    log(words_of(pins));
}

void selftest_frame::load_selftest()
{
    caption(plug_in_.text(message::self_test));
    for (int index = 0; index < Option1.count(); ++index) {
        const option_plan& line = plan_[static_cast<std::size_t>(index)];
        Option1(index).caption = caption_of(line);
        Option1(index).enabled = line.offered;
    }
    const caption_line captions[] = {
        {testbutton.caption, message::test}, {teststop.caption, message::stop}, {OKButton.caption, message::cancel}};
    set_captions(plug_in_, captions);
    Option1(0).select();
    Frame1.visible = true;
    for (int index = 0; index < Option1.count(); ++index) Option1(index).visible = true;
    testbutton.visible = true;
    teststop.visible = true;
    teststop.enabled = false;
}

std::string selftest_frame::caption_of(const option_plan& option) const
{
    return std::string{option.before} + plug_in_.text(option.message) + std::string{option.after};
}

void selftest_frame::Option1_Click(int index)
{
    clearpins();
    testsel_ = index;
    fault_words.caption = "";
    hint(plug_in_.text(message::empty_socket_please));
    if (option().does == option_action::system_test) {
        testbutton.caption = plug_in_.text(message::test);
        testbutton.enabled = true;
        teststop.enabled = false;
    }
    show_option(option());
}

/// A frame that is off takes its options along.
void selftest_frame::offer_frame(bool offered)
{
    Frame1.enabled = offered;
    for (int index = 0; index < Option1.count(); ++index)
        Option1(index).enabled = offered && plan_[static_cast<std::size_t>(index)].offered;
}

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
    in_use_ = true;
    device().hwreset();
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
/// own steps. A programmer that is gone cannot be told anything; what made it go was said where it happened.
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
