#include "cli/simulated_socket.h"

#include "chips/chip.h"
#include "host/data_folder.h"
#include "sim/faults.h"
#include "sim/modules.h"
#include "sim/test_board.h"

#include <charconv>
#include <chrono>
#include <filesystem>
#include <map>

namespace tamrix::cli {

namespace {

constexpr std::string_view empty_socket = "empty";

std::int16_t model_number(const std::string& word)
{
    std::int16_t number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    constexpr int highest = 99;
    if (error != std::errc{} || end != word.data() + word.size() || number < 0 || number > highest) {
        refuse("--model " + word + ": a number from 0 to " + std::to_string(highest) + " is expected");
    }
    return number;
}

std::unique_ptr<sim::part> part_named(const std::string& name)
{
    const auto chips = sim::load_chips(sim::chip_files(std::filesystem::path{host::data_folder()} / "chips"));
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

}  // namespace

socket_options check(const socket_words& words)
{
    socket_options options;
    if (words.model) options.model = model_number(*words.model);
    const std::string route = words.route.value_or("usb");
    if (route != "usb" && route != "devobj") refuse("--route " + route + ": usb or devobj is expected");
    options.usb = route == "usb";
    if (words.socket && *words.socket != empty_socket) options.chip = *words.socket;
    options.faults = words.faults;
    return options;
}

simulated_socket::simulated_socket(attached_plug_in& plug_in, const socket_options& options)
    : plug_in_{plug_in}, time_{std::make_shared<sim::virtual_clock>()}, log_{std::make_shared<sim::journal>(time_)}
{
    plug_in.blocks.value<std::int16_t>("modeltype") = options.model;
    plug_in.blocks.value<std::uint8_t>("wfig", 1) = options.generation;
    plug_in.blocks.value<bool16>("usbable") = options.usb ? bool16_true : bool16_false;
    sim::fault_set faults;  // read before anything is tested
    for (const std::string& fault : options.faults) {
        try {
            sim::add_fault(faults, fault);
        } catch (const sim::fault_error& error) {
            refuse("--fault " + fault + ": " + error.what());
        }
    }
    if (!options.chip.empty()) {
        const auto part = part_named(options.chip);
        chip_ = package{part->pins(), part->vcc_pin() + 1, part->gnd_pin() + 1};
    }
    plug_in.state.hardware.source =
        sim::source_of({.model = options.model, .generation = options.generation, .time = time_, .log = log_},
                       [this, options](sim::programmer& made) {
                           if (!options.chip.empty()) made.insert(part_named(options.chip));
                           if (test_board_) insert_test_boards(made, options.model);
                           for (const std::string& fault : options.faults) made.add_fault(fault);
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
