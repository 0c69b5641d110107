// A plug-in whose programmer is the simulated one. Each round of the message pump takes a millisecond.
#pragma once

#include "sim/programmer.h"
#include "support/plug_in_fixture.h"

#include <memory>

namespace tamrix::tests {

struct channel : plug_in_fixture {
    explicit channel(int model = 40)
    {
        session.hardware.source =
            sim::source_of({.model = model, .time = time, .log = log}, [this](sim::programmer& made) {
                programmer = &made;
                log->record(true);
                for (const std::string& fault : faults) made.add_fault(fault);
            });
        shell.on_doevents = [this] {
            time->advance(std::chrono::milliseconds{1});
            shell.advance(0.001);
        };
    }

    std::shared_ptr<sim::virtual_clock> time = std::make_shared<sim::virtual_clock>();
    std::shared_ptr<sim::journal> log = std::make_shared<sim::journal>(time);
    std::vector<std::string> faults;        // of the programmer when it is made
    sim::programmer* programmer = nullptr;  // null until it is first used

    int prgresult() { return session.blocks.prgresult(0); }
};

}  // namespace tamrix::tests
