#include "selftest/socket_frame.h"

#include "messages/message_numbers.h"
#include "session/session.h"

namespace tamrix {

namespace {

enum : std::uint8_t { self_test, analyzer_map, wave_input_map, wave_output_map, logic_test_map };  // pinmapmode

constexpr const char* ground = "GND";
constexpr int analyzer_ground_lamp = 19, wave_ground_lamp = 23, wave_signal_lamp = 22;

}  // namespace

socket_frame::socket_frame(session& plug_in, selftest_variables& variables, selftest_plan plan, lamps::socket drawn,
                           int panels)
    : selftest_frame{plug_in, variables, plan, panels}, socket{Picture1, drawn}
{
    Label2.caption = "GND: P20   1-8: P21-P28";
    Label4.caption = ground;
}

forms::layout socket_frame::arrangement() { return around_socket(Label2.visible() ? &Label2 : nullptr); }

forms::layout socket_frame::around_socket(forms::label* above)
{
    using namespace forms;
    const layout drawing = column({Picture1});
    layout all = column({
        stretched(testbutton.visible() ? row({stretched(drawing), controls_of_tests()}) : drawing),
        fault_words,
        StatusBar1,
        buttons({OKButton}),
    });
    if (above != nullptr) all.children.emplace(all.children.begin(), *above);
    return all;
}

void socket_frame::on_load()
{
    socket.clear();
    Label2.visible = false;
    Label3.visible = false;
    Label4.visible = false;
    Frame1.visible = false;
    for (int index = 0; index < Option1.count(); ++index) Option1(index).visible = false;
    testbutton.visible = false;
    teststop.visible = false;
    caption(plug_in().text(message::pins_map));
    OKButton.caption = plug_in().text(message::ok);
    if (variables().pinmapmode == self_test) {
        load_selftest();
    } else {
        show_pin_map(variables().pinmapmode);
    }
}

/// Where a person connects leads.
void socket_frame::show_pin_map(std::uint8_t pinmapmode)
{
    switch (pinmapmode) {
    case analyzer_map:
        mark_pin(analyzer_ground_lamp, lamps::blue);
        for (int lamp = 20; lamp <= 27; ++lamp) mark_pin(lamp, lamps::yellow);
        Label2.visible = true;
        break;
    case wave_input_map:
    case wave_output_map:
        mark_pin(wave_ground_lamp, lamps::blue);
        mark_pin(wave_signal_lamp, lamps::yellow);
        Label3.caption = plug_in().text(pinmapmode == wave_input_map ? message::input_lead : message::output_lead);
        Label3.visible = true;
        Label4.visible = true;
        socket.hint(wave_signal_lamp, Label3.caption());
        socket.hint(wave_ground_lamp, ground);
        break;
    case logic_test_map:
        status(plug_in().text(message::connect_line));
        socket.paint_lamp(30, lamps::yellow);
        socket.paint_lamp(31, lamps::yellow);
        break;
    default: break;
    }
}

void socket_frame::mark_pin(int lamp, forms::colour ink)
{
    socket.paint_lamp_and_border(lamp, ink);
    socket.paint_mark(lamp, ink);
}

void socket_frame::clearpins()
{
    socket.clear();
    pump();
    pump();
}

void socket_frame::show_option(const option_plan& option)
{
    Label4.visible = option.does == option_action::calibration;
    socket.hint(option.calibration.ground_lamp, Label4.visible() ? ground : "");
    if (option.does == option_action::output_test) hint(plug_in().text(message::needs_test_board));
    if (option.does == option_action::calibration) show_calibration(option.calibration);
    if (option.adaptor_note) hint(plug_in().text(message::note) + plug_in().text(message::needs_ac_adaptor));
}

void socket_frame::show_calibration(const calibration_plan& plan)
{
    socket.paint_lamp(plan.ground_lamp, lamps::blue);
    socket.paint_lamp(plan.lamp, plan.ink);
}

}  // namespace tamrix
