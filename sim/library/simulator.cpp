// The functions of tamrix/simulator.h.
#include "tamrix/simulator.h"

#include "chips/chip.h"
#include "sim/library/running.h"

#include <cstdio>
#include <exception>

using namespace tamrix;

namespace {

void tell(const std::exception& problem, char* error, std::size_t error_bytes)
{
    if (error != nullptr && error_bytes > 0) std::snprintf(error, error_bytes, "%s", problem.what());
}

void hand_over(const sim::chip& chip, tamrix_simulator_take_chip take, void* context)
{
    std::vector<const char*> names;
    for (const sim::pin& pin : chip.plan->pins) names.push_back(pin.name.c_str());
    tamrix_simulator_chip told{
        chip.name.c_str(),  chip.description.c_str(), "",          static_cast<int32_t>(names.size()),
        chip.plan->vcc + 1, chip.plan->gnd + 1,       names.data()};
    take(context, &told);
    told.same_as = chip.name.c_str();
    for (const std::string& alias : chip.aliases) {
        told.name = alias.c_str();
        take(context, &told);
    }
}

}  // namespace

int32_t tamrix_simulator_change(const char* entries, char* error, size_t error_bytes)
{
    try {
        const auto changes = sim::read_changes(entries != nullptr ? entries : "");
        const bool done = sim::running_programmers::of_this_process().change(changes);
        return done ? TAMRIX_SIMULATOR_DONE : TAMRIX_SIMULATOR_NOT_RUNNING;
    } catch (const std::exception& problem) {
        tell(problem, error, error_bytes);
        return TAMRIX_SIMULATOR_REFUSED;
    }
}

void tamrix_simulator_hazards(tamrix_simulator_take_text take, void* context)
{
    try {
        for (const std::string& text : sim::running_programmers::of_this_process().take_hazards()) {
            take(context, text.c_str());
        }
    } catch (const std::exception&) {
        return;  // no memory for the texts
    }
}

int32_t tamrix_simulator_chips(const char* folder, tamrix_simulator_take_chip take, void* context, char* error,
                               size_t error_bytes)
{
    try {
        const auto chips = sim::load_chips(sim::chip_files(folder != nullptr ? folder : ""));
        for (const sim::chip& chip : chips) hand_over(chip, take, context);
        return TAMRIX_SIMULATOR_DONE;
    } catch (const std::exception& problem) {
        tell(problem, error, error_bytes);
        return TAMRIX_SIMULATOR_REFUSED;
    }
}
