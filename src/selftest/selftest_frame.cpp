#include "selftest/selftest_frame.h"

#include "channel/usb_route.h"
#include "messages/message_numbers.h"
#include "session/captions.h"
#include "session/session.h"

namespace tamrix {

namespace {

constexpr std::uint8_t generation_that_reads_all_pins = 17;

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
    if (!random_) random_.emplace(variables_.random_start());
    return static_cast<std::uint8_t>((*random_)() >> 24);
}

void selftest_frame::pump() { plug_in_.screen.doevents(); }

stage_end selftest_frame::communication_error()
{
    status(plug_in_.text(message::communication_error));
    device().hwrelease();
    return stage_end::communication_error;
}

bool selftest_frame::reset_is_answered()
{
    variables_.answered = device().hwreset() != 1;
    return variables_.answered;
}

stage_end selftest_frame::reset_programmer()
{
    if (!by_usb()) device().hwinit();
    if (reset_is_answered() || by_usb()) return stage_end::passed;
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
    const std::string words = words_of(fault);
    fault_words.caption = words;
    log("fault: " + words);
}

void selftest_frame::add(const untested_pins& pins)
{
    report().not_tested.push_back(pins);
    log(words_of(pins));
}

forms::layout selftest_frame::controls_of_tests()
{
    using namespace forms;
    layout options = column({});
    for (int index = 0; index < Option1.count(); ++index) options.children.emplace_back(Option1(index));
    return column({framed(Frame1, options), column({testbutton, teststop})});
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
    focus(Option1(0));
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

/// Clearing the map lets the person go on meanwhile. Another option that is chosen then is the one to show.
void selftest_frame::Option1_Click(int index)
{
    const std::string shown = StatusBar1.text(1);
    testsel_ = index;
    clearpins();
    if (testsel_ != index) return;
    // A quick person has started the test meanwhile, and its verdict is there.
    if (StatusBar1.text(1) != shown && !in_use_) return;
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

}  // namespace tamrix
