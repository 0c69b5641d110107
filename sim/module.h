// One of the four modules of a programmer that has some: a socket, a memory and an FPGA of its own.
#pragma once

#include "sim/machine.h"
#include "sim/memory.h"

#include <optional>

namespace tamrix::sim {

/// The journal of a module: says which one it was.
class module_journal final : public journal {
public:
    module_journal(int number, journal& of_unit)
        : journal{nullptr}, prefix_{"module " + std::to_string(number) + ": "}, of_unit_{of_unit}
    {}
    void hazard(std::string text) override { of_unit_.hazard(prefix_ + text); }
    void note(std::string text) override { of_unit_.note(prefix_ + text); }

private:
    std::string prefix_;
    journal& of_unit_;
};

/// The FPGA is between the module's drivers and its socket. After power up and after start() it has the configuration
/// from the module's own ROM, which works at once and pulls the inputs down. After reset() it has none. An image
/// replaces it; what an image does at the socket is only connected by register 51, and it pulls the inputs up.
class module {
public:
    static constexpr int memory_banks = 16;
    /// Registers of the FPGA's control: 1 connects an image to the socket, 0 disconnects it; 1 holds the FPGA in reset,
    /// which disconnects too, 0 lets it run.
    static constexpr std::uint8_t connect_register = 51, reset_register = 55;
    /// A block of an image. The first shorter one, even an empty one, is the last.
    static constexpr std::size_t image_block = 24576;

    /// `number` from 1. `faults` is that of the programmer.
    module(int number, int model, fault_set& faults, journal& log);

    bool present() const { return !faults_.missing_modules.contains(number_); }
    /// The drivers at its socket; null while nothing reaches it.
    machine* reachable();
    /// Null while it is missing or reset.
    memory* reachable_memory();

    void power_up();
    void reset();
    void start();
    /// Takes one block of an image; a block that is not as long as was announced is refused.
    void load(std::span<const std::uint8_t> block, std::size_t announced);
    struct load_answer {
        int block;  // from 0
        bool taken, started;
    };
    /// That of the last block; none after a reset.
    const std::optional<load_answer>& last_answer() const { return answer_; }
    /// True if this is one of the FPGA's control registers.
    bool write_control(std::uint8_t address, std::uint8_t value);

    void insert(std::unique_ptr<part> what);
    bool part_has_power() { return machine_.socket().part_has_power(); }
    /// Call this after a fault was added or removed.
    void update();
    void settle_down() { machine_.settle_down(); }
    void check_idle() { machine_.check_idle(); }

private:
    enum class configuration : std::uint8_t { none, own, image };
    void configure(configuration what);

    int number_;
    fault_set& faults_;
    fault_set own_faults_{};
    module_journal log_;
    machine machine_;
    memory memory_;
    configuration fpga_ = configuration::own;
    bool in_reset_ = false, connected_ = false;
    std::size_t image_bytes_ = 0;
    int next_block_ = 0;
    std::optional<load_answer> answer_;
};

}  // namespace tamrix::sim
