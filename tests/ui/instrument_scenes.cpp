#include "instrument_scenes.h"

#include "instrument_stage.h"
#include "instruments/analyzer/analyzersetc.h"

namespace tamrix::tests {

namespace {

void set_trigger(stage& on, bool high, std::uint8_t pin)
{
    on.variables.analyzer.trigmode = -1;
    on.variables.analyzer.triglevel = high ? -1 : 0;
    on.variables.analyzer.trigpin = pin;
}

/// What was recorded, with the trigger of the last pin.
void of_analyzer(stage& on)
{
    instruments with{on};
    set_trigger(on, true, 7);
    with.programmer.usbcomwrite = [&](const std::uint8_t* frame) {
        if (frame[0] == 0x21 && frame[1] == 1) with.programmer.reply(0xAA);
        return 0;
    };
    with.show_analyzer([&](analyzer& shown) {
        shown.Command2.click();
        shown.Command3.click();
        on.look();
    });
}

void of_settings(stage& on)
{
    set_trigger(on, false, 4);
    analyzersetc dialog{on.session, on.variables.analyzer};
    on.show(dialog);
}

void of_meter(stage& on)
{
    instruments with{on};
    with.show_wave(true, [&](recetwave& meter) {
        meter.bigan.click();
        meter.Text1.text("012500");
        on.look();
    });
}

void of_generator(stage& on)
{
    instruments with{on};
    with.show_wave(false, [&](recetwave& generator) {
        generator.Text1.enter("38000");
        on.look();
    });
}

constexpr scene all[] = {
    {"analyzer", of_analyzer, true},
    {"analyzer_settings", of_settings, true},
    {"frequency_meter", of_meter, true},
    {"signal_generator", of_generator, true},
};

}  // namespace

std::span<const scene> instrument_scenes() { return all; }

}  // namespace tamrix::tests
