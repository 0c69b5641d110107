#include "device/algoparameter.h"

#include "base/arith.h"
#include "device/parameter_text.h"
#include "messages/message_numbers.h"
#include "session/captions.h"
#include "session/session.h"

#include <limits>
#include <string>

namespace tamrix {

using arith::two_decimals;

namespace {

constexpr double least_volts = 1.6, most_vcc = 7, most_vpp = 26;
constexpr std::int32_t most_short = std::numeric_limits<std::int16_t>::max();
constexpr std::int32_t most_long = std::numeric_limits<std::int32_t>::max();

double value_of(const forms::text_box& box) { return read_number(box.text()).value; }

std::int16_t short_of(double value)
{
    return static_cast<std::int16_t>(whole_number(value, std::numeric_limits<std::int16_t>::min(), most_short));
}

/// A text of which only a part is a number, as "5.0.1", shows what is taken of it.
void mend_volts(forms::text_box& box)
{
    const typed_number typed = read_number(box.text());
    if (!typed.whole) box.text(two_decimals(typed.value));
}

}  // namespace

algoparameter::algoparameter(session& plug_in) : plug_in_{plug_in}
{
    const auto digit = [](char32_t key) { return key >= U'0' && key <= U'9'; };
    const auto digit_or_point = [digit](char32_t key) { return digit(key) || key == U'.'; };
    Text1.accepts = Text3.accepts = digit_or_point;
    Text2.accepts = Text4.accepts = digit;
    for (forms::text_box* box : {&Text1, &Text2, &Text3, &Text4}) box->on_leave = [this] { left(); };
    OKButton.on_click = [this] { confirm(); };
    CancelButton.on_click = [this] { close(); };
}

forms::layout algoparameter::arrangement()
{
    using namespace forms;
    return column({
        framed(Frame1, measures({Label1, Text1, Label5, Label2, Text2, Label6, Label3, Text3, Label7, Label4, Text4,
                                 nothing()})),
        buttons({OKButton, CancelButton}),
    });
}

void algoparameter::on_load()
{
    load_captions();
    show_vpp_or_page();
    Text1.text(two_decimals(plug_in_.blocks.bvcc(0) / 100.0));
    show_retry();
    show_pulse();
}

void algoparameter::load_captions()
{
    caption(plug_in_.text(message::modify_algorithm_parameters));
    const caption_line captions[] = {
        {Frame1.caption, message::algorithm_parameters},
        {Label1.caption, message::vcc},
        {Label2.caption, message::pulse_width},
        {Label3.caption, message::vpp},
        {Label4.caption, message::retry},
        {OKButton.caption, message::ok},
        {CancelButton.caption, message::cancel},
    };
    set_captions(plug_in_, captions);
    Label5.caption = "V";
    Label7.caption = "V";
}

/// A device without a VPP of its own that is written by pages has its page length in the box.
void algoparameter::show_vpp_or_page()
{
    constexpr std::int16_t own_vpp = 500, least_vpp = 130;
    const std::int16_t bvpp = plug_in_.blocks.bvpp(0), pagelength = plug_in_.blocks.pagelength(0);
    page_ = bvpp <= own_vpp && pagelength > 1;
    if (page_) {
        Label3.caption = plug_in_.text(message::page);
        Label7.visible = false;
        Text3.text(std::to_string(pagelength));
        return;
    }
    Text3.text(two_decimals(bvpp / 100.0));
    Text3.enabled = bvpp >= least_vpp;
}

/// A serial memory in mode 1 has its address in the box, which its device data keep in bvpp. Intentional: OK still
/// stores it as the retry count.
void algoparameter::show_retry()
{
    constexpr std::uint8_t by_address = 1;
    const auto& blocks = plug_in_.blocks;
    const bool addressed = blocks.algo(0).str() == "WSEPM" && blocks.prgmode(0) == by_address;
    if (addressed) Label4.caption = "Addr(A2.A1.A0):";
    retry_of_device_ = addressed ? blocks.bvpp(0) : blocks.wretry(0);
    Text4.text(std::to_string(retry_of_device_));
}

void algoparameter::show_pulse()
{
    const std::int32_t microseconds = plug_in_.blocks.pwte(0);
    milliseconds_ = microseconds >= 1000;
    Label6.caption = milliseconds_ ? "mS" : "uS";
    Text2.text(milliseconds_ ? milliseconds_text(microseconds) : std::to_string(microseconds));
}

/// Reports to the host that the parameters were edited, even if they are cancelled later.
void algoparameter::left()
{
    check();
    plug_in_.blocks.pwte(1) = 1;
}

/// Brings the values of the boxes within their limits. A box without a digit counts as 0 and gets its least value; page
/// and retry have none and go back to the device's value.
void algoparameter::check()
{
    mend_volts(Text1);
    if (value_of(Text1) < least_volts) Text1.text(two_decimals(least_volts));
    if (value_of(Text1) > most_vcc) Text1.text(two_decimals(most_vcc));
    if (value_of(Text2) < 1) Text2.text("1");
    if (milliseconds_ && value_of(Text2) > most_long / 1000.0) Text2.text(milliseconds_text(most_long));
    if (value_of(Text2) > most_long) Text2.text(std::to_string(most_long));
    hold_whole(Text4, retry_of_device_);
    if (page_) {
        hold_whole(Text3, plug_in_.blocks.pagelength(0));
    } else {
        check_vpp();
    }
}

/// The device's own VPP is the most, also where it is less than the least value.
void algoparameter::check_vpp()
{
    const double of_device = plug_in_.blocks.bvpp(0) / 100.0;
    mend_volts(Text3);
    if (value_of(Text3) < least_volts) Text3.text(two_decimals(least_volts));
    if (value_of(Text3) > of_device) Text3.text(two_decimals(of_device));
    if (value_of(Text3) > most_vpp) Text3.text(two_decimals(most_vpp));
}

void algoparameter::hold_whole(forms::text_box& box, std::int16_t of_device)
{
    const typed_number typed = read_number(box.text());
    if (!typed.found) {
        box.text(std::to_string(of_device));
    } else if (!typed.whole || typed.value > most_short) {
        box.text(std::to_string(short_of(typed.value)));
    }
}

void algoparameter::confirm()
{
    check();
    auto& blocks = plug_in_.blocks;
    blocks.bvcc(0) = short_of(value_of(Text1) * 100);
    if (page_) {
        blocks.pagelength(0) = short_of(value_of(Text3));
    } else {
        blocks.bvpp(0) = short_of(value_of(Text3) * 100);
    }
    blocks.pwte(0) = whole_number(value_of(Text2) * (milliseconds_ ? 1000 : 1), 1, most_long);
    blocks.wretry(0) = short_of(value_of(Text4));
    close();
}

}  // namespace tamrix
