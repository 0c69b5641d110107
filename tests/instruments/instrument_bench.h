// A plug-in with an instrument, whose calls and events are written down in one list.
#pragma once

#include "instrument_programmer.h"
#include "instruments/analyzer/analyzer.h"
#include "instruments/wave/recetwave.h"
#include "support/plug_in_fixture.h"
#include "support/transcript_programmer.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::tests {

using lines = std::vector<std::string>;

struct instrument_bench : plug_in_fixture {
    explicit instrument_bench(std::int16_t model = 1, bool usb = true, std::uint8_t generation = 0,
                              std::int32_t buflength = 0x80000)
        : plug_in_fixture{{.buflength = buflength, .tlength = buflength}}
    {
        session.blocks.modeltype(0) = model;
        session.blocks.wfig(1) = generation;
        session.blocks.usbable(0) = usb ? bool16_true : bool16_false;
        session.blocks.rambknum(0) = 1;
        session.hardware.source = with_transcript(hardware.source(), transcript);
        const auto write = [this](const std::string& line) {
            transcript.push_back(line);
            if (on_event) on_event(line);
        };
        variables.analyzer.on_event = write;
        variables.wave.on_event = write;
        shell.on_doevents = [this] {
            if (at_pump) at_pump();
        };
    }

    instrument_programmer hardware;
    lines transcript;
    std::function<void()> at_pump;
    std::function<void(const std::string& line)> on_event;
    int maps_shown = 0;
    std::uint8_t map_shown = 0;

    /// Shows an analyzer; `steps` are the person's.
    template <class Steps>
    void during_analyzer(const Steps& steps)
    {
        analyzer dialog{session, variables.analyzer, variables.transfer, [this] { ++maps_shown; }};
        shell.during(dialog, [&] {
            transcript.clear();
            steps(dialog);
        });
    }
    /// Shows the meter or the generator.
    template <class Steps>
    void during_wave(bool meter, const Steps& steps)
    {
        variables.wave.fwave = meter ? bool16_true : bool16_false;
        recetwave dialog{session, variables.wave, [this](recetwave::pin_map which) {
                             ++maps_shown;
                             map_shown = static_cast<std::uint8_t>(which);
                         }};
        shell.during(dialog, [&] {
            transcript.clear();
            steps(dialog);
        });
    }
    /// The programmer has recorded when the message loop runs for the `pass`-th time.
    void reply_at_pass(int pass)
    {
        at_pump = [this, pass, passes = 0]() mutable {
            if (++passes == pass) hardware.reply(0xAA);
        };
    }
    int count(std::string_view start) const
    {
        return static_cast<int>(
            std::ranges::count_if(transcript, [&](const auto& line) { return line.starts_with(start); }));
    }
    bool has(const std::string& line) const { return std::ranges::find(transcript, line) != transcript.end(); }
};

}  // namespace tamrix::tests
