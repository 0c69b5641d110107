#include "instruments/wave/recetwave.h"

#include "base/other_side.h"
#include "channel/usb_route.h"
#include "instruments/wave/wave_divider.h"
#include "messages/message_numbers.h"
#include "session/captions.h"
#include "session/session.h"

#include <array>
#include <cstdio>
#include <exception>

namespace tamrix {

namespace {

constexpr std::int32_t no_board = 2;  // what boardsel says then
constexpr std::uint8_t counter_start = 141, generator_start = 140;
constexpr std::array<std::uint8_t, 3> counter_registers{45, 46, 47};  // lowest byte first
constexpr std::uint8_t divider_high = 44, divider_middle = 43;
constexpr int reading_ms = 800;
constexpr std::size_t reading_digits = 6;

std::string reading(std::int32_t hertz)
{
    const std::string digits = std::to_string(hertz);
    return std::string(digits.size() < reading_digits ? reading_digits - digits.size() : 0, '0') + digits;
}

/// The message separates its items by ";".
std::string in_lines(std::string note)
{
    for (std::size_t at = note.find(';'); at != std::string::npos; at = note.find(';', at)) note.replace(at, 1, "\n");
    return note;
}

}  // namespace

recetwave::recetwave(session& plug_in, wave_variables& variables, std::function<void(pin_map)> show_pin_map)
    : plug_in_{plug_in}, variables_{variables}, show_pin_map_{std::move(show_pin_map)}
{
    Text1.accepts = [](char32_t key) { return key >= '0' && key <= '9'; };
    bigan.on_click = [this] { bigan_Click(); };
    stopButton.on_click = [this] { stopButton_Click(); };
    CancelButton.on_click = [this] { close(); };
    Timer1.on_tick = [this] { Timer1_Timer(); };
}

forms::layout recetwave::arrangement()
{
    using namespace forms;
    return column({
        fields({Label1, Text1}),
        framed(Frame1, column({Text2})),
        buttons({bigan, stopButton, CancelButton}),
    });
}

void recetwave::on_load()
{
    const caption_line captions[] = {
        {Label1.caption, message::frequency}, {Frame1.caption, message::note},         {bigan.caption, message::start},
        {stopButton.caption, message::stop},  {CancelButton.caption, message::cancel},
    };
    set_captions(plug_in_, captions);
    show_pin_map_(is_meter() ? pin_map::input : pin_map::output);
    caption(plug_in_.text(is_meter() ? message::frequency_meter : message::signal_generator));
    Text2.caption = in_lines(plug_in_.text(is_meter() ? message::note_of_meter : message::note_of_generator));
    if (is_meter()) {
        Text1.readout = true;
        show(reading(0));
    }
    focus(is_meter() ? static_cast<forms::control&>(bigan) : Text1);
    device().delayms(50);
}

/// A programmer that is gone can do nothing more; why it went was said where it happened.
void recetwave::on_unload()
{
    run_timer(false);
    try {
        device().hwreset();
    } catch (const std::exception&) {
    }
}

/// A start that fails leaves the button off until Stop.
void recetwave::bigan_Click()
{
    enable(bigan, false);
    if (device().hwreset() == 1) return device().hwrelease();
    device().delayms(100);
    device().gndpin(1, 1);
    device().busmode(0);
    if (is_meter()) {
        start_meter();
    } else {
        start_generator();
    }
}

void recetwave::stopButton_Click()
{
    enable(bigan, true);
    enable(Text1, true);
    run_timer(false);
    device().hwreset();
}

void recetwave::start_meter()
{
    device().regout(255, 1);
    device().delayms(100);
    if (by_usb()) {
        if (model().selects_board_for_wave && device().boardsel(0) == no_board) return;
        for (int i = 0; i < 3; ++i) hw::write_other_side(plug_in_.blocks.ibuf1(i), 0);
    } else {
        for (auto address = counter_registers.rbegin(); address != counter_registers.rend(); ++address)
            device().ctlout(0, *address);
    }
    device().ctlout(0, counter_start);
    run_timer(true);
}

/// The programmer counts by itself; this only reads the count.
void recetwave::Timer1_Timer()
{
    std::int32_t hertz = 0;
    if (by_usb()) {
        plug_in_.screen.doevents();
        hw::write_other_side(plug_in_.blocks.usbpip0readresult(0), 0);
        for (int i = 2; i >= 0; --i) hertz = hertz * 256 + hw::read_other_side(plug_in_.blocks.ibuf1(i));
    } else {
        for (int i = 0; i < 3; ++i)
            hertz |= static_cast<std::uint8_t>(device().ctlin(counter_registers[static_cast<std::size_t>(i)])) << 8 * i;
    }
    show(reading(hertz));
}

void recetwave::start_generator()
{
    enable(Text1, false);
    const std::int32_t hertz = typed_frequency(Text1.text());
    const hw::model used = model();
    if (used.selects_board_for_wave && device().boardsel(0) == no_board) return;
    const wave_divider divider =
        divide(hertz, {.usb = by_usb(), .loop = used.generator, .generation = plug_in_.blocks.wfig(1)});
    if (divider.shown) show(*divider.shown);
    if (!by_usb() && used.generator != hw::output_loop::fixed_set) {
        device().ctlout(divider.hi, divider_high);
        device().ctlout(divider.mid, divider_middle);
    }
    // The device object builds its USB frame from these.
    plug_in_.blocks.ubuf1(3) = divider.hi;
    plug_in_.blocks.ubuf1(2) = divider.mid;
    device().ctlout(divider.lo, generator_start);
}

bool recetwave::by_usb() const { return hw::usb_is_true(plug_in_.blocks.usbable(0)); }

hw::model recetwave::model() const { return hw::model_of(plug_in_.blocks.modeltype(0)); }

hw::devobj& recetwave::device() { return plug_in_.hardware.device(); }

void recetwave::show(std::string_view text)
{
    say("text1 " + std::string{text});
    Text1.text(text);
}

void recetwave::enable(forms::control& which, bool on)
{
    say(std::string{"enabled "} + (&which == &bigan ? "bigan" : "Text1") + (on ? " 1" : " 0"));
    which.enabled = on;
}

void recetwave::run_timer(bool on)
{
    say(on ? "timer1 " + std::to_string(reading_ms) : "timer1 off");
    Timer1.interval_ms = reading_ms;
    Timer1.enabled = on;
}

void recetwave::say(const std::string& line) const
{
    if (variables_.on_event) variables_.on_event(line);
}

}  // namespace tamrix
