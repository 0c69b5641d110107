#include "sim/module.h"

#include <utility>

namespace tamrix::sim {

namespace {

/// A module has no boards to select: it always does what these functions of a board do.
constexpr int input_test = 7, driver_test = 3;
constexpr std::uint8_t pull_register = 50;

}  // namespace

module::module(int number, int model, fault_set& faults, journal& log) :number_{number}, faults_{faults},
    log_{number, log}, machine_{model, 0, own_faults_, log_}, memory_{memory_banks * memory::bank_bytes, own_faults_}
{
    power_up();
}

void module::configure(configuration what)
{
    fpga_ = what;
    in_reset_ = connected_ = false;
    machine_.reset();
    machine_.select_board(input_test, driver_test);
    machine_.write_register(pull_register, what == configuration::own ? 1 : 0);
}

void module::power_up()
{
    reset();
    start();
}

void module::reset()
{
    configure(configuration::none);
    image_bytes_ = 0;
    next_block_ = 0;
    answer_.reset();
}

void module::start() { configure(configuration::own); }

machine* module::reachable()
{
    const bool connected = fpga_ == configuration::own || (fpga_ == configuration::image && connected_);
    return present() && connected && !in_reset_ ? &machine_ : nullptr;
}

memory* module::reachable_memory() { return present() && fpga_ != configuration::none ? &memory_ : nullptr; }

void module::load(std::span<const std::uint8_t> block, std::size_t announced)
{
    configure(configuration::none);
    const bool taken = block.size() == announced;
    answer_ = load_answer{next_block_++, taken, false};
    if (!taken) return;
    image_bytes_ += block.size();
    if (block.size() == image_block) return;
    next_block_ = 0;
    answer_->started = std::exchange(image_bytes_, 0) > 0 && !faults_.idle_fpgas[number_].take();
    if (answer_->started) configure(configuration::image);
}

bool module::write_control(std::uint8_t address, std::uint8_t value)
{
    if (address != connect_register && address != reset_register) return false;
    const bool on = value != 0;
    if (address == reset_register || !on) configure(fpga_);
    (address == reset_register ? in_reset_ : connected_) = on;
    return true;
}

void module::insert(std::unique_ptr<part> what) { machine_.insert(std::move(what)); }

void module::update()
{
    own_faults_ = faults_.modules.empty() ? fault_set{} : faults_.modules[static_cast<std::size_t>(number_ - 1)];
    if (!present()) power_up();  // nothing of it stays on
    machine_.update();
}

}  // namespace tamrix::sim
