// The instruments' dialogs with the simulated programmer, in virtual time or by the clock on the wall.
#pragma once

#include "instruments/analyzer/analyzer.h"
#include "instruments/wave/recetwave.h"
#include "sim/programmer.h"
#include "support/plug_in_fixture.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace tamrix::tests {

struct simulated_instruments : plug_in_fixture {
    /// `wall`: the clock on the wall; none for virtual time, which a round of the message loop lets go on by 20 ms.
    simulated_instruments(std::int16_t model, bool usb, int banks, std::vector<std::string> signals,
                          std::shared_ptr<sim::wall_clock> wall = {})
        : plug_in_fixture{{.buflength = banks * bank_samples + 1, .tlength = banks * bank_samples + 1}}
    {
        const auto virtual_time = std::make_shared<sim::virtual_clock>();
        time = wall != nullptr ? std::shared_ptr<sim::clock>{wall} : virtual_time;
        log = std::make_shared<sim::journal>(time);
        session.blocks.modeltype(0) = model;
        session.blocks.usbable(0) = usb ? bool16_true : bool16_false;
        session.blocks.rambknum(0) = static_cast<std::uint8_t>(banks);
        const auto put_on = [this, signals = std::move(signals)](sim::programmer& made) {
            programmer = &made;
            for (const std::string& one : signals) made.add_signal(one);
        };
        session.hardware.source = sim::source_of({.model = model, .time = time, .log = log}, put_on);
        shell.on_doevents = [this, virtual_time, is_virtual = wall == nullptr] {
            if (is_virtual) {
                virtual_time->advance(std::chrono::milliseconds{20});
            } else {
                std::this_thread::sleep_for(std::chrono::microseconds{200});
            }
            shell.advance(std::chrono::duration<double>(time->now()).count() - shell.seconds());
            if (at_pump) at_pump();
        };
    }

    std::shared_ptr<sim::clock> time;
    std::shared_ptr<sim::journal> log;
    sim::programmer* programmer = nullptr;  // from the first use on
    std::function<void()> at_pump;          // what the person does in a round of the message loop

    template <class Steps>
    void during_analyzer(const Steps& steps)
    {
        analyzer dialog{session, variables.analyzer, variables.transfer, [] {}};
        shell.during(dialog, [&] { steps(dialog); });
    }
    template <class Steps>
    void during_wave(bool meter, const Steps& steps)
    {
        variables.wave.fwave = meter ? bool16_true : bool16_false;
        recetwave dialog{session, variables.wave, [](recetwave::pin_map) {}};
        shell.during(dialog, [&] { steps(dialog); });
    }
    /// What was done that can harm something, with what is left on.
    std::vector<std::string> hazards()
    {
        if (programmer != nullptr) programmer->check_idle();
        std::vector<std::string> texts;
        for (const sim::event& one : log->hazards()) texts.push_back(one.text);
        return texts;
    }
};

}  // namespace tamrix::tests
