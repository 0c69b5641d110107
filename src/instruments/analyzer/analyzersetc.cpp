#include "instruments/analyzer/analyzersetc.h"

#include "messages/message_numbers.h"
#include "session/captions.h"
#include "session/session.h"

#include <algorithm>

namespace tamrix {

namespace {

enum option2 : std::uint8_t { in_trigger, ext_trigger };
enum option1 : std::uint8_t { high_level, low_level };

constexpr std::uint8_t last_pin = 7;

}  // namespace

analyzersetc::analyzersetc(session& plug_in, analyzer_settings& settings) : plug_in_{plug_in}, settings_{settings}
{
    Option2.on_click = [this](int index) { Option2_Click(index); };
    Option1.on_click = [this](int index) { settings_.triglevel = index == high_level ? -1 : 0; };
    Combo1.on_click = [this] { settings_.trigpin = static_cast<std::uint8_t>(Combo1.index()); };
    Command1.on_click = [this] { close(); };
}

forms::layout analyzersetc::arrangement()
{
    using namespace forms;
    return column({
        framed(Frame2, row({Option2(in_trigger), Option2(ext_trigger)})),
        framed(Frame1, row({Option1(high_level), Option1(low_level)})),
        fields({Label1, Combo1}),
        buttons({Command1}),
    });
}

void analyzersetc::on_load()
{
    caption(plug_in_.text(message::logic_analyzer) + " " + plug_in_.text(message::setting));
    const caption_line captions[] = {
        {Frame2.caption, message::trigger_mode},
        {Option2(in_trigger).caption, message::in_trigger},
        {Option2(ext_trigger).caption, message::ext_trigger},
        {Frame1.caption, message::trigger_level},
        {Option1(high_level).caption, message::high_level},
        {Option1(low_level).caption, message::low_level},
        {Label1.caption, message::trigger_pin},
        {Command1.caption, message::ok},
    };
    set_captions(plug_in_, captions);
    Combo1.items = {"P21", "P22", "P23", "P24", "P25", "P26", "P27", "P28"};
    Option2(settings_.trigmode != 0 ? ext_trigger : in_trigger).select();
}

/// The other mode keeps level and pin; they are shown again with this one.
void analyzersetc::Option2_Click(int index)
{
    const bool ext = index == ext_trigger;
    for (forms::control* one :
         {static_cast<forms::control*>(&Frame1), static_cast<forms::control*>(&Combo1),
          static_cast<forms::control*>(&Option1(high_level)), static_cast<forms::control*>(&Option1(low_level)),
          static_cast<forms::control*>(&Label1)})
        one->enabled = ext;
    settings_.trigmode = ext ? -1 : 0;
    if (ext) show_trigger();
}

void analyzersetc::show_trigger()
{
    Option1(settings_.triglevel == -1 ? high_level : low_level).select();
    Combo1.index(std::min(settings_.trigpin, last_pin));
}

}  // namespace tamrix
