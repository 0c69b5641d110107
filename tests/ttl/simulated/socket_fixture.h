// A plug-in with the shipped vector library, and the simulated programmer with a chip of the data files in its socket.
#pragma once

#include "chips/chip.h"
#include "sim/programmer.h"
#include "support/plug_in_fixture.h"
#include "ttl/library/library.h"
#include "ttl/run/engines.h"
#include "ttl/run/prepare.h"

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace tamrix::tests {

inline const std::vector<sim::chip>& all_chips()
{
    static const auto chips = sim::load_chips(sim::chip_files(TAMRIX_DATA_FOLDER "/chips"));
    return chips;
}

struct socket_fixture : plug_in_fixture {
    socket_fixture(std::int16_t model, bool usb)
    {
        session.blocks.modeltype(0) = model;
        session.blocks.usbable(0) = usb ? bool16_true : bool16_false;
        session.syspath = TAMRIX_DATA_FOLDER "/";
        variables.ttl.ok = bool16_true;
        session.hardware.source = sim::source_of({.model = model, .time = time, .log = log},
                                                 [this](sim::programmer& made) { programmer = &made; });
        session.hardware.device();  // from here on there is a programmer
        shell.on_doevents = [this] { time->advance(std::chrono::milliseconds{1}); };
    }

    /// Throws std::runtime_error for a name that is no chip.
    void insert(const std::string& name)
    {
        const sim::chip* chip = sim::find_chip(all_chips(), name);
        if (chip == nullptr) throw std::runtime_error{name + " is no chip"};
        programmer->insert(sim::make_part(*chip));
    }
    std::vector<std::string> devices() { return read_directory(session).names; }
    /// What went wrong on the bench since it was built; empty where nothing did.
    std::string hazards() const
    {
        std::string text;
        for (const sim::event& hazard : log->hazards()) text += hazard.text + "\n";
        for (const sim::event& note : log->notes()) text += note.text + "\n";
        return text;
    }

    std::shared_ptr<sim::virtual_clock> time = std::make_shared<sim::virtual_clock>();
    std::shared_ptr<sim::journal> log = std::make_shared<sim::journal>(time);
    sim::programmer* programmer = nullptr;
};

}  // namespace tamrix::tests
