#include "instruments/analyzer/analyzer.h"

#include "base/arith.h"
#include "instruments/analyzer/analyzersetc.h"
#include "messages/message_numbers.h"
#include "session/captions.h"
#include "session/session.h"

#include <algorithm>
#include <limits>

namespace tamrix {

namespace {

constexpr forms::colour surface = 0x008080, black = 0x000000;
constexpr forms::point least_size{9600, 4875};
constexpr int least_screens = 32;  // of the first view, and the marks of the ruler
constexpr double widest_sample = 900, narrowest_sample = 4;
constexpr std::uint8_t last_pin = 7;

}  // namespace

analyzer::analyzer(session& plug_in, analyzer_settings& settings, transfer_variables& transfer,
                   std::function<void()> show_pin_map)
    : plug_in_{plug_in},
      settings_{settings},
      transfer_{transfer},
      show_pin_map_{std::move(show_pin_map)},
      capture_{plug_in, settings, *this},
      savedlen_{transfer.loadlength}
{
    Picture1.background = surface;
    Picture1.extent = least_size;
    Picture1.on_resize = [this] { Form_Resize(); };
    Picture1.on_wheel = [this](int steps) {
        using enum forms::scroll_step;
        for (; steps != 0; steps += steps < 0 ? 1 : -1) HScroll1.step(steps < 0 ? small_on : small_back);
    };
    HScroll1.on_change = [this] { scroll(); };
    Command1.on_click = [this] {
        if (view_.bitwidth < widest_sample) zoom(2);
    };
    Command2.on_click = [this] {
        if (view_.bitwidth > narrowest_sample) zoom(0.5);
    };
    Command3.on_click = [this] { Command3_Click(); };
    Command4.on_click = [this] { Command4_Click(); };
    analyzerOpen.on_click = [this] { analyzerOpen_Click(); };
    analyzerSave.on_click = [this] { analyzerSave_Click(); };
    analyzerSet.on_click = [this] { analyzerSet_Click(); };
    analyzerprint.on_click = [this] { analyzerprint_Click(); };
    Exit.on_click = [this] { ask_to_leave(); };
    Text1.visible = false;
    Text2.visible = false;
}

forms::layout analyzer::arrangement()
{
    using namespace forms;
    layout pins = column({});  // each beside its trace; the ninth row has the times
    for (label* pin : {&Label5, &Label6, &Label7, &Label8, &Label9, &Label10, &Label11, &Label12})
        pins.children.push_back(stretched(row({*pin})));
    pins.children.push_back(stretched(nothing()));
    return column({
        stretched(row({pins, Picture1})),
        HScroll1,
        buttons({Command1, Command2, Command3, Command4}),
        StatusBar1,
    });
}

void analyzer::on_load()
{
    const hw::model model = hw::model_of(plug_in_.blocks.modeltype(0));
    settings_.sampleus = sample_period(model.before_capture, plug_in_.blocks.wfig(1));
    show_pin_map_();
    load_captions();
    show_status(1, plug_in_.text(message::record_status));
    show_status(2, plug_in_.text(message::record_time));
    settings_.trigpin &= last_pin;
    show_trigger();
    samples_ = samples_of_banks();
    HScroll1.max(samples_ / least_screens - 1);
    enable_stop(false);
    transfer_.loadlength = plug_in_.blocks.buflength(0);
    Form_Resize();
    focus(Command3);
}

void analyzer::on_unload()
{
    transfer_.loadlength = savedlen_;
    capture_.leave_socket_safe();
}

void analyzer::load_captions()
{
    caption(plug_in_.text(message::logic_analyzer));
    const caption_line captions[] = {
        {Menu.caption, message::logic_analyzer},      {analyzerOpen.caption, message::load_file},
        {analyzerSave.caption, message::save_buffer}, {analyzerSet.caption, message::setting_of_instrument},
        {analyzerprint.caption, message::printer},    {Exit.caption, message::leave},
        {Command1.caption, message::zoom_in},         {Command2.caption, message::zoom_out},
        {Command3.caption, message::record},          {Command4.caption, message::stop},
    };
    set_captions(plug_in_, captions);
    int pin = 21;
    for (forms::label* one : {&Label5, &Label6, &Label7, &Label8, &Label9, &Label10, &Label11, &Label12})
        one->caption = "P" + std::to_string(pin++);
}

std::int32_t analyzer::samples_of_banks() const { return plug_in_.blocks.rambknum(0) * bank_samples; }

/// Intentional: the picture stays empty until the next command, and the scroll bar keeps its range.
void analyzer::Form_Resize()
{
    view_.size = Picture1.size();
    view_.bitwidth = view_.size.x / least_screens;
    clear();
}

/// What a run leaves is said by the capture itself.
void analyzer::Command3_Click()
{
    capture_.record();
    if (leaving_) close();
}

void analyzer::Command4_Click()
{
    capture_.stop();
    enable_stop(false);
}

void analyzer::ask_to_leave()
{
    if (!capture_.running()) return close();
    leaving_ = true;
    Command4_Click();
}

bool analyzer::press_key(forms::form_key key)
{
    using enum forms::form_key;
    using forms::scroll_step;
    switch (key) {
    case left: HScroll1.step(scroll_step::small_back); break;
    case right: HScroll1.step(scroll_step::small_on); break;
    case page_up: HScroll1.step(scroll_step::large_back); break;
    case page_down: HScroll1.step(scroll_step::large_on); break;
    case home: HScroll1.step(scroll_step::to_min); break;
    case end: HScroll1.step(scroll_step::to_max); break;
    case plus: Command1.click(); break;
    case minus: Command2.click(); break;
    case space: (Command3.usable() ? Command3 : Command4).click(); break;
    }
    return true;
}

void analyzer::zoom(double factor)
{
    view_.bitwidth *= factor;
    fit_scroll_bar();
    draw_again();
}

/// A step of the bar is a screen.
void analyzer::fit_scroll_bar()
{
    const std::int32_t across = view_.bitwidth > 0 ? arith::nearest(view_.size.x / view_.bitwidth) : 0;
    if (across > 0) HScroll1.max(samples_ / across - 1);
}

/// On a surface too narrow for any sample the view stays where it is.
void analyzer::scroll()
{
    if (arith::nearest(view_.bitwidth) != 0) {
        const std::int64_t screen = view_.samples_across();
        std::int64_t wanted = HScroll1.value() * screen;
        if (wanted >= samples_) wanted = samples_ - 2 * screen;
        view_.viewpos = static_cast<std::int32_t>(wanted);
    }
    draw_again();
}

void analyzer::draw_again()
{
    clear();
    drawline();
}

void analyzer::clear()
{
    say("clear");
    Picture1.clear(surface);
    say("labels");
    for (forms::label* one : {&Label1, &Label2, &Label3, &Label4}) one->caption = "";
}

/// The times lie on the picture, at a quarter of its width each.
void analyzer::drawline()
{
    say("draw");
    const std::vector<analyzer_line> lines = analyzer_lines(plug_in_.blocks.ibuffer.span(), view_);
    forms::label* const labels[] = {&Label1, &Label2, &Label3, &Label4};
    if (view_.samples_across() > 0) {
        const auto times = time_labels(view_, settings_.sampleus);
        for (std::size_t i = 0; i < times.size(); ++i) labels[i]->caption = times[i];
    }
    const auto [width, height] = view_.size;
    const int places[] = {0, width / 4, width / 2, 3 * width / 4};
    Picture1.draw([&] {
        for (const analyzer_line& one : lines) Picture1.line(one.from, one.to, one.ink);
        for (std::size_t i = 0; i < std::size(labels); ++i)
            Picture1.text({places[i], height * 9 / 10}, labels[i]->caption(), black);
    });
}

/// Intentional: the picture is not cleared first.
void analyzer::analyzerSet_Click()
{
    analyzersetc dialog{plug_in_, settings_};
    plug_in_.screen.show_modal(dialog);
    plug_in_.screen.doevents();
    plug_in_.screen.doevents();
    drawline();
    show_trigger();
}

void analyzer::show_trigger()
{
    const bool ext = settings_.trigmode != 0;
    std::string level = plug_in_.text(message::trigger_level), pin = plug_in_.text(message::trigger_pin);
    if (ext) {
        level += plug_in_.text(settings_.triglevel != 0 ? message::high_level : message::low_level);
        pin += "P" + std::to_string(21 + settings_.trigpin);
    }
    show_status(3,
                plug_in_.text(message::trigger_mode) + plug_in_.text(ext ? message::ext_trigger : message::in_trigger));
    show_status(4, level);
    show_status(5, pin);
}

void analyzer::show_status(int panel, const std::string& words)
{
    say("status" + std::to_string(panel) + " " + words);
    StatusBar1.text(panel, words);
}

void analyzer::enable_record(bool on)
{
    say(on ? "enabled Command3 1" : "enabled Command3 0");
    Command3.enabled = on;
}

void analyzer::enable_stop(bool on)
{
    say(on ? "enabled Command4 1" : "enabled Command4 0");
    Command4.enabled = on;
}

void analyzer::limit(int milliseconds)
{
    say(milliseconds == 0 ? "timer2 off" : "timer2 " + std::to_string(milliseconds));
}

void analyzer::draw()
{
    fit_scroll_bar();
    drawline();
}

void analyzer::say(const std::string& line) const
{
    if (settings_.on_event) settings_.on_event(line);
}

}  // namespace tamrix
