#include "cli/simulated_socket.h"

#include "chips/chip.h"
#include "cli/number_word.h"
#include "host/data_folder.h"
#include "sim/faults.h"
#include "sim/modules.h"
#include "sim/signals/signal_set.h"
#include "sim/test_board.h"

#include <chrono>
#include <filesystem>
#include <map>

namespace tamrix::cli {

namespace {

constexpr std::string_view empty_socket = "empty";

std::filesystem::path folder_of_chips() { return std::filesystem::path{host::data_folder()} / "chips"; }

std::unique_ptr<sim::part> part_named(const std::string& name)
{
    const auto chips = sim::load_chips(sim::chip_files(folder_of_chips()));
    const sim::chip* found = sim::find_chip(chips, name);
    if (found == nullptr) refuse("--socket " + name + ": no such chip; \"tamrix ttl list\" shows those that there are");
    return sim::make_part(*found);
}

/// One into each module where the programmer has modules.
void insert_test_boards(sim::programmer& into, int model)
{
    const bool has_modules = sim::modules::belong_to(model);
    const int first = has_modules ? 1 : 0, last = has_modules ? sim::modules::count : 0;
    for (int module = first; module <= last; ++module)
        into.insert(std::make_unique<sim::test_board>(sim::wiring{model}), module);
}

/// Refuses what is not understood, before anything runs.
void try_out(const socket_options& options, const sim::part_shelf& chips)
{
    sim::fault_set faults;
    for (const std::string& fault : options.faults) {
        try {
            sim::add_fault(faults, fault);
        } catch (const sim::fault_error& error) {
            refuse("--fault " + fault + ": " + error.what());
        }
    }
    sim::signal_set signals{chips};
    for (const std::string& signal : options.signals) {
        try {
            signals.add(signal);
        } catch (const std::invalid_argument& error) {
            refuse("--signal " + signal + ": " + error.what());
        }
    }
}

}  // namespace

socket_options check(const socket_words& words)
{
    socket_options options;
    constexpr int highest_model = 99, highest_generation = 255;
    if (words.model)
        options.model = static_cast<std::int16_t>(checked_number("--model", *words.model, 0, highest_model));
    if (words.wfig)
        options.generation = static_cast<std::uint8_t>(checked_number("--wfig", *words.wfig, 0, highest_generation));
    const std::string route = words.route.value_or("usb");
    if (route != "usb" && route != "devobj") refuse("--route " + route + ": usb or devobj is expected");
    options.usb = route == "usb";
    if (words.socket && *words.socket != empty_socket) options.chip = *words.socket;
    options.faults = words.faults;
    options.signals = words.signals;
    return options;
}

simulated_socket::simulated_socket(attached_plug_in& plug_in, const socket_options& options)
    : plug_in_{plug_in}, time_{std::make_shared<sim::virtual_clock>()}, log_{std::make_shared<sim::journal>(time_)}
{
    plug_in.blocks.value<std::int16_t>("modeltype") = options.model;
    plug_in.blocks.value<std::uint8_t>("wfig", 1) = options.generation;
    plug_in.blocks.value<bool16>("usbable") = options.usb ? bool16_true : bool16_false;
    const sim::part_shelf chips = sim::shelf_of_folder(folder_of_chips());
    try_out(options, chips);
    if (!options.chip.empty()) {
        const auto part = part_named(options.chip);
        chip_ = package{part->pins(), part->vcc_pin() + 1, part->gnd_pin() + 1};
    }
    plug_in.state.hardware.source = sim::source_of(
        {.model = options.model, .generation = options.generation, .time = time_, .log = log_, .chips = chips},
        [this, options](sim::programmer& made) {
            if (!options.chip.empty()) made.insert(part_named(options.chip));
            if (test_board_) insert_test_boards(made, options.model);
            for (const std::string& fault : options.faults) made.add_fault(fault);
            for (const std::string& signal : options.signals) made.add_signal(signal);
        });
    plug_in.screen.clock = [this] { return std::chrono::duration<double>(time_->now()).count(); };
    plug_in.screen.on_doevents = [this] { time_->advance(std::chrono::milliseconds{1}); };
}

simulated_socket::~simulated_socket()
{
    plug_in_.screen.clock = nullptr;
    plug_in_.screen.on_doevents = nullptr;
}

void simulated_socket::tell_hazards(console& con) const
{
    std::map<std::string, int> counts;
    for (const sim::event& hazard : log_->hazards()) ++counts[hazard.text];
    for (const auto& [text, count] : counts) {
        con.note("this could have done harm: " + text + (count > 1 ? " (" + std::to_string(count) + " times)" : ""));
    }
}

}  // namespace tamrix::cli
